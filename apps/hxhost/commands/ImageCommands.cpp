// hxhost image: makes update images and looks into them.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/ImageReport.h"
#include "apps/hxhost/report/StandardStreams.h"
#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/FileName.h"
#include "host/image/ImageBuilder.h"
#include "host/image/ImageGrammar.h"

namespace hx::host {

namespace {

struct BuildOptions {
    PluginOptions plugin;
    std::string code;
    std::string output;
    CodeType kind = CodeType::Fwu;
    std::string version = "1.0.2.4";
};

struct InspectOptions {
    PluginOptions plugin;
    std::string image;
};

// The product that the chosen plugin serves; none, with the problem in the report, without one.
std::optional<ProductDescription> describeChosen(CommandContext& context,
                                                 const PluginOptions& options)
{
    const std::unique_ptr<LoadedPlugin> plugin = loadChosenPlugin(context, options);
    if (!plugin)
        return std::nullopt;
    return describeProduct(plugin->device());
}

std::string checkVersion(const std::string& text)
{
    return isImageVersion(QString::fromStdString(text))
               ? std::string()
               : '"' + text + "\" is not a version of four digits, such as 1.0.2.4";
}

bool readCode(CommandContext& context, const QString& path, QByteArray* code)
{
    Result<QByteArray> content = readInput(path, image::maxCodeBytes);
    if (content) {
        *code = *content;
        return true;
    }
    context.fail(
        ExitCode::FileError,
        QStringLiteral("the code file \"%1\" cannot be read: %2").arg(path, content.problem().what),
        QStringLiteral("a file of 1 to %1 bytes").arg(image::maxCodeBytes),
        QStringLiteral("check the name and the permissions"));
    return false;
}

bool writeImage(CommandContext& context, const QString& path, const QByteArray& content)
{
    context.isOutputTaken = isStandardStream(path);
    const Result<> written = writeOutput(path, content);
    if (written)
        return true;
    context.fail(
        ExitCode::FileError,
        QStringLiteral("the image \"%1\" cannot be written: %2").arg(path, written.problem().what),
        QStringLiteral("a file name in a folder that may be written to"),
        QStringLiteral("give another name with -o"));
    return false;
}

// Messages from end to end, or any that carries a part of an update. The first is so of an image
// for whatever product, the second also of one that is cut off or damaged.
bool isMadeOfMessages(const QByteArray& content, const ProductDescription& product)
{
    const ImageFile file = parseImageFile(content);
    return file.problems.empty() || parseUpdateImage(file, product).dataMessages > 0;
}

void build(CommandContext& context, const BuildOptions& options)
{
    const std::optional<ProductDescription> product = describeChosen(context, options.plugin);
    const QString codeFile = fileNameText(options.code);
    QByteArray code;
    if (!product || !readCode(context, codeFile, &code))
        return;
    if (isMadeOfMessages(code, *product))
        return context.fail(ExitCode::ImageRefused,
                            QStringLiteral("\"%1\" is an update image already, whole or damaged, "
                                           "not code")
                                .arg(codeFile),
                            QStringLiteral("the file of code bytes that an image is made of"),
                            QStringLiteral("send the image with 'hxhost update', or give the code "
                                           "file"));
    const Result<BuiltImage> built =
        buildImage(*product, code, options.kind, QString::fromStdString(options.version));
    if (!built) {
        Problem problem = built.problem();
        problem.what =
            QStringLiteral("no image can be made of \"%1\": %2").arg(codeFile, problem.what);
        return context.report.fail(problem);
    }
    const QByteArray content = built->fileContent();
    if (writeImage(context, fileNameText(options.output), content))
        addImage(context.report, imageIn(fileNameText(options.output), content, *product));
}

void inspectImage(CommandContext& context, const InspectOptions& options)
{
    if (const auto product = describeChosen(context, options.plugin))
        readImage(context, options.image, *product);
}

void addBuildCommand(CommandLine& line, const Command& group)
{
    auto options = std::make_shared<BuildOptions>();
    const Command command = line.addTo(group, "build", "Make an update image from a code file");
    command.addOption("CODE", options->code, "File of code bytes").required();
    command.addOption("-o,--output", options->output, "Image to write")
        .valueName("FILE")
        .required();
    const std::map<std::string, CodeType> kinds = {{"fwu", CodeType::Fwu}, {"fwd", CodeType::Fwd}};
    command.addChoice("--kind", kinds, options->kind, "Kind of code image, as its maker names it")
        .required();
    command.addOption("--code-version", options->version, "Version that the code carries")
        .valueName("A.B.C.D")
        .check(checkVersion)
        .showDefault();
    addPluginOptions(command, options->plugin);
    line.setRun(command, [options](CommandContext& context) { build(context, *options); });
}

void addInspectImageCommand(CommandLine& line, const Command& group)
{
    auto options = std::make_shared<InspectOptions>();
    const Command command =
        line.addTo(group, "inspect", "Show what an update image holds, and what is wrong with it");
    addImageArgument(command, options->image);
    addPluginOptions(command, options->plugin);
    line.setRun(command, [options](CommandContext& context) { inspectImage(context, *options); });
}

} // namespace

void addImageCommands(CommandLine& line)
{
    const Command group = line.addGroup("image", "Make, inspect, sign and verify update images");
    addBuildCommand(line, group);
    addInspectImageCommand(line, group);
    addSignatureCommands(line, group);
}

} // namespace hx::host

// hxhost image sign and verify: who made an image.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/ImageOrigin.h"
#include "apps/hxhost/report/StandardStreams.h"
#include "apps/hxhost/report/Terminal.h"
#include "apps/hxhost/session/InterruptFlag.h"
#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/FileName.h"
#include "host/base/PrintableText.h"
#include "host/base/WholeFile.h"
#include "host/signature/SecretKey.h"

namespace hx::host {

namespace {

struct SignOptions {
    PluginOptions plugin;
    std::string image;
    std::string key;
    std::string output; // empty: beside the image
};

struct CheckOriginOptions {
    PluginOptions plugin;
    std::string image;
    OriginOptions origin;
};

// Where the signature goes; none, with the problem in the report, when it would go over something.
std::optional<QString> freePlace(CommandContext& context, const SignOptions& options)
{
    const QString image = fileNameText(options.image);
    const QString place =
        options.output.empty() ? signatureNameOf(image) : fileNameText(options.output);
    std::error_code unseen; // writing says what is wrong with the place
    if (options.output.empty() && isStandardStream(image))
        context.fail(ExitCode::Usage,
                     QStringLiteral("an image from standard input has no name, and neither has its "
                                    "signature"),
                     QStringLiteral("a name for the signature"),
                     QStringLiteral("give one with -o"));
    else if (!isStandardStream(place) &&
             std::filesystem::symlink_status(filePath(place), unseen).type() !=
                 std::filesystem::file_type::not_found)
        context.fail(ExitCode::FileError,
                     QStringLiteral("the signature \"%1\" is there already").arg(place),
                     QStringLiteral("a name that no file has"),
                     QStringLiteral("remove it, or give another name with -o"));
    return context.report.failed() ? std::nullopt : std::optional(place);
}

void failKey(CommandContext& context, const QString& name, const Problem& problem)
{
    const QString expected = problem.expected.isEmpty()
                                 ? QStringLiteral("a secret key that its owner alone may read")
                                 : problem.expected;
    context.fail(ExitCode::FileError,
                 QStringLiteral("the secret key \"%1\" cannot be used: %2").arg(name, problem.what),
                 expected,
                 QStringLiteral("check its name and permissions ('chmod 600'); a key with a "
                                "password needs a terminal to type it on"));
}

std::optional<SecretKey> openKey(CommandContext& context, const QString& name)
{
    const InterruptFlag interrupt;
    const auto ask = [&] {
        return askHidden(QStringLiteral("Password of %1: ").arg(printable(name)).toUtf8(),
                         *interrupt.flag());
    };
    Result<QByteArray> text = readSecretFile(name, maxMinisignBytes);
    Result<SecretKey> key = text ? SecretKey::open(*text, ask) : Result<SecretKey>(text.problem());
    if (key)
        return std::move(*key);
    if (*interrupt.flag())
        context.fail(ExitCode::Interrupted, QStringLiteral("You stopped it; nothing was signed."),
                     QString(), QStringLiteral("Run the command again."));
    else
        failKey(context, name, key.problem());
    return std::nullopt;
}

void writeSignature(CommandContext& context, const QString& place, const Signature& signature)
{
    context.isOutputTaken = isStandardStream(place);
    const Result<> written = writeOutput(place, signatureText(signature));
    if (!written)
        return context.fail(ExitCode::FileError,
                            QStringLiteral("the signature \"%1\" cannot be written: %2")
                                .arg(place, written.problem().what),
                            QStringLiteral("a file name in a folder that may be written to"),
                            QStringLiteral("give another name with -o"));
    context.report.add(QStringLiteral("signature.file"), place);
    context.report.add(QStringLiteral("signature.key"), keyIdText(signature.keyId));
    context.report.add(QStringLiteral("signature.comment"),
                       QString::fromUtf8(signature.trustedComment));
}

void signFile(CommandContext& context, const SignOptions& options)
{
    const std::optional<QString> place = freePlace(context, options);
    if (!place)
        return;
    const std::unique_ptr<LoadedPlugin> plugin = loadChosenPlugin(context, options.plugin);
    if (!plugin)
        return;
    const auto loaded = readImage(context, options.image, describeProduct(plugin->device()));
    if (!loaded)
        return;
    if (const auto key = openKey(context, fileNameText(options.key)))
        writeSignature(context, *place, signImage(loaded->file.content, loaded->image, *key));
}

void checkOrigin(CommandContext& context, const CheckOriginOptions& options)
{
    const std::unique_ptr<LoadedPlugin> plugin = loadChosenPlugin(context, options.plugin);
    if (!plugin)
        return;
    const TrustedKeys keys = chosenKeys(options.origin, *plugin);
    if (keys.areAskedFor() || failWithoutKeys(context))
        readTrustedImage(context, options.image, options.origin, keys,
                         describeProduct(plugin->device()));
}

void addSignCommand(CommandLine& line, const Command& group)
{
    auto options = std::make_shared<SignOptions>();
    const Command command =
        line.addTo(group, "sign", "Sign an update image: write its signature beside it");
    addImageArgument(command, options->image);
    command.addOption("--key", options->key, "Secret key, as 'minisign -G' makes it")
        .valueName("FILE")
        .required();
    command.addOption("-o,--output", options->output, "Signature to write; default: IMAGE.minisig")
        .valueName("FILE");
    addPluginOptions(command, options->plugin);
    line.setRun(command, [options](CommandContext& context) { signFile(context, *options); });
}

void addVerifyImageCommand(CommandLine& line, const Command& group)
{
    auto options = std::make_shared<CheckOriginOptions>();
    const Command command =
        line.addTo(group, "verify", "Check that an update image is signed with a trusted key");
    addImageArgument(command, options->image);
    addOriginOptions(command, options->origin);
    addPluginOptions(command, options->plugin);
    line.setRun(command, [options](CommandContext& context) { checkOrigin(context, *options); });
}

} // namespace

void addSignatureCommands(CommandLine& line, const Command& group)
{
    addSignCommand(line, group);
    addVerifyImageCommand(line, group);
}

} // namespace hx::host

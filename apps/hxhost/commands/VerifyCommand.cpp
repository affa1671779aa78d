// hxhost verify: whether the code in the product is intact, and is that of an image if one is
// given.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/ImageReport.h"
#include "apps/hxhost/commands/UpdateReport.h"

namespace hx::host {

namespace {

struct VerifyOptions {
    ConnectionOptions connection;
    std::string image; // empty: none
};

// Only after all else agreed was the product asked.
void reportKind(CommandContext& context, const UpdateResult& result)
{
    if (result.codeImage.state == ReadingState::NotRead)
        return;
    const bool isTold = result.kindTold != CodeType::Unknown;
    context.report.add(QStringLiteral("product.kind"),
                       isTold ? QJsonValue(QString(codeTypeTag(result.kindTold))) : QJsonValue(),
                       isTold ? QString() : QStringLiteral("(not told)"));
    if (result.succeeded() && !isTold)
        context.warn(QStringLiteral("The product does not tell the kind of its code: it was not "
                                    "compared with the image's."));
}

void verify(CommandContext& context, const VerifyOptions& options)
{
    context.report.setDetail(true);
    Session session(context);
    if (!session.loadPlugin(options.connection.plugin))
        return;
    std::optional<LoadedImage> loaded;
    if (!options.image.empty()) {
        loaded = readImage(context, options.image, session.product());
        if (!loaded)
            return;
    }
    if (!session.connect(options.connection))
        return;
    context.report.add(QStringLiteral("port"), session.port().name());
    const UpdateImage* image = loaded ? &loaded->image : nullptr;
    const UpdateResult result = verifyProduct(session.device(), session.bus(), image);
    if (image != nullptr)
        reportKind(context, result);
    reportUpdate(context, session, image, result);
    reportPluginAnswers(context, session, result);
}

} // namespace

void addVerifyCommand(CommandLine& line)
{
    auto options = std::make_shared<VerifyOptions>();
    const Command command = line.add("verify", "Check that the code in the product is intact");
    command.addOption("IMAGE", options->image, "Image whose code the product should hold");
    addConnectionOptions(command, options->connection);
    line.setRun(command, [options](CommandContext& context) { verify(context, *options); });
}

} // namespace hx::host

#include "apps/hxhost/commands/PlanReport.h"

#include "host/base/HexText.h"

namespace hx::host {

namespace {

bool requireGoodPlan(CommandContext& context, const LoadedImage& loaded, const UpdatePlan& plan)
{
    if (plan.ok())
        return true;
    context.fail(plan.isForOtherProduct ? ExitCode::WrongProduct : ExitCode::ImageRefused,
                 QStringLiteral("the image \"%1\" is refused: %2")
                     .arg(loaded.path, plan.refusals.join(QLatin1String("; "))),
                 QStringLiteral("an image for a product that this plugin serves"),
                 QStringLiteral("get the image made for this product"));
    return false;
}

void addPlan(Report& report, const UpdatePlan& plan)
{
    report.add(QStringLiteral("plan.kind"), QString(codeTypeTag(plan.protocol.codeType)));
    report.add(QStringLiteral("plan.product"), identifierText(quint32(plan.protocol.fidpid)));
    report.add(QStringLiteral("plan.messages"), plan.messages);
    report.add(QStringLiteral("plan.bytes"), double(plan.bytes));
    report.add(QStringLiteral("plan.timeoutMs"), plan.protocol.timeoutMs);
}

} // namespace

std::optional<PlannedImage> planImage(CommandContext& context, const Session& session,
                                      const std::string& path, const OriginOptions& origin)
{
    std::optional<LoadedImage> loaded = readTrustedImage(
        context, path, origin, chosenKeys(origin, session.plugin()), session.product());
    if (!loaded)
        return std::nullopt;
    const UpdatePlan plan = planUpdate(session.device(), loaded->image);
    addPlan(context.report, plan);
    if (!requireGoodPlan(context, *loaded, plan))
        return std::nullopt;
    if (!plan.missingProof.isEmpty())
        context.warn(plan.missingProof);
    return PlannedImage{std::move(*loaded), plan};
}

} // namespace hx::host

// hxhost recover: what state the product is in, and what brings it back.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/commands/Sentences.h"
#include "apps/hxhost/commands/UpdateReport.h"

#include "host/product/ProductState.h"

namespace hx::host {

namespace {

void recover(CommandContext& context, const ConnectionOptions& options)
{
    Session session(context);
    if (!session.open(options))
        return;
    ProductReader reader(session.device(), session.bus());
    const ProductAssessment assessment = assessProduct(reader);
    Report& report = context.report;
    report.setDetail(true);
    report.add(QStringLiteral("port"), session.port().name());
    report.add(QStringLiteral("condition"), productConditionText(assessment.condition));
    report.add(QStringLiteral("state"), assessment.state);
    report.add(QStringLiteral("advice"), assessment.advice);
    addReading(report, QStringLiteral("identity"), assessment.identity);
    addReading(report, QStringLiteral("version"), assessment.version);
    addReading(report, QStringLiteral("checksum.stored"), assessment.stored);
    addReading(report, QStringLiteral("checksum.calculated"), assessment.calculated);
    if (assessment.condition != ProductCondition::CodeIntact)
        return report.fail(problemOf(assessment, session.port().name()));
    addSuccess(report, session,
               {session.device().productName(),
                QStringLiteral("Version %1").arg(assessment.version.version),
                QStringLiteral("Verified: the instrument answers, its code is intact, and nothing "
                               "needs to be done")});
}

} // namespace

void addRecoverCommand(CommandLine& line)
{
    auto options = std::make_shared<ConnectionOptions>();
    const Command command =
        line.add("recover", "Report the state of the product, and how to recover it");
    addConnectionOptions(command, *options);
    line.setRun(command, [options](CommandContext& context) { recover(context, *options); });
}

} // namespace hx::host

// hxhost identify: asks the product on a port who it is.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/session/Session.h"

namespace hx::host {

namespace {

void identify(CommandContext& context, const ConnectionOptions& options)
{
    Session session(context);
    if (!session.open(options))
        return;
    ProductReader reader(session.device(), session.bus());
    const IdentityReading identity = reader.identity();
    const bool isServed = identity.good() && reader.isServed(identity);
    context.report.add(QStringLiteral("port"), session.port().name());
    addReading(context.report, QStringLiteral("identity"), identity);
    if (identity.isTold())
        context.report.add(QStringLiteral("identity.served"), isServed);
    if (!requireGood(context, identity, session.port().name()))
        return;
    if (isServed)
        context.report.add(QStringLiteral("product"), session.device().productName());
    else
        failWrongProduct(context, identity, session.device());
}

} // namespace

void addIdentifyCommand(CommandLine& line)
{
    auto options = std::make_shared<ConnectionOptions>();
    const Command command = line.add("identify", "Ask the product on a port for its identity");
    addConnectionOptions(command, *options);
    line.setRun(command, [options](CommandContext& context) { identify(context, *options); });
}

} // namespace hx::host

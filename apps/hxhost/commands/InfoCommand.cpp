// hxhost info: everything that can be read from the product, and what the plugin says beside it.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/session/Session.h"

#include <initializer_list>

namespace hx::host {

namespace {

void addInfo(Report& report, const ProductInfo& info)
{
    addReading(report, QStringLiteral("identity"), info.identity);
    addReading(report, QStringLiteral("gender"), info.gender);
    addReading(report, QStringLiteral("version"), info.version);
    addReading(report, QStringLiteral("esn"), info.esn);
    addReading(report, QStringLiteral("dsp0"), info.dsp0);
    addReading(report, QStringLiteral("dsp1"), info.dsp1);
    addReading(report, QStringLiteral("checksum.stored"), info.stored);
    addReading(report, QStringLiteral("checksum.calculated"), info.calculated);
}

// A refusal is an answer, and a plugin need not know every command.
bool isAnswered(const Reading& reading)
{
    return reading.good() || reading.state == ReadingState::Refused ||
           reading.state == ReadingState::Unknown;
}

// The first question that was not answered, if there is one, is the problem of the command.
void requireAnswers(CommandContext& context, const ProductInfo& info, const QString& portName)
{
    const std::initializer_list<const Reading*> readings = {
        &info.gender, &info.version, &info.stored, &info.calculated,
        &info.esn,    &info.dsp0,    &info.dsp1};
    for (const Reading* reading : readings) {
        if (!isAnswered(*reading)) {
            requireGood(context, *reading, portName);
            return;
        }
    }
}

} // namespace

void reportProduct(CommandContext& context, const ConnectionOptions& options)
{
    Session session(context);
    if (!session.open(options))
        return;
    ProductReader reader(session.device(), session.bus());
    const ProductInfo read = readProductInfo(reader);
    context.report.add(QStringLiteral("port"), session.port().name());
    addInfo(context.report, read);
    if (!requireGood(context, read.identity, session.port().name()))
        return;
    if (!reader.isServed(read.identity))
        return failWrongProduct(context, read.identity, session.device());
    context.report.setDetail(true);
    addPluginAnswers(context.report, askPlugin(session.device()), read.stored, read.calculated);
    requireAnswers(context, read, session.port().name());
}

void addInfoCommand(CommandLine& line)
{
    auto options = std::make_shared<ConnectionOptions>();
    const Command command = line.add("info", "Read all that the product reports of itself");
    addConnectionOptions(command, *options);
    line.setRun(command, [options](CommandContext& context) { reportProduct(context, *options); });
}

} // namespace hx::host

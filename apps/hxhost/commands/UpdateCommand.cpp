// hxhost update: the whole update, from the image on the disk to the product that answers again.
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/report/ImageReport.h"
#include "apps/hxhost/report/Readings.h"
#include "apps/hxhost/report/Terminal.h"
#include "apps/hxhost/report/UpdateReport.h"
#include "apps/hxhost/session/InterruptFlag.h"

#include "host/base/HexText.h"
#include "host/bus/TrafficMonitor.h"

#include <csignal>
#include <utility>

namespace hx {

namespace {

struct UpdateCommandOptions {
    ConnectionOptions connection;
    std::string image;
    bool dryRun = false;
    bool yes = false;
    bool noListen = false;
};

bool requireGoodPlan(CommandContext& context, const LoadedImage& loaded, const UpdatePlan& plan)
{
    if (plan.ok())
        return true;
    context.fail(ExitCode::ImageRefused,
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

// Whoever reads what we say may leave first, as "head" does: that must not cut an update off.
void outliveReaders()
{
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

bool listen(CommandContext& context, PortBus& bus)
{
    const InterruptFlag interrupt;
    context.console.note(QStringLiteral("Listening for other MIDI traffic ..."));
    const std::atomic<bool>* before = bus.watchInterrupt(interrupt.flag());
    const TrafficReport traffic = listenForTraffic(bus);
    bus.watchInterrupt(before);
    for (const QString& line : traffic.warnings())
        context.warn(line);
    if (*interrupt.flag())
        context.fail(ExitCode::Interrupted,
                     QStringLiteral("interrupted before the update was started"),
                     QStringLiteral("to run to its end"),
                     QStringLiteral("nothing was sent; run the command again"));
    return !*interrupt.flag();
}

QString question(const LoadedImage& loaded, const Session& session)
{
    return QStringLiteral("Update %1 on %2 with %3 (%4 %5, %6 messages, about %7)?\n"
                          "Leave the product on and connected until it is done. Type yes to start:")
        .arg(session.device().productName(), session.port().name(), loaded.path,
             codeTypeTag(loaded.image.kind), loaded.image.version,
             QString::number(loaded.image.messages.size()),
             durationText(loaded.image.wireMicroseconds()));
}

bool confirm(CommandContext& context, const LoadedImage& loaded, const Session& session)
{
    const QString answer = context.console.ask(question(loaded, session)).toLower();
    if (answer == QLatin1String("yes") || answer == QLatin1String("y"))
        return true;
    context.fail(ExitCode::NotConfirmed,
                 QStringLiteral("the update was not started: the answer was \"%1\"").arg(answer),
                 QStringLiteral("yes"),
                 QStringLiteral("nothing was sent; run the command again and type yes, or give "
                                "--yes"));
    return false;
}

void send(CommandContext& context, const Session& session, const LoadedImage& loaded)
{
    const InterruptFlag interrupt;
    const bool quiet = context.console.verbosity() == Verbosity::Quiet;
    Progress progress(context.console, quiet ? ProgressMode::None : context.output.progress);
    UpdateOptions options;
    options.interrupted = interrupt.flag();
    bool isNoted = false;
    options.progress = [&](const UpdateProgress& state) {
        progress.show(state);
        if (*interrupt.flag() && !std::exchange(isNoted, true))
            context.recorder.note(BusEventKind::Interrupted, QStringLiteral("Ctrl-C"));
    };
    const UpdateResult result = runUpdate(session.device(), session.bus(), loaded.image, options);
    progress.finish();
    reportUpdate(context, result);
    reportPluginAnswers(context, session, result);
    if (result.succeeded())
        context.console.note(QStringLiteral("Done: the product holds the new code, its checksums "
                                            "agree, and it answers again."));
}

bool mayStart(CommandContext& context, const UpdateCommandOptions& options,
              const LoadedImage& loaded, const Session& session)
{
    if (!options.noListen && !listen(context, session.bus()))
        return false;
    const bool asks = !options.yes && inputIsTerminal() && errorIsTerminal();
    return !asks || confirm(context, loaded, session);
}

void update(CommandContext& context, const UpdateCommandOptions& options)
{
    Session session(context);
    if (!session.loadPlugin(options.connection.plugin))
        return;
    const std::optional<LoadedImage> loaded = takeImage(context, options.image, session.product());
    if (!loaded)
        return;
    const UpdatePlan plan = planUpdate(session.device(), loaded->image);
    addPlan(context.report, plan);
    if (!requireGoodPlan(context, *loaded, plan))
        return;
    if (!plan.missingProof.isEmpty())
        context.warn(plan.missingProof);
    if (options.dryRun)
        return context.console.note(QStringLiteral("Dry run: nothing was sent."));
    outliveReaders();
    if (!session.connect(options.connection))
        return;
    context.report.add(QStringLiteral("port"), session.port().name());
    if (mayStart(context, options, *loaded, session))
        send(context, session, *loaded);
}

} // namespace

void addUpdateCommand(CommandLine& line)
{
    auto options = std::make_shared<UpdateCommandOptions>();
    const Command command = line.add("update", "Updates the product with an image, and checks it");
    command.addOption("IMAGE", options->image, "Update image: .syx, hex text or MIDI file")
        .required();
    command.addFlag("--dry-run", options->dryRun, "Show what would be sent; send nothing");
    command.addFlag("-y,--yes", options->yes, "Do not ask on a terminal before it starts");
    command.addFlag("--no-listen", options->noListen,
                    "Do not listen for other traffic for a second before it starts");
    addConnectionOptions(command, options->connection);
    line.setRun(command, [options](CommandContext& context) { update(context, *options); });
}

} // namespace hx

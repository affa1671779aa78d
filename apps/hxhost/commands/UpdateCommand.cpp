// hxhost update: the whole update, from the image on the disk to the product that answers again.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/PlanReport.h"
#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/commands/UpdateQuestion.h"
#include "apps/hxhost/commands/UpdateReport.h"
#include "apps/hxhost/report/Terminal.h"

#include "host/bus/TrafficMonitor.h"

#include <csignal>
#include <utility>

namespace hx::host {

namespace {

struct UpdateCommandOptions {
    ConnectionOptions connection;
    OriginOptions origin;
    std::string image;
    bool dryRun = false;
    bool yes = false;
    bool noListen = false;
};

// Whoever reads what we say may leave first, as "head" does: that must not cut an update off.
void outliveReaders()
{
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

// Whether what was heard forbids the update, which then is the problem of the command.
bool isForbidden(CommandContext& context, const TrafficReport& traffic)
{
    if (!traffic.portError.isEmpty())
        context.fail(ExitCode::NoPort, traffic.portError,
                     QStringLiteral("a port that stays connected"),
                     QStringLiteral("nothing was sent; connect it again, then run the command "
                                    "again"));
    else if (traffic.acknowledgements > 0)
        context.fail(ExitCode::NoPort,
                     QStringLiteral("another program is updating this product: %1 acknowledgements "
                                    "of an update were heard")
                         .arg(traffic.acknowledgements),
                     QStringLiteral("a product that no other program uses"),
                     QStringLiteral("nothing was sent; let the other update end, then run the "
                                    "command again"));
    return context.report.failed();
}

// False when it was stopped meanwhile, or must not be started.
bool listen(CommandContext& context, const Session& session, const UpdatePlan& plan)
{
    context.console.note(QStringLiteral("Listening for other MIDI traffic ..."));
    const TrafficReport traffic =
        listenForTraffic(session.bus(), trafficTime, replyTest(plan.protocol.responseAny));
    for (const QString& line : traffic.warnings())
        context.warn(line);
    if (session.interrupted())
        context.fail(ExitCode::Interrupted,
                     QStringLiteral("You stopped the update before anything was sent."), QString(),
                     QStringLiteral("The instrument is as it was."));
    return !session.interrupted() && !isForbidden(context, traffic);
}

class Updater {
public:
    Updater(CommandContext& context, const UpdateCommandOptions& options, const Session& session,
            const LoadedImage& loaded)
        : m_context(context), m_options(options), m_session(session), m_loaded(loaded),
          m_progress(context.console, context.console.verbosity() == Verbosity::Quiet
                                          ? ProgressMode::None
                                          : context.output.progress)
    {
    }

    UpdateResult run();

private:
    bool confirm(const UpdateResult& asked);
    void show(const UpdateProgress& progress);

    CommandContext& m_context;
    const UpdateCommandOptions& m_options;
    const Session& m_session;
    const LoadedImage& m_loaded;
    Progress m_progress;
    bool m_isStopNoted = false;
};

bool Updater::confirm(const UpdateResult& asked)
{
    if (m_options.yes || !inputIsTerminal()) {
        if (isSignedDowngrade(asked, m_loaded))
            m_context.warn(signedDowngradeText);
        return true;
    }
    const QString question = updateQuestion(asked, m_loaded, m_session.device().productName(),
                                            m_session.port().name(), m_options.connection.pace);
    const QString answer = m_context.console.ask(question, m_session.interrupted()).toLower();
    return answer == QLatin1String("yes") || answer == QLatin1String("y");
}

void Updater::show(const UpdateProgress& progress)
{
    m_progress.show(progress);
    if (m_session.interrupted() && !std::exchange(m_isStopNoted, true))
        m_context.recorder.note(BusEventKind::Interrupted, QStringLiteral("Ctrl-C"));
}

UpdateResult Updater::run()
{
    UpdateOptions options;
    options.interrupted = &m_session.interrupted();
    options.confirm = [this](const UpdateResult& asked) { return confirm(asked); };
    options.progress = [this](const UpdateProgress& progress) { show(progress); };
    UpdateResult result = runUpdate(m_session.device(), m_session.bus(), m_loaded.image, options);
    m_progress.finish();
    return result;
}

void send(CommandContext& context, const UpdateCommandOptions& options, const Session& session,
          const LoadedImage& loaded)
{
    const UpdateResult result = Updater(context, options, session, loaded).run();
    context.success = QStringLiteral("The update succeeded");
    reportUpdate(context, session, &loaded.image, result);
    reportPluginAnswers(context, session, result);
}

void update(CommandContext& context, const UpdateCommandOptions& options)
{
    context.report.setDetail(!options.dryRun);
    Session session(context);
    if (!session.loadPlugin(options.connection.plugin))
        return;
    const std::optional<PlannedImage> planned =
        planImage(context, session, options.image, options.origin);
    if (!planned)
        return;
    if (options.dryRun)
        return context.console.note(QStringLiteral("Dry run: nothing was sent."));
    outliveReaders();
    if (!session.connect(options.connection))
        return;
    context.report.add(QStringLiteral("port"), session.port().name());
    if (options.noListen || listen(context, session, planned->plan))
        send(context, options, session, planned->loaded);
}

} // namespace

void addUpdateCommand(CommandLine& line)
{
    auto options = std::make_shared<UpdateCommandOptions>();
    const Command command =
        line.add("update", "Update the product with an image, and check the result");
    addImageArgument(command, options->image);
    command.addFlag("--dry-run", options->dryRun, "Show what would be sent; send nothing");
    command.addFlag("-y,--yes", options->yes, "Do not ask on a terminal before it starts");
    command.addFlag("--no-listen", options->noListen,
                    "Do not listen for other traffic for a second before it starts");
    addSendingOriginOptions(command, options->origin);
    addConnectionOptions(command, options->connection);
    line.setRun(command, [options](CommandContext& context) { update(context, *options); });
}

} // namespace hx::host

// hxhost monitor: what arrives on a port, decoded.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/session/PortOpener.h"
#include "apps/hxhost/session/Session.h"

#include "host/base/FileName.h"
#include "host/base/HexText.h"

#include <cstdio>
#include <limits>

namespace hx::host {

namespace {

// How soon an interrupt ends the listening.
constexpr Microseconds listenInterval = 50 * microsecondsPerMillisecond;

// More than the pause after which an unfinished message is given up: nothing of it is lost at the
// end of a recorded session.
constexpr Microseconds lastWait = 2 * microsecondsPerSecond;

constexpr int mostEvents = 100000; // kept for one JSON document

struct MonitorOptions {
    ConnectionOptions connection;
    int count = 0;      // 0: no limit
    double seconds = 0; // 0: until it is interrupted
};

QString nameOf(const AssembledEvent& event, const MessageNames& names)
{
    switch (event.kind) {
    case AssembledEvent::Kind::SysEx:
        return names.nameOf(event.bytes);
    case AssembledEvent::Kind::RealTime:
        return QStringLiteral("real time");
    case AssembledEvent::Kind::Dropped:
        return QStringLiteral("dropped: ") + dropReasonText(event.reason);
    case AssembledEvent::Kind::Short:
        break;
    }
    return QString();
}

class Monitor {
public:
    Monitor(CommandContext& context, const MonitorOptions& options, const Session& session)
        : m_context(context), m_options(options), m_session(session), m_bus(session.bus()),
          m_names(session.names()),
          m_isReplay(isReplayedPort(fileNameText(options.connection.port))),
          m_start(session.port().clock().now())
    {
    }

    void run();

private:
    bool hasRoom() const;
    bool goesOn() const;
    void listen();
    void show(const AssembledEvent& event);

    CommandContext& m_context;
    const MonitorOptions& m_options;
    const Session& m_session;
    PortBus& m_bus;
    const MessageNames& m_names;
    const bool m_isReplay;
    Microseconds m_start;
    bool m_isPlayed = false; // to the end of the recorded session
    QJsonArray m_events;
    int m_shown = 0;
};

bool Monitor::hasRoom() const
{
    return (m_options.count == 0 || m_shown < m_options.count) &&
           (!m_context.output.json || m_shown < mostEvents);
}

bool Monitor::goesOn() const
{
    const Microseconds passed = m_bus.port().clock().now() - m_start;
    const bool isOver = m_options.seconds > 0 && double(passed) >= m_options.seconds * 1e6;
    return !isOver && !m_isPlayed && hasRoom();
}

void Monitor::show(const AssembledEvent& event)
{
    if (!hasRoom())
        return;
    ++m_shown;
    const double ms = double(event.lastByte - m_start) / double(microsecondsPerMillisecond);
    const QString name = nameOf(event, m_names);
    if (m_context.output.json)
        m_events << QJsonObject{{"ms", ms}, {"bytes", hexText(event.bytes)}, {"name", name}};
    else
        printf("%12.3f  %s  %s\n", ms, hexText(event.bytes).toLatin1().constData(),
               name.toUtf8().constData());
    fflush(stdout);
}

// Silence lasts as long on a simulated port, where waiting takes no time, as on a real one: without
// end it would keep a processor busy. A recorded session has an end.
void Monitor::listen()
{
    SteadyClock clock;
    const Microseconds end = clock.now() + listenInterval;
    m_isPlayed = m_bus.port().atEnd();
    const AssembledEvents heard = m_bus.listen(m_isPlayed ? lastWait : listenInterval);
    for (const AssembledEvent& event : heard)
        show(event);
    if (heard.empty() && m_bus.errorText.isEmpty() && !m_isReplay)
        clock.sleepUntil(end);
}

void Monitor::run()
{
    while (goesOn() && !m_session.interrupted() && m_bus.errorText.isEmpty())
        listen();
    m_context.report.addHidden(QStringLiteral("events"), m_events);
    m_context.report.addHidden(QStringLiteral("count"), m_shown);
    if (!m_bus.errorText.isEmpty())
        m_context.fail(ExitCode::NoPort, m_bus.errorText,
                       QStringLiteral("a port that stays connected"),
                       QStringLiteral("connect it again; 'hxhost ports' lists the ports"));
}

void monitor(CommandContext& context, const MonitorOptions& options)
{
    Session session(context);
    if (!session.listenOn(options.connection))
        return;
    context.report.addHidden(QStringLiteral("port"), session.port().name());
    context.console.note(
        QStringLiteral("Listening on %1. Ctrl-C ends it.").arg(session.port().name()));
    Monitor(context, options, session).run();
}

} // namespace

void addMonitorCommand(CommandLine& line)
{
    auto options = std::make_shared<MonitorOptions>();
    const Command command = line.add("monitor", "Print what arrives on a port, decoded");
    command.addOption("--count", options->count, "Stop after this many messages; more than 0")
        .valueName("N")
        .range(1, std::numeric_limits<int>::max());
    addSecondsOption(command, options->seconds);
    addListenOptions(command, options->connection);
    line.setRun(command, [options](CommandContext& context) { monitor(context, *options); });
}

} // namespace hx::host

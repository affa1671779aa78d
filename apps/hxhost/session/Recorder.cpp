#include "apps/hxhost/session/Recorder.h"

#include "host/base/HexText.h"

namespace hx::host {

namespace {

// Qt's messages have one handler for the whole process: this is the recorder it belongs to.
Recorder* activeRecorder = nullptr;

void recordQtMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    if (activeRecorder != nullptr)
        activeRecorder->note(BusEventKind::Log, text);
}

} // namespace

Recorder::Recorder(Console& console) : m_console(console)
{
    continueTimeFrom(m_clock);
    activeRecorder = this;
    qInstallMessageHandler(recordQtMessage);
}

Recorder::~Recorder()
{
    qInstallMessageHandler(nullptr);
    activeRecorder = nullptr;
}

Result<> Recorder::openTrace(const QString& name, const QString& title)
{
    Result<> ready = m_output.setUp(name);
    if (ready) {
        m_writer = std::make_unique<TraceWriter>(m_output, 0);
        m_writer->comment(title);
    }
    return ready;
}

Result<> Recorder::startTrace()
{
    if (!m_writer)
        return {};
    return m_output.start();
}

void Recorder::attach(PortBus& bus, const NameOfMessage& nameOf)
{
    m_bus = &bus;
    m_nameOf = nameOf;
    continueTimeFrom(bus.port().clock());
    if (m_writer)
        m_writer->setNames(nameOf);
    bus.addObserver(this);
}

void Recorder::detach()
{
    if (m_bus == nullptr)
        return;
    m_bus->removeObserver(this);
    if (m_writer)
        m_writer->setNames(nullptr);
    m_bus = nullptr;
    m_nameOf = nullptr;
    continueTimeFrom(m_clock);
}

void Recorder::note(BusEventKind kind, const QString& text)
{
    if (m_bus != nullptr)
        m_bus->note(kind, text);
    else
        busEvent({kind, m_clock.now(), QByteArray(), text});
}

void Recorder::busEvent(const BusEvent& event)
{
    BusEvent recorded = event;
    recorded.time = m_traceTime = event.time + m_shift;
    if (concernsWire(event.kind))
        static_cast<void>(startTrace()); // the trace is not good from a failure on
    if (m_writer)
        m_writer->busEvent(recorded);
    showOnConsole(event);
}

void Recorder::showOnConsole(const BusEvent& event)
{
    if (!concernsWire(event.kind)) {
        m_console.detail(busEventWord(event.kind) + QLatin1String(": ") + event.text);
        return;
    }
    QString line = busEventWord(event.kind);
    if (!event.bytes.isEmpty())
        line += QLatin1Char(' ') + hexText(event.bytes);
    const QString name = m_nameOf ? m_nameOf(event.bytes) : QString();
    if (!name.isEmpty())
        line += QLatin1Char(' ') + name;
    if (!event.text.isEmpty())
        line += QLatin1String(" (") + event.text + QLatin1Char(')');
    m_console.bytes(line);
}

void Recorder::continueTimeFrom(Clock& clock)
{
    m_shift = m_traceTime - clock.now();
}

} // namespace hx::host

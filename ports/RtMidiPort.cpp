#include "ports/RtMidiPort.h"

#include "ports/MidiLibraryLog.h"
#include "ports/PortIdentities.h"
#include "ports/PortNames.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace hx {

namespace {

// How often a wait looks whether the port still exists.
constexpr Microseconds presenceInterval = 250 * microsecondsPerMillisecond;

template <typename Ports>
bool hasPort(Ports& ports, const QString& name)
{
    return portNames(ports).contains(name);
}

// Throws when there is no such port.
template <typename Ports>
unsigned indexOf(Ports& ports, const QString& name)
{
    const auto index = portNames(ports).indexOf(name);
    if (index >= 0)
        return unsigned(index);
    throw RtMidiError("the port " + name.toStdString() + " is not there any more",
                      RtMidiError::INVALID_DEVICE);
}

RtMidi::Api apiNamed(const QString& backend)
{
    const RtMidi::Api api = RtMidi::getCompiledApiByName(backend.toStdString());
    if (api == RtMidi::UNSPECIFIED)
        throw RtMidiError("this program was built without " + backend.toStdString(),
                          RtMidiError::INVALID_PARAMETER);
    return api;
}

// Runs `openPorts`, and returns whatever the library says meanwhile.
template <typename Open>
QString complaintOf(const Open& openPorts)
{
    const RtMidiSilence silence;
    try {
        openPorts();
    } catch (const RtMidiError& thrown) {
        return (silence.text() + QLatin1Char(' ') + QString::fromStdString(thrown.getMessage()))
            .trimmed();
    }
    return silence.text();
}

} // namespace

Result<std::unique_ptr<MidiPort>> RtMidiPort::open(const PortAddress& address, const Pace& pace)
{
    silenceMidiLibraries();
    std::unique_ptr<RtMidiPort> port(new RtMidiPort(address, pace));
    const QString complaint = complaintOf([&] { port->connectTo(apiNamed(address.backend)); });
    return portOrProblem(std::move(port), complaint);
}

// The library may complain of a port that it opened all the same: it is not used.
Result<std::unique_ptr<MidiPort>> RtMidiPort::portOrProblem(std::unique_ptr<RtMidiPort> port,
                                                            const QString& complaint)
{
    const QString what = complaint.isEmpty() ? port->takeLibraryError() : complaint;
    if (!what.isEmpty())
        return Problem{ExitCode::NoPort, what, {}, {}};
    return std::unique_ptr<MidiPort>(std::move(port));
}

Result<std::unique_ptr<MidiPort>> RtMidiPort::openVirtual(const QString& backend,
                                                          const QString& name, const Pace& pace)
{
    silenceMidiLibraries();
    std::unique_ptr<RtMidiPort> port(new RtMidiPort({backend, name, name}, pace));
    port->m_isVirtual = true;
    const QString complaint = complaintOf([&] { port->offer(apiNamed(backend), name); });
    return portOrProblem(std::move(port), complaint);
}

RtMidiPort::RtMidiPort(const PortAddress& address, const Pace& pace)
    : m_address(address), m_pacer(m_clock, pace, rtMidiBuffer)
{
}

RtMidiPort::~RtMidiPort()
{
    if (m_out)
        m_pacer.drain(m_clock.now() + rtMidiBuffer.emptying);
}

void RtMidiPort::setUp(RtMidi::Api api, const std::string& inputClient,
                       const std::string& outputClient)
{
    if (api == RtMidi::UNIX_JACK)
        m_server = std::make_unique<JackServerWatch>();
    m_in = std::make_unique<RtMidiIn>(api, inputClient);
    m_out = std::make_unique<RtMidiOut>(api, outputClient);
    m_in->setErrorCallback(takeError, this);
    m_out->setErrorCallback(takeError, this);
    // SysEx must come; clock and active sensing too, because a person who listens, and the host
    // before an update, must see them. The assembler takes them out of a SysEx.
    m_in->ignoreTypes(false, false, false);
    m_in->setCallback(takeInput, this);
}

void RtMidiPort::connectTo(RtMidi::Api api)
{
    setUp(api, "hxhost input", "hxhost output");
    if (!m_address.output.isEmpty())
        m_out->openPort(indexOf(*m_out, m_address.output), "out");
    m_in->openPort(indexOf(*m_in, m_address.input), "in");
}

void RtMidiPort::offer(RtMidi::Api api, const QString& name)
{
    setUp(api, name.toStdString(), name.toStdString() + " replies");
    m_out->openVirtualPort("out");
    m_in->openVirtualPort("in");
}

QString RtMidiPort::name() const
{
    const QString& port = m_address.output.isEmpty() ? m_address.input : m_address.output;
    return m_address.backend + QLatin1Char(':') + port;
}

PortIdentity RtMidiPort::identity() const
{
    return identityOfPort(m_address.backend,
                          m_address.output.isEmpty() ? m_address.input : m_address.output);
}

qint64 RtMidiPort::send(const QByteArray& message)
{
    errorText.clear();
    if (refuse(message) || hasGone())
        return 0;
    const int size = saturated(message.size());
    m_pacer.waitForTurn(size);
    const auto* bytes = reinterpret_cast<const unsigned char*>(message.constData());
    m_out->sendMessage(bytes, size_t(message.size()));
    m_pacer.waitForWire(size);
    errorText = takeLibraryError();
    return errorText.isEmpty() ? message.size() : 0;
}

bool RtMidiPort::drain(Microseconds deadline)
{
    errorText.clear();
    if (hasGone())
        return false;
    const bool isEmpty = m_pacer.drain(deadline);
    if (!isEmpty)
        errorText = QStringLiteral("the port %1 has not sent all in time").arg(name());
    return isEmpty;
}

MidiChunk RtMidiPort::receive(Microseconds deadline)
{
    errorText.clear();
    for (;;) {
        const Microseconds left = deadline - m_clock.now();
        if (const auto chunk = m_arrived.take(std::min(left, presenceInterval)))
            return *chunk;
        if (hasGone() || left <= presenceInterval)
            return {};
    }
}

bool RtMidiPort::refuse(const QByteArray& message)
{
    if (!message.isEmpty() && message.size() <= largestMessage)
        return false;
    errorText = QStringLiteral("a message of %1 bytes cannot be sent: a port carries messages of "
                               "1 to %2 bytes")
                    .arg(message.size())
                    .arg(largestMessage);
    return true;
}

bool RtMidiPort::isPresent()
{
    // Virtual ports stand among those of their own server, as long as that runs.
    if (m_isVirtual)
        return m_out->getPortCount() > 0;
    return hasPort(*m_in, m_address.input) &&
           (m_address.output.isEmpty() || hasPort(*m_out, m_address.output));
}

bool RtMidiPort::hasGone()
{
    const bool serverGone = m_server && m_server->isGone();
    if (m_clock.now() < m_nextLook && !serverGone)
        return false;
    m_nextLook = m_clock.now() + presenceInterval;
    m_isGone = false;
    if (!serverGone && isPresent())
        return false;
    m_nextLook = 0;
    m_isGone = true;
    takeLibraryError();
    errorText = serverGone
                    ? QStringLiteral("the MIDI server of the port %1 has gone away").arg(name())
                    : QStringLiteral("the port %1 has disappeared").arg(name());
    return true;
}

QString RtMidiPort::takeLibraryError()
{
    const std::lock_guard<std::mutex> lock(m_errorMutex);
    QString error;
    error.swap(m_libraryError);
    return error;
}

void RtMidiPort::takeInput(double, std::vector<unsigned char>* bytes, void* port)
{
    auto* self = static_cast<RtMidiPort*>(port);
    const auto* data = reinterpret_cast<const char*>(bytes->data());
    self->m_arrived.put({QByteArray(data, int(bytes->size())), self->m_clock.now()});
}

void RtMidiPort::takeError(RtMidiError::Type, const std::string& text, void* port)
{
    auto* self = static_cast<RtMidiPort*>(port);
    const std::lock_guard<std::mutex> lock(self->m_errorMutex);
    self->m_libraryError = QString::fromStdString(text).simplified();
}

} // namespace hx

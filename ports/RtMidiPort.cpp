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

} // namespace

Result<std::unique_ptr<MidiPort>> RtMidiPort::open(const PortAddress& address, const Pace& pace)
{
    std::unique_ptr<RtMidiPort> port(new RtMidiPort(address, pace));
    return opened(std::move(port), {"hxhost input", "hxhost output"}, &RtMidiPort::connectPorts);
}

Result<std::unique_ptr<MidiPort>> RtMidiPort::openVirtual(const QString& backend,
                                                          const QString& name, const Pace& pace)
{
    std::unique_ptr<RtMidiPort> port(new RtMidiPort({backend, name, name}, pace));
    port->m_isVirtual = true;
    const std::string client = name.toStdString();
    return opened(std::move(port), {client, client + " replies"}, &RtMidiPort::offerPorts);
}

// Of a port that JACK's library has complained of nothing is asked any more. When the server has
// gone away, the library frees the clients that a program has as soon as it opens one more.
Result<std::unique_ptr<MidiPort>> RtMidiPort::opened(std::unique_ptr<RtMidiPort> port,
                                                     const ClientNames& names,
                                                     void (RtMidiPort::*openPorts)())
{
    silenceMidiLibraries();
    QString problem = port->problemOf([&] { port->setUp(names); });
    if (problem.isEmpty())
        problem = port->problemOf([&] { (*port.*openPorts)(); });
    if (problem.isEmpty())
        return std::unique_ptr<MidiPort>(std::move(port));
    if (port->m_server && port->m_hasComplained)
        abandon(std::move(port));
    return Problem{ExitCode::NoPort, problem, {}, {}};
}

// The library may complain of what it did all the same: that is a problem too.
template <typename Step>
QString RtMidiPort::problemOf(const Step& step)
{
    const RtMidiSilence silence;
    QString refusal;
    try {
        step();
    } catch (const RtMidiError& thrown) {
        refusal = QString::fromStdString(thrown.getMessage());
    }
    const QString said = silence.text();
    const QString complaint = said.isEmpty() ? takeLibraryError() : said;
    m_hasComplained = !complaint.isEmpty();
    return (complaint + QLatin1Char(' ') + refusal).trimmed();
}

// Until the program ends: to close a client that the library has freed would free it again.
void RtMidiPort::abandon(std::unique_ptr<RtMidiPort> port)
{
    static auto& abandoned = *new std::vector<std::unique_ptr<RtMidiPort>>;
    abandoned.push_back(std::move(port));
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

void RtMidiPort::setUp(const ClientNames& names)
{
    const RtMidi::Api api = apiNamed(m_address.backend);
    if (api == RtMidi::UNIX_JACK)
        m_server = std::make_unique<JackServerWatch>();
    m_in = std::make_unique<RtMidiIn>(api, names.input);
    m_out = std::make_unique<RtMidiOut>(api, names.output);
    m_in->setErrorCallback(takeError, this);
    m_out->setErrorCallback(takeError, this);
    // SysEx must come; clock and active sensing too, because a person who listens, and the host
    // before an update, must see them. The assembler takes them out of a SysEx.
    m_in->ignoreTypes(false, false, false);
    m_in->setCallback(takeInput, this);
}

void RtMidiPort::connectPorts()
{
    if (!m_address.output.isEmpty())
        m_out->openPort(indexOf(*m_out, m_address.output), "out");
    m_in->openPort(indexOf(*m_in, m_address.input), "in");
}

void RtMidiPort::offerPorts()
{
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

#include "apps/hxhost/session/Session.h"

#include "apps/hxhost/session/EndOfInput.h"
#include "apps/hxhost/session/PortOpener.h"

#include "host/base/FileName.h"

namespace hx::host {

namespace {

constexpr Microseconds longestDrain = 2 * microsecondsPerSecond;

} // namespace

Session::Session(CommandContext& context) : m_context(context) {}

Session::~Session()
{
    if (m_port && !m_port->isGone() && !m_port->drain(m_port->clock().now() + longestDrain))
        m_context.recorder.note(BusEventKind::Log, m_port->errorText);
    m_context.recorder.detach();
    if (m_plugin)
        m_plugin->device().bus = nullptr;
}

bool Session::loadPlugin(const PluginOptions& options)
{
    m_plugin = loadChosenPlugin(m_context, options);
    if (!m_plugin)
        return false;
    m_product = describeProduct(device());
    m_names = std::make_unique<MessageNames>(device());
    return true;
}

bool Session::connect(const ConnectionOptions& options)
{
    if (options.stopsAtEof)
        stopAtEndOfInput();
    m_isMadeUp = isMadeUpPort(fileNameText(options.port));
    return use(openPort(m_context, options, device()), options);
}

bool Session::listenOn(const ConnectionOptions& options)
{
    return loadPlugin(options.plugin) && use(openInput(m_context, options, device()), options);
}

bool Session::use(std::unique_ptr<MidiPort> port, const ConnectionOptions& options)
{
    m_port = std::move(port);
    if (!m_port || !m_context.startTrace())
        return false;
    m_bus = std::make_unique<PortBus>(*m_port, AssemblerLimits(),
                                      options.slowHost ? slowHostPatience : Patience());
    m_interrupt = std::make_unique<InterruptFlag>();
    m_bus->watchInterrupt(m_interrupt->flag());
    m_context.recorder.attach(
        *m_bus, [this](const QByteArray& message) { return m_names->nameOf(message); });
    device().bus = m_bus.get();
    return true;
}

bool Session::open(const ConnectionOptions& options)
{
    return loadPlugin(options.plugin) && connect(options);
}

} // namespace hx::host

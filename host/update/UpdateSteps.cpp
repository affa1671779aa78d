#include "host/update/UpdateSteps.h"

#include "host/base/HexText.h"

namespace hx {

UpdateSteps::UpdateSteps(PortBus& bus)
    : m_bus(bus), m_start(bus.port().clock().now()), m_stepStart(m_start)
{
}

Microseconds UpdateSteps::sinceStart() const
{
    return m_bus.port().clock().now() - m_start;
}

void UpdateSteps::add(const char* name, bool good, const QString& text)
{
    const Microseconds now = m_bus.port().clock().now();
    result.steps.push_back({QString::fromLatin1(name), good, text, now - m_stepStart});
    m_stepStart = now;
    m_bus.note(BusEventKind::Decided, QStringLiteral("%1: %2").arg(QLatin1String(name), text));
}

bool UpdateSteps::end(UpdateOutcome outcome, const QString& reason)
{
    result.outcome = outcome;
    result.reason = reason;
    return false;
}

bool UpdateSteps::endOn(const Reading& reading, UpdateOutcome whenSilent)
{
    if (reading.state == ReadingState::PortLost)
        return end(UpdateOutcome::PortLost, reading.reason);
    if (reading.state == ReadingState::Interrupted)
        return end(UpdateOutcome::Interrupted, reading.reason);
    if (reading.state == ReadingState::OtherProduct)
        return end(UpdateOutcome::WrongProduct, reading.reason);
    if (reading.state == ReadingState::Unknown)
        return end(UpdateOutcome::VerificationFailed, reading.reason);
    return end(whenSilent, QStringLiteral("%1: %2").arg(reading.key, reading.reason));
}

QString productText(const IdentityReading& identity)
{
    return QStringLiteral("maker %1, identifier %2, version %3")
        .arg(hexText(identity.manufacturer), identifierText(identity.fidpid), identity.version);
}

} // namespace hx

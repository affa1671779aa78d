/** @file
 * A port that may go away for a while, as that of a product that restarts, and is used again when it
 * is back.
 */
#pragma once

#include "host/base/Result.h"
#include "host/bus/BusEvent.h"
#include "host/bus/MidiPort.h"

#include <functional>
#include <memory>

namespace hx {

/** How long a port that went away is waited for. */
constexpr Microseconds returnTime = 5 * microsecondsPerSecond;

/**
 * A message that was being sent when the port went away must be sent again, whole, when it is back:
 * another product may be behind it then, so that is for the caller to decide. An answer that came
 * meanwhile is lost. The port counts as gone when it is not back in time.
 */
class ReturningPort final : public MidiPort {
public:
    struct Ways {
        /** Opens the same port again; fails as long as it is not there. */
        std::function<Result<std::unique_ptr<MidiPort>>()> reopen;
        /** Whether to wait for it at all; not when what carried it is gone too. */
        std::function<bool()> mayReturn;
        /** Told, in a sentence, that it went away (`Decided`) and that it is back (`PortBack`). */
        std::function<void(BusEventKind, const QString&)> tell;
    };

    /** `clock` is that of `port`, and outlives this object. */
    ReturningPort(std::unique_ptr<MidiPort> port, Clock& clock, const Ways& ways,
                  Microseconds patience = returnTime);

    QString name() const override { return m_name; }
    PortIdentity identity() const override { return m_identity; }
    Clock& clock() override { return m_clock; }
    qint64 send(const QByteArray& message) override;
    bool drain(Microseconds deadline) override;
    MidiChunk receive(Microseconds deadline) override;
    bool isGone() const override { return !m_port && m_isGivenUp; }
    int returns() const override { return m_returns; }

private:
    bool hasGone();
    bool isBack();

    std::unique_ptr<MidiPort> m_port; /**< null while it is away */
    Clock& m_clock;
    Ways m_ways;
    Microseconds m_patience;
    QString m_name;
    PortIdentity m_identity;
    QString m_loss; /**< why it went away */
    Microseconds m_lostAt = 0;
    Microseconds m_nextLook = 0;
    bool m_isGivenUp = false;
    int m_returns = 0;
    bool m_hasReturned = false; /**< and nothing has come since */
};

} // namespace hx

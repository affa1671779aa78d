/** @file
 * Time as the host sees it: a monotonic clock that tests and simulated ports replace.
 */
#pragma once

#include <QtGlobal>

namespace hx {

/** Microseconds since an arbitrary start; never goes backwards. */
using Microseconds = qint64;

constexpr Microseconds microsecondsPerMillisecond = 1000;
constexpr Microseconds microsecondsPerSecond = 1000000;

class Clock {
public:
    virtual ~Clock() = default;

    /** The present moment. */
    virtual Microseconds now() = 0;

    /** Returns when `until` has come; at once when it lies in the past. */
    virtual void sleepUntil(Microseconds until) = 0;
};

/** The machine's monotonic clock. */
class SteadyClock final : public Clock {
public:
    Microseconds now() override;
    void sleepUntil(Microseconds until) override;
};

/**
 * A clock that moves only when it is told to: waiting takes no time. Simulated ports and
 * tests run on it.
 */
class ManualClock final : public Clock {
public:
    Microseconds now() override { return m_now; }
    void sleepUntil(Microseconds until) override { m_now = until > m_now ? until : m_now; }

private:
    Microseconds m_now = 0;
};

} // namespace hx

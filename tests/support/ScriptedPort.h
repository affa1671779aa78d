// A MIDI port that a test scripts: it records what is sent and lets bytes arrive when told, on a
// clock that moves only by waiting.
#pragma once

#include "host/bus/MidiPort.h"

#include <functional>
#include <map>
#include <vector>

class ScriptedPort final : public hx::MidiPort {
public:
    QString name() const override { return QStringLiteral("scripted"); }
    hx::Clock& clock() override { return m_clock; }

    qint64 send(const QByteArray& message) override
    {
        if (!sendError.isEmpty()) {
            errorText = sendError;
            return 0;
        }
        if (absences > 0) {
            --absences;
            ++returned;
            errorText = QStringLiteral("away and back");
            return 0;
        }
        if (refusals > 0) {
            --refusals;
            errorText = QStringLiteral("aborted");
            return 0;
        }
        if (accepts >= 0 && accepts < message.size()) {
            errorText = QStringLiteral("full");
            return accepts;
        }
        sent.push_back(message);
        m_clock.sleepUntil(m_clock.now() + message.size() * microsecondsPerByte);
        if (answer)
            answer(message, static_cast<int>(sent.size()) - 1);
        return message.size();
    }

    hx::MidiChunk receive(hx::Microseconds deadline) override
    {
        errorText.clear();
        if (receives++ == 0 && onFirstReceive)
            onFirstReceive();
        const auto next = m_arriving.begin();
        if (next != m_arriving.end() && next->first <= std::max(deadline, m_clock.now())) {
            m_clock.sleepUntil(next->first);
            const hx::MidiChunk chunk = next->second;
            m_arriving.erase(next);
            return chunk;
        }
        if (lostAt >= 0 && deadline >= lostAt) {
            m_clock.sleepUntil(lostAt);
            errorText = QStringLiteral("unplugged");
            return {};
        }
        m_clock.sleepUntil(deadline);
        return {};
    }

    bool isGone() const override { return isUnplugged; }
    int returns() const override { return returned; }

    // Bytes that arrive `delay` microseconds from now, in one chunk.
    void arrive(const QByteArray& bytes, hx::Microseconds delay = 0)
    {
        arriveAfterLoss(bytes, 0, delay);
    }

    // The same; before these bytes the port lost `lost` others.
    void arriveAfterLoss(const QByteArray& bytes, qint64 lost, hx::Microseconds delay = 0)
    {
        const hx::Microseconds time = m_clock.now() + delay;
        m_arriving.emplace(time, hx::MidiChunk{bytes, time, lost});
    }

    // Called after each message that is sent, with its bytes and its index.
    std::function<void(const QByteArray&, int)> answer;
    std::function<void()> onFirstReceive;

    std::vector<QByteArray> sent;
    QString sendError;            // sending fails with this from now on, unless empty
    int refusals = 0;             // messages that it does not take before it does
    int absences = 0;             // messages at which it goes away and comes back
    int returned = 0;             // how often it has come back
    bool isUnplugged = false;     // what it says of itself
    qint64 accepts = -1;          // bytes that it takes of a message; -1: all
    hx::Microseconds lostAt = -1; // the port is gone from here on; -1: never
    hx::Microseconds microsecondsPerByte = 0;
    int receives = 0;

private:
    hx::ManualClock m_clock;
    std::multimap<hx::Microseconds, hx::MidiChunk> m_arriving;
};

// One direction of a MIDI connection that changes the messages a scenario strikes.
#pragma once

#include "host/base/Clock.h"
#include "tests/sweep/Scenario.h"

#include <QByteArray>

#include <vector>

namespace sweep {

// Bytes that travel in one piece, and what happens when they have arrived.
struct Piece {
    enum class Then { Nothing, Vanish, PowerOff, Deaf };

    QByteArray bytes;
    hx::Microseconds notBefore = 0; // after the command was sent
    Then then = Then::Nothing;
};

using Pieces = std::vector<Piece>;

class FaultyLane {
public:
    FaultyLane(Direction direction, const Scenario& scenario)
        : m_direction(direction), m_scenario(scenario)
    {
    }

    // What becomes of the next message on this lane.
    Pieces pass(const QByteArray& message);

    // Whether the message that passed last is one that the scenario strikes.
    bool isStruck() const;

    // From now on nothing is changed; what was held back is lost.
    void repair();

private:
    Pieces struck(const QByteArray& message);
    Pieces heldBack(const QByteArray& head, const QByteArray& tail);
    Pieces split(const QByteArray& message) const;
    QByteArray changed(const QByteArray& head, const QByteArray& tail) const;

    Direction m_direction;
    Scenario m_scenario;
    std::vector<QByteArray> m_history;
    QByteArray m_before;  // comes with the next message, in front of it
    QByteArray m_instead; // takes the place of the next message's first bytes
    QByteArray m_after;   // comes after the next message
};

} // namespace sweep

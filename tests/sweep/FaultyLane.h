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

    explicit Piece(const QByteArray& all = QByteArray()) : bytes(all) {}

    QByteArray bytes;
    hx::Microseconds notBefore = 0; // after the command was sent
    hx::Microseconds pause = 0;     // after the piece in front of it
    Then then = Then::Nothing;
    hx::Microseconds duration = 0; // of deafness
    std::vector<Fault> atEnd; // faults of who hears it that strike with the message's last piece
    std::vector<Fault> atHearing; // and those that strike with each piece
};

using Pieces = std::vector<Piece>;

class FaultyLane {
public:
    FaultyLane(Direction direction, const Scenario& scenario);

    // The faults that will strike the next message on this lane.
    std::vector<Fault> strikingNext(Topic topic) const;

    // What becomes of the next message on this lane.
    Pieces pass(const QByteArray& message, Topic topic);

    // From now on nothing is changed; what was held back is lost.
    void repair();

private:
    Pieces struck(QByteArray message, const std::vector<Fault>& faults);
    QByteArray changed(const Fault& fault, const QByteArray& head, const QByteArray& tail);

    std::vector<Fault> m_faults;
    std::vector<QByteArray> m_history;
    QByteArray m_before;  // comes with the next message, in front of it
    QByteArray m_instead; // takes the place of the next message's first bytes
    QByteArray m_after;   // comes after the next message
};

} // namespace sweep

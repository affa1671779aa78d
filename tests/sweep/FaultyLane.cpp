#include "tests/sweep/FaultyLane.h"

#include <utility>

namespace sweep {

bool FaultyLane::isStruck() const
{
    return m_scenario.fault != FaultKind::None && m_scenario.direction == m_direction &&
           m_scenario.hits(static_cast<int>(m_history.size()));
}

void FaultyLane::repair()
{
    m_scenario.fault = FaultKind::None;
    m_before.clear();
    m_instead.clear();
    m_after.clear();
}

Pieces FaultyLane::pass(const QByteArray& message)
{
    m_history.push_back(message);
    const QByteArray instead = std::exchange(m_instead, {});
    const QByteArray bytes = std::exchange(m_before, {}) + instead + message.mid(instead.size());
    const QByteArray after = std::exchange(m_after, {});
    Pieces pieces = isStruck() ? struck(bytes) : Pieces{{bytes}};
    if (!after.isEmpty())
        pieces.push_back({after});
    return pieces;
}

Pieces FaultyLane::struck(const QByteArray& message)
{
    const QByteArray head = message.left(m_scenario.byte);
    const QByteArray tail = message.mid(m_scenario.byte);
    switch (m_scenario.fault) {
    case FaultKind::Reorder:
    case FaultKind::Merge:
    case FaultKind::Splice:
        return heldBack(head, tail);
    case FaultKind::Delay:
        return {{head}, {tail, m_scenario.value}};
    case FaultKind::Split:
        return split(message);
    case FaultKind::Vanish:
        return {{head, 0, Piece::Then::Vanish}};
    case FaultKind::PowerOff:
        return {{head, 0, Piece::Then::PowerOff}, {tail}};
    case FaultKind::Deaf:
        return {{head, 0, Piece::Then::Deaf}, {tail}};
    default:
        return {{changed(head, tail)}};
    }
}

Pieces FaultyLane::heldBack(const QByteArray& head, const QByteArray& tail)
{
    if (m_scenario.fault == FaultKind::Reorder) {
        m_after = tail;
        return {{head}};
    }
    (m_scenario.fault == FaultKind::Merge ? m_before : m_instead) = head;
    return {};
}

Pieces FaultyLane::split(const QByteArray& message) const
{
    const int size = m_scenario.byte + 1;
    Pieces pieces;
    for (int start = 0; start < message.size(); start += size)
        pieces.push_back({message.mid(start, size)});
    return pieces;
}

QByteArray FaultyLane::changed(const QByteArray& head, const QByteArray& tail) const
{
    const char value = static_cast<char>(m_scenario.value);
    switch (m_scenario.fault) {
    case FaultKind::Drop:
        return head + tail.mid(1);
    case FaultKind::Duplicate:
        return head + tail.left(1) + tail;
    case FaultKind::Flip:
        return tail.isEmpty() ? head : head + static_cast<char>(tail.at(0) ^ value) + tail.mid(1);
    case FaultKind::Truncate:
        return head;
    case FaultKind::Insert:
        return head + value + tail;
    case FaultKind::Old:
        return m_scenario.value < static_cast<int>(m_history.size())
                   ? head + m_history[static_cast<std::size_t>(m_scenario.value - 1)] + tail
                   : head + tail;
    default:
        return head + tail;
    }
}

} // namespace sweep

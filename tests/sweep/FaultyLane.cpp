#include "tests/sweep/FaultyLane.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace sweep {

namespace {

// Cuts so that a piece begins at `position` of the message, and returns the number of those before.
std::size_t cutAt(Pieces& pieces, int position)
{
    std::size_t index = 0;
    while (index < pieces.size() && position >= pieces[index].bytes.size())
        position -= static_cast<int>(pieces[index++].bytes.size());
    if (index == pieces.size() || position == 0)
        return index;
    Piece head = pieces[index];
    head.atEnd.clear();
    head.bytes.truncate(position);
    pieces[index].bytes.remove(0, position);
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(index), head);
    return index + 1;
}

void delay(Pieces& pieces, const Fault& fault)
{
    for (std::size_t i = cutAt(pieces, fault.byte); i < pieces.size(); ++i)
        pieces[i].notBefore = std::max<hx::Microseconds>(pieces[i].notBefore, fault.value);
}

void split(Pieces& pieces, const Fault& fault)
{
    const int size = fault.byte + 1;
    int position = size;
    while (cutAt(pieces, position) < pieces.size())
        position += size;
}

void cutIntoPackets(Pieces& pieces, const Fault& fault)
{
    const int size = std::max(fault.byte, 1);
    for (int position = size;; position += size) {
        const std::size_t index = cutAt(pieces, position);
        if (index >= pieces.size())
            break;
        pieces[index].pause = fault.value;
    }
}

void interrupt(Pieces& pieces, const Fault& fault, Piece::Then then)
{
    const std::size_t index = cutAt(pieces, fault.byte);
    Piece event;
    event.notBefore = pieces[std::min(index, pieces.size() - 1)].notBefore;
    event.then = then;
    event.duration = fault.value;
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(index), event);
}

void cut(Pieces& pieces, const Fault& fault)
{
    switch (fault.kind) {
    case FaultKind::Delay:
        return delay(pieces, fault);
    case FaultKind::Split:
        return split(pieces, fault);
    case FaultKind::Packets:
        return cutIntoPackets(pieces, fault);
    case FaultKind::Vanish:
        return interrupt(pieces, fault, Piece::Then::Vanish);
    case FaultKind::PowerOff:
        return interrupt(pieces, fault, Piece::Then::PowerOff);
    case FaultKind::Deaf:
        return interrupt(pieces, fault, Piece::Then::Deaf);
    case FaultKind::BadCell:
    case FaultKind::Refuse:
    case FaultKind::Answer:
        pieces.back().atEnd.push_back(fault);
        return;
    case FaultKind::PowerCut:
    case FaultKind::HalfWrite:
    case FaultKind::UnsteadyWrite:
    case FaultKind::OtherModel:
        for (Piece& piece : pieces)
            piece.atHearing.push_back(fault);
        pieces.back().atEnd.push_back(fault);
        return;
    default:
        return;
    }
}

} // namespace

FaultyLane::FaultyLane(Direction direction, const Scenario& scenario)
{
    std::copy_if(scenario.faults.begin(), scenario.faults.end(), std::back_inserter(m_faults),
                 [direction](const Fault& fault) { return fault.direction == direction; });
}

std::vector<Fault> FaultyLane::strikingNext(Topic topic) const
{
    const int ordinal = static_cast<int>(m_history.size()) + 1;
    std::vector<Fault> striking;
    std::copy_if(m_faults.begin(), m_faults.end(), std::back_inserter(striking),
                 [&](const Fault& fault) { return fault.hits(ordinal, topic); });
    return striking;
}

void FaultyLane::repair()
{
    m_faults.clear();
    m_before.clear();
    m_instead.clear();
    m_after.clear();
}

Pieces FaultyLane::pass(const QByteArray& message, Topic topic)
{
    const std::vector<Fault> faults = strikingNext(topic);
    m_history.push_back(message);
    const QByteArray instead = std::exchange(m_instead, {});
    const QByteArray bytes = std::exchange(m_before, {}) + instead + message.mid(instead.size());
    const QByteArray after = std::exchange(m_after, {});
    Pieces pieces = struck(bytes, faults);
    if (!after.isEmpty())
        pieces.emplace_back(after);
    return pieces;
}

// First what changes the bytes, then what happens while they travel.
Pieces FaultyLane::struck(QByteArray message, const std::vector<Fault>& faults)
{
    for (const Fault& fault : faults)
        message = changed(fault, message.left(fault.byte), message.mid(fault.byte));
    Pieces pieces = {Piece(message)};
    for (const Fault& fault : faults)
        cut(pieces, fault);
    return pieces;
}

QByteArray FaultyLane::changed(const Fault& fault, const QByteArray& head, const QByteArray& tail)
{
    const char value = static_cast<char>(fault.value);
    const auto old = static_cast<std::size_t>(fault.value);
    switch (fault.kind) {
    case FaultKind::Drop:
        return head + tail.mid(1);
    case FaultKind::Duplicate:
        return head + tail.left(1) + tail;
    case FaultKind::Flip:
        return tail.isEmpty() ? head : head + static_cast<char>(tail.at(0) ^ value) + tail.mid(1);
    case FaultKind::Truncate:
    case FaultKind::Abort:
        return head;
    case FaultKind::Cap:
        return (head + tail).left(fault.value);
    case FaultKind::Insert:
        return head + value + tail;
    case FaultKind::Old: // its own number: the message comes twice
        return head + (old >= 1 && old <= m_history.size() ? m_history[old - 1] : QByteArray()) +
               tail;
    case FaultKind::Reorder:
        m_after += tail;
        return head;
    case FaultKind::Merge:
        m_before += head;
        return QByteArray();
    case FaultKind::Splice:
        m_instead += head;
        return QByteArray();
    default:
        return head + tail;
    }
}

} // namespace sweep

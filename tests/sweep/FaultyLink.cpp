#include "tests/sweep/FaultyLink.h"

#include <algorithm>

namespace sweep {

namespace {

constexpr quint8 otherModel = 0x42;
constexpr int modelAt = 5;
constexpr int modelInIdentityAt = 10;
const QByteArray identityHead = QByteArray::fromHex("F07E");

} // namespace

void FaultyLink::repair()
{
    m_scenario.fault = FaultKind::None;
    m_out.repair();
    m_in.repair();
    m_deafUntil = 0;
    m_isGone = false;
    m_record.clear();
}

bool FaultyLink::isPresent()
{
    errorText.clear();
    if (!m_isGone)
        return true;
    errorText = QStringLiteral("the cable was pulled");
    m_record.push_back({WireEvent::Kind::Lost, m_clock.now(), QByteArray()});
    return false;
}

bool FaultyLink::send(const QByteArray& message)
{
    if (!isPresent())
        return false;
    m_command = message;
    moveTo(m_clock.now() + message.size() * byteTime);
    m_sentAt = m_clock.now();
    m_record.push_back({WireEvent::Kind::Sent, m_sentAt, message});
    const Pieces pieces = m_out.pass(message);
    for (const Piece& piece : pieces) {
        if (piece.notBefore > 0)
            m_travelling.emplace(m_sentAt + piece.notBefore, Travelling{Direction::Out, piece});
        else
            hear(piece);
    }
    return isPresent();
}

// Bytes reach the product while the host does not listen.
void FaultyLink::moveTo(hx::Microseconds time)
{
    for (;;) {
        const auto next = std::find_if(m_travelling.begin(), m_travelling.end(), [](const auto& t) {
            return t.second.direction == Direction::Out;
        });
        if (next == m_travelling.end() || next->first > time)
            break;
        m_clock.sleepUntil(next->first);
        const Piece piece = next->second.piece;
        m_travelling.erase(next);
        hear(piece);
    }
    m_clock.sleepUntil(time);
}

hx::MidiChunk FaultyLink::receive(hx::Microseconds deadline)
{
    while (isPresent()) {
        const auto next = m_travelling.begin();
        if (next == m_travelling.end() || next->first > std::max(deadline, m_clock.now())) {
            m_clock.sleepUntil(deadline);
            return {};
        }
        m_clock.sleepUntil(next->first);
        const hx::Microseconds time = next->first;
        const Travelling arrived = next->second;
        m_travelling.erase(next);
        if (arrived.direction == Direction::Out) {
            hear(arrived.piece);
            continue;
        }
        happen(arrived.piece.then);
        if (arrived.piece.bytes.isEmpty())
            continue;
        m_record.push_back({WireEvent::Kind::Arrived, time, arrived.piece.bytes});
        return {arrived.piece.bytes, time};
    }
    return {};
}

void FaultyLink::hear(const Piece& piece)
{
    if (m_clock.now() >= m_deafUntil && !m_isGone)
        hearMessage(piece.bytes);
    happen(piece.then);
}

// The faults that lie in the product, not on the way to it, happen here.
void FaultyLink::hearMessage(const QByteArray& bytes)
{
    const FaultKind fault = m_out.isStruck() ? m_scenario.fault : FaultKind::None;
    if (fault == FaultKind::Refuse || fault == FaultKind::Answer) {
        m_product.receive(bytes.left(m_scenario.byte));
        return answer(falseAnswer(), m_product.settings().replyDelayUs);
    }
    if (fault == FaultKind::PowerCut)
        m_product.failPowerAfter(m_scenario.value);
    const quint8 model = m_product.identity().model;
    if (fault == FaultKind::OtherModel)
        m_product.setModel(otherModel);
    const QVector<hx::sim::SimulatedReply> replies = m_product.receive(bytes);
    m_product.setModel(model);
    if (fault == FaultKind::BadCell)
        m_product.damageCode(m_scenario.value);
    if (fault == FaultKind::PowerCut)
        return m_product.powerCycle(); // behind the last write too: the answer is lost
    for (const hx::sim::SimulatedReply& reply : replies)
        answer(reply.bytes, reply.delayUs);
}

void FaultyLink::answer(const QByteArray& message, hx::Microseconds delay)
{
    if (message.isEmpty())
        return;
    Pieces pieces = m_in.pass(message);
    if (m_in.isStruck() && m_scenario.fault == FaultKind::OtherModel)
        pieces = {{asOtherModel(message)}};
    if (m_in.isStruck() &&
        (m_scenario.fault == FaultKind::Refuse || m_scenario.fault == FaultKind::Answer))
        pieces = {{message.left(m_scenario.byte) + falseAnswer()}};
    hx::Microseconds arrival = m_clock.now() + delay;
    for (Piece& piece : pieces) {
        if (m_isGone || m_clock.now() < m_deafUntil)
            return;
        arrival += piece.bytes.size() * byteTime;
        arrival = std::max(arrival, piece.notBefore > 0 ? m_sentAt + piece.notBefore : 0);
        if (piece.then == Piece::Then::PowerOff || piece.then == Piece::Then::Deaf) {
            happen(piece.then); // while it sends: the rest is not sent
            m_travelling.emplace(arrival, Travelling{Direction::In, {piece.bytes}});
            return;
        }
        m_travelling.emplace(arrival, Travelling{Direction::In, piece});
    }
}

void FaultyLink::happen(Piece::Then then)
{
    switch (then) {
    case Piece::Then::Nothing:
        break;
    case Piece::Then::Vanish:
        m_isGone = true;
        m_travelling.clear();
        break;
    case Piece::Then::PowerOff:
        m_product.powerCycle();
        break;
    case Piece::Then::Deaf:
        m_deafUntil = m_clock.now() + m_scenario.value;
    }
}

// The refusal of the command under way, or its acknowledgement with another status.
QByteArray FaultyLink::falseAnswer() const
{
    if (m_command.size() <= commandAt || m_command.startsWith(identityHead))
        return QByteArray();
    const bool isClosing = m_command.size() == commandAt + 1;
    QByteArray answer = m_command.left(commandAt);
    answer.append(isClosing ? static_cast<char>(hx::sim::kindFwu) : m_command.at(commandAt));
    if (m_scenario.fault == FaultKind::Refuse)
        return answer.append('\x46').append('\xF7');
    return answer.append('\x0C').append(static_cast<char>(m_scenario.value)).append('\xF7');
}

QByteArray FaultyLink::asOtherModel(QByteArray reply) const
{
    reply[reply.startsWith(identityHead) ? modelInIdentityAt : modelAt] =
        static_cast<char>(otherModel);
    return reply;
}

} // namespace sweep

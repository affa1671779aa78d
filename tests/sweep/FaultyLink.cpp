#include "tests/sweep/FaultyLink.h"

#include <algorithm>

namespace sweep {

namespace {

constexpr quint8 otherModel = 0x42;
constexpr int modelAt = 5;
constexpr int modelInIdentityAt = 10;
const QByteArray identityHead = QByteArray::fromHex("F07E");

constexpr char dataCommand = 0x0A;
constexpr char checkCommand = 0x0C;

bool isGoodAcknowledgement(const QByteArray& reply)
{
    return reply.size() == commandAt + 4 && reply.mid(commandAt + 1, 2) == QByteArray("\x0C\0", 2);
}

bool isPowerCut(const Fault& fault)
{
    return fault.kind == FaultKind::PowerCut || fault.kind == FaultKind::HalfWrite ||
           fault.kind == FaultKind::UnsteadyWrite;
}

hx::sim::CutWrite cutWriteOf(FaultKind kind)
{
    if (kind == FaultKind::HalfWrite)
        return hx::sim::CutWrite::Half;
    return kind == FaultKind::UnsteadyWrite ? hx::sim::CutWrite::Unsteady
                                            : hx::sim::CutWrite::Nothing;
}

bool isAbort(const Fault& fault)
{
    return fault.kind == FaultKind::Abort;
}

bool isFalseAnswer(const Fault& fault)
{
    return fault.kind == FaultKind::Refuse || fault.kind == FaultKind::Answer;
}

QByteArray asOtherModel(QByteArray reply)
{
    const int at = reply.startsWith(identityHead) ? modelInIdentityAt : modelAt;
    if (at < reply.size())
        reply[at] = static_cast<char>(otherModel);
    return reply;
}

} // namespace

Topic topicOf(const QByteArray& command)
{
    if (command.startsWith(identityHead))
        return Topic::Identity;
    if (command.size() == commandAt + 1)
        return Topic::Closing;
    if (command.size() < commandAt + 2)
        return Topic::Any;
    switch (command.at(commandAt)) {
    case '\x2E':
        return Topic::Version;
    case '\x30':
        return Topic::Stored;
    case '\x31':
        return Topic::Calculated;
    default:
        break;
    }
    const char subCommand = command.at(commandAt + 1);
    if (subCommand == checkCommand)
        return Topic::Check;
    return subCommand == dataCommand ? Topic::Data : Topic::Any;
}

bool isSameCode(const hx::sim::StoredCode& a, const hx::sim::StoredCode& b)
{
    return a.valid == b.valid && a.bytes == b.bytes && a.version == b.version && a.crc == b.crc;
}

void FaultyLink::repair()
{
    m_out.repair();
    m_in.repair();
    for (auto& travelling : m_travelling)
        travelling.second.piece = Piece(travelling.second.piece.bytes);
    if (m_outFree > m_clock.now() || m_inFree > m_clock.now())
        m_travelling.clear(); // a driver drops what it still holds when the port is closed
    m_outFree = m_inFree = 0;
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

qint64 FaultyLink::send(const QByteArray& message)
{
    if (!isPresent())
        return 0;
    m_command = message;
    moveTo(m_clock.now() + message.size() * byteTime);
    m_sentAt = m_clock.now();
    m_record.push_back({WireEvent::Kind::Sent, m_sentAt, message});
    const Topic topic = topicOf(message);
    const std::vector<Fault> faults = m_out.strikingNext(topic);
    const auto refused = std::find_if(faults.begin(), faults.end(), isFalseAnswer);
    carry(m_out.pass(refused == faults.end() ? message : message.left(refused->byte), topic));
    const auto aborted = std::find_if(faults.begin(), faults.end(), isAbort);
    if (aborted == faults.end())
        return isPresent() ? message.size() : 0;
    m_record.back().kind = WireEvent::Kind::Lost;
    errorText = QStringLiteral("the driver gave the message up");
    return std::min<qint64>(aborted->byte, message.size() - 1);
}

// Packets stay in their order, also with those of the message before.
void FaultyLink::carry(const Pieces& pieces)
{
    hx::Microseconds free = std::max(m_outFree, m_sentAt);
    for (const Piece& piece : pieces) {
        free += piece.pause;
        const hx::Microseconds arrival =
            piece.notBefore > 0 ? m_sentAt + piece.notBefore : std::max(free, m_sentAt);
        if (arrival > m_sentAt)
            m_travelling.emplace(arrival, Travelling{Direction::Out, piece});
        else
            hear(piece);
        m_outFree = piece.pause > 0 ? free : m_outFree;
    }
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
        happen(arrived.piece);
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
        hearBytes(piece);
    happen(piece);
}

// The faults that lie in the product, not on the way to it, happen here.
void FaultyLink::hearBytes(const Piece& piece)
{
    const quint8 model = m_product.sound().identity().model;
    for (const Fault& fault : piece.atHearing) {
        if (isPowerCut(fault))
            m_product.failPowerAfter(fault.value, cutWriteOf(fault.kind));
        else
            m_product.sound().setModel(otherModel);
    }
    QVector<hx::sim::SimulatedReply> replies = m_product.receive(piece.bytes);
    m_product.sound().setModel(model);
    m_product.failPowerAfter(-1);
    noteValidCode();
    for (const Fault& fault : piece.atEnd) {
        if ((isPowerCut(fault) && !m_product.answersFirst()) || isFalseAnswer(fault))
            replies.clear(); // power fails behind the last write too: the answer is lost
    }
    for (const hx::sim::SimulatedReply& reply : replies) {
        if (isGoodAcknowledgement(reply.bytes))
            m_acknowledged.push_back({piece.bytes, m_product.code()});
        answer(reply.bytes, reply.delayUs);
        if (topicOf(reply.bytes) == Topic::Calculated)
            m_codeWhenCalculated = m_product.code();
    }
    strikeAtEnd(piece.atEnd);
}

// What it holds, and what it would hold at the next look: an unsteady bit may be another one then.
void FaultyLink::noteValidCode()
{
    hx::sim::SimulatedProduct look = m_product.sound();
    look.receive(identityHead + QByteArray::fromHex("7F0601F7"));
    for (const hx::sim::StoredCode& code : {m_product.code(), look.code()}) {
        if (code.valid && (m_validCodes.empty() || !isSameCode(m_validCodes.back(), code)))
            m_validCodes.push_back(code);
    }
}

void FaultyLink::strikeAtEnd(const std::vector<Fault>& faults)
{
    for (const Fault& fault : faults) {
        if (isPowerCut(fault))
            m_product.powerCycle();
        noteValidCode();
        if (fault.kind == FaultKind::BadCell)
            m_product.sound().damageCode(fault.value);
        if (isFalseAnswer(fault))
            answer(falseAnswer(fault), m_product.sound().settings().replyDelayUs);
    }
}

QByteArray FaultyLink::falsified(QByteArray reply)
{
    for (const Fault& fault : m_in.strikingNext(topicOf(m_command))) {
        if (fault.kind == FaultKind::OtherModel)
            reply = asOtherModel(reply);
        if (isFalseAnswer(fault))
            reply = reply.left(fault.byte) + falseAnswer(fault);
        const bool isGarbled = fault.kind == FaultKind::Garble && m_clock.now() < fault.value;
        if (isGarbled && fault.byte < reply.size())
            reply[fault.byte] = static_cast<char>(reply.at(fault.byte) ^ garbleMask);
    }
    return reply;
}

void FaultyLink::answer(const QByteArray& message, hx::Microseconds delay)
{
    if (message.isEmpty())
        return;
    const Pieces pieces = m_in.pass(falsified(message), topicOf(m_command));
    hx::Microseconds arrival = std::max(m_clock.now() + delay, m_inFree);
    for (const Piece& piece : pieces) {
        if (m_isGone || m_clock.now() < m_deafUntil)
            return;
        if (piece.then == Piece::Then::PowerOff || piece.then == Piece::Then::Deaf)
            return happen(piece); // while it sends: the rest is not sent
        arrival += piece.bytes.size() * byteTime + piece.pause;
        arrival = std::max(arrival, piece.notBefore > 0 ? m_sentAt + piece.notBefore : 0);
        m_travelling.emplace(arrival, Travelling{Direction::In, piece});
        m_inFree = piece.pause > 0 ? arrival : m_inFree;
    }
}

void FaultyLink::happen(const Piece& piece)
{
    switch (piece.then) {
    case Piece::Then::Nothing:
        break;
    case Piece::Then::Vanish:
        m_isGone = true;
        m_travelling.clear();
        break;
    case Piece::Then::PowerOff:
        m_product.powerCycle();
        noteValidCode();
        break;
    case Piece::Then::Deaf:
        m_deafUntil = m_clock.now() + piece.duration;
    }
}

// The refusal of the command under way, or its acknowledgement with another status.
QByteArray FaultyLink::falseAnswer(const Fault& fault) const
{
    if (m_command.size() <= commandAt || m_command.startsWith(identityHead))
        return QByteArray();
    const bool isClosing = m_command.size() == commandAt + 1;
    QByteArray answer = m_command.left(commandAt);
    answer.append(isClosing ? static_cast<char>(hx::sim::kindFwu) : m_command.at(commandAt));
    if (fault.kind == FaultKind::Refuse)
        return answer.append('\x46').append('\xF7');
    return answer.append('\x0C').append(static_cast<char>(fault.value)).append('\xF7');
}

} // namespace sweep

#include "simulator/FaultyProduct.h"

#include "qt/Saturated.h"
#include "simulator/MessageForm.h"

#include <algorithm>
#include <utility>

namespace hx::sim {

namespace {

const QByteArray noiseBytes = QByteArray::fromHex("F8FE"); // clock, active sensing

// The place in `bytes` that a fault names; -1 is the last byte. May lie outside.
int placeIn(const QByteArray& bytes, const Fault& fault)
{
    return fault.position < 0 ? saturated(bytes.size()) + fault.position : fault.position;
}

void damage(QByteArray* bytes, const Fault& fault)
{
    const int place = placeIn(*bytes, fault);
    if (place >= 0 && place < bytes->size())
        (*bytes)[place] = static_cast<char>(bytes->at(place) ^ fault.value);
}

void cut(QByteArray* bytes, const Fault& fault)
{
    bytes->truncate(qMax(0, placeIn(*bytes, fault)));
}

void insert(QByteArray* bytes, const Fault& fault)
{
    bytes->insert(qBound(0, placeIn(*bytes, fault), bytes->size()), static_cast<char>(fault.value));
}

void addNoise(QByteArray* bytes)
{
    bytes->insert(bytes->size() / 2, noiseBytes);
    bytes->prepend(noiseBytes).append(noiseBytes);
}

// What a fault makes of a message on its way to the product.
void changeMessage(const Fault& fault, QByteArray* message)
{
    switch (fault.kind) {
    case FaultKind::Silent:
        message->clear();
        break;
    case FaultKind::DuplicateMessage:
        message->append(*message);
        break;
    case FaultKind::DamageMessage:
        damage(message, fault);
        break;
    case FaultKind::CutMessage:
        cut(message, fault);
        break;
    case FaultKind::InsertMessage:
        insert(message, fault);
        break;
    default:
        break;
    }
}

// What a fault makes of a reply on its way to the host.
void changeReply(const Fault& fault, SimulatedReply* reply)
{
    constexpr qint64 usPerMs = 1000;
    switch (fault.kind) {
    case FaultKind::DamageReply:
        damage(&reply->bytes, fault);
        break;
    case FaultKind::CutReply:
        cut(&reply->bytes, fault);
        break;
    case FaultKind::InsertReply:
        insert(&reply->bytes, fault);
        break;
    case FaultKind::DelayReply:
        reply->delayUs += fault.value * usPerMs;
        break;
    case FaultKind::Noise:
        addNoise(&reply->bytes);
        break;
    default:
        break;
    }
}

QByteArray shortForm(const QByteArray& message, int kept, const QByteArray& rest)
{
    return message.left(kept) + rest + sysExEnd;
}

QByteArray ackWith(const QByteArray& message, char status)
{
    const bool isClosing = message.size() == commandAt + 1;
    const char kind = isClosing ? static_cast<char>(kindFwu) : message.at(commandAt);
    return shortForm(message, commandAt, QByteArray(1, kind) + '\x0C' + status);
}

} // namespace

const Fault* FaultyProduct::find(FaultKind kind, int ordinal) const
{
    const auto found = std::find_if(m_plan.cbegin(), m_plan.cend(), [=](const Fault& fault) {
        return fault.kind == kind && fault.strikes(ordinal);
    });
    return found == m_plan.cend() ? nullptr : &*found;
}

QVector<SimulatedReply> FaultyProduct::receive(const QByteArray& bytes)
{
    Replies replies;
    const QVector<QByteArray> messages = m_reader.take(bytes);
    for (const QByteArray& message : messages) {
        const Replies answers = receiveMessage(message);
        for (const SimulatedReply& answer : answers)
            replies += send(answer);
    }
    return replies;
}

QByteArray FaultyProduct::unaskedBytes() const
{
    const bool isNoisy = std::any_of(m_plan.cbegin(), m_plan.cend(), [](const Fault& fault) {
        return fault.kind == FaultKind::Noise;
    });
    return isNoisy && !m_isGone ? noiseBytes : QByteArray();
}

FaultyProduct::Replies FaultyProduct::receiveMessage(const QByteArray& message)
{
    ++m_messages;
    m_isGone = m_isGone || find(FaultKind::Vanish, m_messages) != nullptr;
    if (m_isGone)
        return {};
    const bool isUpdate = m_product.isUpdateMessage(message);
    m_updateMessages += isUpdate ? 1 : 0;
    const QByteArray untrue = falseAnswer(message, isUpdate);
    if (!untrue.isEmpty())
        return {{untrue, m_product.settings().replyDelayUs}};
    const QByteArray heard = heardOf(message);
    const Fault* powerCut = find(FaultKind::PowerCut, m_updateMessages);
    if (isUpdate && powerCut != nullptr)
        return losePower(heard, powerCut->value);
    const bool isOtherModel = find(FaultKind::WrongModel, m_messages) != nullptr;
    const Replies replies = isOtherModel ? answerAsOtherModel(heard) : m_product.receive(heard);
    if (isUpdate && find(FaultKind::BadWrite, m_updateMessages) != nullptr)
        m_product.damageCode(saturated(m_product.codeBytes().size()) - 1);
    return replies;
}

QByteArray FaultyProduct::heardOf(const QByteArray& message) const
{
    QByteArray heard = message;
    for (const Fault& fault : m_plan)
        if (fault.strikes(m_messages))
            changeMessage(fault, &heard);
    return heard;
}

// An answer that is given instead of acting on the message. Only messages with a command can be
// refused.
QByteArray FaultyProduct::falseAnswer(const QByteArray& message, bool isUpdate) const
{
    const bool hasCommand = message.size() > commandAt + 1 && !message.startsWith(universalHead);
    if (hasCommand && find(FaultKind::Refuse, m_messages) != nullptr)
        return shortForm(message, commandAt + 1, QByteArray(1, refused));
    if (isUpdate && find(FaultKind::BadAck, m_updateMessages) != nullptr)
        return ackWith(message, 1);
    if (isUpdate && find(FaultKind::FailedAck, m_updateMessages) != nullptr)
        return ackWith(message, 2);
    return QByteArray();
}

// Before the first write or after the last one makes no other difference than what was written:
// the reply is lost in any case.
FaultyProduct::Replies FaultyProduct::losePower(const QByteArray& heard, int writes)
{
    if (writes == cutDuringWrites) {
        SimulatedProduct rehearsal = m_product;
        rehearsal.receive(heard);
        writes = static_cast<int>((rehearsal.memoryWrites() - m_product.memoryWrites()) / 2);
    }
    m_product.failPowerAfter(writes == cutAfterWrites ? -1 : writes);
    m_product.receive(heard);
    m_product.powerCycle();
    return {};
}

FaultyProduct::Replies FaultyProduct::answerAsOtherModel(QByteArray heard)
{
    const quint8 model = m_product.identity().model;
    const auto otherModel = static_cast<quint8>((model + 1) & 0x7F);
    if (heard.size() > modelAt && heard.at(modelAt) == static_cast<char>(model) &&
        !heard.startsWith(universalHead))
        heard[modelAt] = static_cast<char>(otherModel);
    m_product.setModel(otherModel);
    const Replies replies = m_product.receive(heard);
    m_product.setModel(model);
    return replies;
}

FaultyProduct::Replies FaultyProduct::send(const SimulatedReply& reply)
{
    ++m_replies;
    SimulatedReply sent = reply;
    for (const Fault& fault : m_plan)
        if (fault.strikes(m_replies))
            changeReply(fault, &sent);
    Replies replies = {sent};
    if (find(FaultKind::DuplicateReply, m_replies) != nullptr)
        replies.append(sent);
    if (find(FaultKind::DropReply, m_replies) != nullptr)
        replies.clear();
    return holdBack(replies);
}

// Sends what was held back, and holds back what a fault says; never more than one reply each way.
FaultyProduct::Replies FaultyProduct::holdBack(Replies replies)
{
    const Replies late = std::exchange(m_late, {});
    if (find(FaultKind::LateReply, m_replies) != nullptr)
        m_late = std::exchange(replies, {});
    replies = late + replies;
    const Replies swapped = std::exchange(m_swapped, {});
    if (swapped.isEmpty() && find(FaultKind::SwapReply, m_replies) != nullptr)
        m_swapped = std::exchange(replies, {});
    return replies + swapped;
}

} // namespace hx::sim

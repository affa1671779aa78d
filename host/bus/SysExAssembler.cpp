#include "host/bus/SysExAssembler.h"

#include "host/base/StatusByte.h"

#include <algorithm>

namespace hx {

namespace {

// Data bytes after a channel status: program change and channel pressure have one, others two.
int channelDataBytes(quint8 status)
{
    const int kind = status & 0xF0;
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
}

} // namespace

QString dropReasonText(DropReason reason)
{
    switch (reason) {
    case DropReason::None:
        break;
    case DropReason::StrayData:
        return QStringLiteral("data bytes that belong to no message");
    case DropReason::StrayEnd:
        return QStringLiteral("an F7 that ends no message");
    case DropReason::UndefinedStatus:
        return QStringLiteral("a status byte that MIDI leaves undefined");
    case DropReason::CutByStatus:
        return QStringLiteral("a message cut off by another status byte");
    case DropReason::CutByNewSysEx:
        return QStringLiteral("a message cut off by the F0 of the next");
    case DropReason::TooLong:
        return QStringLiteral("a message longer than the limit");
    case DropReason::Idle:
        return QStringLiteral("a message whose rest did not come in time");
    case DropReason::Abandoned:
        return QStringLiteral("a message still unfinished when the wait for it ended");
    case DropReason::InputLost:
        return QStringLiteral("input was lost here: more waited to be read than the port keeps");
    }
    return QString();
}

QByteArray AssembledEvent::message() const
{
    return runningStatus == 0 ? bytes : static_cast<char>(runningStatus) + bytes;
}

SysExAssembler::SysExAssembler(AssemblerLimits limits) : m_limits(limits)
{
    m_limits.maxBytes = qMax(m_limits.maxBytes, 2);
}

AssembledEvents SysExAssembler::feed(const QByteArray& bytes, Microseconds time)
{
    dropWhenIdle(time);
    if (isOneSysEx(bytes)) {
        takeOneSysEx(bytes, time);
    } else {
        for (const char byte : bytes)
            take(static_cast<quint8>(byte), time);
    }
    return std::exchange(m_events, {});
}

AssembledEvents SysExAssembler::idle(Microseconds now)
{
    dropWhenIdle(now);
    return std::exchange(m_events, {});
}

AssembledEvents SysExAssembler::lose(Microseconds time)
{
    giveUp(DropReason::InputLost);
    m_runningStatus = 0;
    AssembledEvent mark;
    mark.reason = DropReason::InputLost;
    mark.firstByte = mark.lastByte = time;
    m_events.push_back(mark);
    return std::exchange(m_events, {});
}

AssembledEvents SysExAssembler::flush(DropReason reason)
{
    giveUp(reason);
    return std::exchange(m_events, {});
}

void SysExAssembler::dropWhenIdle(Microseconds now)
{
    if (!m_pending.isEmpty() && now - m_lastByte > m_limits.idle)
        giveUp(DropReason::Idle);
}

// Whether nothing is under way and the chunk is one whole message, as most chunks are.
bool SysExAssembler::isOneSysEx(const QByteArray& bytes) const
{
    const auto size = bytes.size();
    if (m_state != State::Idle || !m_pending.isEmpty() || size < 2 || size > m_limits.maxBytes)
        return false;
    const char* data = bytes.constData();
    return static_cast<quint8>(data[0]) == sysExStart &&
           static_cast<quint8>(data[size - 1]) == sysExEnd &&
           std::none_of(data + 1, data + size - 1,
                        [](char byte) { return static_cast<quint8>(byte) >= firstStatus; });
}

// Equal to taking its bytes one by one, but shares the chunk instead of copying it.
void SysExAssembler::takeOneSysEx(const QByteArray& bytes, Microseconds time)
{
    m_pending = bytes;
    m_firstByte = m_lastByte = time;
    m_runningStatus = 0;
    emitPending(AssembledEvent::Kind::SysEx, DropReason::None);
}

// What comes after a pause or a flush continues nothing, so running status ends too.
void SysExAssembler::giveUp(DropReason reason)
{
    if (m_state == State::InShort)
        m_runningStatus = 0;
    endUnfinished(reason);
}

void SysExAssembler::take(quint8 byte, Microseconds time)
{
    if (byte >= firstRealTime)
        emitSingle(AssembledEvent::Kind::RealTime, byte, DropReason::None, time);
    else if (byte == sysExEnd)
        takeEnd(time);
    else if (byte >= firstStatus)
        takeStatus(byte, time);
    else
        takeData(byte, time);
}

void SysExAssembler::takeStatus(quint8 byte, Microseconds time)
{
    endUnfinished(byte == sysExStart ? DropReason::CutByNewSysEx : DropReason::CutByStatus);
    m_runningStatus = byte < firstSystem ? byte : 0;
    if (byte == sysExStart) {
        m_state = State::InSysEx;
        push(byte, time);
    } else if (byte < firstSystem) {
        startShort(0, channelDataBytes(byte));
        push(byte, time);
    } else {
        takeSystemCommon(byte, time);
    }
}

void SysExAssembler::takeSystemCommon(quint8 byte, Microseconds time)
{
    switch (byte) {
    case 0xF1: // quarter frame
    case 0xF3: // song select
        startShort(0, 1);
        push(byte, time);
        break;
    case 0xF2: // song position
        startShort(0, 2);
        push(byte, time);
        break;
    case 0xF6: // tune request
        emitSingle(AssembledEvent::Kind::Short, byte, DropReason::None, time);
        break;
    default:
        emitSingle(AssembledEvent::Kind::Dropped, byte, DropReason::UndefinedStatus, time);
    }
}

void SysExAssembler::takeEnd(Microseconds time)
{
    if (m_state == State::InSysEx || m_state == State::InTooLong) {
        takeSysExByte(sysExEnd, time);
        m_state == State::InSysEx ? complete(AssembledEvent::Kind::SysEx)
                                  : endUnfinished(DropReason::TooLong);
        return;
    }
    endUnfinished(DropReason::CutByStatus);
    m_runningStatus = 0;
    emitSingle(AssembledEvent::Kind::Dropped, sysExEnd, DropReason::StrayEnd, time);
}

void SysExAssembler::takeData(quint8 byte, Microseconds time)
{
    switch (m_state) {
    case State::InSysEx:
    case State::InTooLong:
        takeSysExByte(byte, time);
        break;
    case State::InShort:
        takeShortData(byte, time);
        break;
    case State::Idle:
        takeIdleData(byte, time);
    }
}

// Every full bound of bytes is reported and let go, so memory does not grow with the message.
void SysExAssembler::takeSysExByte(quint8 byte, Microseconds time)
{
    if (m_pending.size() >= m_limits.maxBytes) {
        drop(DropReason::TooLong);
        m_state = State::InTooLong;
    }
    push(byte, time);
}

void SysExAssembler::takeShortData(quint8 byte, Microseconds time)
{
    push(byte, time);
    if (--m_missingData == 0)
        complete(AssembledEvent::Kind::Short);
}

void SysExAssembler::takeIdleData(quint8 byte, Microseconds time)
{
    if (m_runningStatus != 0) {
        startShort(m_runningStatus, channelDataBytes(m_runningStatus));
        takeShortData(byte, time);
        return;
    }
    if (m_pending.size() >= m_limits.maxBytes)
        drop(DropReason::StrayData);
    push(byte, time);
}

void SysExAssembler::startShort(quint8 impliedStatus, int dataBytes)
{
    m_state = State::InShort;
    m_impliedStatus = impliedStatus;
    m_missingData = dataBytes;
}

void SysExAssembler::push(quint8 byte, Microseconds time)
{
    if (m_pending.isEmpty())
        m_firstByte = time;
    m_pending.append(static_cast<char>(byte));
    m_lastByte = time;
}

void SysExAssembler::complete(AssembledEvent::Kind kind)
{
    emitPending(kind, DropReason::None);
    m_state = State::Idle;
}

void SysExAssembler::drop(DropReason reason)
{
    emitPending(AssembledEvent::Kind::Dropped, reason);
}

// Bytes that were no message's keep their own reason, whatever ends them.
void SysExAssembler::endUnfinished(DropReason reason)
{
    if (m_state == State::Idle)
        reason = DropReason::StrayData;
    else if (m_state == State::InTooLong)
        reason = DropReason::TooLong;
    if (!m_pending.isEmpty())
        drop(reason);
    m_state = State::Idle;
}

void SysExAssembler::emitPending(AssembledEvent::Kind kind, DropReason reason)
{
    AssembledEvent event;
    event.kind = kind;
    event.bytes = std::exchange(m_pending, QByteArray());
    event.runningStatus = kind == AssembledEvent::Kind::Short ? m_impliedStatus : quint8(0);
    event.reason = reason;
    event.firstByte = m_firstByte;
    event.lastByte = m_lastByte;
    m_events.push_back(std::move(event));
}

void SysExAssembler::emitSingle(AssembledEvent::Kind kind, quint8 byte, DropReason reason,
                                Microseconds time)
{
    AssembledEvent event;
    event.kind = kind;
    event.bytes = QByteArray(1, static_cast<char>(byte));
    event.reason = reason;
    event.firstByte = event.lastByte = time;
    m_events.push_back(std::move(event));
}

} // namespace hx

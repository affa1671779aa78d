/** @file
 * Makes whole MIDI messages out of bytes that arrive cut anywhere, and accounts for every byte.
 */
#pragma once

#include "host/base/Clock.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace hx {

/** Why bytes that arrived became part of no message. */
enum class DropReason {
    None,
    StrayData,       /**< data bytes that follow no status byte */
    StrayEnd,        /**< an F7 that ends nothing */
    UndefinedStatus, /**< F4 or F5, which MIDI leaves undefined */
    CutByStatus,     /**< a message cut off by another status byte */
    CutByNewSysEx,   /**< a SysEx cut off by the F0 of the next */
    TooLong,         /**< a SysEx longer than the upper bound, up to its end */
    Idle,            /**< a message whose rest did not come within the idle limit */
    Abandoned,       /**< a message still unfinished when the receiver stopped waiting for it */
    InputLost,       /**< a message of which the port lost a part */
};

/** The reason in words, such as "cut off by the F0 of the next message". */
QString dropReasonText(DropReason reason);

/** What a run of input bytes turned out to be. */
struct AssembledEvent {
    enum class Kind {
        SysEx,    /**< a whole message, F0 to F7 */
        Short,    /**< a whole channel or system common message */
        RealTime, /**< one byte F8 to FF, wherever it stood */
        Dropped,  /**< bytes that are part of no message; `reason` says why */
    };

    Kind kind = Kind::Dropped;
    QByteArray bytes;         /**< exactly the input bytes that this event accounts for */
    quint8 runningStatus = 0; /**< of a Short whose status byte was left out; else 0 */
    DropReason reason = DropReason::None;
    Microseconds firstByte = 0; /**< arrival of the first and the last of `bytes` */
    Microseconds lastByte = 0;

    /** The message as if no status byte had been left out. */
    QByteArray message() const;
};

using AssembledEvents = std::vector<AssembledEvent>;

struct AssemblerLimits {
    int maxBytes = 65536; /**< longest SysEx, F0 and F7 included; at least 2 */
    Microseconds idle = 1000 * microsecondsPerMillisecond; /**< longest pause inside a message */
};

/**
 * One state machine for every port. Whatever comes in:
 *   - each byte is in exactly one event (after `flush`), in order within its message;
 *   - events depend on the bytes and their times alone, not on how they were cut into chunks;
 *   - after any garbage the next whole message arrives;
 *   - memory stays within `maxBytes` and the bytes of one chunk.
 */
class SysExAssembler {
public:
    explicit SysExAssembler(AssemblerLimits limits = {});

    /**
     * Takes bytes that arrived at `time`, and returns what they complete. Times never go backwards.
     */
    AssembledEvents feed(const QByteArray& bytes, Microseconds time);

    /** Tells that nothing has come until `now`: a message that has paused too long is dropped. */
    AssembledEvents idle(Microseconds now);

    /**
     * Tells that bytes were lost before what comes next. A message under way is given up, and data
     * bytes no longer follow an earlier status byte. The last event is a Dropped without bytes,
     * which marks the place.
     */
    AssembledEvents lose(Microseconds time);

    /** Gives up an unfinished message, reported with `reason`. */
    AssembledEvents flush(DropReason reason = DropReason::Abandoned);

    /** The bytes of the message under way; empty when there is none. */
    const QByteArray& pending() const { return m_pending; }

private:
    enum class State {
        Idle, /**< no message under way; m_pending may hold stray bytes */
        InSysEx,
        InShort,
        InTooLong, /**< inside a SysEx that has burst its bound */
    };

    bool isOneSysEx(const QByteArray& bytes) const;
    void takeOneSysEx(const QByteArray& bytes, Microseconds time);
    void dropWhenIdle(Microseconds now);
    void giveUp(DropReason reason);
    void take(quint8 byte, Microseconds time);
    void takeStatus(quint8 byte, Microseconds time);
    void takeSystemCommon(quint8 byte, Microseconds time);
    void takeEnd(Microseconds time);
    void takeData(quint8 byte, Microseconds time);
    void takeSysExByte(quint8 byte, Microseconds time);
    void takeShortData(quint8 byte, Microseconds time);
    void takeIdleData(quint8 byte, Microseconds time);
    void startShort(quint8 impliedStatus, int dataBytes);
    void push(quint8 byte, Microseconds time);
    void complete(AssembledEvent::Kind kind);
    void drop(DropReason reason);
    void endUnfinished(DropReason reason);
    void emitPending(AssembledEvent::Kind kind, DropReason reason);
    void emitSingle(AssembledEvent::Kind kind, quint8 byte, DropReason reason, Microseconds time);

    AssemblerLimits m_limits;
    State m_state = State::Idle;
    QByteArray m_pending;
    Microseconds m_firstByte = 0;
    Microseconds m_lastByte = 0;
    quint8 m_runningStatus = 0; /**< 0: none in force */
    quint8 m_impliedStatus = 0; /**< status left out of the Short under way */
    int m_missingData = 0;      /**< data bytes that the Short under way still needs */
    AssembledEvents m_events;
};

} // namespace hx

/** @file
 * One pair of MIDI connections, out to the product and in from it, whatever carries the bytes.
 */
#pragma once

#include "host/base/Clock.h"
#include "host/bus/PortIdentity.h"

#include <QByteArray>
#include <QString>

namespace hx {

/** A span of bytes as it arrived: any length, cut anywhere, stamped with the moment of arrival. */
struct MidiChunk {
    QByteArray bytes;
    Microseconds time = 0;
    qint64 lostBefore = 0; /**< bytes that arrived before these and were lost: too many waited */
};

class MidiPort {
public:
    virtual ~MidiPort() = default;

    /** The name a person chose the port by. */
    virtual QString name() const = 0;

    /** What the port is found again by. A port that has nothing else is known by its name. */
    virtual PortIdentity identity() const { return {QString(), QString(), name(), QString()}; }

    /** The clock by which this port stamps and waits. */
    virtual Clock& clock() = 0;

    /**
     * Sends one whole message, at the port's pace, and returns when its last byte is on its way.
     * Returns how many of its bytes the port accepted; fewer than all of them: `errorText` says
     * why. 0 when the port was away meanwhile and is back: `returns` then tells.
     */
    virtual qint64 send(const QByteArray& message) = 0;

    /**
     * Waits until all that was accepted has left this machine. False when `deadline` comes first or
     * the port is gone; `errorText` then says so. A port that holds nothing back has nothing to
     * wait for.
     */
    virtual bool drain(Microseconds /*deadline*/) { return true; }

    /** Whether the port went away: nothing travels through it any more. */
    virtual bool isGone() const { return false; }

    /** How often it went away and came back. Another product may be behind it since. */
    virtual int returns() const { return 0; }

    /**
     * Waits until bytes arrive or `deadline` has come; what has arrived already comes even when that
     * is long past. A chunk without bytes means that nothing came in time, or that the port is gone:
     * then `errorText` is not empty.
     */
    virtual MidiChunk receive(Microseconds deadline) = 0;

    /** Whether nothing can come any more although nothing failed: a recorded session is over. */
    virtual bool atEnd() const { return false; }

    /** Why the last operation failed; empty when it did not. */
    QString errorText;
};

} // namespace hx

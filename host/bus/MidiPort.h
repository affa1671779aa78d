/** @file
 * One pair of MIDI connections, out to the product and in from it, whatever carries the bytes.
 */
#pragma once

#include "host/base/Clock.h"

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

    /** The clock by which this port stamps and waits. */
    virtual Clock& clock() = 0;

    /**
     * Sends one whole message, at the port's pace, and returns when its last byte is on its way.
     * False when it could not be sent; `errorText` then says why.
     */
    virtual bool send(const QByteArray& message) = 0;

    /**
     * Waits until bytes arrive or `deadline` has come. A chunk without bytes means that nothing
     * came in time, or that the port is gone: then `errorText` is not empty.
     */
    virtual MidiChunk receive(Microseconds deadline) = 0;

    /** Whether nothing can come any more although nothing failed: a recorded session is over. */
    virtual bool atEnd() const { return false; }

    /** Why the last operation failed; empty when it did not. */
    QString errorText;
};

} // namespace hx

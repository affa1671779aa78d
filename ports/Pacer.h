/** @file
 * Lets a port send no faster than the wire, or the library under it, can take.
 */
#pragma once

#include "host/base/Clock.h"
#include "host/base/WirePace.h"

#include <deque>

namespace hx {

/** Output that the library buffers and loses without a word once its buffer is full. */
struct OutputBuffer {
    int bytes = 0;             /**< 0: no such buffer */
    int bytesPerMessage = 0;   /**< that the library adds to each message */
    Microseconds emptying = 0; /**< longest time until what was put in has left */
};

class Pacer {
public:
    Pacer(Clock& clock, const Pace& pace, const OutputBuffer& buffer = {});

    /** Returns when a message of `bytes` may be handed to the library. */
    void waitForTurn(int bytes);

    /** Tells that it was handed over, and returns when its last byte is on its way. */
    void waitForWire(int bytes);

    /**
     * Returns when nothing that was handed over can still be in the library's buffer. False when
     * `deadline` comes first.
     */
    bool drain(Microseconds deadline);

private:
    struct Sent {
        Microseconds leaves;
        int bytes;
    };

    int inBuffer();

    Clock& m_clock;
    Pace m_pace;
    OutputBuffer m_buffer;
    std::deque<Sent> m_sent;
    Microseconds m_wireFree = 0; /**< moment at which the last byte sent is on its way */
    Microseconds m_lastSent = 0;
    bool m_hasSent = false;
};

} // namespace hx

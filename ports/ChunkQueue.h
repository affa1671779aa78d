/** @file
 * Hands bytes from the thread on which a MIDI library delivers them to the one that waits for them.
 */
#pragma once

#include "host/bus/MidiPort.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

namespace hx {

class ChunkQueue {
public:
    /** Bytes that wait at most; what arrives above that is lost, as the next chunk says. */
    static constexpr qint64 maxBytes = qint64(4) * 1024 * 1024;

    void put(const MidiChunk& chunk);

    /** Waits at most `wait` for the oldest chunk. */
    std::optional<MidiChunk> take(Microseconds wait);

private:
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::deque<MidiChunk> m_chunks;
    qint64 m_bytes = 0;
    qint64 m_lost = 0; /**< since the last chunk was put */
};

} // namespace hx

#include "ports/ChunkQueue.h"

#include <chrono>
#include <utility>

namespace hx {

void ChunkQueue::put(const MidiChunk& chunk)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_bytes + chunk.bytes.size() > maxBytes) {
            m_lost += chunk.bytes.size();
            return;
        }
        m_bytes += chunk.bytes.size();
        m_chunks.push_back(chunk);
        m_chunks.back().lostBefore = std::exchange(m_lost, 0);
    }
    m_arrived.notify_one();
}

std::optional<MidiChunk> ChunkQueue::take(Microseconds wait)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const auto arrived = [this] { return !m_chunks.empty(); };
    if (!m_arrived.wait_for(lock, std::chrono::microseconds(wait > 0 ? wait : 0), arrived))
        return std::nullopt;
    MidiChunk chunk = m_chunks.front();
    m_chunks.pop_front();
    m_bytes -= chunk.bytes.size();
    return chunk;
}

} // namespace hx

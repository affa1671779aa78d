#include "ports/ChunkQueue.h"

#include <chrono>

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

qint64 ChunkQueue::takeLost()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const qint64 lost = m_lost;
    m_lost = 0;
    return lost;
}

} // namespace hx

#include "fuzz/support/FaultyWire.h"

namespace hx {
namespace fuzz {

namespace {

constexpr Microseconds wireDelay = 1000;
constexpr size_t mostChunks = 64;

// Faults by the byte that asks for them; anything lower is none.
enum Fault {
    firstFault = 0xB0,
    drop = 0xB0,
    change = 0xB8,
    twice = 0xC4,
    shorten = 0xCC,
    delay = 0xD4,
    insertBefore = 0xE0,
    replace = 0xE8,
    cut = 0xF0,
    losePower = 0xF8,
    losePort = 0xFE,
};

// Delays around the timeouts of the product's exchanges.
Microseconds delayOf(int value)
{
    return value * 12000;
}

} // namespace

bool FaultyWire::isPresent()
{
    errorText = m_isLost ? QStringLiteral("unplugged") : QString();
    return !m_isLost;
}

qint64 FaultyWire::send(const QByteArray& message)
{
    ++m_messagesSent;
    const int fault = nextFault();
    m_isLost = m_isLost || fault >= losePort;
    if (!isPresent())
        return 0;
    m_clock.sleepUntil(m_clock.now() + wireDelay);
    if (fault >= insertBefore && fault < cut) // somebody else answers, or answers too
        queue(m_input->take(1 + m_input->byte() % 32), false, wireDelay);
    if (fault < firstFault || (fault >= delay && fault < replace) || fault >= cut)
        hear(message);
    if (fault >= losePower && fault < losePort) {
        m_product.failPowerAfter(m_input->byte());
    } else if (fault >= change && fault < twice) {
        QByteArray changed = message;
        changed[m_input->byte() % changed.size()] = static_cast<char>(m_input->byte());
        hear(changed);
    } else if (fault >= twice && fault < shorten) {
        hear(message);
        hear(message);
    } else if (fault >= shorten && fault < delay) {
        hear(message.left(m_input->byte() % message.size()));
    }
    return message.size();
}

void FaultyWire::hear(const QByteArray& message)
{
    const QVector<sim::SimulatedReply> replies = m_product.receive(message);
    for (const sim::SimulatedReply& reply : replies)
        answer(reply.bytes);
}

void FaultyWire::answer(QByteArray reply)
{
    const int fault = nextFault();
    if (fault < firstFault)
        return queue(reply, true, wireDelay);
    if (fault < change)
        return;
    if (fault < twice) {
        reply[m_input->byte() % reply.size()] = static_cast<char>(m_input->byte());
        return queue(reply, false, wireDelay);
    }
    if (fault < shorten) {
        queue(reply, true, wireDelay);
        return queue(reply, true, delayOf(m_input->byte()));
    }
    if (fault < delay)
        return queue(reply.left(m_input->byte() % reply.size()), true, wireDelay);
    if (fault < insertBefore)
        return queue(reply, true, delayOf(m_input->byte()));
    if (fault < cut) {
        const QByteArray anything = m_input->take(1 + m_input->byte() % 32);
        queue(anything, false, wireDelay);
        return fault < replace ? queue(reply, true, wireDelay) : void();
    }
    const auto at = m_input->byte() % reply.size();
    if (fault >= losePower) // on the way back: a byte too many
        return queue(reply.insert(at, static_cast<char>(m_input->byte())), false, wireDelay);
    queue(reply.left(at), true, wireDelay);
    queue(reply.mid(at), true, delayOf(fault & 1 ? m_input->byte() : 0));
}

void FaultyWire::queue(const QByteArray& bytes, bool isGenuine, Microseconds delay)
{
    if (!bytes.isEmpty() && m_arriving.size() < mostChunks)
        m_arriving.emplace(m_clock.now() + delay, Chunk{bytes, isGenuine});
}

MidiChunk FaultyWire::receive(Microseconds deadline)
{
    if (!isPresent())
        return {};
    const auto next = m_arriving.begin();
    if (next == m_arriving.end() || next->first > qMax(deadline, m_clock.now())) {
        m_clock.sleepUntil(deadline);
        return {};
    }
    m_clock.sleepUntil(next->first);
    const Chunk chunk = next->second;
    const MidiChunk arrived{chunk.bytes, next->first};
    m_arriving.erase(next);
    note(chunk);
    return arrived;
}

void FaultyWire::note(const Chunk& chunk)
{
    for (const char byte : chunk.bytes) {
        if (static_cast<quint8>(byte) >= 0xF8)
            continue;
        m_heard += byte;
        m_provenance += chunk.isGenuine ? '\1' : '\0';
        if (!m_proof.isEmpty() && m_heard.endsWith(m_proof) &&
            m_provenance.right(m_proof.size()).contains('\0'))
            m_wasForged = true;
    }
    m_heard = m_heard.right(m_proof.size());
    m_provenance = m_provenance.right(m_proof.size());
}

} // namespace fuzz
} // namespace hx

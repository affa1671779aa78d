#include "tests/sweep/ProductOnTrial.h"

#include "tests/sweep/FaultyLink.h"

namespace sweep {

using Replies = QVector<hx::sim::SimulatedReply>;

Replies ProductOnTrial::receive(const QByteArray& bytes)
{
    if (m_flaw == nullptr)
        return m_product.receive(bytes);
    Replies replies;
    const QVector<QByteArray> messages = m_reader.take(bytes);
    for (const QByteArray& message : messages)
        replies += receiveMessage(message);
    return replies;
}

Replies ProductOnTrial::receiveMessage(QByteArray message)
{
    const Topic topic = topicOf(message);
    const bool isUpdate = m_product.isUpdateMessage(message);
    if (m_flaw->before != nullptr)
        m_flaw->before(m_product, message, topic);
    if (m_flaw->knowsNoRepetition && isUpdate && message == m_messageBefore)
        m_product.powerCycle();
    const hx::sim::StoredCode before = m_product.code();
    const hx::sim::SimulatedProduct asBefore = m_product;
    Replies replies = m_product.receive(message);
    const qint64 writes = m_product.memoryWrites() - asBefore.memoryWrites();
    const bool powerFailed = m_writesLeft >= 0 && isUpdate && replies.isEmpty();
    if (powerFailed && m_flaw->answersFirst) {
        hx::sim::SimulatedProduct rehearsal = asBefore;
        rehearsal.failPowerAfter(-1);
        replies = rehearsal.receive(message);
    }
    if (m_flaw->after != nullptr)
        m_flaw->after({m_product, replies, topic, message, m_messageBefore, before, m_fresh,
                       powerFailed, writes});
    if (isUpdate)
        m_messageBefore = message;
    return replies;
}

void ProductOnTrial::powerCycle()
{
    m_reader.clear();
    m_messageBefore.clear();
    m_product.powerCycle();
    if (m_flaw != nullptr && m_flaw->restarted != nullptr)
        m_flaw->restarted(m_product);
}

void ProductOnTrial::failPowerAfter(qint64 writes, hx::sim::CutWrite cut)
{
    m_writesLeft = writes;
    m_product.failPowerAfter(writes, cut);
}

} // namespace sweep

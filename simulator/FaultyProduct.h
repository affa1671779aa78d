/** @file
 * A simulated product on a bad day: its faults lie between it and the wire.
 */
#pragma once

#include "simulator/FaultPlan.h"
#include "simulator/SimulatedProduct.h"

namespace hx::sim {

/**
 * Messages, update messages and replies are counted from 1 since this object exists. The faults of
 * a plan act on a message in the plan's order, each on what the one before it has left.
 */
class FaultyProduct {
public:
    /** How often the noise fault sends bytes that nobody asked for. */
    static constexpr qint64 noisePeriodUs = 20000;

    explicit FaultyProduct(const SimulatedProduct& product, const FaultPlan& plan = {})
        : m_product(product), m_plan(plan)
    {
    }

    /** As SimulatedProduct::receive. Replies whose bytes are damaged are no whole messages. */
    QVector<SimulatedReply> receive(const QByteArray& bytes);

    /** Bytes that the product sends every `noisePeriodUs`, whatever it is sent; mostly none. */
    QByteArray unaskedBytes() const;

    /** The product was unplugged: it neither hears nor answers, and its port is gone. */
    bool isGone() const { return m_isGone; }

    SimulatedProduct& product() { return m_product; }
    const SimulatedProduct& product() const { return m_product; }

private:
    using Replies = QVector<SimulatedReply>;

    Replies receiveMessage(const QByteArray& message);
    QByteArray heardOf(const QByteArray& message) const;
    QByteArray falseAnswer(const QByteArray& message, bool isUpdate) const;
    Replies losePower(const QByteArray& heard, int writes);
    Replies answerAsOtherModel(QByteArray heard);
    Replies send(const SimulatedReply& reply);
    Replies holdBack(Replies replies);
    const Fault* find(FaultKind kind, int ordinal) const;

    SimulatedProduct m_product;
    FaultPlan m_plan;
    SysExReader m_reader;
    int m_messages = 0;
    int m_updateMessages = 0;
    int m_replies = 0;
    Replies m_late;
    Replies m_swapped;
    bool m_isGone = false;
};

} // namespace hx::sim

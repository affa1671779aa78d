// The simulated product as the sweep tries it: sound, or with a promise broken on purpose.
#pragma once

#include "simulator/SimulatedProduct.h"
#include "tests/sweep/Scenario.h"

namespace sweep {

// One message that the product has handled.
struct Handled {
    hx::sim::SimulatedProduct& product;
    QVector<hx::sim::SimulatedReply>& replies;
    Topic topic;
    const QByteArray& message;
    const QByteArray& messageBefore;   // the update message that it took before this one
    const hx::sim::StoredCode& before; // what the memory held before it
    const hx::sim::SimulatedProduct& fresh;
    bool powerFailed;
    qint64 writes;

    bool isRepetition() const { return message == messageBefore; }
};

// A promise that a product may break, as what it does otherwise. What it lacks is done well.
struct Flaw {
    const char* name = "";
    const char* what = "";
    const char* scenario = ""; // one that finds it
    void (*before)(hx::sim::SimulatedProduct&, QByteArray& message, Topic) = nullptr;
    void (*after)(const Handled&) = nullptr;
    void (*restarted)(hx::sim::SimulatedProduct&) = nullptr;
    bool answersFirst = false;      // and writes then
    bool knowsNoRepetition = false; // takes a message that comes again for one out of its turn
};

// All of them.
const std::vector<Flaw>& allFlaws();

class ProductOnTrial {
public:
    // Sound without a flaw; the flaw must outlive this object.
    ProductOnTrial(const hx::sim::SimulatedProduct& fresh, const Flaw* flaw)
        : m_product(fresh), m_fresh(fresh), m_flaw(flaw)
    {
    }

    QVector<hx::sim::SimulatedReply> receive(const QByteArray& bytes);
    void powerCycle();
    void failPowerAfter(qint64 writes, hx::sim::CutWrite cut = hx::sim::CutWrite::Nothing);

    // Whether an answer is out before the writes in which power may fail.
    bool answersFirst() const { return m_flaw != nullptr && m_flaw->answersFirst; }

    hx::sim::SimulatedProduct& sound() { return m_product; }
    const hx::sim::StoredCode& code() const { return m_product.code(); }

private:
    QVector<hx::sim::SimulatedReply> receiveMessage(QByteArray message);

    hx::sim::SimulatedProduct m_product;
    hx::sim::SimulatedProduct m_fresh;
    const Flaw* m_flaw;
    hx::sim::SysExReader m_reader;
    QByteArray m_messageBefore;
    qint64 m_writesLeft = -1;
};

} // namespace sweep

// Puts a simulated product at the end of any MIDI port, for other programs to talk to.
#pragma once

#include "host/bus/MidiPort.h"
#include "simulator/FaultyProduct.h"

#include <functional>
#include <map>

namespace hx {

// What is told while a product is served; each may be left out.
struct ProductWatch {
    std::function<void(const MidiChunk&)> heard; // bytes came
    std::function<bool()> handled; // the product has acted on them; false: it stops unanswered
    std::function<void(const QByteArray&)> answered; // a reply left, later than `handled`
};

class ProductServer {
public:
    ProductServer(MidiPort& port, sim::FaultyProduct& product) : m_port(port), m_product(product) {}

    void setWatch(const ProductWatch& watch) { m_watch = watch; }

    // Takes what arrives within `wait`, and sends the replies that are due. False when the port
    // failed (`errorText` then says why), or the product was unplugged or stopped.
    bool serve(Microseconds wait);

    QString errorText;

private:
    bool take(const MidiChunk& chunk);
    void schedule(const QVector<sim::SimulatedReply>& replies, Microseconds arrival);
    void scheduleUnasked();
    bool sendDue();
    Microseconds nextDue(Microseconds latest) const;

    MidiPort& m_port;
    sim::FaultyProduct& m_product;
    ProductWatch m_watch;
    std::multimap<Microseconds, QByteArray> m_due; // replies by the moment they leave
    Microseconds m_nextUnasked = 0;
};

} // namespace hx

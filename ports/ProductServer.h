// Puts a simulated product at the end of any MIDI port, for other programs to talk to.
#pragma once

#include "host/bus/MidiPort.h"
#include "simulator/FaultyProduct.h"

#include <functional>
#include <map>

namespace hx {

class ProductServer {
public:
    using Watch = std::function<void(const QByteArray&)>;

    ProductServer(MidiPort& port, FaultyProduct& product) : m_port(port), m_product(product) {}

    // What is told of the bytes that come and of the replies that leave; may be left out.
    void setWatch(const Watch& heard, const Watch& answered);

    // Takes what arrives within `wait`, and sends the replies that are due. False when the port
    // failed (`errorText` then says why) or the product was unplugged.
    bool serve(Microseconds wait);

    QString errorText;

private:
    void schedule(const QVector<SimulatedReply>& replies, Microseconds arrival);
    void scheduleUnasked();
    bool sendDue();
    Microseconds nextDue(Microseconds latest) const;

    MidiPort& m_port;
    FaultyProduct& m_product;
    Watch m_heard;
    Watch m_answered;
    std::multimap<Microseconds, QByteArray> m_due; // replies by the moment they leave
    Microseconds m_nextUnasked = 0;
};

} // namespace hx

// A MIDI connection to a simulated product, at the pace of a DIN cable and on a clock of its own,
// with the faults of one scenario in it. Everything that passes is recorded as the host sees it.
#pragma once

#include "host/bus/MidiPort.h"
#include "tests/sweep/FaultyLane.h"
#include "tests/sweep/ProductOnTrial.h"

#include <map>

namespace sweep {

constexpr int commandAt = 6; // behind F0, manufacturer, family and model

struct WireEvent {
    enum class Kind { Sent, Arrived, Lost };

    Kind kind = Kind::Sent;
    hx::Microseconds time = 0; // the last byte is on its way, or has arrived
    QByteArray bytes; // as the host meant them, or as they reached it; of a port that is gone none
};

using WireRecord = std::vector<WireEvent>;

// A message that the product acknowledged as good, and what its memory held then.
struct Acknowledged {
    QByteArray message;
    hx::sim::StoredCode code;
};

// What a command is about; Any: nothing that an update asks or sends.
Topic topicOf(const QByteArray& command);

bool isSameCode(const hx::sim::StoredCode& a, const hx::sim::StoredCode& b);

class FaultyLink final : public hx::MidiPort {
public:
    static constexpr hx::Microseconds byteTime = 320;
    static constexpr char garbleMask = 0x15;

    FaultyLink(ProductOnTrial& product, const Scenario& scenario)
        : m_product(product), m_out(Direction::Out, scenario), m_in(Direction::In, scenario)
    {
    }

    QString name() const override { return QStringLiteral("faulty link"); }
    hx::Clock& clock() override { return m_clock; }
    qint64 send(const QByteArray& message) override;
    bool isGone() const override { return m_isGone; }
    hx::MidiChunk receive(hx::Microseconds deadline) override;

    // Ends the faults and plugs the product in again; bytes on their way stay so.
    void repair();

    const WireRecord& record() const { return m_record; }
    const std::vector<Acknowledged>& acknowledged() const { return m_acknowledged; }

    // What the product held when it last answered with the checksum of it.
    const hx::sim::StoredCode& codeWhenCalculated() const { return m_codeWhenCalculated; }

    // Everything that the product has called valid code, one after the other.
    const std::vector<hx::sim::StoredCode>& validCodes() const { return m_validCodes; }

private:
    struct Travelling {
        Direction direction;
        Piece piece;
    };

    bool isPresent();
    void moveTo(hx::Microseconds time);
    void hear(const Piece& piece);
    void hearBytes(const Piece& piece);
    void noteValidCode();
    void strikeAtEnd(const std::vector<Fault>& faults);
    void answer(const QByteArray& message, hx::Microseconds delay);
    void happen(const Piece& piece);
    void carry(const Pieces& pieces);
    QByteArray falsified(QByteArray reply);
    QByteArray falseAnswer(const Fault& fault) const;

    ProductOnTrial& m_product;
    FaultyLane m_out;
    FaultyLane m_in;
    hx::ManualClock m_clock;
    std::multimap<hx::Microseconds, Travelling> m_travelling; // by the moment of arrival
    WireRecord m_record;
    std::vector<Acknowledged> m_acknowledged;
    std::vector<hx::sim::StoredCode> m_validCodes;
    hx::sim::StoredCode m_codeWhenCalculated;
    QByteArray m_command;
    hx::Microseconds m_sentAt = 0;
    hx::Microseconds m_deafUntil = 0;
    // What is on its way in packets, to the product and back, is there by then.
    hx::Microseconds m_outFree = 0;
    hx::Microseconds m_inFree = 0;
    bool m_isGone = false;
};

} // namespace sweep

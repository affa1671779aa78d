/** @file
 * The host's Bus over a MIDI port: one command out, the first message that fits back.
 */
#pragma once

#include "deviceinterface/Bus.h"
#include "deviceinterface/FwUpdateProtocol.h"
#include "host/bus/BusEvent.h"
#include "host/bus/MidiPort.h"
#include "host/bus/Patience.h"
#include "host/bus/SysExAssembler.h"

#include <QStringList>

#include <atomic>
#include <functional>
#include <utility>
#include <vector>

namespace hx {

/** How an exchange ended. */
enum class ExchangeEnd {
    Answered,
    EmptyCommand, /**< nothing was sent and nothing waited for */
    BadPattern,   /**< the pattern is not a regular expression; nothing was sent */
    SendFailed,
    TimedOut,
    PortLost,
    Interrupted,
    OtherProduct, /**< the port came back with another product; nothing of it was sent to that */
};

/** What a look at the product behind a port that came back has found. */
struct ReturnVerdict {
    ExchangeEnd end = ExchangeEnd::Answered; /**< it is the one of before; else how asking ended */
    QString text;                            /**< why it is not; empty when it is */
};

/** Says whether a message is the reply that is waited for. */
using ReplyTest = std::function<bool(const HxMidiData&)>;

/**
 * A test for a pattern over compact hex text: blanks are taken out of it first, letters match in
 * either case, "XX" means "..". A message fits when the pattern matches from its first byte
 * on; bytes after the matched part are allowed. An empty pattern fits every message.
 */
ReplyTest replyTest(const QString& pattern);

/** The same for a compiled pattern, which keeps its syntax. */
ReplyTest replyTest(const ResponceData& pattern);

/**
 * What holds for every exchange:
 *   - input that came before the command, an unfinished message too, is discarded and reported
 *     first, so that a late reply to an earlier command is never taken for the answer;
 *   - a message that does not fit is ignored and reported, and the wait goes on to its deadline;
 *   - an empty command is answered at once with an empty reply, whatever the timeout;
 *   - an empty reply means that it failed: `errorText` then says what was waited for, how long and
 *     what came instead, and `lastEnd` how it ended. After an answer `errorText` is empty.
 */
class PortBus final : public Bus {
public:
    explicit PortBus(MidiPort& port, AssemblerLimits limits = {}, const Patience& patience = {});

    /**
     * `timeoutMs` counts from the end of sending, and is multiplied by the patience; 0xFFFFFFFF is
     * 49 days.
     */
    BusData transact(BusData command, QString responsePattern, unsigned timeoutMs) override;
    BusData transactExpect(BusData const& command, ResponceData const& expected,
                           unsigned timeoutMs) override;

    /** The same with any test; `expected` names in errors what is waited for. */
    BusData exchange(const BusData& command, const ReplyTest& fits, const QString& expected,
                     unsigned timeoutMs);

    /**
     * Sends nothing, waits `duration`, and returns all that came. Ends early when the port is lost
     * (`errorText` then says so) or on an interrupt. Observers see it as ignored input.
     */
    AssembledEvents listen(Microseconds duration);

    /**
     * Gives what is slow the time to recover before something is asked or sent again; at once where
     * the patience has no rest. What comes meanwhile is ignored input.
     */
    void rest();

    const Patience& patience() const { return m_patience; }

    ExchangeEnd lastEnd() const { return m_lastEnd; }
    MidiPort& port() const { return m_port; }

    /** The observer is told everything from now on; it must outlive the bus or be removed. */
    void addObserver(BusObserver* observer);
    void removeObserver(BusObserver* observer);
    bool isObserved() const { return !m_observers.empty(); }

    /**
     * `check` is called when the port was away and is back, before anything else is sent. It may
     * ask the product over this bus. Unless it answers with `Answered`, the exchange that was to
     * begin ends as it says, and it is called again before the next one. Null: nothing is checked.
     */
    void setReturnCheck(std::function<ReturnVerdict()> check) { m_returnCheck = std::move(check); }

    /** Tells the observers something that did not travel: a decision, a line of a log. */
    void note(BusEventKind kind, const QString& text);

    /**
     * A wait ends soon after `*flag` becomes true. Null: nothing interrupts. Returns the flag that
     * was watched before.
     */
    const std::atomic<bool>* watchInterrupt(const std::atomic<bool>* flag);

private:
    /** What the wait under way is for, and what came that was not it. */
    struct Wait {
        QString expected;
        qint64 timeoutMs = 0;
        QStringList cameInstead;
        int unused = 0;
    };

    BusData exchangeByPattern(const BusData& command, const QRegExp& rx, const QString& pattern,
                              unsigned timeoutMs);
    bool deliver(const QByteArray& message);
    bool isReady();
    bool sendWhole(const QByteArray& message);
    void failSending(const QByteArray& message);
    BusData fail(ExchangeEnd end, BusEventKind kind, const QString& text);
    BusData endWait(ExchangeEnd end, BusEventKind kind, const QString& why);
    bool interrupted() const;
    void discardStaleInput();
    bool receiveUntil(Microseconds deadline);
    void take(const MidiChunk& chunk);
    void queue(AssembledEvents events);
    BusData waitFor(const ReplyTest& fits, Microseconds timeout);
    BusData takeFitting(const ReplyTest& fits);
    void noteCameInstead(const AssembledEvent& event);
    QString cameInstead() const;
    void reportUnused(const AssembledEvent& event, const QString& why);
    void report(const AssembledEvent& event, BusEventKind kind, const QString& text);
    void announce(BusEventKind kind, const QByteArray& bytes, const QString& text);
    void tell(const BusEvent& event);

    MidiPort& m_port;
    Patience m_patience;
    SysExAssembler m_assembler;
    AssembledEvents m_queue; /**< arrived */
    size_t m_taken = 0;      /**< of these, looked at already */
    std::vector<BusObserver*> m_observers;
    const std::atomic<bool>* m_interrupt = nullptr;
    std::function<ReturnVerdict()> m_returnCheck;
    int m_checkedReturns = 0; /**< of the port's, those after which the product was looked at */
    ExchangeEnd m_lastEnd = ExchangeEnd::Answered;
    Wait m_wait;
};

/**
 * While this lives the bus watches `flag`; afterwards it watches again what it watched before.
 * Null: nothing interrupts meanwhile.
 */
class InterruptWatch {
public:
    InterruptWatch(PortBus& bus, const std::atomic<bool>* flag)
        : m_bus(bus), m_before(bus.watchInterrupt(flag))
    {
    }
    ~InterruptWatch() { m_bus.watchInterrupt(m_before); }
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

private:
    PortBus& m_bus;
    const std::atomic<bool>* m_before;
};

} // namespace hx

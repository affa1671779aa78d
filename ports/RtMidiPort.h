/** @file
 * A real pair of MIDI ports: ALSA, JACK, CoreMIDI, whatever RtMidi reaches.
 */
#pragma once

#include "host/base/Result.h"
#include "host/bus/MidiPort.h"
#include "ports/ChunkQueue.h"
#include "ports/JackServerWatch.h"
#include "ports/Pacer.h"

#include <RtMidi.h>

#include <memory>
#include <string>
#include <vector>

namespace hx {

/**
 * Where a port is found: the backend's name and the ports' own names, as `listMidiBackends` has
 * them.
 */
struct PortAddress {
    QString backend;
    QString output; /**< bytes go there; empty: nothing will be sent */
    QString input;  /**< bytes come from there */
};

/**
 * Longest message that JACK's part of the library carries. It drops longer ones without a word, so
 * that they are refused here, for every backend alike.
 */
constexpr int largestMessage = 16379;

/**
 * What JACK's part of the library buffers between two periods of the server. Periods of up to 8192
 * frames at 44.1 kHz last 186 ms.
 */
constexpr OutputBuffer rtMidiBuffer = {16383, 4, 200 * microsecondsPerMillisecond};

class RtMidiPort final : public MidiPort {
public:
    /** Opens both directions; fails when one cannot be opened. */
    static Result<std::unique_ptr<MidiPort>> open(const PortAddress& address, const Pace& pace);

    /** Makes a pair of ports that other programs connect to. Output: what this program sends. */
    static Result<std::unique_ptr<MidiPort>> openVirtual(const QString& backend,
                                                         const QString& name, const Pace& pace);

    /** Waits until what was sent has left, which takes `rtMidiBuffer.emptying` at most. */
    ~RtMidiPort() override;

    QString name() const override;
    PortIdentity identity() const override;
    Clock& clock() override { return m_clock; }
    qint64 send(const QByteArray& message) override;
    bool drain(Microseconds deadline) override;
    MidiChunk receive(Microseconds deadline) override;
    bool isGone() const override { return m_isGone; }

private:
    RtMidiPort(const PortAddress& address, const Pace& pace);

    struct ClientNames {
        std::string input;
        std::string output;
    };

    static Result<std::unique_ptr<MidiPort>> opened(std::unique_ptr<RtMidiPort> port,
                                                    const ClientNames& names,
                                                    void (RtMidiPort::*openPorts)());
    static void abandon(std::unique_ptr<RtMidiPort> port);
    template <typename Step>
    QString problemOf(const Step& step);
    void setUp(const ClientNames& names);
    void connectPorts();
    void offerPorts();
    bool refuse(const QByteArray& message);
    bool isPresent();
    bool hasGone();
    QString takeLibraryError();

    static void takeInput(double, std::vector<unsigned char>* bytes, void* port);
    static void takeError(RtMidiError::Type, const std::string& text, void* port);

    PortAddress m_address;
    bool m_isVirtual = false;
    bool m_isGone = false;
    bool m_hasComplained = false; /**< the library, in the last step of opening */
    SteadyClock m_clock;
    Pacer m_pacer;
    Microseconds m_nextLook = 0;               /**< when to look again whether the port exists */
    std::unique_ptr<JackServerWatch> m_server; /**< of JACK's ports alone */
    ChunkQueue m_arrived;
    std::mutex m_errorMutex;
    QString m_libraryError;
    std::unique_ptr<RtMidiIn> m_in; /**< stops its thread before what the thread uses goes away */
    std::unique_ptr<RtMidiOut> m_out;
};

} // namespace hx

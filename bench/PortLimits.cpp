// What MIDI messages survive between two programs on a JACK server: sent by the MIDI library alone,
// and by the ports of this system. port_limits.py starts the servers and makes a table of it.
//
//   hxport_limits library|ports      one line of JSON
#include "host/bus/SysExAssembler.h"
#include "ports/MidiLibraryLog.h"
#include "ports/RtMidiPort.h"

#include <RtMidi.h>
#include <jack/jack.h>
#include <jack/midiport.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr auto patience = std::chrono::milliseconds(1500); // for a message that may be lost
constexpr int longestTried = 66000;                        // above what either server carries
constexpr int bursts = 20;
constexpr int closings = 20;
constexpr int pacedMessages = 400;
constexpr hx::Pace wirePace = hx::Pace();
constexpr hx::Pace noPace = {0, 0};

QByteArray message(int size)
{
    return '\xF0' + QByteArray(size - 2, '\x2A') + '\xF7';
}

// Counts the whole messages that reach a port of its own.
class Listener {
public:
    Listener()
        : m_in(RtMidi::UNIX_JACK, "limits listener"), m_out(RtMidi::UNIX_JACK, "limits replies")
    {
        m_in.ignoreTypes(false, false, false);
        m_in.setCallback(take, this);
        m_in.openVirtualPort("in");
        m_out.openVirtualPort("out");
    }

    void forget()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_count = 0;
    }

    // How many of as many messages of `size` bytes have come, when no more come.
    int countUpTo(int wanted, int size)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (int before = -1; before != m_count && m_count < wanted;) {
            before = m_count;
            m_arrival.wait_for(lock, patience, [&] { return m_count >= wanted; });
        }
        return m_size == size ? m_count : 0;
    }

private:
    static void take(double, std::vector<unsigned char>* bytes, void* self)
    {
        auto* listener = static_cast<Listener*>(self);
        const std::lock_guard<std::mutex> lock(listener->m_mutex);
        const QByteArray piece(reinterpret_cast<const char*>(bytes->data()), int(bytes->size()));
        for (const hx::AssembledEvent& event : listener->m_assembler.feed(piece, 0)) {
            if (event.kind != hx::AssembledEvent::Kind::SysEx)
                continue;
            ++listener->m_count;
            listener->m_size = int(event.bytes.size());
        }
        listener->m_arrival.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_arrival;
    hx::SysExAssembler m_assembler{{2 * longestTried, hx::Microseconds(1) << 40}};
    int m_count = 0;
    int m_size = 0;
    RtMidiIn m_in;
    RtMidiOut m_out;
};

// A client whose input the sender is connected to: a server adds up there what its outputs lost.
class LostEvents {
public:
    LostEvents()
    {
        m_client = jack_client_open("limits watch", JackNoStartServer, nullptr);
        m_port = jack_port_register(m_client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
        jack_set_process_callback(m_client, process, this);
        jack_activate(m_client);
    }
    ~LostEvents() { jack_client_close(m_client); }
    LostEvents(const LostEvents&) = delete;
    LostEvents& operator=(const LostEvents&) = delete;

    bool watch(const char* sender)
    {
        return jack_connect(m_client, sender, jack_port_name(m_port)) == 0;
    }
    int count() const { return int(m_count); }

private:
    static int process(jack_nframes_t frames, void* self)
    {
        auto* watch = static_cast<LostEvents*>(self);
        void* buffer = jack_port_get_buffer(watch->m_port, frames);
        watch->m_count += jack_midi_get_lost_event_count(buffer);
        return 0;
    }

    jack_client_t* m_client = nullptr;
    jack_port_t* m_port = nullptr;
    std::atomic<unsigned> m_count{0};
};

class Sender {
public:
    virtual ~Sender() = default;
    virtual void send(const QByteArray& bytes) = 0;
};

class LibrarySender final : public Sender {
public:
    explicit LibrarySender(const hx::Pace&) : m_out(RtMidi::UNIX_JACK, "hxhost output")
    {
        unsigned listener = 0;
        while (m_out.getPortName(listener) != "limits listener:in")
            ++listener;
        m_out.openPort(listener, "out");
    }
    void send(const QByteArray& bytes) override
    {
        m_out.sendMessage(reinterpret_cast<const unsigned char*>(bytes.constData()),
                          size_t(bytes.size()));
    }

private:
    RtMidiOut m_out;
};

class PortSender final : public Sender {
public:
    explicit PortSender(const hx::Pace& pace)
        : m_port(hx::RtMidiPort::open({QStringLiteral("jack"), QStringLiteral("limits listener:in"),
                                       QStringLiteral("limits replies:out")},
                                      pace))
    {
    }
    void send(const QByteArray& bytes) override
    {
        if (m_port)
            (*m_port)->send(bytes);
    }

private:
    hx::Result<std::unique_ptr<hx::MidiPort>> m_port;
};

using OpenSender = std::function<std::unique_ptr<Sender>(const hx::Pace&)>;

int longestArriving(Listener& listener, const OpenSender& open)
{
    int arrives = 2;
    int vanishes = longestTried;
    while (vanishes - arrives > 1) {
        const int size = (arrives + vanishes) / 2;
        const auto sender = open(noPace);
        listener.forget();
        sender->send(message(size));
        (listener.countUpTo(1, size) == 1 ? arrives : vanishes) = size;
    }
    return arrives;
}

struct Losses {
    int messages = 0;
    int bursts = 0; // in which one was lost
    int told = 0;   // by the server
};

Losses lossesOfBursts(Listener& listener, const OpenSender& open, int messages, int size)
{
    Losses losses;
    const auto sender = open(noPace);
    LostEvents events;
    events.watch("hxhost output:out");
    for (int i = 0; i < bursts; ++i) {
        listener.forget();
        for (int j = 0; j < messages; ++j)
            sender->send(message(size));
        const int lost = messages - listener.countUpTo(messages, size);
        losses.messages += lost;
        losses.bursts += lost > 0 ? 1 : 0;
    }
    losses.told = events.count();
    return losses;
}

int lossesOfPaced(Listener& listener, const OpenSender& open, int size)
{
    const auto sender = open(wirePace);
    listener.forget();
    for (int i = 0; i < pacedMessages; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        sender->send(message(size));
        std::this_thread::sleep_until(begin + std::chrono::microseconds(wirePace.wireTime(size)));
    }
    return pacedMessages - listener.countUpTo(pacedMessages, size);
}

int lossesOfClosing(Listener& listener, const OpenSender& open, int size)
{
    int lost = 0;
    for (int i = 0; i < closings; ++i) {
        listener.forget();
        open(noPace)->send(message(size)); // and closes
        lost += 1 - listener.countUpTo(1, size);
    }
    return lost;
}

void print(const OpenSender& open)
{
    Listener listener;
    const int longest = longestArriving(listener, open);
    const Losses few = lossesOfBursts(listener, open, 20, 256);
    const Losses many = lossesOfBursts(listener, open, 1000, 6);
    std::printf("{\"longest\": %d, \"few\": [%d, %d, %d], \"many\": [%d, %d, %d], \"paced\": %d, "
                "\"closed\": %d}\n",
                longest, few.messages, few.bursts, few.told, many.messages, many.bursts, many.told,
                lossesOfPaced(listener, open, 32), lossesOfClosing(listener, open, 200));
}

} // namespace

int main(int count, char** words)
{
    hx::silenceMidiLibraries();
    const std::string sender = count == 2 ? words[1] : "";
    if (sender == "library")
        print([](const hx::Pace& pace) { return std::make_unique<LibrarySender>(pace); });
    else if (sender == "ports")
        print([](const hx::Pace& pace) { return std::make_unique<PortSender>(pace); });
    else
        std::fputs("usage: hxport_limits library|ports\n", stderr);
    return sender == "library" || sender == "ports" ? 0 : 2;
}

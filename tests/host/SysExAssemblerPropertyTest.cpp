// What holds for every input, tried over generated streams with a fixed seed.
#include "host/bus/SysExAssembler.h"

#include "qt/Saturated.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <random>

using namespace hx;
using Kind = AssembledEvent::Kind;

namespace {

constexpr int streams = 100000;
constexpr int maxBytes = 24;

class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    // Whole and cut messages, clock bytes, stray data and noise, mixed.
    QByteArray stream()
    {
        QByteArray bytes;
        const int pieces = 1 + below(8);
        for (int i = 0; i < pieces; ++i)
            addPiece(bytes);
        return bytes;
    }

    // Cuts `bytes` anywhere, into chunks of at least one byte.
    std::vector<QByteArray> chunks(const QByteArray& bytes)
    {
        std::vector<QByteArray> result;
        for (int begin = 0; begin < bytes.size();) {
            const int length = 1 + below(6);
            result.push_back(bytes.mid(begin, length));
            begin += length;
        }
        return result;
    }

private:
    void addPiece(QByteArray& bytes)
    {
        const int kind = below(6);
        if (kind <= 2)
            addSysEx(bytes, kind == 2);
        else if (kind == 3)
            addRandom(bytes, 1 + below(4), 0x80); // data
        else if (kind == 4)
            addRandom(bytes, 1 + below(6), 0x100); // anything
        else
            bytes.append(static_cast<char>(0xF8 + below(8)));
    }

    void addSysEx(QByteArray& bytes, bool cut)
    {
        bytes.append('\xF0');
        for (int i = below(30); i > 0; --i) {
            bytes.append(static_cast<char>(below(0x80)));
            if (below(12) == 0)
                bytes.append('\xF8');
        }
        if (!cut)
            bytes.append('\xF7');
    }

    void addRandom(QByteArray& bytes, int count, int limit)
    {
        for (int i = 0; i < count; ++i)
            bytes.append(static_cast<char>(below(limit)));
    }

    std::mt19937 m_random;
};

AssembledEvents assembled(const std::vector<QByteArray>& chunks, int* mostPending)
{
    SysExAssembler assembler({maxBytes, 1000});
    AssembledEvents all;
    const auto add = [&](const AssembledEvents& events) {
        all.insert(all.end(), events.begin(), events.end());
        *mostPending = std::max(*mostPending, saturated(assembler.pending().size()));
    };
    for (const QByteArray& chunk : chunks)
        add(assembler.feed(chunk, 0));
    add(assembler.flush());
    return all;
}

bool sameEvent(const AssembledEvent& a, const AssembledEvent& b)
{
    return a.kind == b.kind && a.bytes == b.bytes && a.runningStatus == b.runningStatus &&
           a.reason == b.reason;
}

// The input without and with only its real-time bytes.
QByteArray only(const QByteArray& bytes, bool realTime)
{
    QByteArray result;
    for (const char byte : bytes) {
        if ((static_cast<quint8>(byte) >= 0xF8) == realTime)
            result.append(byte);
    }
    return result;
}

QByteArray joined(const AssembledEvents& events, bool realTime)
{
    QByteArray result;
    for (const AssembledEvent& event : events) {
        if ((event.kind == Kind::RealTime) == realTime)
            result.append(event.bytes);
    }
    return result;
}

bool isWholeSysEx(const QByteArray& bytes)
{
    for (int i = 1; i < bytes.size() - 1; ++i) {
        if ((bytes.at(i) & 0x80) != 0)
            return false;
    }
    return bytes.size() >= 2 && bytes.size() <= maxBytes && bytes.startsWith('\xF0') &&
           bytes.endsWith('\xF7');
}

} // namespace

TEST(SysExAssemblerProperty, HoldsForEveryStream)
{
    Generator generator(20190611);
    for (int i = 0; i < streams; ++i) {
        const QByteArray stream = generator.stream();
        int mostPending = 0;
        const AssembledEvents whole = assembled({stream}, &mostPending);
        const AssembledEvents cut = assembled(generator.chunks(stream), &mostPending);

        // Chunking does not matter.
        ASSERT_EQ(whole.size(), cut.size()) << stream.toHex(' ').toStdString();
        ASSERT_TRUE(std::equal(whole.begin(), whole.end(), cut.begin(), sameEvent))
            << stream.toHex(' ').toStdString();

        // Every byte is accounted for exactly once, in order.
        ASSERT_EQ(joined(whole, false), only(stream, false));
        ASSERT_EQ(joined(whole, true), only(stream, true));

        // What is called a message is one, and what is dropped has a reason.
        for (const AssembledEvent& event : whole) {
            ASSERT_TRUE(event.kind != Kind::SysEx || isWholeSysEx(event.bytes))
                << event.bytes.toHex(' ').toStdString();
            ASSERT_EQ(event.kind == Kind::Dropped, event.reason != DropReason::None);
        }

        // Memory stays bounded.
        ASSERT_LE(mostPending, maxBytes);
    }
}

TEST(SysExAssemblerProperty, TheNextWholeMessageArrivesAfterAnyGarbage)
{
    Generator generator(4711);
    const QByteArray message = QByteArray::fromHex("F0006B2D30411B0958F7");
    for (int i = 0; i < streams; ++i) {
        const QByteArray stream = generator.stream() + message;
        int mostPending = 0;
        const AssembledEvents events = assembled(generator.chunks(stream), &mostPending);
        ASSERT_FALSE(events.empty());
        ASSERT_EQ(events.back().kind, Kind::SysEx) << stream.toHex(' ').toStdString();
        ASSERT_EQ(events.back().bytes, message);
    }
}

TEST(SysExAssemblerProperty, PausesAreTheSameHoweverTheBytesAreCut)
{
    Generator generator(815);
    for (int i = 0; i < streams / 10; ++i) {
        SysExAssembler oneByOne({maxBytes, 1000});
        SysExAssembler inChunks({maxBytes, 1000});
        AssembledEvents a;
        AssembledEvents b;
        const auto add = [](AssembledEvents& to, const AssembledEvents& events) {
            to.insert(to.end(), events.begin(), events.end());
        };
        Microseconds time = 0;
        for (int burst = 0; burst < 4; ++burst) {
            const QByteArray bytes = generator.stream();
            time += generator.below(3) * 700; // two such steps pass the limit
            for (const char byte : bytes)
                add(a, oneByOne.feed(QByteArray(1, byte), time));
            for (const QByteArray& chunk : generator.chunks(bytes))
                add(b, inChunks.feed(chunk, time));
        }
        ASSERT_EQ(a.size(), b.size());
        ASSERT_TRUE(std::equal(a.begin(), a.end(), b.begin(), sameEvent));
    }
}

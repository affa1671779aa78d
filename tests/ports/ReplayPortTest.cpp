#include "ports/ReplayPort.h"
#include "tests/ports/SimulatedExchange.h"

#include <gtest/gtest.h>

namespace hx {

namespace {

const QByteArray reset = QByteArray::fromHex("F0006B2D30411B0958F7");

class Replay : public ::testing::Test {
protected:
    ReplayPort replay(const QByteArray& lines)
    {
        const Result<TraceEvents> trace = parseTrace("# hxtrace 1\n" + lines);
        EXPECT_TRUE(trace) << trace.problem().what.toStdString();
        ReplayHandlers handlers;
        handlers.diverged = [this](const ReplayDivergence& d) { divergences.push_back(d); };
        handlers.interrupted = [this] { ++interrupts; };
        return ReplayPort(QStringLiteral("file"), *trace, handlers);
    }

    std::vector<ReplayDivergence> divergences;
    int interrupts = 0;
};

} // namespace

TEST_F(Replay, ReplyComesAfterItsMessageAtItsTime)
{
    ReplayPort port = replay("0.001000 sent F0 7E 7F 06 01 F7\n"
                             "0.003000 received F0 01 F7\n");
    EXPECT_EQ(port.name(), "replay:file");
    EXPECT_TRUE(port.receive(microsecondsPerSecond).bytes.isEmpty());
    EXPECT_EQ(port.clock().now(), microsecondsPerSecond);
    EXPECT_EQ(port.send(identify), identify.size());
    const MidiChunk chunk = port.receive(2 * microsecondsPerSecond);
    EXPECT_EQ(chunk.bytes, QByteArray::fromHex("F001F7"));
    EXPECT_EQ(port.messagesLeft(), 0);
}

TEST_F(Replay, AllThatArrivedIsPlayedInOrder)
{
    ReplayPort port = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                             "0.001000 realtime F8\n"
                             "0.001500 log : a line\n"
                             "0.002000 dropped 40 41 : no status\n"
                             "0.003000 ignored F0 02 F7 : other\n"
                             "0.004000 received F0 03 F7\n");
    ASSERT_EQ(port.send(identify), identify.size());
    for (const char* hex : {"F8", "4041", "F002F7", "F003F7"})
        EXPECT_EQ(port.receive(microsecondsPerSecond).bytes, QByteArray::fromHex(hex));
    EXPECT_EQ(port.clock().now(), 4000);
}

TEST_F(Replay, WaitForNothingGoesOnToItsDeadline)
{
    ReplayPort port = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                             "2.200000 timeout : nothing came\n"
                             "2.300000 ignored F0 01 F7 : late\n"
                             "2.400000 sent F0 7E 7F 06 01 F7\n");
    ASSERT_EQ(port.send(identify), identify.size());
    for (const Microseconds deadline : {50000, 100000, 2200000}) {
        EXPECT_TRUE(port.receive(deadline).bytes.isEmpty());
        EXPECT_EQ(port.clock().now(), deadline);
    }
    EXPECT_TRUE(port.errorText.isEmpty());
    EXPECT_EQ(port.receive(2300000).bytes, QByteArray::fromHex("F001F7"));
    EXPECT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.clock().now(), 2400000);
}

TEST_F(Replay, FirstDifferentMessageEndsItAndIsShown)
{
    ReplayPort port = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                             "0.001000 received F0 01 F7\n"
                             "0.002000 sent F0 00 6B 2D 30 41 2F F7\n");
    ASSERT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.send(reset), 0);
    ASSERT_EQ(divergences.size(), 1u);
    EXPECT_EQ(divergences[0].text().toStdString(), "message 2 (line 4 of the trace) differs at "
                                                   "byte 6: recorded 2F, sent 1B");
    EXPECT_EQ(divergences[0].sent, reset);
    EXPECT_EQ(port.errorText.toStdString(),
              "the replay diverged: " + divergences[0].text().toStdString());
    EXPECT_EQ(port.send(identify), 0);
    port.receive(microsecondsPerSecond);
    EXPECT_FALSE(port.errorText.isEmpty());
    EXPECT_EQ(divergences.size(), 1u);
}

TEST_F(Replay, OneOtherByteDivergesToo)
{
    ReplayPort port = replay("0.000000 sent F0 7E 00 06 01 F7\n");
    EXPECT_EQ(port.send(identify), 0);
    ASSERT_EQ(divergences.size(), 1u);
    EXPECT_EQ(divergences[0].firstDifference(), 2);
}

TEST_F(Replay, ShorterAndMissingMessagesDivergeToo)
{
    ReplayPort shorter = replay("0.000000 sent F0 7E\n");
    EXPECT_EQ(shorter.send(identify), 0);
    EXPECT_EQ(divergences.at(0).text().toStdString(), "message 1 (line 2 of the trace) differs at "
                                                      "byte 2: recorded nothing, sent 7F");
    ReplayPort empty = replay("");
    EXPECT_EQ(empty.send(identify), 0);
    EXPECT_EQ(divergences.at(1).text().toStdString(), "message 1 was sent, the trace holds only 0");
}

TEST_F(Replay, LostPortIsLostAgain)
{
    ReplayPort port = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                             "0.500000 lost : unplugged\n");
    ASSERT_EQ(port.send(identify), identify.size());
    EXPECT_TRUE(port.receive(400000).bytes.isEmpty());
    EXPECT_TRUE(port.errorText.isEmpty());
    EXPECT_TRUE(port.receive(600000).bytes.isEmpty());
    EXPECT_EQ(port.errorText, "it was lost when the trace was made");
    EXPECT_EQ(port.send(identify), 0);
    EXPECT_TRUE(divergences.empty());
}

TEST_F(Replay, MessageThatCouldNotBeSentFailsAgain)
{
    ReplayPort port = replay("0.000000 unsent F0 01 F7 : full\n"
                             "0.000000 unsent F0 7E 7F 06 01 F7 : unplugged\n");
    EXPECT_EQ(port.send(identify), 0);
    EXPECT_EQ(port.errorText, "unplugged");
    EXPECT_TRUE(divergences.empty());
}

TEST_F(Replay, PortThatCouldNotBeSentToBecauseItWasGoneIsGoneAgain)
{
    ReplayPort port = replay("0.000000 unsent F0 7E 7F 06 01 F7 : unplugged\n"
                             "0.000000 lost : unplugged\n");
    EXPECT_FALSE(port.isGone());
    EXPECT_EQ(port.send(identify), 0);
    EXPECT_EQ(port.errorText, "unplugged");
    EXPECT_TRUE(port.isGone());
}

TEST_F(Replay, PortComesBackAtTheSameMessage)
{
    ReplayPort port = replay("0.100000 back : as another\n"
                             "0.200000 sent F0 7E 7F 06 01 F7\n");
    EXPECT_EQ(port.returns(), 0);
    EXPECT_EQ(port.send(identify), 0);
    EXPECT_EQ(port.errorText, "as another");
    EXPECT_EQ(port.returns(), 1);
    EXPECT_EQ(port.clock().now(), 100000);
    EXPECT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.returns(), 1);
}

TEST_F(Replay, PortComesBackInTheSameWait)
{
    ReplayPort port = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                             "0.100000 back : as another\n"
                             "0.200000 timeout : nothing\n");
    EXPECT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.receive(50000).bytes, "");
    EXPECT_EQ(port.returns(), 0);
    EXPECT_EQ(port.receive(150000).bytes, "");
    EXPECT_EQ(port.errorText, "");
    EXPECT_EQ(port.returns(), 1);
    EXPECT_EQ(port.clock().now(), 150000);
}

TEST_F(Replay, InterruptComesAfterTheSameMessageAndInTheSameWait)
{
    ReplayPort port = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                             "0.001000 received F0 01 F7\n"
                             "0.001000 decided : good\n"
                             "0.001000 interrupted : Ctrl-C\n");
    ASSERT_EQ(port.send(identify), identify.size());
    EXPECT_FALSE(port.receive(microsecondsPerSecond).bytes.isEmpty());
    EXPECT_EQ(interrupts, 1);
    ReplayPort waiting = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                                "0.700000 interrupted : waited\n");
    ASSERT_EQ(waiting.send(identify), identify.size());
    waiting.receive(600000);
    EXPECT_EQ(interrupts, 1);
    waiting.receive(800000);
    EXPECT_EQ(interrupts, 2);
}

TEST_F(Replay, MessagesLeftAreCounted)
{
    ReplayPort port = replay("0.000000 sent F0 7E 7F 06 01 F7\n"
                             "0.001000 sent F0 7E 7F 06 01 F7\n"
                             "0.002000 sent F0 7E 7F 06 01 F7\n");
    EXPECT_EQ(port.messagesLeft(), 3);
    ASSERT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.messagesLeft(), 2);
}

TEST_F(Replay, OneThatIsOnlyListenedToPlaysWhatArrivedAndComesToItsEnd)
{
    const Result<TraceEvents> trace = parseTrace("# hxtrace 1\n"
                                                 "0.000000 sent F0 7E 7F 06 01 F7\n"
                                                 "0.001000 realtime F8\n"
                                                 "0.002000 received F0 01 F7\n"
                                                 "0.003000 unsent F0 02 F7 : full\n"
                                                 "0.004000 timeout : nothing came\n"
                                                 "0.005000 interrupted : Ctrl-C\n"
                                                 "0.006000 ignored F0 03 F7 : late\n"
                                                 "0.007000 lost : gone\n"
                                                 "0.008000 decided : outcome\n");
    ASSERT_TRUE(trace) << trace.problem().what.toStdString();
    ReplayPort port(QStringLiteral("file"), arrivalsOf(*trace), ReplayHandlers());
    for (const char* bytes : {"F8", "F001F7", "F003F7"}) {
        EXPECT_FALSE(port.atEnd());
        EXPECT_EQ(port.receive(microsecondsPerSecond).bytes, QByteArray::fromHex(bytes));
    }
    EXPECT_TRUE(port.atEnd());
    EXPECT_TRUE(port.errorText.isEmpty());
    EXPECT_FALSE(replay("0.000000 sent F0 7E 7F 06 01 F7\n0.001000 log : x\n").atEnd());
}

} // namespace hx

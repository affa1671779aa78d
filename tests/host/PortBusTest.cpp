#include "tests/host/PortBusFixture.h"

using namespace hx;

TEST_F(PortBusTest, SendsTheCommandAndReturnsTheReply)
{
    answerWith(checksumReply);
    EXPECT_EQ(transact().bytes, checksumReply);
    EXPECT_EQ(port.sent, std::vector<QByteArray>{command});
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::Answered);
    EXPECT_TRUE(bus.errorText.isEmpty());
    EXPECT_EQ(recorder.count(BusEventKind::Sent), 1);
    EXPECT_EQ(recorder.first(BusEventKind::Received).bytes, checksumReply);
    EXPECT_EQ(recorder.first(BusEventKind::Received).time, 1000);
}

TEST_F(PortBusTest, MatchesCompactSpacedAndLowerCasePatternsAlike)
{
    answerWith(checksumReply);
    for (const char* text : {"F0006B2D304130", "F0 00 6b 2d 30 41 30", "f0 xx 6B 2D .. 41 3[01]"})
        EXPECT_EQ(bus.transact(HxMidiData(command), text, 10).bytes, checksumReply) << text;
}

TEST_F(PortBusTest, MatchesFromTheFirstByteOn)
{
    answerWith(hex("F0F7") + hex("F0 01 00 6B 2D 30 F7"));
    EXPECT_TRUE(bus.transact(HxMidiData(command), "00 6B 2D", 10).bytes.isEmpty());
    EXPECT_EQ(recorder.count(BusEventKind::Ignored), 2);
}

TEST_F(PortBusTest, LetsBytesFollowTheMatchedPart)
{
    answerWith(checksumReply);
    EXPECT_EQ(bus.transact(HxMidiData(command), "F0 00", 10).bytes, checksumReply);
}

TEST_F(PortBusTest, AnEmptyPatternFitsAnyMessage)
{
    answerWith(hex("F8") + checksumReply);
    EXPECT_EQ(bus.transact(HxMidiData(command), QString(), 10).bytes, checksumReply);
}

TEST_F(PortBusTest, RemovesTheBlanksOfACompiledPattern)
{
    const QByteArray identity = hex("F07E0006 02006B2D 30004100 31303233 F7");
    answerWith(identity);
    const ResponceData expected("F0 7E .. 06 02 00 6B 2D 30 00 41 00 .. .. .. .. F7");
    EXPECT_EQ(bus.transactExpect(HxMidiData(command), expected, 25000).bytes, identity);
}

TEST_F(PortBusTest, IgnoresAndReportsWhatDoesNotFit)
{
    const QByteArray other = hex("F0006B2D304121F7");
    answerWith(other + hex("904001") + checksumReply);
    EXPECT_EQ(transact().bytes, checksumReply);
    EXPECT_EQ(recorder.count(BusEventKind::Ignored), 2);
    EXPECT_EQ(recorder.first(BusEventKind::Ignored).bytes, other);
    EXPECT_EQ(recorder.first(BusEventKind::Ignored).text,
              "does not fit F0 00 6B 2D 30 41 30 .. .. .. ..");
}

TEST_F(PortBusTest, ReportsDroppedAndRealTimeBytes)
{
    answerWith(hex("0102F7") + hex("F8") + checksumReply);
    EXPECT_EQ(transact().bytes, checksumReply);
    EXPECT_EQ(recorder.count(BusEventKind::Dropped), 2);
    EXPECT_EQ(recorder.first(BusEventKind::Dropped).text, "data bytes that belong to no message");
    EXPECT_EQ(recorder.first(BusEventKind::RealTime).bytes, hex("F8"));
}

TEST_F(PortBusTest, EndsTheWaitAtTheTimeoutAndSaysWhatItWaitedFor)
{
    EXPECT_TRUE(transact(2200).bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::TimedOut);
    EXPECT_EQ(port.clock().now(), 2200 * 1000);
    EXPECT_EQ(bus.errorText,
              "no answer: waited 2200 ms for F0 00 6B 2D 30 41 30 .. .. .. ..; nothing came");
    EXPECT_EQ(recorder.first(BusEventKind::TimedOut).text, bus.errorText);
}

TEST_F(PortBusTest, CountsTheTimeoutFromTheEndOfSending)
{
    port.microsecondsPerByte = 320;
    answerWith(checksumReply, 2199 * 1000);
    EXPECT_EQ(transact(2200).bytes, checksumReply);
}

TEST_F(PortBusTest, TakesAReplyAtTheDeadlineAndNoneAfterIt)
{
    answerWith(checksumReply, 2200 * 1000);
    EXPECT_EQ(transact(2200).bytes, checksumReply);
    answerWith(checksumReply, 2200 * 1000 + 1);
    EXPECT_TRUE(transact(2200).bytes.isEmpty());
}

TEST_F(PortBusTest, SaysWhatCameInstead)
{
    answerWith(hex("F001F7") + hex("02") + hex("F003"));
    EXPECT_TRUE(transact(100).bytes.isEmpty());
    EXPECT_EQ(bus.errorText,
              "no answer: waited 100 ms for F0 00 6B 2D 30 41 30 .. .. .. ..; instead came F0 01 "
              "F7, 02 (data bytes that belong to no message), F0 03 (a message still unfinished "
              "when the wait for it ended)");
}

TEST_F(PortBusTest, ListsAtMostFiveOfTheMessagesThatCameInstead)
{
    answerWith(hex("F001F7").repeated(7));
    transact(100);
    EXPECT_TRUE(bus.errorText.endsWith("F0 01 F7 and 2 more")) << bus.errorText.toStdString();
}

TEST_F(PortBusTest, ATimeoutOfZeroLooksOnceAtWhatIsThere)
{
    EXPECT_TRUE(transact(0).bytes.isEmpty());
    EXPECT_EQ(port.clock().now(), 0);
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::TimedOut);
}

TEST_F(PortBusTest, AnswersAnEmptyCommandAtOnceWhateverTheTimeout)
{
    for (unsigned timeoutMs : {0u, 2200u, 0xFFFFFFFFu}) {
        EXPECT_TRUE(bus.transact(HxMidiData(), QString(), timeoutMs).bytes.isEmpty());
        EXPECT_TRUE(bus.transactExpect(HxMidiData(), ResponceData(), timeoutMs).bytes.isEmpty());
    }
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::EmptyCommand);
    EXPECT_EQ(bus.errorText, "the command is empty; nothing was sent or waited for");
    EXPECT_TRUE(port.sent.empty());
    EXPECT_EQ(port.receives, 0);
    EXPECT_EQ(port.clock().now(), 0);
}

TEST_F(PortBusTest, AnEmptyCommandWithABadPatternIsStillAnEmptyCommand)
{
    EXPECT_TRUE(bus.transact(HxMidiData(), "(", 0xFFFFFFFFu).bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::EmptyCommand);
}

TEST_F(PortBusTest, SendsNothingForAPatternThatIsNoRegularExpression)
{
    EXPECT_TRUE(bus.transact(HxMidiData(command), "F0 (", 2200).bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::BadPattern);
    EXPECT_TRUE(bus.errorText.startsWith("the reply pattern \"F0 (\" is not valid"));
    EXPECT_TRUE(port.sent.empty());
}

TEST_F(PortBusTest, DoesNotTakeALateOldReplyForTheAnswer)
{
    answerWith(checksumReply, 5000 * 1000);
    EXPECT_TRUE(transact(2200).bytes.isEmpty());
    port.answer = nullptr;
    port.clock().sleepUntil(6000 * 1000);
    EXPECT_TRUE(transact(2200).bytes.isEmpty());
    EXPECT_EQ(recorder.first(BusEventKind::Ignored).text, "came before the command was sent");
}

TEST_F(PortBusTest, DoesNotTakeTheRestOfAnOldReplyForTheAnswer)
{
    port.arrive(checksumReply.left(6));
    port.answer = [&](const QByteArray&, int) { port.arrive(checksumReply.mid(6), 1000); };
    EXPECT_TRUE(transact(100).bytes.isEmpty());
    EXPECT_EQ(recorder.count(BusEventKind::Dropped), 3);
}

TEST_F(PortBusTest, AnExtraReplyInOneChunkIsNotTakenForTheNextAnswer)
{
    answerWith(checksumReply + checksumReply);
    EXPECT_EQ(transact().bytes, checksumReply);
    port.answer = nullptr;
    EXPECT_TRUE(transact(100).bytes.isEmpty());
    EXPECT_EQ(recorder.count(BusEventKind::Ignored), 1);
}

TEST_F(PortBusTest, AssemblesAReplyCutAnywhere)
{
    port.answer = [&](const QByteArray&, int) {
        for (int i = 0; i < checksumReply.size(); ++i)
            port.arrive(checksumReply.mid(i, 1), 1000 * (i + 1));
    };
    EXPECT_EQ(transact().bytes, checksumReply);
}

TEST_F(PortBusTest, AnInputThatNeverStopsDoesNotKeepACommandFromBeingSent)
{
    for (int i = 0; i < 10000; ++i)
        port.arrive(hex("F8"));
    answerWith(checksumReply);
    EXPECT_EQ(transact().bytes, checksumReply);
}

TEST_F(PortBusTest, SaysThatThePortIsGone)
{
    port.lostAt = 700 * 1000;
    EXPECT_TRUE(transact(2200).bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::PortLost);
    EXPECT_EQ(port.clock().now(), 700 * 1000);
    EXPECT_TRUE(bus.errorText.startsWith("the port scripted is gone (unplugged): waited"))
        << bus.errorText.toStdString();
    EXPECT_EQ(recorder.count(BusEventKind::PortLost), 1);
}

TEST_F(PortBusTest, SaysWhyACommandCouldNotBeSent)
{
    port.sendError = "longer than 16379 bytes";
    EXPECT_TRUE(transact().bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::SendFailed);
    EXPECT_EQ(bus.errorText, "F0 00 6B 2D 30 41 30 F7 could not be sent: longer than 16379 bytes");
    EXPECT_EQ(port.clock().now(), 0);
    EXPECT_EQ(recorder.first(BusEventKind::SendFailed).bytes, hex("F0006B2D304130F7"));
    EXPECT_EQ(recorder.first(BusEventKind::SendFailed).text, "longer than 16379 bytes");
}

TEST_F(PortBusTest, AMessageAcceptedInPartWasNotSent)
{
    for (const qint64 accepted : {0, 1, 7}) {
        port.accepts = accepted;
        EXPECT_TRUE(transact().bytes.isEmpty());
        EXPECT_EQ(bus.lastEnd(), ExchangeEnd::SendFailed) << accepted;
        EXPECT_EQ(bus.errorText, "F0 00 6B 2D 30 41 30 F7 could not be sent: full");
    }
    EXPECT_TRUE(port.sent.empty());
}

TEST_F(PortBusTest, AReplyCutAt2048BytesIsReportedAndNotGluedToTheNext)
{
    const QByteArray cut = hex("F0") + QByteArray(2047, '\x01');
    port.answer = [&](const QByteArray&, int) {
        port.arrive(cut);
        port.arrive(hex("F00102F7"), 1000);
    };
    EXPECT_EQ(bus.transact(hex("F0006B2D304130F7"), "F00102F7", 2000).bytes, hex("F00102F7"));
    EXPECT_EQ(recorder.count(BusEventKind::Dropped), 1);
    EXPECT_EQ(recorder.first(BusEventKind::Dropped).bytes, cut);
}

TEST_F(PortBusTest, ListensWithoutSending)
{
    port.arrive(hex("F8"), 100);
    port.arrive(checksumReply, 200);
    port.arrive(hex("F8"), 2000 * 1000);
    const AssembledEvents events = bus.listen(1000 * 1000);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[1].bytes, checksumReply);
    EXPECT_EQ(port.clock().now(), 1000 * 1000);
    EXPECT_TRUE(port.sent.empty());
    EXPECT_EQ(recorder.first(BusEventKind::Ignored).text, "heard while listening");
    EXPECT_TRUE(bus.errorText.isEmpty());
}

TEST_F(PortBusTest, ListeningEndsWhenThePortIsGone)
{
    port.lostAt = 300;
    EXPECT_TRUE(bus.listen(1000 * 1000).empty());
    EXPECT_EQ(bus.errorText, "the port scripted is gone (unplugged)");
}

TEST_F(PortBusTest, TellsARemovedObserverNothing)
{
    bus.removeObserver(&recorder);
    bus.note(BusEventKind::Decided, "something");
    transact(10);
    EXPECT_TRUE(recorder.events.empty());
}

TEST_F(PortBusTest, PassesNotesToItsObservers)
{
    bus.note(BusEventKind::Log, "IOSUPORT: line");
    EXPECT_EQ(recorder.first(BusEventKind::Log).text, "IOSUPORT: line");
}

TEST_F(PortBusTest, AMessageWithAHoleIsNoAnswerAndTheLossIsTold)
{
    port.answer = [this](const QByteArray&, int) {
        port.arrive(checksumReply.left(6), 1000);
        port.arriveAfterLoss(checksumReply.mid(6), 12, 2000);
    };
    EXPECT_TRUE(transact().bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::TimedOut);
    EXPECT_TRUE(bus.errorText.contains(
        "instead came F0 00 6B 2D 30 41 (input was lost here: more waited to be read than the port "
        "keeps), (input was lost here: more waited to be read than the port keeps)"))
        << bus.errorText.toStdString();
    EXPECT_EQ(recorder.first(BusEventKind::Dropped).bytes, checksumReply.left(6));
    EXPECT_EQ(recorder.first(BusEventKind::Decided).text,
              "input was lost here: more waited to be read than the port keeps");
}

TEST_F(PortBusTest, AWholeAnswerBehindALossIsTaken)
{
    port.answer = [this](const QByteArray&, int) { port.arriveAfterLoss(checksumReply, 1, 1000); };
    EXPECT_EQ(transact().bytes, checksumReply);
}

// Traces: what is written, what is shown, what is played back.
#include "tests/hxhost/HxHost.h"

#include <QElapsedTimer>
#include <QJsonArray>

namespace {

class TraceCommand : public HxHostTest {};

} // namespace

TEST_F(TraceCommand, RecordHoldsEveryMessageWithItsName)
{
    const QString trace = path("trace");
    ASSERT_EQ(hxhost({"identify", "--port", "simulator", "--rate", "0", "--trace", trace}).exitCode,
              0);
    const QByteArray content = read(trace);
    EXPECT_TRUE(content.startsWith("# hxtrace 1\n# hxhost identify --port simulator --rate 0 "
                                   "--trace "))
        << content.toStdString();
    EXPECT_TRUE(content.contains(" sent        F0 7E 7F 06 01 F7 = identify\n"))
        << content.toStdString();
    EXPECT_TRUE(content.contains(" received    F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7 "
                                 "= identify.response\n"))
        << content.toStdString();
}

TEST_F(TraceCommand, RecordHoldsThePluginsLogLines)
{
    const QString trace = path("trace");
    ASSERT_EQ(hxhost({"info", "--port", "simulator", "--trace", trace}).exitCode, 0);
    EXPECT_TRUE(read(trace).contains(
        " log         : ERROR: Missing MIDI Protocol for key:  \"get.esn.cmd\"\n"));
}

TEST_F(TraceCommand, SummaryCountsMessagesRetriesAndTheWire)
{
    const QString trace = path("trace");
    ASSERT_EQ(
        hxhost({"update", image(), "--port", "simulator", "--trace", trace, "--fault", "bad-ack:5"})
            .exitCode,
        0);
    const QJsonObject summary =
        json({"trace", trace}).value("result").toObject().value("summary").toObject();
    EXPECT_EQ(summary.value("retries").toInt(), 1);
    EXPECT_EQ(summary.value("timeouts").toInt(), 0);
    EXPECT_EQ(summary.value("sent").toInt(), summary.value("received").toInt());
    EXPECT_DOUBLE_EQ(summary.value("wireMs").toDouble(),
                     summary.value("sentBytes").toDouble() * 0.32);
    EXPECT_NEAR(summary.value("wireUse").toDouble(), 1.0, 0.001);
}

TEST_F(TraceCommand, MonitorOfARecordShowsWhatArrivedAndEnds)
{
    const QString trace =
        write("trace", "# hxtrace 1\n"
                       "     0.000000 sent        F0 7E 7F 06 01 F7 = identify\n"
                       "     0.001000 realtime    F8\n"
                       "     0.002000 received    F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 "
                       "F7 = identify.response\n"
                       "   600.000000 dropped     F0 01 : cut off\n"
                       "   600.500000 lost        : the port is gone\n");
    QElapsedTimer timer;
    timer.start();
    const ProgramResult result = hxhost({"monitor", "--port", "replay:" + trace});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out.toStdString(),
              "       1.000  F8  real time\n"
              "       2.000  F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7  "
              "identify.response\n"
              "  600000.000  F0 01  dropped: a message whose rest did not come in time\n");
    EXPECT_LT(timer.elapsed(), 60000);
}

TEST_F(TraceCommand, ReplayGivesTheRecordedResultWithoutTheProduct)
{
    const QString syx = image();
    const QString trace = path("trace");
    const QStringList command = {"update", syx, "--json", "--port"};
    const ProgramResult first =
        hxhost(command + QStringList{"simulator", "--trace", trace, "--fault", "silent:4-5"});
    ProgramResult again = hxhost(command + QStringList{"replay:" + trace});
    EXPECT_EQ(again.exitCode, first.exitCode) << again.err.toStdString();
    again.out.replace("replay:" + trace.toUtf8(), "simulator");
    EXPECT_EQ(again.out.toStdString(), first.out.toStdString());
}

TEST_F(TraceCommand, DivergenceIsShownByteByByte)
{
    const QString trace = path("trace");
    ASSERT_EQ(hxhost({"identify", "--port", "simulator", "--trace", trace}).exitCode, 0);
    QByteArray content = read(trace);
    content.replace("F0 7E 7F 06 01 F7", "F0 7E 7E 06 01 F6");
    const QJsonObject document = json({"identify", "--port", "replay:" + write("other", content)});
    EXPECT_EQ(document.value("exitName").toString(), "replay-diverged");
    EXPECT_EQ(document.value("error").toObject().value("what").toString(),
              "the replay diverged: message 1 (line 3 of the trace) differs at byte 2: recorded "
              "7E, sent 7F");
    const QJsonArray bytes =
        document.value("result").toObject().value("divergence").toObject().value("bytes").toArray();
    EXPECT_EQ(bytes, QJsonArray({QJsonObject({{"byte", 2}, {"recorded", "7E"}, {"sent", "7F"}}),
                                 QJsonObject({{"byte", 5}, {"recorded", "F6"}, {"sent", "F7"}})}));
}

TEST_F(TraceCommand, TableHasOneShortLineForEachEvent)
{
    const QByteArray lines = "# hxtrace 1\n"
                             "0.001920 sent F0 7E 7F 06 01 F7 = identify\n"
                             "2.201920 timeout : nothing came\n";
    const ProgramResult ended = hxhost({"trace", write("trace", lines)});
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_TRUE(ended.out.startsWith("events:\n"
                                     "  ms        event    name      what\n"
                                     "  1.920     sent     identify  F0 7E 7F 06 01 F7\n"
                                     "  2201.920  timeout            nothing came\n"
                                     "summary.sent              1\n"))
        << ended.out.toStdString();
}

TEST_F(TraceCommand, MonitorDecodesWhatArrives)
{
    const ProgramResult ended =
        hxhost({"monitor", "--port", "simulator", "--fault", "noise", "--count", "3"});
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.out.toStdString(), "       0.000  F8  real time\n"
                                       "       0.000  FE  real time\n"
                                       "      20.000  F8  real time\n");
    const QJsonObject document =
        json({"monitor", "--port", "simulator", "--fault", "noise", "--seconds", "0.1"});
    EXPECT_EQ(document.value("result").toObject().value("count").toInt(), 12);
}

// Waiting takes no time on the simulated product's clock, and the loop took a whole processor.
TEST_F(TraceCommand, MonitorWaitsOutTheSilenceOfASimulatedProduct)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(hxhost({"monitor", "--port", "simulator", "--seconds", "0.3"}).exitCode, 0);
    EXPECT_GE(timer.elapsed(), 300);
}

TEST_F(TraceCommand, PortsListsBackendsEvenWhereNoneCanBeUsed)
{
    const QJsonObject document = json({"ports"});
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    const QJsonArray backends = document.value("result").toObject().value("backends").toArray();
    ASSERT_FALSE(backends.isEmpty());
    for (const QJsonValue& backend : backends)
        EXPECT_NE(backend.toObject().value("usable").toBool(),
                  !backend.toObject().value("reason").toString().isEmpty());
}

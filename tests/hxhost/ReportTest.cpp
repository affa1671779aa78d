// The pieces of the output by themselves: report, table, progress.
#include "apps/hxhost/report/Report.h"
#include "apps/hxhost/report/Progress.h"
#include "apps/hxhost/report/TextTable.h"
#include "host/trace/TraceSummary.h"

#include <gtest/gtest.h>

namespace hx::host {

namespace {

UpdateProgress halfway()
{
    UpdateProgress progress;
    progress.bytes = 50;
    progress.totalBytes = 100;
    progress.message = 5;
    progress.totalMessages = 10;
    progress.bytesPerSecond = 3125;
    progress.remainingMicroseconds = 61500000;
    return progress;
}

TraceEvent eventOf(BusEventKind kind, Microseconds time, const QByteArray& bytes = {})
{
    TraceEvent event;
    event.event = {kind, time, bytes, QString()};
    return event;
}

} // namespace

TEST(Report, ValuesStandInTheOrderInWhichTheyWereAdded)
{
    Report report;
    report.add("b.long", 2);
    report.add("a", true, "yes indeed");
    report.addHidden("c", 1.5);
    EXPECT_EQ(report.toText(false).toStdString(), "b.long  2\na       yes indeed\n");
    EXPECT_EQ(report.field("b.long"), QString("2"));
    EXPECT_EQ(report.field("a"), QString("true"));
    EXPECT_EQ(report.field("c"), QString("1.5"));
    EXPECT_EQ(report.field("b"), QString("{\"long\":2}"));
    EXPECT_FALSE(report.field("b.short").has_value());
    EXPECT_FALSE(report.field("").has_value());
}

TEST(Report, FieldOfAListIsOneElementALine)
{
    Report report;
    report.add("list", QJsonArray({"x", 2, QJsonValue()}));
    EXPECT_EQ(report.field("list"), QString("x\n2\n"));
    EXPECT_EQ(report.field("list.1"), QString("2"));
    EXPECT_FALSE(report.field("list.3").has_value());
    EXPECT_FALSE(report.field("list.-1").has_value());
    EXPECT_FALSE(report.field("list.x").has_value());
}

TEST(TextTable, ColumnsAreAsWideAsTheirWidestCell)
{
    EXPECT_EQ(textTable({"a", "bb"}, {{"1", "2"}, {"333", ""}}).toStdString(),
              "  a    bb\n  1    2\n  333\n");
    EXPECT_EQ(textTable({"only"}, {}).toStdString(), "  only\n");
}

TEST(ProgressBar, FitsFortyColumns)
{
    const QString bar = progressBar(halfway(), 40);
    EXPECT_EQ(bar.toStdString(), "[#####......]  50%  1:02 left  3.1 kB/s");
    EXPECT_LE(bar.size(), 39);
}

TEST(ProgressBar, FitsEveryWidth)
{
    for (int columns = 8; columns <= 200; ++columns) {
        const QString bar = progressBar(halfway(), columns);
        EXPECT_LT(bar.size(), columns);
        EXPECT_TRUE(bar.contains("50%")) << columns;
    }
    EXPECT_EQ(progressBar(halfway(), 12).toStdString(), " 50%");
    EXPECT_EQ(progressBar(halfway(), 200).toStdString(),
              "[####################....................]  50%  1:02 left  3.1 kB/s");
}

TEST(ProgressBar, RemainingTimeIsOpenWhileItIsNotKnown)
{
    UpdateProgress start;
    start.totalBytes = 100;
    EXPECT_EQ(progressBar(start, 30).toStdString(), "  0%  -:-- left  0.0 kB/s");
    EXPECT_EQ(progressBar(UpdateProgress(), 20).toStdString(), "  0%  0:00 left");
}

TEST(ProgressLine, NamesMessagesBytesRateAndTime)
{
    EXPECT_EQ(progressLine(halfway()).toStdString(),
              "50%: 5 of 10 messages, 50 of 100 bytes, 3.1 kB/s, 1:02 left");
    EXPECT_EQ(progressJson(halfway()).toStdString(),
              "{\"bytes\":50,\"bytesPerSecond\":3125,\"message\":5,\"messages\":10,\"percent\":50,"
              "\"remainingMs\":61500,\"retries\":0,\"totalBytes\":100}");
}

TEST(TraceSummary, CountsWireAndWaitingTime)
{
    const QByteArray message(100, 'x'); // 32 ms on the wire
    const TraceSummary summary = summarize(
        {eventOf(BusEventKind::Sent, 132000, message), eventOf(BusEventKind::TimedOut, 182000),
         eventOf(BusEventKind::Sent, 215000, message), eventOf(BusEventKind::Dropped, 216000, "ab"),
         eventOf(BusEventKind::RealTime, 216500, "c"),
         eventOf(BusEventKind::Received, 220000, "reply"),
         eventOf(BusEventKind::Ignored, 230000, "late")});
    EXPECT_EQ(summary.sent, 2);
    EXPECT_EQ(summary.retries, 1);
    EXPECT_EQ(summary.received, 1);
    EXPECT_EQ(summary.ignored, 1);
    EXPECT_EQ(summary.timeouts, 1);
    EXPECT_EQ(summary.realTime, 1);
    EXPECT_EQ(summary.sentBytes, 200);
    EXPECT_EQ(summary.receivedBytes, 5);
    EXPECT_EQ(summary.droppedBytes, 2);
    EXPECT_EQ(summary.elapsed, 120000);
    EXPECT_EQ(summary.wire, 64000);
    EXPECT_EQ(summary.waiting, 55000);
    EXPECT_EQ(summary.slowestReply, 5000);
    EXPECT_DOUBLE_EQ(summary.wireUse(), 65.0 / 64.0);
}

TEST(TraceSummary, EmptyTraceUsesNoWire)
{
    EXPECT_EQ(summarize({}).wireUse(), 0);
    EXPECT_EQ(summarize({}).elapsed, 0);
}

} // namespace hx::host

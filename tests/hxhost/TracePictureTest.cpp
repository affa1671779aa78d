// hxhost trace --svg: what is drawn of a trace, how it is abbreviated, and the throughput.
#include "host/trace/TraceSequence.h"
#include "host/trace/TraceThroughput.h"
#include "tests/hxhost/HxHost.h"

#include <QJsonArray>
#include <QXmlStreamReader>

namespace {

using hx::BusEventKind;
using Kind = hx::SequenceRow::Kind;

hx::TraceEvent event(hx::Microseconds time, BusEventKind kind, const char* hex,
                     const char* name = "", const char* text = "")
{
    hx::TraceEvent event;
    event.event.kind = kind;
    event.event.time = time;
    event.event.bytes = QByteArray::fromHex(hex);
    event.event.text = QString::fromLatin1(text);
    event.name = QString::fromLatin1(name);
    return event;
}

hx::TraceEvents goodExchanges(int count)
{
    hx::TraceEvents events;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i + 10);
        events.push_back(event(i * 1000, BusEventKind::Sent, "F0" + number + "F7"));
        events.push_back(event(i * 1000 + 500, BusEventKind::Received, "F000F7", "x.good"));
    }
    return events;
}

std::vector<Kind> kindsOf(const std::vector<hx::SequenceRow>& rows)
{
    std::vector<Kind> kinds;
    for (const hx::SequenceRow& row : rows)
        kinds.push_back(row.kind);
    return kinds;
}

int eventsOf(const std::vector<hx::SequenceRow>& rows)
{
    int events = 0;
    for (const hx::SequenceRow& row : rows)
        events += row.events;
    return events;
}

class TracePicture : public HxHostTest {
protected:
    // The picture of a trace, which must be well-formed XML; its texts, one a line.
    QString textsOf(const QByteArray& trace)
    {
        const QString svg = path("picture.svg");
        EXPECT_EQ(hxhost({"trace", write("picture.trace", trace), "--svg", svg}).exitCode, 0);
        QXmlStreamReader xml(read(svg));
        QString texts;
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement &&
                xml.name() == QLatin1String("text"))
                texts += xml.readElementText() + '\n';
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
        return texts;
    }
};

} // namespace

TEST(SequenceRows, AreMessageAndAnswerInOrder)
{
    const auto rows = hx::sequenceRows(goodExchanges(1));
    EXPECT_EQ(kindsOf(rows), (std::vector<Kind>{Kind::Message, Kind::Reply}));
    EXPECT_EQ(rows[0].text, "F0 10 F7");
    EXPECT_EQ(rows[1].text, "x.good");
    EXPECT_EQ(rows[1].time, 500);
}

TEST(SequenceRows, MarkWhatIsSentAgainAfterItself)
{
    const auto rows = hx::sequenceRows({event(0, BusEventKind::Sent, "F001F7"),
                                        event(1, BusEventKind::TimedOut, "", "", "nothing came"),
                                        event(2, BusEventKind::Sent, "F001F7"),
                                        event(3, BusEventKind::Sent, "F002F7")});
    EXPECT_EQ(kindsOf(rows),
              (std::vector<Kind>{Kind::Message, Kind::Failure, Kind::Retry, Kind::Message}));
    EXPECT_EQ(rows[1].text, "timeout: nothing came");
}

TEST(SequenceRows, MarkAnswersThatRefuse)
{
    for (const char* name : {"nak", "fwupdate.fwu.response.bad", "fwupdate.fwd.response.failed"}) {
        const auto rows = hx::sequenceRows({event(0, BusEventKind::Received, "F000F7", name)});
        EXPECT_EQ(kindsOf(rows), std::vector<Kind>{Kind::Refusal}) << name;
    }
}

TEST(SequenceRows, MarkWhatWasNotTakenAndLeaveOutRealTimeAndLog)
{
    const auto rows = hx::sequenceRows({event(0, BusEventKind::Ignored, "F000F7", "", "stale"),
                                        event(1, BusEventKind::RealTime, "F8"),
                                        event(2, BusEventKind::Log, "", "", "a line"),
                                        event(3, BusEventKind::Dropped, "41", "", "no status"),
                                        event(4, BusEventKind::PortLost, "", "", "unplugged")});
    EXPECT_EQ(kindsOf(rows), (std::vector<Kind>{Kind::Ignored, Kind::Dropped, Kind::Failure}));
    EXPECT_EQ(rows[2].text, "lost: unplugged");
}

TEST(SequenceRows, HaveTheHostsDecisionsBesideThem)
{
    const auto rows = hx::sequenceRows(
        {event(0, BusEventKind::Decided, "", "", "image: good"),
         event(1, BusEventKind::Sent, "F001F7"), event(2, BusEventKind::Received, "F000F7"),
         event(2, BusEventKind::Accepted, "", "", "message 1 of 2 good"),
         event(2, BusEventKind::Decided, "", "", "outcome: succeeded")});
    EXPECT_EQ(kindsOf(rows), (std::vector<Kind>{Kind::Note, Kind::Message, Kind::Reply}));
    EXPECT_EQ(rows[0].notes, QStringList("image: good"));
    EXPECT_EQ(rows[2].notes, QStringList("outcome: succeeded")); // the rest says the answer
}

TEST(SequenceRows, QuoteNoWholeMessageBesideThem)
{
    const QByteArray hex = QByteArray("00 ").repeated(146);
    const auto rows = hx::sequenceRows(
        {event(0, BusEventKind::Decided, "", "", "F0 " + hex + "F7 could not be sent"),
         event(1, BusEventKind::Decided, "", "", QByteArray("word ").repeated(500))});
    EXPECT_EQ(rows[0].notes[0], "F0 00 00 00 00 00 00 00 ... could not be sent");
    EXPECT_EQ(rows[0].notes[1].size(), 244);
}

TEST(SequenceRows, TellExchangesThatAreAllAlikeOnce)
{
    const auto rows = hx::sequenceRows(goodExchanges(40));
    EXPECT_EQ(kindsOf(rows),
              (std::vector<Kind>{Kind::Message, Kind::Reply, Kind::Message, Kind::Reply,
                                 Kind::Omission, Kind::Message, Kind::Reply}));
    EXPECT_EQ(rows[4].text, "37 more messages, 111 bytes, each answered by x.good");
    EXPECT_EQ(eventsOf(rows), 80);
    EXPECT_EQ(hx::sequenceRows(goodExchanges(5)).size(), 10U);
}

TEST(SequenceRows, ShowARetryInTheMidstOfExchangesThatAreAlike)
{
    hx::TraceEvents events = goodExchanges(20);
    events.push_back(event(20000, BusEventKind::Sent, "F055F7"));
    events.push_back(event(20001, BusEventKind::Received, "F001F7", "x.bad"));
    events.push_back(event(20002, BusEventKind::Sent, "F055F7"));
    events.push_back(event(20003, BusEventKind::Received, "F000F7", "x.good"));
    const auto rows = hx::sequenceRows(events);
    ASSERT_EQ(rows.size(), 11U);
    EXPECT_EQ(rows[4].kind, Kind::Omission);
    EXPECT_EQ(rows[8].kind, Kind::Refusal);
    EXPECT_EQ(rows[9].kind, Kind::Retry);
}

TEST(SequenceRows, AreNeverMoreThanAPictureHolds)
{
    hx::TraceEvents events;
    for (int i = 0; i < 5000; ++i)
        events.push_back(event(i, BusEventKind::Ignored, "F001F7"));
    const auto rows = hx::sequenceRows(events);
    EXPECT_EQ(int(rows.size()), hx::maxSequenceRows);
    EXPECT_EQ(eventsOf(rows), 5000);
    EXPECT_EQ(rows.front().time, 0);
    EXPECT_EQ(rows.back().time, 4999);
}

TEST(Throughput, SpreadsEachMessageOverItsTimeOnTheWire)
{
    // 100 bytes take 32 ms on the wire: two messages without a pause between them.
    const QByteArray first = "F0" + QByteArray("01").repeated(98) + "F7";
    const QByteArray second = "F0" + QByteArray("02").repeated(98) + "F7";
    const hx::Throughput result = hx::throughputOf({event(32000, BusEventKind::Sent, first),
                                                    event(64000, BusEventKind::Sent, second),
                                                    event(164000, BusEventKind::TimedOut, "")});
    EXPECT_EQ(result.start, 0);
    EXPECT_EQ(result.binWidth, 2000);
    ASSERT_EQ(result.sent.size(), 82U);
    for (int bin = 0; bin < 32; ++bin)
        EXPECT_NEAR(result.sent[size_t(bin)], 3125, 0.001) << bin;
    EXPECT_EQ(result.sent[32], 0);
    EXPECT_NEAR(result.highest(), 3125, 0.001);
    EXPECT_EQ(result.faults, std::vector<hx::Microseconds>{164000});
}

TEST(Throughput, CountsTheBytesOfRetriesApart)
{
    const hx::Throughput result = hx::throughputOf(
        {event(10000, BusEventKind::Sent, "F001F7"), event(20000, BusEventKind::Sent, "F001F7")});
    const double width = double(result.binWidth) / 1e6;
    double sent = 0;
    double again = 0;
    for (size_t bin = 0; bin < result.sent.size(); ++bin) {
        sent += result.sent[bin] * width;
        again += result.again[bin] * width;
    }
    EXPECT_NEAR(sent, 6, 0.001);
    EXPECT_NEAR(again, 3, 0.001);
}

TEST(Throughput, OfNothingSentHasNoBins)
{
    EXPECT_TRUE(hx::throughputOf({}).sent.empty());
    EXPECT_TRUE(hx::throughputOf({event(1, BusEventKind::RealTime, "F8")}).sent.empty());
}

TEST_F(TracePicture, HoldsTimesRetriesAndFaults)
{
    const QString texts = textsOf("# hxtrace 1\n"
                                  "0.001920 sent F0 7E 7F 06 01 F7 = identify\n"
                                  "2.201920 timeout : nothing <came> & went\n"
                                  "2.203840 sent F0 7E 7F 06 01 F7 = identify\n"
                                  "2.210000 ignored F0 01 F7 : not expected\n");
    EXPECT_TRUE(texts.contains("2.201920 s\ntimeout: nothing <came> & went\n"))
        << texts.toStdString();
    EXPECT_TRUE(texts.contains("2.203840 s\nagain: identify\n")) << texts.toStdString();
    EXPECT_TRUE(texts.contains("ignored: F0 01 F7\nnot expected\n")) << texts.toStdString();
    EXPECT_TRUE(texts.contains("2 messages sent (12 bytes, 1 of them again), 0 answers, 1 "
                               "ignored, 1 timeouts; "))
        << texts.toStdString();
    EXPECT_TRUE(texts.contains("Throughput\n")) << texts.toStdString();
}

TEST_F(TracePicture, OfAnEmptyTraceIsAPictureWithoutRows)
{
    EXPECT_TRUE(textsOf("# hxtrace 1\n").contains("host\nproduct\n"));
}

TEST_F(TracePicture, IsNamedInsteadOfTheTable)
{
    const QString trace = write("a.trace", "# hxtrace 1\n0.001920 sent F0 7E 7F 06 01 F7\n");
    const ProgramResult ended = hxhost({"trace", trace, "--svg", path("a.svg")});
    EXPECT_FALSE(ended.out.contains("events:")) << ended.out.toStdString();
    EXPECT_TRUE(ended.out.contains("a.svg\n")) << ended.out.toStdString();
    const QJsonObject result =
        json({"trace", trace, "--svg", path("a.svg")}).value("result").toObject();
    EXPECT_EQ(result.value("picture").toString(), path("a.svg"));
    EXPECT_EQ(result.value("events").toArray().size(), 1);
}

TEST_F(TracePicture, ThatCannotBeWrittenIsAFileError)
{
    const QString trace = write("a.trace", "# hxtrace 1\n");
    const ProgramResult ended = hxhost({"trace", trace, "--svg", path("no/such/folder/a.svg")});
    EXPECT_EQ(ended.exitCode, 10);
    EXPECT_TRUE(ended.err.contains("  next: give another name with --svg\n"))
        << ended.err.toStdString();
}

TEST_F(TracePicture, LeavesItsOwnTraceAlone)
{
    const QString trace = write("a.trace", "# hxtrace 1\n");
    const ProgramResult ended = hxhost({"trace", trace, "--svg", path("./a.trace")});
    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_TRUE(ended.err.startsWith("error: --svg \"" + path("./a.trace").toUtf8() +
                                     "\" would overwrite the file that FILE names\n"))
        << ended.err.toStdString();
    EXPECT_EQ(read(trace), "# hxtrace 1\n");
}

// The picture that docs/user/update-run.md shows.
TEST_F(TracePicture, OfTheDocumentedUpdateIsTheOneInTheTree)
{
    const QString docs = QStringLiteral(HX_DOCS_FOLDER);
    const QString svg = path("again.svg");
    ASSERT_EQ(hxhost({"trace", docs + "/user/update-sequence.trace", "--svg", svg}).exitCode, 0);
    EXPECT_TRUE(read(svg) == read(docs + "/user/update-sequence.svg"))
        << "make it again: hxhost trace docs/user/update-sequence.trace --svg "
           "docs/user/update-sequence.svg";
}

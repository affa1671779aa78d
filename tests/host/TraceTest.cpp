#include "host/trace/Trace.h"

#include "host/product/MessageNames.h"
#include "tests/host/Bytes.h"
#include "tests/host/ProductSession.h"
#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScriptedPort.h"

#include <QBuffer>

#include <gtest/gtest.h>

using namespace hx;

namespace {

Result<TraceEvents> parsedTrace(const QByteArray& lines)
{
    return parseTrace("# hxtrace 1\n" + lines);
}

void expectError(const QByteArray& lines, int line, int column, const char* text)
{
    const Result<TraceEvents> file = parsedTrace(lines);
    ASSERT_FALSE(file);
    EXPECT_EQ(file.problem().place.line, line) << lines.toStdString();
    EXPECT_EQ(file.problem().place.column, column) << lines.toStdString();
    EXPECT_EQ(file.problem().what,
              QString("line %1, column %2: expected %3").arg(line).arg(column).arg(text));
}

const BusEventKind allKinds[] = {
    BusEventKind::Sent,     BusEventKind::Received,   BusEventKind::Ignored,
    BusEventKind::Dropped,  BusEventKind::RealTime,   BusEventKind::TimedOut,
    BusEventKind::PortLost, BusEventKind::SendFailed, BusEventKind::Interrupted,
    BusEventKind::Accepted, BusEventKind::Decided,    BusEventKind::Log,
    BusEventKind::PortBack,
};

} // namespace

TEST(TraceWriter, EndsALineWithoutBytesAndTextAfterItsWord)
{
    TraceEvent event;
    event.event = {BusEventKind::Log, 1500000, QByteArray(), QString()};
    EXPECT_EQ(traceLine(event), "     1.500000 log");
}

TEST(TraceWriter, HasEachEventInItsFileAtOnce)
{
    TestFiles files;
    QFile file(files.path("run.trace"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    TraceWriter writer(file, 0);
    writer.busEvent({BusEventKind::Log, 0, QByteArray(), "one"});
    EXPECT_EQ(TestFiles::contentOf(file.fileName()),
              "# hxtrace 1\n     0.000000 log         : one\n");
    EXPECT_TRUE(writer.ok());
}

TEST(TraceWriter, WritesOneLineAnEvent)
{
    ProductSession session;
    const MessageNames names(session.device());
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    TraceWriter writer(out, 5000000);
    writer.setNames([&names](const QByteArray& message) { return names.nameOf(message); });
    writer.comment("hxhost identify");
    writer.busEvent({BusEventKind::Sent, 5000000, hex("F07E7F0601F7"), QString()});
    writer.busEvent({BusEventKind::RealTime, 5000100, hex("F8"), QString()});
    writer.busEvent({BusEventKind::Ignored, 5001000, hex("F001F7"), "does not fit F07E"});
    writer.busEvent(
        {BusEventKind::Received, 17345678, hex("F07E000602006B2D3000410031303233F7"), QString()});
    writer.busEvent({BusEventKind::Log, 17345678, QByteArray(), "IOSUPORT:  \"a\\b\"\nnext"});
    EXPECT_TRUE(writer.ok());
    EXPECT_EQ(out.data(),
              "# hxtrace 1\n"
              "# hxhost identify\n"
              "     0.000000 sent        F0 7E 7F 06 01 F7 = identify\n"
              "     0.000100 realtime    F8\n"
              "     0.001000 ignored     F0 01 F7 : does not fit F07E\n"
              "    12.345678 received    F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7 = "
              "identify.response\n"
              "    12.345678 log         : IOSUPORT:  \"a\\\\b\"\\x0anext\n");
}

TEST(TraceWriter, LetsTimesNeverGoBackwards)
{
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    TraceWriter writer(out, 0);
    writer.busEvent({BusEventKind::Decided, 2000000, QByteArray(), "a"});
    writer.busEvent({BusEventKind::RealTime, 1000000, hex("F8"), QString()});
    const Result<TraceEvents> file = parseTrace(out.data());
    ASSERT_TRUE(file) << file.problem().what.toStdString();
    EXPECT_EQ(file->at(1).event.time, 2000000);
}

TEST(TraceWriter, NoticesThatItCannotWrite)
{
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::ReadOnly));
    LogCapture log;
    TraceWriter writer(out, 0);
    EXPECT_FALSE(writer.ok());
}

TEST(Trace, ReadsBackWhatWasWrittenForEveryKind)
{
    int line = 2;
    for (BusEventKind kind : allKinds) {
        TraceEvent event;
        event.event.kind = kind;
        event.event.time = 999999999999999;
        event.event.bytes = carriesBytes(kind) ? hex("FF") : QByteArray();
        event.event.text = QString::fromUtf8("= : \\ \t\n\x7f F0 \xC3\xA4 ");
        event.name = carriesBytes(kind) ? "id.dsp*.response" : "";
        const Result<TraceEvents> file = parsedTrace(traceLine(event).toUtf8() + "\n");
        ASSERT_TRUE(file) << file.problem().what.toStdString();
        ASSERT_EQ(file->size(), 1u);
        EXPECT_EQ(file->at(0).event.kind, kind);
        EXPECT_EQ(file->at(0).event.time, event.event.time);
        EXPECT_EQ(file->at(0).event.bytes, event.event.bytes);
        EXPECT_EQ(file->at(0).event.text, event.event.text);
        EXPECT_EQ(file->at(0).name, event.name);
        EXPECT_EQ(file->at(0).line, line);
    }
}

TEST(Trace, HasAWordForEachKind)
{
    for (BusEventKind kind : allKinds) {
        BusEventKind back = BusEventKind::Log;
        EXPECT_TRUE(busEventKindOf(busEventWord(kind), &back));
        EXPECT_EQ(back, kind);
    }
    BusEventKind kind = BusEventKind::Sent;
    EXPECT_FALSE(busEventKindOf("Sent", &kind));
    EXPECT_FALSE(busEventKindOf("", &kind));
}

TEST(TraceReader, ReadsCommentsLineEndsAndAnyNumberOfBlanks)
{
    const Result<TraceEvents> file =
        parseTrace("# hxtrace 1\r\n# a comment\r\n0.000001 sent F0 F7\r\n"
                   "0.000002   decided   : done");
    ASSERT_TRUE(file) << file.problem().what.toStdString();
    ASSERT_EQ(file->size(), 2u);
    EXPECT_EQ(file->at(0).line, 3);
    EXPECT_EQ(file->at(0).event.bytes, hex("F0F7"));
    EXPECT_EQ(file->at(1).event.text, "done");
}

TEST(TraceReader, ReadsAnOlderTraceWhoseUnsentMessagesAreInTheText)
{
    const Result<TraceEvents> file =
        parseTrace("# hxtrace 1\n0.000001 unsent : F0 F7 could not be sent: full");
    ASSERT_TRUE(file) << file.problem().what.toStdString();
    EXPECT_TRUE(file->at(0).event.bytes.isEmpty());
    EXPECT_EQ(file->at(0).event.text, "F0 F7 could not be sent: full");
}

TEST(TraceReader, AcceptsATraceWithoutEvents)
{
    EXPECT_TRUE(parseTrace("# hxtrace 1"));
    EXPECT_TRUE(parseTrace("# hxtrace 1\n"));
}

TEST(TraceReader, RefusesAnotherFirstLine)
{
    for (const char* content : {"", "\n", "hello\n", "# hxtrace 2\n", "0.000000 sent F0\n"}) {
        const Result<TraceEvents> file = parseTrace(content);
        EXPECT_EQ(file.problem().what, "line 1, column 1: expected \"# hxtrace 1\"");
    }
}

TEST(TraceReader, RefusesWhatTheGrammarDoesNotAllow)
{
    expectError("\n", 2, 1, "a time such as 12.345678");
    expectError("x sent F0\n", 2, 1, "a time such as 12.345678");
    expectError("  1 sent F0\n", 2, 3, "a time such as 12.345678");
    expectError("1234567890.000000 sent F0\n", 2, 1, "a time such as 12.345678");
    expectError("1.00 sent F0\n", 2, 1, "a time with six decimals");
    expectError("1.000000sent F0\n", 2, 9, "a kind of event, such as sent or received");
    expectError("1.000000 send F0\n", 2, 10, "a kind of event, such as sent or received");
    expectError("1.000000\n", 2, 9, "a kind of event, such as sent or received");
    expectError("1.000000 sent\n", 2, 14, "the bytes that travelled");
    expectError("1.000000 log F0 : x\n", 2, 14, "no bytes for this kind of event");
    expectError("1.000000 sent F0 f7\n", 2, 18,
                "a byte of two upper-case hex digits, \"=\" or \": \"");
    expectError("1.000000 sent F00\n", 2, 15,
                "a byte of two upper-case hex digits, \"=\" or \": \"");
    expectError("1.000000 sent F0 :x\n", 2, 18,
                "a byte of two upper-case hex digits, \"=\" or \": \"");
    expectError("1.000000 sent F0 = \n", 2, 18, "bytes before \"=\" and a name after it");
    expectError("1.000000 decided = name\n", 2, 18, "bytes before \"=\" and a name after it");
    expectError("1.000000 decided : a\\b\n", 2, 21, "\\\\ or \\x and two hex digits");
    expectError("1.000000 decided : a\\x1\n", 2, 21, "\\\\ or \\x and two hex digits");
    expectError("1.000000 realtime F8 F8\n", 2, 19, "one byte from F8 to FF");
    expectError("1.000000 realtime F7\n", 2, 19, "one byte from F8 to FF");
    expectError("2.000000 sent F0\n1.999999 sent F0\n", 3, 1,
                "a time not before that of the last event");
    expectError("1.000000 sent F0\n\n", 3, 1, "a time such as 12.345678");
}

TEST(TraceReader, RefusesBlanksAtTheEndNamesWithoutBlankAndEscapesThatAreNoTwoDigits)
{
    expectError("1.000000 lost \n", 2, 14, "no blank at the end of the line");
    expectError("1.000000 sent F0  \n", 2, 18, "no blank at the end of the line");
    expectError("1.000000 sent F0 = reset \n", 2, 25, "no blank at the end of the line");
    expectError("1.000000 sent F0 =reset\n", 2, 18, "bytes before \"=\" and a name after it");
    expectError("1.000000 log : \\x+f\n", 2, 16, "\\\\ or \\x and two hex digits");
    expectError("1.000000 log : \\x f\n", 2, 16, "\\\\ or \\x and two hex digits");
    EXPECT_EQ(parseTrace("# hxtrace 1\n1.000000 log : a \n")->at(0).event.text, "a ");
}

TEST(TraceReader, AZeroByteHidesNothingBehindIt)
{
    const char hidden[] = "# hxtrace 1\n1.000000 lost\0 and more\n";
    const Result<TraceEvents> file = parseTrace(QByteArray(hidden, sizeof(hidden) - 1));
    EXPECT_FALSE(file);
    EXPECT_EQ(file.problem().place.line, 2);

    const char inText[] = "# hxtrace 1\n1.000000 log : a\0b\n";
    const Result<TraceEvents> kept = parseTrace(QByteArray(inText, sizeof(inText) - 1));
    ASSERT_TRUE(kept) << kept.problem().what.toStdString();
    EXPECT_EQ(kept->at(0).event.text.size(), 3);
}

TEST(TraceReader, RefusesANameWithControlCharacters)
{
    expectError("1.000000 sent F0 = re\x01set\n", 2, 22,
                "a byte of two upper-case hex digits, \"=\" or \": \"");
    expectError("1.000000 sent F0 = reset\r\r\n", 2, 25,
                "a byte of two upper-case hex digits, \"=\" or \": \"");
}

TEST(TraceReader, ReadsTheExampleOfItsPage)
{
    const QByteArray page =
        TestFiles::contentOf(QStringLiteral(HX_DOCS_FOLDER "/formats/trace-format.md"));
    const auto begin = page.indexOf("# hxtrace 1\n# hxhost");
    ASSERT_GT(begin, 0);
    const Result<TraceEvents> file =
        parseTrace(page.mid(begin, page.indexOf("```", begin) - begin));
    EXPECT_TRUE(file) << file.problem().what.toStdString();
    EXPECT_EQ(file->size(), 6u);
}

TEST(TraceReader, ReadsAFileAndSaysWhenItCannot)
{
    TestFiles files;
    EXPECT_TRUE(readTrace(files.write("a.trace", "# hxtrace 1\n")));
    EXPECT_EQ(readTrace(files.path("none.trace")).problem().what,
              "the trace \"" + files.path("none.trace") +
                  "\": it cannot be read: No such file or directory");
    QFile huge(files.write("huge.trace", "# hxtrace 1\n"));
    ASSERT_TRUE(huge.resize(256LL * 1024 * 1024 + 1)); // takes no room on the disk
    EXPECT_EQ(readTrace(huge.fileName()).problem().what,
              "the trace \"" + huge.fileName() +
                  "\": it has more than 268435456 bytes, which no trace has");
}

TEST(TraceReader, RefusesMoreEventsThanItKeeps)
{
    const QByteArray events = QByteArray("0.000000 lost\n").repeated(500000);
    EXPECT_EQ(parsedTrace(events)->size(), 500000u);
    expectError(events + "0.000000 lost\n", 500002, 1,
                "at most 500000 events; cut the trace into parts, each with the first line");
}

// A device states no size, and this one has no end.
TEST(TraceReader, RefusesAnEndlessDeviceWithoutTakingItIntoMemory)
{
    if (!QFile::exists(QStringLiteral("/dev/zero")))
        GTEST_SKIP() << "no /dev/zero";
    EXPECT_EQ(readTrace(QStringLiteral("/dev/zero")).problem().what,
              "the trace \"/dev/zero\": line 1, column 1: expected \"# hxtrace 1\"");
}

TEST(TraceReader, RefusesTextThatIsNoUtf8AndSaysWhere)
{
    expectError("0.000000 log : \xC3\xA4 \xFF b\n", 2, 18, "text in UTF-8");
    expectError("# \xC3\n", 2, 3, "text in UTF-8");
    EXPECT_TRUE(parsedTrace("0.000000 log : \xC3\xA4 \xEF\xBF\xBD\n"));
}

TEST(Trace, RecordsEveryByteThatArrivedOnce)
{
    const QByteArray reply = hex("F07E000602006B2D3000410031303233F7");
    ScriptedPort port;
    PortBus bus(port);
    port.arrive(hex("F001"));                   // unfinished before the first command
    port.answer = [&](const QByteArray&, int) { // dropped, ignored, taken, left over
        port.arrive(hex("0203F7") + hex("F0F804F7") + reply + hex("904001") + hex("F005"), 1000);
    };
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    TraceWriter writer(out, 0);
    bus.addObserver(&writer);
    bus.transact(HxMidiData("F07E7F0601F7"), "F07E..0602", 100);
    bus.listen(5000000);

    const Result<TraceEvents> file = parseTrace(out.data());
    ASSERT_TRUE(file) << file.problem().what.toStdString();
    QByteArray arrived;
    for (const TraceEvent& event : *file) {
        if (event.event.kind != BusEventKind::Sent && event.event.kind != BusEventKind::RealTime)
            arrived += event.event.bytes;
    }
    EXPECT_EQ(arrived,
              hex("F001") + hex("0203F7") + hex("F004F7") + reply + hex("904001") + hex("F005"));
}

// Each exit code, reached in the way that its row of the table says.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/report/ExitCodeTable.h"
#include "host/base/FileLock.h"
#include "tests/hxhost/HxHost.h"

#include <QRegularExpression>

#include <set>
#include <stdexcept>

namespace {

class ExitCodes : public HxHostTest {};

} // namespace

TEST_F(ExitCodes, HelpHoldsTheWholeTable)
{
    const ProgramResult help = hxhost({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.contains(hx::host::exitCodeHelp().toUtf8())) << help.out.toStdString();
    EXPECT_EQ(hx::host::exitCodeHelp().count('\n'), 1 + int(hx::host::exitCodeTable().size()));
}

TEST_F(ExitCodes, ManualHoldsEveryRow)
{
    const QByteArray page = read(HX_MAN_PAGE);
    for (const hx::host::ExitCodeRow& row : hx::host::exitCodeTable()) {
        const QByteArray entry = QByteArray(".TP\n.B ") + QByteArray::number(int(row.code)) + " " +
                                 QByteArray(row.name).replace("-", "\\-") + "\n" +
                                 QByteArray(row.meaning).replace("-", "\\-") + "\n";
        EXPECT_TRUE(page.contains(entry)) << entry.toStdString();
    }
}

TEST_F(ExitCodes, PageOfExitCodesHoldsEveryRow)
{
    const QByteArray page = read(HX_EXIT_CODE_PAGE);
    for (const hx::host::ExitCodeRow& row : hx::host::exitCodeTable()) {
        const QByteArray line = "| " + QByteArray::number(int(row.code)) + " | " + row.name +
                                " | " + row.meaning + " |";
        EXPECT_TRUE(page.contains(line)) << line.toStdString();
    }
}

TEST_F(ExitCodes, NumbersAndNamesAreUsedOnce)
{
    std::set<int> numbers;
    std::set<std::string> names;
    for (const hx::host::ExitCodeRow& row : hx::host::exitCodeTable()) {
        EXPECT_TRUE(numbers.insert(int(row.code)).second) << row.name;
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_EQ(hx::host::exitName(row.code), row.name);
    }
}

TEST_F(ExitCodes, SuccessWhenAllWasDone)
{
    EXPECT_EQ(hxhost({"identify", "--port", "simulator"}).exitCode, 0);
}

TEST_F(ExitCodes, InternalWhenACommandThrows)
{
    hx::host::CommandLine line;
    const hx::Command command = line.add("fall", "");
    line.setRun(command, [](hx::host::CommandContext&) { throw std::runtime_error("over"); });
    char program[] = "hxhost";
    char word[] = "fall";
    char* arguments[] = {program, word, nullptr};
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(line.run(2, arguments), 1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "error: an unexpected fault: over\n"
              "  expected: none\n"
              "  next: report it with the trace that --trace writes; 'hxhost recover' says what "
              "state the product is in\n");
}

TEST_F(ExitCodes, UsageNamesTheCommandsThatThereAre)
{
    EXPECT_EQ(hxhost({"image"}).err, "error: no command is given\n"
                                     "  expected: one of: build, inspect, sign, verify\n"
                                     "  next: see 'hxhost image --help'\n");
    EXPECT_EQ(hxhost({"image", "bake"}).err, "error: \"bake\" is not a command\n"
                                             "  expected: one of: build, inspect, sign, verify\n"
                                             "  next: see 'hxhost image --help'\n");
}

TEST_F(ExitCodes, UsageTellsWordsThatAreNotExpected)
{
    EXPECT_EQ(hxhost({"image", "inspect", "x", "y", "--z"}).err,
              "error: not expected here: \"y\" \"--z\"\n"
              "  expected: a command, then its arguments and options\n"
              "  next: see 'hxhost image inspect --help'\n");
}

TEST_F(ExitCodes, UsageSaysWhichValuesAnOptionTakes)
{
    const QByteArray rest = "  expected: a command, then its arguments and options\n"
                            "  next: see 'hxhost image build --help'\n";
    EXPECT_EQ(hxhost({"image", "build", "x", "-o", "y", "--kind", "fw"}).err,
              "error: --kind: \"fw\" is not one of: fwd, fwu\n" + rest);
    EXPECT_TRUE(
        hxhost({"identify", "--rate", "fast"})
            .err.startsWith("error: --rate: \"fast\" is not a number from 0 to 100000000\n"));
    EXPECT_TRUE(hxhost({"identify", "--gap", "-1"})
                    .err.startsWith("error: --gap: \"-1\" is not a number from 0 to 60000\n"));
}

TEST_F(ExitCodes, HelpIsImperativeForEveryCommand)
{
    for (const QStringList& words : {QStringList{"--help"}, QStringList{"image", "--help"}}) {
        const QString help = QString::fromUtf8(hxhost(words).out);
        const QRegularExpression row(QStringLiteral("^  [a-z]+ +([A-Z][a-z]+) "),
                                     QRegularExpression::MultilineOption);
        int commands = 0;
        for (auto found = row.globalMatch(help); found.hasNext(); ++commands)
            EXPECT_FALSE(found.next().captured(1).endsWith(QLatin1Char('s'))) << qPrintable(help);
        EXPECT_GE(commands, 2);
    }
}

TEST_F(ExitCodes, FileNamesInBracketsAndAfterTwoDashesAreTakenAsTheyAre)
{
    EXPECT_TRUE(hxhost({"image", "inspect", "[x]"}).err.contains("\"[x]\""));
    EXPECT_TRUE(hxhost({"image", "inspect", "--", "--json"}).err.contains("\"--json\""));
}

TEST_F(ExitCodes, UsageForWhatTheCommandLineDoesNotKnow)
{
    const QList<QStringList> wrong = {{},
                                      {"nothing"},
                                      {"update"},
                                      {"identify", "--nothing"},
                                      {"identify", "--port"},
                                      {"image"},
                                      {"image", "build", "x"},
                                      {"update", "x", "--progress", "loud"},
                                      {"update", "x", "--rate", "-1"},
                                      {"update", "x", "--rate", "fast"},
                                      {"update", "x", "--gap", "60001"},
                                      {"identify", "--fault", "sneeze"},
                                      {"image", "build", "x", "-o", "y", "--kind", "fwx"}};
    for (const QStringList& arguments : wrong) {
        const ProgramResult ended = hxhost(arguments);
        EXPECT_EQ(ended.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_EQ(ended.out.toStdString(), "") << arguments.join(' ').toStdString();
        EXPECT_TRUE(ended.err.startsWith("error: ")) << ended.err.toStdString();
        EXPECT_TRUE(ended.err.contains("\n  next: see 'hxhost")) << ended.err.toStdString();
    }
}

TEST_F(ExitCodes, UsageForATimeOrACountThatIsNone)
{
    for (const char* time : {"0", "-1", "nan", "inf", "-inf", "1e300", "1e-400", "soon"}) {
        for (const char* command : {"monitor", "simulate"}) {
            const ProgramResult ended = hxhost({command, "--seconds", time});
            EXPECT_EQ(ended.exitCode, 2) << command << " " << time;
            EXPECT_TRUE(ended.err.contains("is not a time; expected seconds, more than 0, at most "
                                           "1000000000\n"))
                << ended.err.toStdString();
        }
    }
    for (const char* count : {"0", "-1", "nan", "1.5", "99999999999", "all"}) {
        const ProgramResult ended =
            hxhost({"monitor", "--port", "simulator", "--seconds", "0.1", "--count", count});
        EXPECT_EQ(ended.exitCode, 2) << count;
        EXPECT_TRUE(ended.err.startsWith("error: --count: ")) << ended.err.toStdString();
    }
}

TEST_F(ExitCodes, UsageNamesTheWordThatIsNoCommand)
{
    EXPECT_EQ(hxhost({"ident"}).err.toStdString(),
              "error: \"ident\" is not a command\n"
              "  expected: one of: ports, identify, info, update, batch, verify, recover, image, "
              "inspect, "
              "check, monitor, trace, simulate, support\n"
              "  next: see 'hxhost --help'\n");
    EXPECT_EQ(hxhost({"image", "make"}).err.toStdString(),
              "error: \"make\" is not a command\n"
              "  expected: one of: build, inspect, sign, verify\n"
              "  next: see 'hxhost image --help'\n");
}

TEST_F(ExitCodes, UsageNamesTheWordThatIsNoCommandAfterOptionsToo)
{
    EXPECT_EQ(json({"image", "--quiet", "make"})["error"].toObject()["what"].toString(),
              "\"make\" is not a command");
    EXPECT_TRUE(hxhost({"--json", "bogus"}).out.contains(R"("\"bogus\" is not a command")"));
    EXPECT_TRUE(hxhost({"--port", "simulator", "bogus"})
                    .err.startsWith("error: \"bogus\" is not a command\n"));
    EXPECT_TRUE(hxhost({"--port", "simulator"})
                    .err.startsWith("error: not expected here: \"--port\" \"simulator\"\n"));
}

// What a variable of a script that was never set leaves behind: "verify" without its image would
// find code intact that is not the image's.
TEST_F(ExitCodes, UsageForAnEmptyValue)
{
    const QList<QStringList> wrong = {{"verify", "", "--port", "simulator"},
                                      {"check", ""},
                                      {"identify", "--port", ""},
                                      {"identify", "--port", "simulator", "--trace", ""},
                                      {"identify", "--port", "simulator", "--field", ""}};
    for (const QStringList& arguments : wrong) {
        const ProgramResult ended = hxhost(arguments);
        EXPECT_EQ(ended.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_EQ(ended.out.toStdString(), "") << arguments.join(' ').toStdString();
        EXPECT_TRUE(ended.err.contains(" is empty\n")) << ended.err.toStdString();
    }
    EXPECT_EQ(json({"verify", "", "--port", "simulator"})["command"].toString(), "verify");
}

TEST_F(ExitCodes, UsageForATraceInThePlaceOfWhatIsRead)
{
    const QString syx = image();
    const QString trace = path("trace");
    const QString state = path("state");
    const QString link = path("link.syx");
    ASSERT_TRUE(QFile::link(syx, link));
    ASSERT_EQ(hxhost({"update", syx, "--port", "simulator:" + state, "--trace", trace}).exitCode,
              0);
    const QList<QStringList> wrong = {
        {"update", syx, "--port", "simulator", "--trace", syx},
        {"update", syx, "--port", "simulator", "--trace", link},
        {"update", syx, "--port", "simulator:" + state, "--trace", state},
        {"update", syx, "--port", "replay:" + trace, "--trace", trace},
        {"image", "build", path("code.bin"), "-o", path("x"), "--kind", "fwu", "--trace",
         path("code.bin")}};
    for (const QStringList& arguments : wrong) {
        const QByteArray before = read(arguments.last());
        const ProgramResult ended = hxhost(arguments);
        EXPECT_EQ(ended.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(ended.err.contains("would overwrite the file that")) << ended.err.toStdString();
        EXPECT_EQ(read(arguments.last()), before);
    }
}

TEST_F(ExitCodes, NoPluginForAWrongMissingOrDamagedOne)
{
    const QString text = write("text.so", "this is no library");
    const QString cut = write("cut.so", read(HX_PLUGIN_FILE).left(4096));
    for (const QString& place : {path("missing.so"), text, cut, path("")}) {
        const ProgramResult ended = hxhost({"inspect", "--plugin", place});
        EXPECT_EQ(ended.exitCode, 3) << place.toStdString();
        EXPECT_EQ(ended.out.toStdString(), "");
        EXPECT_EQ(ended.err.count('\n'), 3) << ended.err.toStdString();
    }
}

TEST_F(ExitCodes, NoPortWhenNoneFits)
{
    const ProgramResult ended = hxhost({"identify", "--port", "no such port"});
    EXPECT_EQ(ended.exitCode, 4);
    EXPECT_TRUE(ended.err.startsWith("error: no MIDI output port fits \"no such port\"\n"))
        << ended.err.toStdString();
}

TEST_F(ExitCodes, NoAnswerWhenTheProductIsSilent)
{
    EXPECT_EQ(hxhost({"identify", "--port", "simulator", "--fault", "silent"}).exitCode, 5);
}

TEST_F(ExitCodes, ImageRefusedWhenItIsDamaged)
{
    const QByteArray whole = read(image());
    const QList<QByteArray> bad = {QByteArray(), "not SysEx at all", whole.left(500),
                                   whole.mid(146), whole.left(whole.size() - 7)};
    for (const QByteArray& content : bad) {
        const ProgramResult ended =
            hxhost({"update", write("bad.syx", content), "--port", "simulator"});
        EXPECT_EQ(ended.exitCode, 6) << content.size();
        EXPECT_TRUE(ended.err.contains("  next: ")) << ended.err.toStdString();
    }
}

TEST_F(ExitCodes, UpdateFailedWhenItStoppedBeforeItsEnd)
{
    EXPECT_EQ(
        hxhost({"update", image(), "--port", "simulator", "--fault", "failed-ack:3"}).exitCode, 7);
}

TEST_F(ExitCodes, VerificationFailedWhenChecksumsDisagree)
{
    EXPECT_EQ(hxhost({"verify", image(), "--port", "simulator"}).exitCode, 8);
}

TEST_F(ExitCodes, WrongProductWhenAnotherAnswers)
{
    EXPECT_EQ(hxhost({"identify", "--port", "simulator", "--fault", "wrong-model"}).exitCode, 9);
}

TEST_F(ExitCodes, FileErrorForFilesThatCannotBeReadOrWritten)
{
    const QString nowhere = path("no/such/folder/file");
    const QList<QStringList> wrong = {
        {"update", nowhere, "--port", "simulator"},
        {"image", "inspect", nowhere},
        {"image", "build", nowhere, "-o", path("x"), "--kind", "fwu"},
        {"image", "build", write("code", "code"), "-o", nowhere, "--kind", "fwu"},
        {"identify", "--port", "simulator", "--trace", nowhere},
        {"identify", "--port", "simulator:" + nowhere},
        {"identify", "--port", "simulator:" + write("state", "no state")},
        {"identify", "--port", "replay:" + nowhere},
        {"trace", nowhere},
        {"trace", write("trace", "no trace")}};
    for (const QStringList& arguments : wrong) {
        const ProgramResult ended = hxhost(arguments);
        EXPECT_EQ(ended.exitCode, 10) << arguments.join(' ').toStdString();
        EXPECT_TRUE(ended.err.startsWith("error: ")) << ended.err.toStdString();
    }
}

TEST_F(ExitCodes, FileErrorForAStateFileThatAnotherProgramUses)
{
    const QString state = path("state");
    const QStringList command = {"identify", "--port", "simulator:" + state};
    ASSERT_EQ(hxhost(command).exitCode, 0);
    const QByteArray before = read(state);
    {
        hx::FileLock lock;
        ASSERT_TRUE(lock.take(state));
        const ProgramResult ended = hxhost(command);
        EXPECT_EQ(ended.exitCode, 10);
        EXPECT_TRUE(ended.err.contains("\" cannot be used: another program uses it (process "))
            << ended.err.toStdString();
    }
    EXPECT_EQ(read(state), before);
    EXPECT_EQ(hxhost(command).exitCode, 0);
    EXPECT_FALSE(QFile::exists(state + ".lock"));
}

TEST_F(ExitCodes, AStateFileThatCannotBeWrittenIsRefusedBeforeAnythingIsSent)
{
    for (const QString& name : {path("no/such/folder/file"), QString()}) {
        const ProgramResult ended = hxhost({"identify", "--port", "simulator:" + name, "--json"});
        EXPECT_EQ(ended.exitCode, 10);
        const QJsonObject document = QJsonDocument::fromJson(ended.out).object();
        EXPECT_EQ(document["result"].toObject().contains("identity"), false) << ended.out.data();
    }
}

TEST_F(ExitCodes, ReplayDivergedWhenSomethingElseIsSent)
{
    const QString trace = path("trace");
    ASSERT_EQ(hxhost({"identify", "--port", "simulator", "--trace", trace}).exitCode, 0);
    const ProgramResult ended = hxhost({"info", "--port", "replay:" + trace});
    EXPECT_EQ(ended.exitCode, 11) << ended.err.toStdString();
    EXPECT_TRUE(ended.err.startsWith("error: the replay diverged: message 2 was sent, the trace "
                                     "holds only 1\n"))
        << ended.err.toStdString();
}

// Of a recorded update that message 4 ended, message 4 is taken out and an interrupt put in: what
// follows is the same, the questions about the state of the product.
TEST_F(ExitCodes, InterruptedWhenTheTraceSaysSo)
{
    const QString syx = image();
    const QString trace = path("trace");
    ASSERT_EQ(
        hxhost({"update", syx, "--port", "simulator", "--trace", trace, "--fault", "failed-ack:4"})
            .exitCode,
        7);
    QByteArray recorded = read(trace);
    const auto begin = recorded.indexOf('\n', recorded.indexOf("message 3 of 11 good")) + 1;
    const auto end = recorded.indexOf('\n', recorded.indexOf("message 4 of 11 was refused")) + 1;
    ASSERT_GT(begin, 0);
    ASSERT_GT(end, begin);
    const QByteArray time = recorded.mid(begin, 13);
    recorded.replace(begin, end - begin, time + " interrupted : Ctrl-C\n");
    const ProgramResult ended =
        hxhost({"update", syx, "--port", "replay:" + write("cut", recorded)});
    EXPECT_EQ(ended.exitCode, 130) << ended.err.toStdString();
    EXPECT_TRUE(ended.err.endsWith("error: You stopped the update at message 4. The instrument is "
                                   "not damaged but needs the update again.\n"
                                   "  next: The same command starts it afresh.\n"))
        << ended.err.toStdString();
}

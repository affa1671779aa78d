// What goes to standard output and what to standard error, in every form that can be asked for.
#include "tests/hxhost/HxHost.h"

#include <QJsonArray>

namespace {

class Output : public HxHostTest {
protected:
    // The program with its standard output as `redirection` says.
    ProgramResult shell(const QString& command, const QString& redirection) const
    {
        return runProgram(QStringLiteral("/bin/sh"),
                          {QStringLiteral("-c"),
                           QStringLiteral("\"$0\" ") + command + QLatin1Char(' ') + redirection,
                           QStringLiteral(HX_HOST_PROGRAM)});
    }
};

const char escape = '\033';

} // namespace

TEST_F(Output, JsonIsOneDocumentWithResultAndError)
{
    const QJsonObject document = json({"identify", "--port", "simulator"});
    EXPECT_EQ(document.keys(), QStringList({"command", "error", "exitCode", "exitName", "ok",
                                            "result", "warnings"}));
    EXPECT_EQ(document.value("command").toString(), "identify");
    EXPECT_EQ(document.value("result").toObject().value("product").toString(), "Valdrin");
}

TEST_F(Output, JsonHoldsTheErrorThatStderrShows)
{
    const ProgramResult ended = hxhost({"inspect", "--plugin", path("none.so"), "--json"});
    const QJsonObject error = QJsonDocument::fromJson(ended.out).object().value("error").toObject();
    EXPECT_EQ(ended.err, "error: " + error.value("what").toString().toUtf8() +
                             "\n  expected: " + error.value("expected").toString().toUtf8() +
                             "\n  next: " + error.value("next").toString().toUtf8() + "\n");
}

TEST_F(Output, ResultThatIsLostIsAFailure)
{
    QStringList redirections{">&-"};
    if (QFile::exists("/dev/full"))
        redirections << "> /dev/full";
    for (const QString& redirection : redirections) {
        for (const char* command :
             {"identify --port simulator", "identify --port simulator --json",
              "identify --port simulator --field product", "--help", "--version"}) {
            const ProgramResult ended = shell(command, redirection);
            EXPECT_EQ(ended.exitCode, 10) << command << ' ' << redirection.toStdString();
            EXPECT_TRUE(ended.err.startsWith("error: standard output could not be written"))
                << ended.err.toStdString();
        }
    }
}

TEST_F(Output, ResultThatIsLostLeavesTheErrorsCode)
{
    EXPECT_EQ(shell("identify --port simulator --fault silent", ">&-").exitCode, 5);
}

TEST_F(Output, ClosedStandardOutputLeavesTheTraceAlone)
{
    const QString trace = path("closed.trace");
    shell("identify --port simulator --trace '" + trace + "'", ">&-");
    EXPECT_EQ(hxhost({"trace", trace}).exitCode, 0);
    EXPECT_FALSE(read(trace).contains("identity.version")) << read(trace).toStdString();
}

// The pipe first: a program that replaced special files would replace the machine's device next.
TEST_F(Output, DevicesAndPipesAreWrittenToAndNotReplaced)
{
    const QString pipe = path("pipe");
    const QString code = write("code", "some code");
    const QString script = "mkfifo '%1' && { timeout 10 cat '%1' > '%1.copy' & "
                           "\"$0\" image build '%2' -o '%1' --kind fwu -q > '%1.out'; wait; "
                           "test -p '%1' && test -s '%1.copy'; }";
    ASSERT_EQ(runProgram("/bin/sh", {"-c", script.arg(pipe, code), HX_HOST_PROGRAM}).exitCode, 0);
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "there is no /dev/full here";
    const QString trace = path("session.trace");
    ASSERT_EQ(hxhost({"identify", "--port", "simulator", "--trace", trace}).exitCode, 0);
    EXPECT_EQ(hxhost({"trace", trace, "--svg", "/dev/full"}).exitCode, 10);
    EXPECT_EQ(hxhost({"image", "build", code, "-o", "/dev/full", "--kind", "fwu"}).exitCode, 10);
}

TEST_F(Output, JsonHoldsUsageErrorsToo)
{
    const QJsonObject document = json({"update"});
    EXPECT_EQ(document.value("exitName").toString(), "usage");
    EXPECT_EQ(document.value("error").toObject().value("what").toString(), "IMAGE is required");
}

TEST_F(Output, JsonOfAUsageErrorNamesTheCommand)
{
    EXPECT_EQ(json({"update", "--colour"})["command"].toString(), "update");
    EXPECT_EQ(json({"image", "build", "code"})["command"].toString(), "image build");
    EXPECT_EQ(json({"image"})["command"].toString(), "");
    EXPECT_EQ(json({"image", "bake"})["command"].toString(), "");
    EXPECT_EQ(json({"dance"})["command"].toString(), "");
}

TEST_F(Output, FieldPrintsOneValueAndNothingElse)
{
    EXPECT_EQ(
        hxhost({"info", "--port", "simulator", "--field", "version.version"}).out.toStdString(),
        "1.0.2.3\n");
    EXPECT_EQ(hxhost({"info", "--port", "simulator", "--field", "plugin.isCodeValid.fwu"})
                  .out.toStdString(),
              "false\n");
    EXPECT_EQ(hxhost({"inspect", "--field", "device.serves.0.name"}).out.toStdString(),
              "ValdrinBoot\n");
    EXPECT_EQ(hxhost({"inspect", "--field", "plugin.keys"}).out.toStdString(),
              "bootValdrinPlugin\n");
}

TEST_F(Output, FieldThatDoesNotExistListsThoseThatDo)
{
    const ProgramResult ended = hxhost({"identify", "--port", "simulator", "--field", "colour"});
    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_EQ(ended.out.toStdString(), "");
    EXPECT_TRUE(ended.err.startsWith("error: the result of 'identify' has no value \"colour\"\n"
                                     "  expected: one of: divergence.bytes, "))
        << ended.err.toStdString();
    EXPECT_TRUE(ended.err.contains(", identity.version, port, product\n"))
        << ended.err.toStdString();
}

TEST_F(Output, FieldAfterAnErrorLeavesTheErrorsCode)
{
    const ProgramResult ended = hxhost(
        {"identify", "--port", "simulator", "--fault", "silent", "--field", "identity.version"});
    EXPECT_EQ(ended.exitCode, 5);
    EXPECT_EQ(ended.out.toStdString(), "");
}

TEST_F(Output, ProgressIsPlainLinesWhereThereIsNoTerminal)
{
    const ProgramResult ended = hxhost({"update", image(), "--port", "simulator"});
    EXPECT_TRUE(
        ended.err.contains("\n21%: 2 of 11 messages, 292 of 1337 bytes, 2.9 kB/s, 0:01 left\n"))
        << ended.err.toStdString();
    EXPECT_TRUE(ended.err.contains("\n100%: 11 of 11 messages, ")) << ended.err.toStdString();
    EXPECT_FALSE(ended.err.contains('\r'));
    EXPECT_FALSE(ended.err.contains(escape));
    EXPECT_FALSE(ended.out.contains('%'));
}

TEST_F(Output, BarFallsBackToLinesWhereNoLineCanBeRedrawn)
{
    const ProgramResult ended =
        hxhost({"update", image(), "--port", "simulator", "--progress", "bar"});
    EXPECT_TRUE(ended.err.contains("\n100%: 11 of 11 messages, ")) << ended.err.toStdString();
    EXPECT_FALSE(ended.err.contains('\r'));
}

TEST_F(Output, JsonProgressIsOneObjectALineOnStderr)
{
    const ProgramResult ended = hxhost(
        {"update", image(), "--port", "simulator", "--progress", "json", "--no-listen", "--json"});
    const QList<QByteArray> lines = ended.err.trimmed().split('\n');
    ASSERT_GE(lines.size(), 11);
    const QJsonObject last = QJsonDocument::fromJson(lines.last()).object();
    EXPECT_EQ(last.value("percent").toInt(), 100) << ended.err.toStdString();
    EXPECT_EQ(last.value("message").toInt(), 11);
    EXPECT_EQ(last.value("bytes").toInt(), last.value("totalBytes").toInt());
    EXPECT_FALSE(QJsonDocument::fromJson(ended.out).isNull());
}

TEST_F(Output, NoProgressWhenNoneIsWanted)
{
    const ProgramResult ended =
        hxhost({"update", image(), "--port", "simulator", "--progress", "none", "--no-listen"});
    EXPECT_EQ(ended.err.toStdString(), "");
}

TEST_F(Output, QuietSaysNothingButErrors)
{
    EXPECT_EQ(hxhost({"update", image(), "--port", "simulator", "--fault", "noise", "-q"})
                  .err.toStdString(),
              "");
    const ProgramResult failed =
        hxhost({"update", image(), "--port", "simulator", "--fault", "failed-ack:2", "-q"});
    EXPECT_TRUE(failed.err.startsWith("error: The instrument refused message 2 of 11 "))
        << failed.err.toStdString();
}

TEST_F(Output, VerboseShowsWhatThePluginLogs)
{
    const ProgramResult ended = hxhost({"info", "--port", "simulator", "-v"});
    EXPECT_EQ(ended.err.toStdString(),
              "log: ERROR: Missing MIDI Protocol for key:  \"get.esn.cmd\"\n"
              "log: ERROR: Missing MIDI Protocol for key:  \"get.esn.rtval.response\"\n"
              "decided: the command is empty; nothing was sent or waited for\n"
              "log: ERROR: Missing MIDI Protocol for key:  \"get.esn.rtval.offset\"\n");
}

TEST_F(Output, VeryVerboseShowsTheBytesOfEveryMessage)
{
    const ProgramResult ended = hxhost({"identify", "--port", "simulator", "-vv"});
    EXPECT_EQ(ended.err.toStdString(),
              "sent F0 7E 7F 06 01 F7 identify\n"
              "received F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7 identify.response\n");
}

TEST_F(Output, ColourOnlyWhereItIsForcedOrOnATerminal)
{
    const QStringList failing = {"inspect", "--plugin", path("none.so")};
    EXPECT_FALSE(hxhost(failing).err.contains(escape));
    EXPECT_TRUE(hxhost(failing, {{"CLICOLOR_FORCE", "1"}}).err.startsWith("\033[31merror:\033[0m"));
    EXPECT_FALSE(hxhost(failing, {{"CLICOLOR_FORCE", "0"}}).err.contains(escape));
    EXPECT_FALSE(
        hxhost(failing, {{"CLICOLOR_FORCE", "1"}, {"NO_COLOR", "1"}}).err.contains(escape));
}

TEST_F(Output, ErrorsGoToStderrAloneWithoutJson)
{
    const ProgramResult ended = hxhost({"identify", "--port", "simulator", "--fault", "vanish:1"});
    EXPECT_FALSE(ended.out.contains("error"));
    EXPECT_TRUE(ended.err.startsWith("error: "));
}

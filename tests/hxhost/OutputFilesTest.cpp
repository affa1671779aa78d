// Files that a run writes: never over what it reads, never over the record of an earlier run, and
// never the end of an update that goes on.
#include "tests/hxhost/HxHost.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <filesystem>
#include <set>

namespace {

class OutputFiles : public HxHostTest {
protected:
    // A script in the test's own folder; "$0" is the program.
    ProgramResult script(const QString& text, const QString& program = HX_HOST_PROGRAM) const
    {
        return runProgram(QStringLiteral("/bin/sh"),
                          {QStringLiteral("-c"), "cd '" + path(".") + "' && " + text, program});
    }

    // A copy of the program with its plugin where a build has it: bin and lib.
    QString installedCopy() const
    {
        QDir(path(".")).mkpath("bin");
        QDir(path(".")).mkpath("lib");
        EXPECT_TRUE(QFile::copy(HX_HOST_PROGRAM, path("bin/hxhost")));
        EXPECT_TRUE(QFile::copy(HX_PLUGIN_FILE, plugin()));
        std::filesystem::create_hard_link(plugin().toStdString(), path("hard").toStdString());
        EXPECT_TRUE(QFile::link(plugin(), path("link")));
        EXPECT_TRUE(QFile::link(path("lib"), path("folder")));
        return path("bin/hxhost");
    }

    QString plugin() const { return path("lib/" + QFileInfo(HX_PLUGIN_FILE).fileName()); }

    void expectRefused(const QString& command, const QString& program = HX_HOST_PROGRAM) const
    {
        const ProgramResult ended = script(command, program);
        EXPECT_EQ(ended.exitCode, 2) << command.toStdString() << '\n' << ended.err.toStdString();
        EXPECT_TRUE(ended.err.contains(" would overwrite ")) << ended.err.toStdString();
    }
};

} // namespace

TEST_F(OutputFiles, ThePluginIsNotOverwrittenHoweverItIsFound)
{
    const QString program = installedCopy();
    const QByteArray before = read(plugin());
    const QString name = "lib/" + QFileInfo(plugin()).fileName();
    const QString identify = "\"$0\" identify --port simulator ";
    const QStringList ways = {"", "--plugin lib ", "--plugin folder ", "--plugin " + name + ' '};
    const QStringList outputs = {name, "./lib/../" + name, plugin(), "hard", "link"};
    for (const QString& way : ways) {
        for (const QString& output : outputs)
            expectRefused(identify + way + "--trace " + output, program);
    }
    write("code", "code");
    write("t", "# hxtrace 1\n");
    expectRefused("\"$0\" image build code --kind fwu -o hard", program);
    expectRefused("\"$0\" trace t --svg link", program);
    expectRefused("\"$0\" simulate --state " + name, program);
    expectRefused("\"$0\" check lib --trace " + name, program);
    EXPECT_EQ(read(plugin()), before);
}

TEST_F(OutputFiles, TheProgramAndItsLibrariesAreNotOverwritten)
{
    const QString program = installedCopy();
    const QByteArray before = read(program);
    expectRefused("\"$0\" identify --port simulator --trace bin/hxhost", program);
    expectRefused("ln bin/hxhost other && \"$0\" inspect --trace other", program);
    expectRefused("\"$0\" identify --port simulator --trace \"$(ldd \"$0\" | sed -n "
                  "'s/.*libQt[56]Core[.][^ ]* => \\([^ ]*\\).*/\\1/p')\"",
                  program);
    EXPECT_EQ(read(program), before);
}

TEST_F(OutputFiles, WhatIsReadIsNotOverwritten)
{
    image();
    write("t", "# hxtrace 1\n");
    const QByteArray syx = read(path("image.syx"));
    ASSERT_EQ(script("\"$0\" identify --port simulator:state").exitCode, 0);
    const QByteArray state = read(path("state"));
    expectRefused("\"$0\" image build image.syx -o ./image.syx --kind fwu");
    expectRefused("\"$0\" check --image image.syx --trace image.syx");
    expectRefused("\"$0\" verify image.syx --port simulator --trace image.syx");
    expectRefused("\"$0\" identify --port simulator:state --trace state");
    expectRefused("\"$0\" verify state --port simulator:./state");
    expectRefused("\"$0\" monitor --port replay:t --trace t");
    expectRefused("\"$0\" trace t --svg t");
    expectRefused("\"$0\" image inspect - --trace image.syx < image.syx");
    EXPECT_EQ(read(path("image.syx")), syx);
    EXPECT_EQ(read(path("state")), state);
    EXPECT_EQ(read(path("t")), "# hxtrace 1\n");
}

TEST_F(OutputFiles, ResultIsNotAppendedToWhatIsRead)
{
    const QByteArray before = read(image());
    const ProgramResult ended = script("\"$0\" image inspect image.syx --json >> image.syx");
    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_TRUE(ended.err.startsWith("error: standard output would be written into"))
        << ended.err.toStdString();
    EXPECT_EQ(read(path("image.syx")), before);
}

TEST_F(OutputFiles, TwoOutputsAreNeverOneFile)
{
    write("t", "# hxtrace 1\n");
    ASSERT_TRUE(QFile::link("nothing-yet", path("dangling")));
    expectRefused("\"$0\" trace t --svg x --trace x");
    expectRefused("\"$0\" trace t --svg ./x --trace \"$PWD/x\"");
    expectRefused("\"$0\" trace t --svg nothing-yet --trace dangling");
    expectRefused("\"$0\" trace t --svg Picture --trace picture"); // one file where case is ignored
    expectRefused("\"$0\" simulate --state x --trace x");
    expectRefused("\"$0\" identify --port simulator:x --trace x");
    expectRefused("\"$0\" identify --port simulator --trace out > out");
    expectRefused(
        "\"$0\" identify --port simulator --trace out 2> out; code=$?; cat out >&2; exit $code");
    for (const char* name : {"x", "nothing-yet", "Picture", "picture"})
        EXPECT_FALSE(QFile::exists(path(name))) << name;
}

// A trace in the lock's place kept every later run away from the state.
TEST_F(OutputFiles, TheLockOfAStateFileIsNotOverwritten)
{
    write("x.lock", "");
    ASSERT_TRUE(QFile::link("x", path("link")));
    expectRefused("\"$0\" identify --port simulator:s --trace s.lock");
    expectRefused("\"$0\" identify --port simulator:link --trace x.lock");
    expectRefused("\"$0\" simulate --state s --trace ./s.lock");
    expectRefused("\"$0\" identify --port simulator:s > s.lock");
    EXPECT_FALSE(QFile::exists(path("s")));
    EXPECT_EQ(script("\"$0\" identify --port simulator:s --trace lock").exitCode, 0);
}

TEST_F(OutputFiles, WhereOlderTracesAreKeptNothingElseIsWrittenOrRead)
{
    write("s.1", "# hxtrace 1\n");
    write("code", "code");
    expectRefused("\"$0\" trace s.1 --trace s");
    expectRefused("\"$0\" image build code --kind fwu -o s.2 --trace s");
}

TEST_F(OutputFiles, ANameThatStandsForSomethingElseIsFree)
{
    image();
    for (const char* name : {"simulator", "fwu", "update", "new.trace"})
        EXPECT_EQ(script(QStringLiteral("\"$0\" identify --port simulator --trace %1").arg(name))
                      .exitCode,
                  0)
            << name;
    EXPECT_EQ(script("\"$0\" identify --port simulator --trace /dev/null > /dev/null").exitCode, 0);
}

// Whoever adds an option for a file has to say whether it is read or written.
TEST_F(OutputFiles, EveryOptionForAFileIsKnownAsReadOrWritten)
{
    const std::set<QString> known = {"--trace",  "--output", "--svg",       "--state", "--image",
                                     "--plugin", "--key",    "--signature", "--pubkey"};
    const QRegularExpression option("(--[a-z-]+)[ ,]+FILE");
    int seen = 0;
    const QStringList commands = {"ports",    "identify",   "info",        "update",
                                  "verify",   "recover",    "image build", "image inspect",
                                  "inspect",  "check",      "monitor",     "trace",
                                  "simulate", "image sign", "image verify"};
    for (const QString& command : commands) {
        const QByteArray help = hxhost(command.split(' ') << "--help").out;
        auto matches = option.globalMatch(QString::fromUtf8(help));
        for (; matches.hasNext(); ++seen) {
            const QString name = matches.next().captured(1);
            EXPECT_TRUE(known.count(name)) << command.toStdString() << ' ' << name.toStdString();
        }
    }
    EXPECT_GE(seen, 20);
}

TEST_F(OutputFiles, ALimitOnTheSizeOfFilesIsAFullDisk)
{
    image();
    ProgramResult ended = script("ulimit -f 2; \"$0\" update image.syx --port simulator --trace t");
    EXPECT_EQ(ended.exitCode, 10) << ended.err.toStdString();
    EXPECT_TRUE(ended.out.contains("\nVerified: ")) << ended.out.toStdString();
    EXPECT_TRUE(ended.err.contains("trace")) << ended.err.toStdString();
    const QString code = "head -c 20000 /dev/zero > code; ulimit -f 2; ";
    EXPECT_EQ(script(code + "\"$0\" image build code -o x --kind fwu").exitCode, 10);
    EXPECT_EQ(script(code + "\"$0\" image build code -o - --kind fwu > x").exitCode, 10);
    EXPECT_EQ(script("ulimit -f 2; \"$0\" inspect > x").exitCode, 10);
    EXPECT_EQ(QDir(path(".")).entryList({"x.*"}).size(), 0);
}

// It did, with a state file that could not take what the product acknowledged.
TEST_F(OutputFiles, AnUpdateDoesNotSucceedWhenTheProductCannotStoreIt)
{
    image();
    const QString update = "\"$0\" update image.syx --port simulator:state --json";
    ASSERT_EQ(script("\"$0\" identify --port simulator:state").exitCode, 0);
    const ProgramResult ended = script("ulimit -f 1; " + update);
    EXPECT_EQ(ended.exitCode, 10) << ended.err.toStdString();
    const QJsonObject document = QJsonDocument::fromJson(ended.out).object();
    EXPECT_TRUE(document["error"].toObject()["what"].toString().startsWith(
        "the simulated product stopped: the state file \"state\" cannot be written: "))
        << ended.out.toStdString();
    EXPECT_NE(document["result"].toObject()["outcome"].toString(), "succeeded");
    EXPECT_TRUE(read(path("state")).contains("\nvalid no\n"));
    EXPECT_EQ(script(update).exitCode, 0);
}

TEST_F(OutputFiles, AnOlderTraceIsKeptBesideTheNewOne)
{
    for (const char* command : {"identify", "info", "verify"})
        ASSERT_EQ(
            script(QStringLiteral("\"$0\" %1 --port simulator --trace t").arg(command)).exitCode,
            0);
    EXPECT_TRUE(read(path("t")).contains("hxhost verify"));
    EXPECT_TRUE(read(path("t.1")).contains("hxhost info"));
    EXPECT_TRUE(read(path("t.2")).contains("hxhost identify"));
    EXPECT_FALSE(QFile::exists(path("t.3")));
}

TEST_F(OutputFiles, TheTraceOfAFailedUpdateSurvivesTheNextRun)
{
    image();
    ASSERT_EQ(
        script("\"$0\" update image.syx --port simulator --fault failed-ack:3 --trace t").exitCode,
        7);
    const QByteArray failed = read(path("t"));
    ASSERT_EQ(script("\"$0\" update image.syx --port simulator --trace t").exitCode, 0);
    EXPECT_EQ(read(path("t.1")), failed);
    EXPECT_TRUE(read(path("t")).contains("outcome: succeeded"));
}

TEST_F(OutputFiles, ARunThatFailsBeforeItsPortLeavesTheOldTraceAlone)
{
    image();
    ASSERT_EQ(script("\"$0\" identify --port simulator --trace t").exitCode, 0);
    const QByteArray before = read(path("t"));
    for (const char* command :
         {"update missing.syx --port simulator", "identify --port none",
          "identify --port simulator --plugin missing", "update code.bin --port simulator",
          "identify --port replay:missing", "verify image.syx --port simulator:no/such/x"})
        EXPECT_NE(script(QStringLiteral("\"$0\" %1 --trace t").arg(command)).exitCode, 0)
            << command;
    EXPECT_EQ(read(path("t")), before);
    EXPECT_FALSE(QFile::exists(path("t.1")));
}

TEST_F(OutputFiles, ATraceWithoutAPortIsKeptToo)
{
    ASSERT_EQ(script("\"$0\" identify --port simulator --trace t").exitCode, 0);
    ASSERT_EQ(script("\"$0\" inspect --trace t").exitCode, 0);
    EXPECT_TRUE(read(path("t")).contains("hxhost inspect"));
    EXPECT_TRUE(read(path("t.1")).contains("hxhost identify"));
}

TEST_F(OutputFiles, AnEmptyFileIsWrittenToAndALinkStaysALink)
{
    write("empty", "");
    write("full", "something");
    ASSERT_TRUE(QFile::link("full", path("link")));
    ASSERT_EQ(script("\"$0\" identify --port simulator --trace empty").exitCode, 0);
    EXPECT_FALSE(QFile::exists(path("empty.1")));
    ASSERT_EQ(script("\"$0\" identify --port simulator --trace link").exitCode, 0);
    EXPECT_TRUE(QFileInfo(path("link")).isSymLink());
    EXPECT_TRUE(read(path("full")).startsWith("# hxtrace 1\n"));
    EXPECT_EQ(read(path("full.1")), "something");
}

TEST_F(OutputFiles, AnOlderTraceThatCannotBeKeptIsARefusalBeforeAnythingIsSent)
{
    const QString longest(255, QLatin1Char('t')); // no room for a ".1" in a file name
    write(longest, "something");
    const ProgramResult ended =
        script("\"$0\" identify --port simulator --trace " + longest.toUtf8());
    EXPECT_EQ(ended.exitCode, 10);
    EXPECT_EQ(ended.out.toStdString(), "");
    EXPECT_EQ(read(path(longest)), "something");
}

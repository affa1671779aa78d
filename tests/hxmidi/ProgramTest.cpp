// What only the real program has: its streams, its exit code, its words as the system gives them.
#include "tests/hxmidi/ShellRun.h"
#include "tests/support/NamesOfBytes.h"
#include "tests/support/QtPrinting.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

ShellRun shell(const char* command)
{
    const QTemporaryDir folder;
    return runInShell(QString::fromLatin1(command), folder.path());
}

} // namespace

TEST(Program, ReadsAPipeAndWritesOne)
{
    EXPECT_EQ(shell("printf '\\360\\176\\367' | hxmidi convert --to raw | hxmidi convert").output,
              QByteArray("F0 7E F7\n"));
}

TEST(Program, EndsWithTheExitCodesOfGrep)
{
    EXPECT_EQ(shell("hxmidi match -q F0 F0").code, 0);
    EXPECT_EQ(shell("hxmidi match -q F1 F0").code, 1);
    EXPECT_EQ(shell("hxmidi match -q '(' F0 2> /dev/null").code, 2);
}

TEST(Program, WritesResultsAndComplaintsApart)
{
    EXPECT_EQ(shell("hxmidi parse --lenient 90,..,40 2> /dev/null").output, QByteArray("90 40\n"));
    EXPECT_EQ(shell("hxmidi parse 90,.. 2> /dev/null").output, QByteArray());
    EXPECT_TRUE(shell("hxmidi parse 90,.. 2>&1 > /dev/null").output.startsWith("error: "));
}

TEST(Program, FailsWhenItsOutputCannotBeWritten)
{
    const ShellRun run = shell("if test -c /dev/full; then hxmidi dump F0 > /dev/full; "
                               "else hxmidi dump F0 >&-; fi");
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.output.endsWith("error: standard output could not be written to its end\n"))
        << run.output.toStdString();
}

TEST(Program, ALimitOnTheSizeOfFilesIsAFullDisk)
{
    const ShellRun run = shell("head -c 9000 /dev/zero > in; ulimit -f 4; hxmidi dump @in > out");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.output, "error: standard output could not be written to its end\n");
}

TEST(Program, ReadsFilesWhoseNamesAreNotUtf8)
{
    SKIP_WHERE_NAMES_ARE_TEXT(QTemporaryDir().path().toStdString());
    const QByteArray names = "e=$(printf 'a\\351') g=$(printf 'a\\350'); ";
    for (const QByteArray& locale : {QByteArray("C"), QByteArray("C.UTF-8")}) {
        const QByteArray set = "export LC_ALL=" + locale + "; " + names;
        EXPECT_EQ(
            shell(set + "echo 01 > $e; echo 02 > $g; hxmidi convert @$e @$g; rm $e $g").output,
            "01 02\n");
        EXPECT_TRUE(shell(set + "hxmidi convert @$e")
                        .output.startsWith("error: \"a\\xE9\" cannot be read: No such file"));
        EXPECT_TRUE(
            shell(set + "echo ZZ > $e; hxmidi convert @$e; rm $e").output.contains("a\\xE9:1:1"));
    }
}

TEST(Program, FailsWhenItsHelpCannotBeWritten)
{
    const ShellRun run = shell("hxmidi --help >&-");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.output, "error: standard output could not be written to its end\n");
}

TEST(Program, FailsWhenItsInputCannotBeRead)
{
    const ShellRun run = shell("hxmidi dump <&-");
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.output.startsWith("error: standard input cannot be read: "))
        << run.output.toStdString();
    EXPECT_EQ(shell("hxmidi dump < .").code, 2);
}

TEST(Program, StopsReadingEndlessInput)
{
    const ShellRun run = shell("hxmidi hash < /dev/zero");
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.output.startsWith("error: there is too much data\n"));
}

TEST(Program, SaysNothingOnQtsChannel)
{
    EXPECT_EQ(shell("hxmidi build --lenient 'F0 MSTR 11 -1 F7' 'ZZ' 2> messages; "
                    "grep -c 'HxMidiData::\\|Invalid value' messages")
                  .output,
              QByteArray("F0 F7\n0\n"));
}

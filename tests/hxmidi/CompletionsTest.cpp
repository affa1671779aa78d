// The shells complete exactly the options that each command's help lists.
#include "tests/hxmidi/CommandRun.h"
#include "tests/hxmidi/Document.h"
#include "tests/hxmidi/ShellRun.h"
#include "tests/support/QtPrinting.h"

#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// The long options of a command, sorted, as its help lists them.
QStringList optionsOf(const std::string& command)
{
    QStringList options;
    const QRegularExpression option(QStringLiteral("^  (?:-\\w,)?(--[a-z]+)"),
                                    QRegularExpression::MultilineOption);
    const QString help = QString::fromStdString(hxmidi({command, "--help"}).out);
    for (auto it = option.globalMatch(help); it.hasNext();)
        options += it.next().captured(1);
    options.sort();
    return options;
}

QStringList sortedLines(const QByteArray& output)
{
    QStringList lines = QString::fromUtf8(output).split(QLatin1Char('\n'));
    lines.removeAll(QString());
    lines.sort();
    return lines;
}

// What bash offers for the last of these words, in a folder with one file "take.syx".
QStringList completedByBash(const QStringList& words)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("take.syx")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    const QString command =
        QStringLiteral("source '%1/completions/hxmidi.bash'; COMP_WORDS=(%2); COMP_CWORD=%3; "
                       "_hxmidi; printf '%s\\n' \"${COMPREPLY[@]}\"")
            .arg(QStringLiteral(HX_SOURCE_FOLDER), words.join(QLatin1Char(' ')),
                 QString::number(words.size() - 1));
    return sortedLines(runInShell(command, folder.path()).output);
}

// What fish offers for a command line, or nothing where there is no fish.
QStringList completedByFish(const QString& line)
{
    const QString command =
        QStringLiteral("fish --no-config -c \"source '%1/completions/hxmidi.fish'; "
                       "complete -C '%2'\" | cut -f 1")
            .arg(QStringLiteral(HX_SOURCE_FOLDER), line);
    return sortedLines(runInShell(command, QStringLiteral("/")).output);
}

class Completions : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(Completions, OfBashAreTheOptionsOfTheCommand)
{
    const QString command = QString::fromLatin1(GetParam());
    ASSERT_GE(optionsOf(GetParam()).size(), 3);
    EXPECT_EQ(completedByBash({QStringLiteral("hxmidi"), command, QStringLiteral("--")}),
              optionsOf(GetParam()));
}

TEST_P(Completions, OfFishAreTheOptionsOfTheCommand)
{
    if (QStandardPaths::findExecutable(QStringLiteral("fish")).isEmpty())
        GTEST_SKIP() << "fish is not installed";
    EXPECT_EQ(completedByFish(QStringLiteral("hxmidi %1 --").arg(QLatin1String(GetParam()))),
              optionsOf(GetParam()));
}

TEST_P(Completions, OfZshHaveTheOptionsOfTheCommand)
{
    const QString text =
        linesOfDocument(QStringLiteral("completions/_hxmidi")).join(QLatin1Char('\n'));
    for (const QString& option : optionsOf(GetParam()))
        EXPECT_TRUE(text.contains(option)) << option.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Commands, Completions,
                         testing::Values("parse", "build", "match", "diff", "dump", "split",
                                         "fields", "sum", "hash", "convert"));

TEST(Completions, OfBashAreTheCommands)
{
    EXPECT_EQ(completedByBash({QStringLiteral("hxmidi"), QStringLiteral("s")}),
              (QStringList{QStringLiteral("split"), QStringLiteral("sum")}));
}

TEST(Completions, OfBashAreFilesAfterTheirSign)
{
    EXPECT_EQ(
        completedByBash({QStringLiteral("hxmidi"), QStringLiteral("parse"), QStringLiteral("@ta")}),
        QStringList{QStringLiteral("@take.syx")});
}

TEST(Completions, OfBashAreTheFormsOfAnOption)
{
    EXPECT_EQ(completedByBash({QStringLiteral("hxmidi"), QStringLiteral("convert"),
                               QStringLiteral("--to"), QStringLiteral("c")}),
              (QStringList{QStringLiteral("c"), QStringLiteral("compact")}));
}

TEST(Completions, OfZshAreAScriptThatZshAccepts)
{
    if (QStandardPaths::findExecutable(QStringLiteral("zsh")).isEmpty())
        GTEST_SKIP() << "zsh is not installed";
    const ShellRun run = runInShell(
        QStringLiteral("zsh -n '%1/completions/_hxmidi'").arg(QStringLiteral(HX_SOURCE_FOLDER)),
        QStringLiteral("/"));
    EXPECT_EQ(run.code, 0) << run.output.toStdString();
}

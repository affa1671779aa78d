// Every example of the man page and of the grammar pages prints what is printed below it. The
// examples of one document share a folder, so that one may use the files of another.
#include "tests/hxmidi/Document.h"
#include "tests/hxmidi/ShellRun.h"
#include "tests/support/QtPrinting.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QString asIs(QString line)
{
    return line;
}

// A line of roff as a reader sees it, as far as examples need it.
QString withoutRoff(QString line)
{
    if (line.startsWith(QLatin1String("\\&")))
        line.remove(0, 2);
    const std::pair<const char*, const char*> escapes[] = {{"\\-", "-"},   {"\\(aq", "'"},
                                                           {"\\(ha", "^"}, {"\\(ti", "~"},
                                                           {"\\(ga", "`"}, {"\\e", "\\"}};
    for (const auto& escape : escapes)
        line.replace(QLatin1String(escape.first), QLatin1String(escape.second));
    return line;
}

QList<Example> examplesOf(const QString& document)
{
    const QStringList lines = linesOfDocument(document);
    return document.endsWith(QLatin1String(".1"))
               ? examplesBetween(lines, QStringLiteral(".EX"), QStringLiteral(".EE"), withoutRoff)
               : examplesBetween(lines, QStringLiteral("```console"), QStringLiteral("```"), asIs);
}

// Blanks at the ends of lines cannot be seen in a document.
QStringList visibleLines(const QByteArray& output)
{
    QStringList lines = QString::fromUtf8(output).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines.replaceInStrings(QRegularExpression(QStringLiteral("\\s+$")), QString());
}

class DocumentExamples : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(DocumentExamples, PrintWhatTheDocumentShows)
{
    const QList<Example> examples = examplesOf(QString::fromLatin1(GetParam()));
    ASSERT_GE(examples.size(), 3);
    const QTemporaryDir folder;
    for (Example example : examples) {
        const ShellRun run = runInShell(example.command, folder.path());
        EXPECT_EQ(
            visibleLines(run.output),
            example.output.replaceInStrings(QRegularExpression(QStringLiteral("\\s+$")), QString()))
            << example.command.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, DocumentExamples,
                         testing::Values("docs/man/hxmidi.1", "docs/formats/hex-text.md",
                                         "docs/formats/pattern.md",
                                         "docs/formats/builder-format.md"));

TEST(Documents, HaveAnExampleOfEveryCommandInTheManPage)
{
    QString commands;
    for (const Example& example : examplesOf(QStringLiteral("docs/man/hxmidi.1")))
        commands += example.command + QLatin1Char('\n');
    for (const char* command :
         {"parse", "build", "match", "diff", "dump", "split", "fields", "sum", "hash", "convert"})
        EXPECT_TRUE(commands.contains(QStringLiteral("hxmidi ") + QLatin1String(command)))
            << command;
}

// Every row of the tables in the grammar pages is true, of the program and of the library.
#include "mididata/BuilderFields.h"
#include "mididata/HxMidiData.h"
#include "tests/hxmidi/CommandRun.h"
#include "tests/hxmidi/Document.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

QList<QStringList> rowsOf(const char* document, const char* heading)
{
    const QList<QStringList> rows =
        tableUnder(linesOfDocument(QString::fromLatin1(document)), QString::fromLatin1(heading));
    EXPECT_GE(rows.size(), 7) << heading;
    return rows;
}

// The texts in backquotes of a cell, each "(empty)" an empty one.
std::vector<std::string> wordsOf(const QString& cell)
{
    std::vector<std::string> words;
    const QRegularExpression word(QStringLiteral("`[^`]*`|\\(empty\\)"));
    for (auto it = word.globalMatch(cell); it.hasNext();)
        words.push_back(textOf(it.next().captured()));
    return words;
}

std::string toHex(const HxMidiData& data)
{
    return data.toString(' ', -1).toStdString();
}

std::string convert(const std::string& option, const std::string& text)
{
    std::vector<std::string> words = {"convert", "--", text};
    if (!option.empty())
        words.insert(words.begin() + 1, option);
    const CommandRun run = hxmidi(words);
    return run.code == 0 ? run.out : "(refused)\n";
}

std::vector<std::string> buildWords(const QStringList& row)
{
    std::vector<std::string> words = {"build", "--", textOf(row.at(0))};
    for (const std::string& argument : wordsOf(row.at(1)))
        words.push_back(argument);
    return words;
}

template <size_t Count>
QStringList namesOf(const hx::BuilderField (&fields)[Count])
{
    QStringList names;
    for (const hx::BuilderField& field : fields)
        names << QLatin1String(field.name.data(), int(field.name.size()));
    return names;
}

QStringList sorted(QStringList words)
{
    words.sort();
    return words;
}

QString between(const QString& text, const char* begin, const char* end)
{
    const QString rest = text.section(QLatin1String(begin), 1, 1);
    EXPECT_FALSE(rest.isEmpty()) << begin;
    return rest.section(QLatin1String(end), 0, 0);
}

// The words of each line in capital letters, up to what is said of them.
QStringList wordsBefore(const QString& lines)
{
    QStringList words;
    const QRegularExpression name(QStringLiteral("(?<=^|\\s)[A-Z]+\\d*(?=\\s)"),
                                  QRegularExpression::MultilineOption);
    for (auto it = name.globalMatch(lines); it.hasNext();)
        words << it.next().captured();
    return words;
}

// What a manual page sets in bold type.
QStringList boldWords(const QString& lines)
{
    QStringList words;
    for (const QString& line : lines.split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String(".B ")))
            words += line.mid(3).split(QLatin1Char(' '));
    return words;
}

} // namespace

TEST(GrammarTables, HexTextsGiveTheirBytes)
{
    for (const QStringList& row :
         rowsOf("docs/formats/hex-text.md", "| Hex text | Bytes | Bytes with `--tokens` |")) {
        const std::string text = textOf(row.at(0));
        HxMidiData split;
        split.setText(text.c_str());
        EXPECT_EQ(toHex(HxMidiData(text.c_str())), textOf(row.at(1))) << text;
        EXPECT_EQ(toHex(split), textOf(row.at(2))) << text;
        EXPECT_EQ(convert("", text), textOf(row.at(1)) + "\n") << text;
        EXPECT_EQ(convert("--tokens", text), textOf(row.at(2)) + "\n") << text;
    }
}

TEST(GrammarTables, BadHexTextsAreRefused)
{
    for (const QStringList& row :
         rowsOf("docs/formats/hex-text.md",
                "| Hex text | Error of `hxmidi` | Bytes with `--lenient` | "
                "Log of the library |")) {
        const std::string text = textOf(row.at(0));
        const CommandRun run = hxmidi({"convert", "--", text});
        EXPECT_EQ(run.firstComplaint(), "error: " + textOf(row.at(1))) << text;
        EXPECT_EQ(run.code, 2) << text;
        EXPECT_EQ(convert("--lenient", text), textOf(row.at(2)) + "\n") << text;
        LogCapture log;
        EXPECT_EQ(toHex(HxMidiData(text.c_str())), textOf(row.at(2))) << text;
        const QString logged = log.texts().join(QLatin1Char('\n'));
        if (row.at(3) == QLatin1String("(nothing)"))
            EXPECT_EQ(logged, QString()) << text;
        else
            EXPECT_TRUE(logged.contains(row.at(3))) << text << ": " << logged.toStdString();
    }
}

TEST(GrammarTables, PatternsFitWhereTheyShould)
{
    for (const QStringList& row :
         rowsOf("docs/formats/pattern.md",
                "| Bytes | Pattern | Fits anywhere | Fits from the start |")) {
        const std::string data = textOf(row.at(0));
        const std::string pattern = textOf(row.at(1));
        const bool anywhere = row.at(2) == QLatin1String("yes");
        const bool atStart = row.at(3) == QLatin1String("yes");
        EXPECT_EQ(hxmidi({"match", pattern, data}).code, anywhere ? 0 : 1) << pattern;
        EXPECT_EQ(hxmidi({"match", "--start", pattern, data}).code, atStart ? 0 : 1) << pattern;
        EXPECT_EQ(HxMidiData(data.c_str()).match(pattern.c_str(), false), anywhere) << pattern;
        EXPECT_EQ(HxMidiData(data.c_str()).match(pattern.c_str(), true), atStart) << pattern;
    }
}

TEST(GrammarTables, BadPatternsAreRefusedOrWarnedOf)
{
    for (const QStringList& row :
         rowsOf("docs/formats/pattern.md", "| Pattern | What `hxmidi` says |")) {
        const CommandRun run = hxmidi({"match", textOf(row.at(0)), "F0 7E F7"});
        EXPECT_EQ(run.firstComplaint(), textOf(row.at(1))) << textOf(row.at(0));
        EXPECT_EQ(run.code, row.at(1).startsWith(QLatin1String("error")) ? 2 : 1);
    }
}

TEST(GrammarTables, FormatsGiveTheirBytes)
{
    for (const QStringList& row :
         rowsOf("docs/formats/builder-format.md", "| Format | Arguments | Bytes |")) {
        const CommandRun run = hxmidi(buildWords(row));
        EXPECT_EQ(run.out, textOf(row.at(2)) + "\n") << row.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(run.code, 0);
    }
}

TEST(GrammarTables, BadFormatsAndArgumentsAreRefused)
{
    for (const QStringList& row :
         rowsOf("docs/formats/builder-format.md",
                "| Format | Arguments | Error of `hxmidi` | Bytes with `--lenient` |")) {
        std::vector<std::string> words = buildWords(row);
        const CommandRun strict = hxmidi(words);
        EXPECT_EQ(strict.firstComplaint(), "error: " + textOf(row.at(2)));
        EXPECT_EQ(strict.code, 2);
        words.insert(words.begin() + 1, "--lenient");
        const CommandRun lenient = hxmidi(words);
        const bool refused = row.at(3) == QLatin1String("(refused)");
        EXPECT_EQ(lenient.code, refused ? 2 : 0) << lenient.err;
        EXPECT_EQ(lenient.out, refused ? "" : textOf(row.at(3)) + "\n");
    }
}

TEST(GrammarTables, NameEveryFieldOfTheBuilderAndNoOther)
{
    const QStringList fields = namesOf(hx::builderFields);
    QStringList inPage;
    for (const QStringList& row :
         rowsOf("docs/formats/builder-format.md", "| Field | Argument | Bytes | Read back by |"))
        for (const std::string& name : wordsOf(row.at(0)))
            inPage << QString::fromStdString(name);
    EXPECT_EQ(sorted(inPage), sorted(fields));

    const QString help = QString::fromStdString(hxmidi({"build", "--help"}).out);
    EXPECT_EQ(sorted(wordsBefore(between(help, "Fields:\n", "\nExit codes:"))), sorted(fields));

    const QString manual =
        linesOfDocument(QStringLiteral("docs/man/hxmidi.1")).join(QLatin1Char('\n'));
    EXPECT_EQ(sorted(boldWords(between(manual, "The fields are\n", "\n.TP\n"))), sorted(fields));
}

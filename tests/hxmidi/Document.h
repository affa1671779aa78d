// Examples and tables taken out of the project's documents.
#pragma once

#include <QFile>
#include <QStringList>

#include <gtest/gtest.h>

// A command of a document and what the document says that it prints.
struct Example {
    QString command;
    QStringList output;
};

// The lines of a document of the tree; the test fails when there is none.
inline QStringList linesOfDocument(const QString& name)
{
    QFile file(QStringLiteral(HX_SOURCE_FOLDER "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

// The commands, on lines that begin with "$ ", between lines `begin` and `end`, and the lines that
// follow each. `plain` turns a line of the document into what a reader sees.
inline QList<Example> examplesBetween(const QStringList& lines, const QString& begin,
                                      const QString& end, QString (*plain)(QString))
{
    QList<Example> examples;
    bool inside = false;
    for (const QString& written : lines) {
        if (written == begin || (inside && written == end)) {
            inside = written == begin;
            continue;
        }
        if (!inside)
            continue;
        const QString line = plain(written);
        if (line.startsWith(QLatin1String("$ ")))
            examples += Example{line.mid(2), QStringList()};
        else if (!examples.isEmpty())
            examples.last().output += line;
    }
    return examples;
}

// The cells of a table row of Markdown; "\|" is a bar within a cell.
inline QStringList cellsOf(QString row)
{
    const QChar bar(0xE000);
    row.replace(QLatin1String("\\|"), QString(bar));
    QStringList cells;
    for (QString cell : row.mid(1, row.lastIndexOf(QLatin1Char('|')) - 1).split(QLatin1Char('|')))
        cells += cell.replace(bar, QLatin1Char('|')).trimmed();
    return cells;
}

// The rows below the table heading that begins with these cells.
inline QList<QStringList> tableUnder(const QStringList& lines, const QString& heading)
{
    QList<QStringList> rows;
    bool inside = false;
    for (const QString& line : lines) {
        if (inside && !line.startsWith(QLatin1Char('|')))
            break;
        if (inside && !line.startsWith(QLatin1String("| ---")))
            rows += cellsOf(line);
        inside = inside || line == heading;
    }
    return rows;
}

// The text of a cell without the backquotes; "(empty)" and "(none)" are the empty text.
inline std::string textOf(const QString& cell)
{
    if (cell == QLatin1String("(empty)") || cell == QLatin1String("(none)"))
        return std::string();
    return cell.startsWith(QLatin1Char('`')) ? cell.mid(1, cell.size() - 2).toStdString()
                                             : cell.toStdString();
}

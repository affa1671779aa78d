#include "host/trace/SequenceDrawing.h"

#include "qt/Saturated.h"

#include <algorithm>

namespace hx {

namespace {

using Anchor = SvgPage::Anchor;
using Kind = SequenceRow::Kind;

constexpr int timeX = 96; // right end of the times
constexpr int hostX = 130;
constexpr int productX = 650;
constexpr int middleX = (hostX + productX) / 2;
constexpr int noteX = 676;
constexpr int headWidth = 90;
constexpr int lifelineHeadHeight = 24;
constexpr int rowHeight = 27;
constexpr int noteHeight = 15;
constexpr int textAbove = 5; // an arrow's label is so much above it, a fault's below
constexpr int longestLabel = 64;
constexpr int longestNote = 76;

struct Look {
    const char* line;
    const char* head;
};

Look lookOf(Kind kind)
{
    switch (kind) {
    case Kind::Message:
        return {"message", "messageHead"};
    case Kind::Retry:
        return {"retry", "retryHead"};
    case Kind::Reply:
        return {"reply", "replyHead"};
    case Kind::Ignored:
    case Kind::Note:
    case Kind::Omission:
        return {"ignored", "ignoredHead"};
    case Kind::Refusal:
    case Kind::Dropped:
    case Kind::Failure:
        break;
    }
    return {"fault", "faultHead"};
}

QString cut(const QString& text, int length)
{
    if (text.size() <= length)
        return text;
    return text.left(length - 3) + QStringLiteral("...");
}

QString timeLabel(Microseconds time)
{
    return QString::number(double(time) / microsecondsPerSecond, 'f', 6) + QStringLiteral(" s");
}

// Notes that are long or many make a row taller.
QStringList noteLines(const SequenceRow& row)
{
    QStringList lines;
    for (QString note : row.notes) {
        while (note.size() > longestNote) {
            const auto blank = note.lastIndexOf(QLatin1Char(' '), longestNote);
            const auto end = blank > 0 ? blank : longestNote;
            lines << note.left(end);
            note = QStringLiteral("  ") + note.mid(end).trimmed();
        }
        lines << note;
    }
    return lines;
}

int heightOf(const SequenceRow& row)
{
    const int lines = saturated(noteLines(row).size());
    return std::max(rowHeight, noteHeight * lines + rowHeight - noteHeight);
}

QString labelOf(const SequenceRow& row)
{
    if (row.kind == Kind::Retry)
        return QStringLiteral("again: ") + row.text;
    if (row.kind == Kind::Ignored)
        return QStringLiteral("ignored: ") + row.text;
    if (row.kind == Kind::Dropped)
        return QStringLiteral("dropped: ") + row.text;
    return row.text;
}

void drawToProduct(SvgPage& page, int y, const Look& look)
{
    page.line(look.line, hostX, y, productX, y);
    page.arrowHead(look.head, productX, y, 1);
}

void drawToHost(SvgPage& page, int y, const Look& look)
{
    page.line(look.line, productX, y, hostX, y);
    page.arrowHead(look.head, hostX, y, -1);
}

// What came but was not taken ends in a cross short of the host.
void drawNotTaken(SvgPage& page, int y, const Look& look)
{
    constexpr int shortOf = 14;
    page.line(look.line, productX, y, hostX + shortOf, y);
    page.cross("fault", hostX + shortOf, y);
}

void drawFailure(SvgPage& page, int y, const SequenceRow& row)
{
    constexpr int reach = 26;
    constexpr int labelX = hostX + reach + 12;
    page.line("fault", hostX, y, hostX + reach, y);
    page.cross("fault", hostX + reach, y);
    page.text("fault", Anchor::Start, labelX, y + textAbove, cut(row.text, longestLabel));
}

void drawOmission(SvgPage& page, int y, const SequenceRow& row)
{
    constexpr int overhang = 20;
    constexpr int above = 18;
    page.box("omission", hostX - overhang, y - above, productX - hostX + 2 * overhang,
             rowHeight - 2);
    page.text("small", Anchor::Middle, middleX, y - 1, row.text);
}

void drawArrow(SvgPage& page, int y, const SequenceRow& row)
{
    const Look look = lookOf(row.kind);
    switch (row.kind) {
    case Kind::Message:
    case Kind::Retry:
        return drawToProduct(page, y, look);
    case Kind::Reply:
    case Kind::Refusal:
        return drawToHost(page, y, look);
    case Kind::Ignored:
    case Kind::Dropped:
        return drawNotTaken(page, y, look);
    case Kind::Failure:
        return drawFailure(page, y, row);
    case Kind::Note:
    case Kind::Omission:
        break;
    }
}

const char* labelStyle(Kind kind)
{
    const bool isPlain = kind == Kind::Message || kind == Kind::Reply;
    return isPlain ? "label" : lookOf(kind).line;
}

void drawRow(SvgPage& page, int y, const SequenceRow& row)
{
    if (row.kind == Kind::Omission)
        return drawOmission(page, y, row);
    page.text("small", Anchor::End, timeX, y, timeLabel(row.time));
    drawArrow(page, y, row);
    if (!row.text.isEmpty() && row.kind != Kind::Failure)
        page.text(labelStyle(row.kind), Anchor::Middle, middleX, y - textAbove,
                  cut(labelOf(row), longestLabel));
    int noteY = y;
    for (const QString& note : noteLines(row)) {
        page.text("note", Anchor::Start, noteX, noteY, note);
        noteY += noteHeight;
    }
}

void drawHead(SvgPage& page, int x, int y, const QString& name)
{
    constexpr int baseline = 16;
    page.box("head", x - headWidth / 2, y, headWidth, lifelineHeadHeight);
    page.text("heading", Anchor::Middle, x, y + baseline, name);
}

} // namespace

int sequenceHeight(const std::vector<SequenceRow>& rows)
{
    int height = lifelineHeadHeight + rowHeight;
    for (const SequenceRow& row : rows)
        height += heightOf(row);
    return height;
}

void drawSequence(SvgPage& page, int y, const std::vector<SequenceRow>& rows)
{
    const int bottom = y + sequenceHeight(rows);
    page.line("life", hostX, y + lifelineHeadHeight, hostX, bottom);
    page.line("life", productX, y + lifelineHeadHeight, productX, bottom);
    drawHead(page, hostX, y, QStringLiteral("host"));
    drawHead(page, productX, y, QStringLiteral("product"));
    page.text("heading", Anchor::Start, noteX + headWidth / 2, y + 16,
              QStringLiteral("what the host made of it"));
    int rowY = y + lifelineHeadHeight + rowHeight;
    for (const SequenceRow& row : rows) {
        drawRow(page, rowY, row);
        rowY += heightOf(row);
    }
}

} // namespace hx

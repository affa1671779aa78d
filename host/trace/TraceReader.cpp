#include "host/base/WholeFile.h"
#include "host/trace/Trace.h"
#include "qt/Saturated.h"

#include <QFile>

#include <algorithm>

namespace hx {

namespace {

constexpr size_t maxTraceEvents = 500000; // an update of the largest image has 30000
constexpr int microsecondDigits = 6;
constexpr int mostSecondDigits = 9;

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

int hexValue(QChar character)
{
    if (isDigit(character))
        return character.unicode() - '0';
    if (character >= QLatin1Char('A') && character <= QLatin1Char('F'))
        return character.unicode() - 'A' + 10;
    return -1;
}

bool isNameCharacter(QChar character)
{
    return character.unicode() > 0x20 && character.unicode() != 0x7F;
}

// Reads one line from left to right; the first thing that is wrong stops it.
class LineReader {
public:
    LineReader(const QString& line, TraceEvent& event) : m_line(line), m_event(event) {}

    bool read()
    {
        return readTime() && readWord() && readBytes() && readName() && readText() && checkWhole();
    }

    QString error() const { return m_error; }
    int column() const { return m_errorColumn; } // from 1

private:
    bool refuse(int position, const QString& expected)
    {
        m_error = QStringLiteral("expected %1").arg(expected);
        m_errorColumn = position + 1;
        return false;
    }

    bool atEnd() const { return m_position >= m_line.size(); }
    QChar peek() const { return atEnd() ? QChar() : m_line.at(m_position); }

    bool skipBlanks()
    {
        const int before = m_position;
        while (!atEnd() && peek() == QLatin1Char(' '))
            ++m_position;
        return m_position > before;
    }

    QString takeDigits()
    {
        const int begin = m_position;
        while (!atEnd() && isDigit(peek()))
            ++m_position;
        return m_line.mid(begin, m_position - begin);
    }

    bool readTime()
    {
        skipBlanks();
        const int begin = m_position;
        const QString seconds = takeDigits();
        if (seconds.isEmpty() || seconds.size() > mostSecondDigits || peek() != QLatin1Char('.'))
            return refuse(begin, QStringLiteral("a time such as 12.345678"));
        ++m_position;
        const QString fraction = takeDigits();
        if (fraction.size() != microsecondDigits)
            return refuse(begin, QStringLiteral("a time with six decimals"));
        m_event.event.time = seconds.toLongLong() * 1000000 + fraction.toLongLong();
        return true;
    }

    bool readWord()
    {
        const bool parted = skipBlanks();
        const int begin = m_position;
        while (!atEnd() && peek() != QLatin1Char(' '))
            ++m_position;
        const QString word = m_line.mid(begin, m_position - begin);
        if (parted && busEventKindOf(word, &m_event.event.kind))
            return true;
        return refuse(begin, QStringLiteral("a kind of event, such as sent or received"));
    }

    bool isByte() const
    {
        return m_position + 1 < m_line.size() && hexValue(m_line.at(m_position)) >= 0 &&
               hexValue(m_line.at(m_position + 1)) >= 0 &&
               (m_position + 2 == m_line.size() || m_line.at(m_position + 2) == QLatin1Char(' '));
    }

    bool readBytes()
    {
        skipBlanks();
        m_bytesAt = m_position;
        while (isByte()) {
            const int value = hexValue(peek()) * 16 + hexValue(m_line.at(m_position + 1));
            m_event.event.bytes.append(static_cast<char>(value));
            m_position += 2;
            skipBlanks();
        }
        return true;
    }

    bool readName()
    {
        if (peek() != QLatin1Char('='))
            return true;
        const int begin = m_position++;
        const bool parted = skipBlanks();
        const int nameAt = m_position;
        while (!atEnd() && isNameCharacter(peek()))
            ++m_position;
        m_event.name = m_line.mid(nameAt, m_position - nameAt);
        skipBlanks();
        if (!parted || m_event.name.isEmpty() || m_event.event.bytes.isEmpty())
            return refuse(begin, QStringLiteral("bytes before \"=\" and a name after it"));
        return true;
    }

    bool readText()
    {
        if (atEnd() && m_line.endsWith(QLatin1Char(' ')))
            return refuse(m_position - 1, QStringLiteral("no blank at the end of the line"));
        if (atEnd())
            return true;
        if (!QStringView(m_line).mid(m_position).startsWith(QLatin1String(": ")))
            return refuse(m_position,
                          QStringLiteral("a byte of two upper-case hex digits, \"=\" or "
                                         "\": \""));
        m_position += 2;
        while (!atEnd()) {
            if (!readCharacter())
                return false;
        }
        return true;
    }

    bool readCharacter()
    {
        const QChar character = m_line.at(m_position);
        if (character != QLatin1Char('\\')) {
            m_event.event.text += character;
            ++m_position;
            return true;
        }
        return readEscape();
    }

    bool readEscape()
    {
        const QString rest = m_line.mid(m_position + 1, 3);
        if (rest.startsWith(QLatin1Char('\\'))) {
            m_event.event.text += QLatin1Char('\\');
            m_position += 2;
            return true;
        }
        const bool isNumber = rest.size() == 3 && rest.at(0) == QLatin1Char('x') &&
                              hexValue(rest.at(1).toUpper()) >= 0 &&
                              hexValue(rest.at(2).toUpper()) >= 0;
        if (!isNumber)
            return refuse(m_position, QStringLiteral("\\\\ or \\x and two hex digits"));
        m_event.event.text += QChar(rest.mid(1).toUShort(nullptr, 16));
        m_position += 4;
        return true;
    }

    bool checkWhole()
    {
        const BusEvent& event = m_event.event;
        if (carriesBytes(event.kind) == event.bytes.isEmpty() &&
            event.kind != BusEventKind::SendFailed)
            return refuse(m_bytesAt, event.bytes.isEmpty()
                                         ? QStringLiteral("the bytes that travelled")
                                         : QStringLiteral("no bytes for this kind of event"));
        const bool isOneRealTime = event.bytes.size() == 1 && (event.bytes.at(0) & 0xF8) == 0xF8;
        if (event.kind == BusEventKind::RealTime && !isOneRealTime)
            return refuse(m_bytesAt, QStringLiteral("one byte from F8 to FF"));
        return true;
    }

    const QString& m_line;
    TraceEvent& m_event;
    int m_position = 0;
    int m_bytesAt = 0;
    QString m_error;
    int m_errorColumn = 0;
};

Problem notATrace(const QString& what, const Place& place = {})
{
    return {ExitCode::FileError, what, QStringLiteral("a file that --trace has written"),
            QStringLiteral("give the name of one; docs/formats/trace-format.md says what it holds"),
            place};
}

Problem refused(int line, int column, const QString& what)
{
    return notATrace(QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(what),
                     {-1, -1, line, column});
}

// Where the bytes stop being UTF-8, as a column from 1; 0 when they are all of `text`.
int columnOfBadText(const QByteArray& bytes, const QString& text)
{
    const QByteArray again = text.toUtf8();
    if (bytes == again)
        return 0;
    const auto bad = std::mismatch(bytes.begin(), bytes.end(), again.begin(), again.end()).first;
    const int size = saturated(bad - bytes.begin());
    return saturated(QString::fromUtf8(bytes.constData(), size).size() + 1);
}

Result<> readLine(TraceEvents& events, const QByteArray& bytes, int number)
{
    const QString text = QString::fromUtf8(bytes.constData(), bytes.size()); // zero bytes included
    if (const int column = columnOfBadText(bytes, text))
        return refused(number, column, QStringLiteral("expected text in UTF-8"));
    if (text.startsWith(QLatin1Char('#')))
        return {};
    if (events.size() >= maxTraceEvents)
        return refused(number, 1,
                       QStringLiteral("expected at most %1 events; cut the trace into parts, each "
                                      "with the first line")
                           .arg(maxTraceEvents));
    TraceEvent event;
    event.line = number;
    LineReader reader(text, event);
    if (!reader.read())
        return refused(number, reader.column(), reader.error());
    if (!events.empty() && event.event.time < events.back().event.time)
        return refused(number, 1,
                       QStringLiteral("expected a time not before that of the last event"));
    events.push_back(event);
    return {};
}

// The line from `begin` on, which then is where the next one begins.
QByteArray takeLine(const QByteArray& content, int* begin)
{
    const auto found = content.indexOf('\n', *begin);
    const int end = saturated(found < 0 ? content.size() : found);
    const QByteArray line = content.mid(*begin, end - *begin);
    *begin = end + 1;
    return line.endsWith('\r') ? line.left(line.size() - 1) : line;
}

} // namespace

Result<TraceEvents> parseTrace(const QByteArray& content)
{
    TraceEvents events;
    int begin = 0;
    if (takeLine(content, &begin) != QByteArray(traceHeader))
        return refused(1, 1, QStringLiteral("expected \"%1\"").arg(QLatin1String(traceHeader)));
    for (int number = 2; begin < content.size(); ++number) {
        const Result<> read = readLine(events, takeLine(content, &begin), number);
        if (!read)
            return read.problem();
    }
    return events;
}

namespace {

Result<TraceEvents> contentOf(const QString& path)
{
    QFile in;
    const Result<> opened = openFile(in, path, QIODevice::ReadOnly);
    if (!opened)
        return notATrace(QStringLiteral("it cannot be read: %1").arg(opened.problem().what));
    const QByteArray head = in.peek(int(qstrlen(traceHeader)));
    if (head != traceHeader)
        return parseTrace(head); // which refuses it; what is not a trace is not taken into memory
    QByteArray content;
    if (in.size() <= maxTraceBytes)
        content = in.read(maxTraceBytes + 1); // a device states no size before it is read
    if (content.isEmpty() || content.size() > maxTraceBytes)
        return notATrace(
            QStringLiteral("it has more than %1 bytes, which no trace has").arg(maxTraceBytes));
    return parseTrace(content);
}

} // namespace

Result<TraceEvents> readTrace(const QString& path)
{
    Result<TraceEvents> trace = contentOf(path);
    if (trace)
        return trace;
    Problem problem = trace.problem();
    problem.what = QStringLiteral("the trace \"%1\": %2").arg(path, problem.what);
    return problem;
}

} // namespace hx

#include "mididata/HexText.h"

#include "mididata/CompactText.h"
#include "mididata/HexNumber.h"
#include "mididata/HxMidiData.h"
#include "mididata/NumberBytes.h"
#include "mididata/fast/FastPaths.h"
#include "mididata/fast/PlainHex.h"

#include <QDebug>

#include <algorithm>

namespace {

constexpr std::string_view separators = " ,";

// What QString::trimmed() takes off a Latin-1 text.
bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x85' || c == '\xA0';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isWhiteSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhiteSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view viewOf(const char* text)
{
    return text != nullptr ? std::string_view(text) : std::string_view();
}

qint64 lengthOf(std::string_view text)
{
    return static_cast<qint64>(text.size());
}

bool is0xHex(std::string_view text)
{
    return text.size() >= 3 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

void logText(const char* what, std::string_view text)
{
    qDebug() << what << QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

void logHexTextProblem(hx::TextProblemKind kind, std::string_view text)
{
    switch (kind) {
    case hx::TextProblemKind::NotANumber:
    case hx::TextProblemKind::NumberTooLarge:
        logText("HxMidiData::HxMidiData(const char*,int) - error converting hex string: ", text);
        break;
    case hx::TextProblemKind::OddDigits:
        logText("HxMidiData::HxMidiData(const char*,int) - invalid hex string format: ", text);
        break;
    case hx::TextProblemKind::NumberWithoutBytes:
        hx::logNumberWithoutBytes();
        break;
    default:
        break;
    }
}

// Reads one text token by token, until one of them ends it.
class HexTextReader {
public:
    HexTextReader(std::string_view text, const hx::ProblemSink& report)
        : m_whole(text), m_text(trimmed(text)), m_report(report)
    {
    }

    QByteArray read()
    {
        if (m_text.size() < 2)
            reportText(hx::TextProblemKind::SingleCharacter);
        else if (m_text.find_first_of(separators) != std::string_view::npos)
            readSeparated();
        else if (is0xHex(m_text))
            readToken(m_text);
        else if (m_text.size() % 2 != 0)
            reportText(hx::TextProblemKind::OddDigits);
        else
            readPairs();
        return m_bytes;
    }

private:
    void readSeparated()
    {
        size_t begin = m_text.find_first_not_of(separators);
        while (begin != std::string_view::npos) {
            const size_t end = std::min(m_text.find_first_of(separators, begin), m_text.size());
            if (!readToken(m_text.substr(begin, end - begin)))
                return;
            begin = m_text.find_first_not_of(separators, end);
        }
    }

    void readPairs()
    {
        for (size_t at = 0; at < m_text.size(); at += 2) {
            if (!readToken(m_text.substr(at, 2)))
                return;
        }
    }

    // False when this token ends the text.
    bool readToken(std::string_view token)
    {
        const hx::HexNumber number = hx::readHexNumber(token);
        const auto problem = hx::problemOf(token, number);
        if (problem)
            m_report({*problem, token.data() - m_whole.data(), lengthOf(token)});
        if (number.ok)
            m_bytes += hx::numberBytes(number.value);
        return problem != hx::TextProblemKind::NumberWithoutBytes;
    }

    void reportText(hx::TextProblemKind kind)
    {
        if (!m_text.empty())
            m_report({kind, m_text.data() - m_whole.data(), lengthOf(m_text)});
    }

    std::string_view m_whole;
    std::string_view m_text;
    const hx::ProblemSink& m_report;
    QByteArray m_bytes;
};

} // namespace

QByteArray hx::readHexText(std::string_view text, Blanks blanks, const ProblemSink& report)
{
    if (blanks == Blanks::Split)
        return HexTextReader(text, report).read();
    const CompactText compact(text);
    const ProblemSink place = [&](const TextProblem& problem) { report(compact.placed(problem)); };
    return HexTextReader(compact.text(), place).read();
}

// Each entry reads a text of pairs alone at once. Its separators are those that the entry's general
// way leaves out or cuts at, so the bytes are the same.
HxMidiData::HxMidiData(const QString& text)
{
    if (hx::fastPaths && hx::readPlainHex(text.constData(), text.size(), bytes, {' ', '\n'}))
        return;
    QString compact = text;
    compact.remove(QLatin1Char('\n')).remove(QLatin1Char(' '));
    setText(compact.toUtf8().constData());
}

HxMidiData::HxMidiData(QString& text) : HxMidiData(static_cast<const QString&>(text)) {}

HxMidiData::HxMidiData(const char* text)
{
    if (hx::fastPaths) {
        const std::string_view given = viewOf(text);
        if (hx::readPlainHex(given.data(), lengthOf(given), bytes, {' ', ' '}))
            return;
    }
    QByteArray compact(text);
    setText(compact.replace(' ', "").constData());
}

void HxMidiData::setText(const char* text)
{
    const QByteArray original = bytes; // keeps the text that may lie in it
    const std::string_view given = trimmed(viewOf(text));
    clear();
    if (hx::fastPaths && hx::readPlainHex(given.data(), lengthOf(given), bytes, {' ', ','}))
        return;
    bytes = hx::readHexText(given, hx::Blanks::Split, [given](const hx::TextProblem& problem) {
        logHexTextProblem(problem.kind, given);
    });
}

bool HxMidiData::is0xHexStr(QString& s)
{
    return s.size() >= 3 && s.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
}

#include "mididata/HexNumber.h"
#include "mididata/HxMidiData.h"
#include "mididata/fast/PlainHex.h"

#include <QDebug>

#include <algorithm>
#include <string_view>

namespace {

constexpr std::string_view separators = " ,";

/** What QString::trimmed() takes off a Latin-1 text. */
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

/** Appends the tokens of one text to a buffer, until one of them ends the text. */
class TokenReader {
public:
    TokenReader(HxMidiData& target, std::string_view wholeText) : data(target), text(wholeText) {}

    /** False when this token ends the text. */
    bool read(std::string_view token)
    {
        const hx::HexNumber number = hx::readHexNumber(token);
        if (number.ok)
            return data.appendNum(number.value);
        logText("HxMidiData::HxMidiData(const char*,int) - error converting hex string: ", text);
        return true;
    }

private:
    HxMidiData& data;
    std::string_view text;
};

void readSeparated(HxMidiData& data, std::string_view text)
{
    TokenReader reader(data, text);
    size_t begin = text.find_first_not_of(separators);
    while (begin != std::string_view::npos) {
        const size_t end = std::min(text.find_first_of(separators, begin), text.size());
        if (!reader.read(text.substr(begin, end - begin)))
            return;
        begin = text.find_first_not_of(separators, end);
    }
}

void readPairs(HxMidiData& data, std::string_view text)
{
    TokenReader reader(data, text);
    for (size_t at = 0; at < text.size(); at += 2) {
        if (!reader.read(text.substr(at, 2)))
            return;
    }
}

void readHexText(HxMidiData& data, std::string_view text)
{
    if (text.size() < 2)
        return;
    if (text.find_first_of(separators) != std::string_view::npos)
        readSeparated(data, text);
    else if (is0xHex(text))
        TokenReader(data, text).read(text);
    else if (text.size() % 2 != 0)
        logText("HxMidiData::HxMidiData(const char*,int) - invalid hex string format: ", text);
    else
        readPairs(data, text);
}

} // namespace

/*
 * Each entry reads a plain text at once. Its separators are those that the entry's general way
 * leaves out or cuts at, so the bytes are the same.
 */
HxMidiData::HxMidiData(const QString& text)
{
    const auto isLeftOut = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\n'); };
    if (hx::readPlainHex(text.constData(), text.size(), bytes, isLeftOut))
        return;
    QString compact = text;
    compact.remove(QLatin1Char('\n')).remove(QLatin1Char(' '));
    setText(compact.toUtf8().constData());
}

HxMidiData::HxMidiData(QString& text) : HxMidiData(static_cast<const QString&>(text)) {}

HxMidiData::HxMidiData(const char* text)
{
    const std::string_view given = viewOf(text);
    if (hx::readPlainHex(given.data(), lengthOf(given), bytes, [](char c) { return c == ' '; }))
        return;
    QByteArray compact(text);
    setText(compact.replace(' ', "").constData());
}

void HxMidiData::setText(const char* text)
{
    const QByteArray outlived = bytes; // the text may lie in it
    const std::string_view given = trimmed(viewOf(text));
    clear();
    const auto isSeparator = [](char c) { return c == ' ' || c == ','; };
    if (hx::readPlainHex(given.data(), lengthOf(given), bytes, isSeparator))
        return;
    bytes.clear();
    readHexText(*this, given);
}

bool HxMidiData::is0xHexStr(QString& s)
{
    return s.size() >= 3 && s.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
}

#include "host/product/PatternBytes.h"

#include "host/base/StatusByte.h"
#include "qt/Saturated.h"

#include <optional>

namespace hx {

namespace {

QString firstAlternative(QString pattern)
{
    pattern.remove(QLatin1Char(' '));
    if (pattern.startsWith(QLatin1Char('(')) && pattern.endsWith(QLatin1Char(')')))
        pattern = pattern.mid(1, pattern.size() - 2);
    return pattern.section(QLatin1Char('|'), 0, 0);
}

// Goes through a pattern half byte by half byte.
class DigitReader {
public:
    explicit DigitReader(const QString& pattern) : m_pattern(pattern) {}

    // The next byte; none at the end, or where the pattern is not made of bytes any more.
    std::optional<PatternByte> next();
    bool atEnd() const { return m_at >= m_pattern.size(); }

private:
    std::optional<PatternByte> nextDigit();

    QString m_pattern;
    int m_at = 0;
};

std::optional<PatternByte> DigitReader::nextDigit()
{
    const QChar character = m_pattern.size() > m_at ? m_pattern.at(m_at) : QChar();
    if (character == QLatin1Char('[')) {
        const int close = saturated(m_pattern.indexOf(QLatin1Char(']'), m_at));
        m_at = close < 0 ? m_at : close + 1;
        return close < 0 ? std::nullopt
                         : std::optional<PatternByte>({PatternByte::Kind::Limited, 0});
    }
    bool isDigit = false;
    const auto value = static_cast<quint8>(QString(character).toUShort(&isDigit, 16));
    if (!isDigit && character != QLatin1Char('.'))
        return std::nullopt;
    ++m_at;
    return PatternByte{isDigit ? PatternByte::Kind::Fixed : PatternByte::Kind::Open, value};
}

std::optional<PatternByte> DigitReader::next()
{
    const int start = m_at;
    const std::optional<PatternByte> high = nextDigit();
    const std::optional<PatternByte> low = high ? nextDigit() : std::nullopt;
    const bool isRepeated = !atEnd() && m_pattern.at(m_at) == QLatin1Char('*');
    if (!low || isRepeated) {
        m_at = start;
        return std::nullopt;
    }
    PatternByte byte = *high;
    byte.value = static_cast<quint8>(high->value << 4 | low->value);
    if (high->kind != low->kind)
        byte.kind = PatternByte::Kind::Limited;
    return byte;
}

} // namespace

PatternBytes patternBytes(const QString& pattern)
{
    PatternBytes result;
    DigitReader reader(firstAlternative(pattern));
    while (const std::optional<PatternByte> byte = reader.next())
        result.bytes.push_back(*byte);
    result.isWhole = reader.atEnd() && !result.bytes.empty();
    return result;
}

ReplyLayout replyLayout(const QString& pattern)
{
    PatternBytes read = patternBytes(pattern);
    std::vector<PatternByte>& bytes = read.bytes;
    if (!read.isWhole)
        return {};
    if (bytes.back().isFixed() && bytes.back().value == sysExEnd)
        bytes.pop_back();
    ReplyLayout layout;
    layout.position = static_cast<int>(bytes.size());
    while (layout.position > 0 && bytes[static_cast<size_t>(layout.position) - 1].isOpen())
        --layout.position;
    layout.count = static_cast<int>(bytes.size()) - layout.position;
    return layout;
}

} // namespace hx

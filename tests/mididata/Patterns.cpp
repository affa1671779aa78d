#include "tests/mididata/Patterns.h"

namespace {

std::string times(int count, const std::string& text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string digit(Random& random)
{
    return std::string(1, "0123456789ABCDEFabcdef"[random.below(22)]);
}

std::string digitClass(Random& random, const std::string& own)
{
    switch (random.below(5)) {
    case 0:
        return "[" + own + digit(random) + "]";
    case 1:
        return "[" + digit(random) + own + digit(random) + "]";
    case 2:
        return "[^" + digit(random) + "]";
    case 3:
        return "[0-" + own + "]";
    default:
        return "[" + own + "]";
    }
}

/** One piece that stands in for one digit, or, rarely, for something that is no single digit. */
std::string piece(Random& random, const std::string& own)
{
    static const std::vector<std::string> rare = {
        "+",     "?", "*", "{2}", "^",   "$",   "\\d",   "|",   "()",       "(|)",
        "[]",    "]", ")", "(",   "\\",  "VV",  "\t",    "-",   "(?:F)",    "X",
        "(?=F)", "{", "}", "\\.", "[^]", "[X]", "(?!F)", ".*?", "[0-9A-F]", "\\x46"};
    switch (random.below(24)) {
    case 0:
    case 1:
    case 2:
        return ".";
    case 3:
        return digitClass(random, own);
    case 4:
        return ".*";
    case 5:
        return "(" + own + "|" + digit(random) + ")";
    case 6:
        return "(" + digit(random) + digit(random) + "|" + own + ".*)";
    case 7:
        return random.oneIn(3) ? random.of(rare) : own;
    case 8:
        return random.oneIn(2) ? digit(random) : own;
    case 9:
        return random.oneIn(2) ? " " : own;
    case 10:
        return random.oneIn(2) ? "XX" : own;
    default:
        return own;
    }
}

std::string pieces(Random& random, const std::string& digits)
{
    std::string pattern;
    for (const char own : digits)
        pattern += piece(random, std::string(1, own));
    return pattern;
}

/** Digits that fit a pattern without alternatives, or the first alternative of one that has them.
 */
std::string fittingDigits(Random& random, const std::string& pattern)
{
    std::string digits;
    for (size_t i = 0; i < pattern.size() && pattern[i] != '|'; ++i) {
        const char c = pattern[i];
        if (c == '*') {
            digits += random.bytes(random.below(4)).toHex().toStdString();
        } else if (c == '[') { // two digits
            digits += pattern[i + 1 + static_cast<size_t>(random.below(2))];
            i += 3;
        } else if (c != '(') {
            digits += c == '.' || c == 'v' ? digit(random) : std::string(1, c);
        }
    }
    return digits;
}

} // namespace

const std::vector<std::string>& dictionaryPatterns()
{
    static const std::vector<std::string> patterns = {
        "F0006B2D30411B0958F7",
        "F07E7F0601F7",
        "F07E..0602......................F7",
        "F0006B2D30412FF7",
        "F0006B2D30412F00vv00vvF7",
        "F0006B2D30414208F7",
        "F0006B2D30414209F7",
        "F0006B2D3041420[89]" + times(13, "..") + "F7",
        "F0006B2D30414208..*F7",
        "F0006B2D30414209" + times(13, "..") + "F7",
        "F0006B2D3041420802F7",
        "F0006B2D3041420902F7",
        "F0006B2D304130F7",
        "F0006B2D304130........",
        "F0006B2D304131F7",
        "F0006B2D304131........",
        "F0006B2D3041420D" + times(32, "..") + "F7",
        "F0006B2D304121F7",
        "F0006B2D304121" + times(8, "..") + "F7",
        "F0006B2D30411C01F7",
        "F0006B2D30411C00F7",
        "F0006B2D30411C02F7",
        "F0006B2D30412EF7",
        "(F0006B2D30..2E........F7|F0006B2D30..2E46F7)",
        "(F0006B2D30412F........F7|F0006B2D30412F46F7)",
        "F0006B2D30414[23]0C..F7",
        "F0006B2D30..4[23]0C00F7",
        "F0006B2D30..4[23]0C01F7",
        "F0006B2D30..4[23]0C02F7",
        "F0006B2D3041430C" + times(16, "..") + "F7",
        "F0006B2D30..420C" + times(16, "..") + "F7",
    };
    return patterns;
}

QByteArray replyTo(Random& random, const std::string& pattern)
{
    return QByteArray::fromHex(fittingDigits(random, pattern).c_str());
}

QByteArray replyNear(Random& random, const std::string& pattern)
{
    QByteArray bytes = replyTo(random, pattern);
    if (random.oneIn(4))
        bytes[random.below(bytes.size())] = static_cast<char>(random.below(256));
    if (random.oneIn(8))
        bytes.chop(random.below(4));
    if (random.oneIn(8))
        bytes.prepend(random.bytes(random.below(3)));
    if (random.oneIn(8))
        bytes += random.bytes(random.below(3));
    return bytes;
}

std::string patternLike(Random& random, const QByteArray& bytes)
{
    std::string digits = bytes.toHex().toUpper().toStdString();
    if (random.oneIn(2))
        digits =
            digits.substr(static_cast<size_t>(random.below(static_cast<int>(digits.size()) + 1)));
    if (random.oneIn(3))
        digits = digits.substr(
            0, static_cast<size_t>(random.below(static_cast<int>(digits.size()) + 1)));
    const std::string pattern = pieces(random, digits);
    if (!random.oneIn(6))
        return pattern;
    return "(" + pattern + "|" + pieces(random, digits.substr(digits.size() / 2)) + ")" +
           (random.oneIn(2) ? digit(random) : std::string());
}

std::string anyPattern(Random& random)
{
    static const std::string characters = "0F7E8f..**||(())[[]]^-$+?{}1,\\XxV dwb \xE9";
    std::string pattern;
    for (int n = random.below(14); n > 0; --n)
        pattern +=
            characters[static_cast<size_t>(random.below(static_cast<int>(characters.size())))];
    return pattern;
}

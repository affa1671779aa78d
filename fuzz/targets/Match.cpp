// Patterns over a buffer, against a regular expression over the plain hex text.
#include "fuzz/support/FuzzTarget.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

namespace {

using namespace hx::fuzz;

constexpr int longestPattern = 48;

// Repetitions of repetitions make a regular expression of any size; no product pattern counts.
bool isReasonable(const QByteArray& pattern)
{
    return pattern.size() <= longestPattern && pattern.count('{') <= 1 && !pattern.contains("000");
}

// A pattern in the pieces of which those of products are made.
QByteArray composedPattern(FuzzInput& input)
{
    static const QByteArray pieces[] = {
        "F0", "F7", "00", "6B", "2D", "30", "41",    "46",    "..", "XX", "xx",   " ",
        ".",  "*",  "(",  ")",  "|",  "0",  "4[23]", "0[89]", ".*", "vv", "..*",  "7e",
        "?",  "+",  "^",  "$",  "[",  "]",  "-",     "\\",    "A",  "x",  "(00)", "[^0-9]"};
    QByteArray pattern;
    for (int left = input.byte() % 24; left > 0; --left)
        pattern += pieces[input.choice(int(std::size(pieces)))];
    return pattern;
}

// Bytes of which the pattern speaks, so that it fits now and then.
QByteArray composedBytes(FuzzInput& input)
{
    static const char likely[] = "\xF0\xF7\x00\x6B\x2D\x30\x41\x46\x42\x43\x08\x09\x0F\x7E\x06\x02";
    QByteArray bytes;
    for (int left = input.byte() % 32; left > 0; --left) {
        const uint8_t byte = input.byte();
        bytes += byte < 0xC0 ? likely[byte % 16] : static_cast<char>(input.byte());
    }
    return bytes;
}

void compareText(const HxMidiData& data, const QByteArray& pattern)
{
    const char* const text = pattern.constData();
    const bool anywhere = transcription::match(data.bytes, text, false);
    const bool atStart = transcription::match(data.bytes, text, true);
    requireSame(data.match(text, false), anywhere, "match anywhere");
    requireSame(data.match(text, true), atStart, "match at the start");
    requireSame(data.contains(text), anywhere, "contains(const char*)");
    requireSame(data.startsWith(text), atStart, "startsWith(const char*)");
    requireSame(data.startsWith(pattern), atStart, "startsWith(QByteArray)");
    requireSame(data.startsWith(HxMidiData(pattern)), atStart, "startsWith(HxMidiData)");
}

void compareCompiled(const HxMidiData& data, const QByteArray& pattern, uint8_t how)
{
    static const QRegExp::PatternSyntax syntaxes[] = {QRegExp::RegExp, QRegExp::FixedString,
                                                      QRegExp::Wildcard, QRegExp::RegExp2};
    QRegExp rx(QString::fromLatin1(pattern), how & 1 ? Qt::CaseSensitive : Qt::CaseInsensitive,
               syntaxes[how >> 6]);
    rx.setMinimal((how & 2) != 0);
    requireSame(data.match(rx, false), transcription::match(data.bytes, rx, false),
                "match(QRegExp) anywhere");
    requireSame(data.match(rx, true), transcription::match(data.bytes, rx, true),
                "match(QRegExp) at the start");
}

void compareRaw(const HxMidiData& data, const QByteArray& raw)
{
    const bool expected = transcription::containsRaw(data.bytes, raw);
    requireSame(data.contains(raw), expected, "contains(QByteArray)");
    requireSame(data.contains(HxMidiData(raw)), expected, "contains(HxMidiData)");
}

void run(FuzzInput& input)
{
    const uint8_t how = input.byte();
    const QByteArray pattern = how & 4 ? composedPattern(input) : input.block();
    if (!isReasonable(pattern))
        return;
    const HxMidiData data(how & 8 ? composedBytes(input) : input.block());
    compareText(data, pattern);
    if (how & 16)
        compareCompiled(data, pattern, how);
    if (how & 32)
        compareRaw(data, data.bytes.mid(input.byte() % 32, input.byte() % 8));
    else
        compareRaw(data, pattern);
}

const Target target("match", run);

} // namespace

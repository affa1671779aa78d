#include "tests/mididata/Bytes.h"
#include "tests/mididata/Patterns.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"
#include "tests/support/LeakCheckPause.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void compare(const QByteArray& bytes, const std::string& pattern)
{
    const HxMidiData data(bytes);
    for (const bool atStart : {false, true}) {
        ASSERT_EQ(data.match(pattern.c_str(), atStart),
                  transcription::match(bytes, pattern.c_str(), atStart))
            << bytes.toHex().toUpper().toStdString() << " : " << pattern
            << (atStart ? " at start" : "");
    }
}

} // namespace

// Some of these patterns are no regular expressions; QRegExp's parser loses memory over them.
TEST(MatchingAgainstSteps, patternsThatResembleTheBuffer)
{
    const LeakCheckPause pause;
    Random random(1);
    for (int i = 0; i < 60000 && !HasFatalFailure(); ++i) {
        const QByteArray bytes = random.bytes(random.below(12));
        compare(bytes, patternLike(random, bytes));
    }
}

TEST(MatchingAgainstSteps, patternsOfAnyKind)
{
    Random random(2);
    for (int i = 0; i < 60000 && !HasFatalFailure(); ++i)
        compare(random.bytes(random.below(6)), anyPattern(random));
}

TEST(MatchingAgainstSteps, everyDictionaryPatternAgainstRepliesNearIt)
{
    Random random(3);
    for (int i = 0; i < 30000 && !HasFatalFailure(); ++i) {
        const std::string pattern = random.of(dictionaryPatterns());
        compare(replyNear(random, pattern), pattern);
    }
}

TEST(MatchingAgainstSteps, longBuffers)
{
    Random random(7);
    for (int i = 0; i < 6000 && !HasFatalFailure(); ++i) {
        QByteArray bytes = random.bytes(random.below(200));
        if (random.oneIn(3)) // few different digits: many places that nearly fit
            bytes.replace('\xF0', "\x11").replace('\xFF', "\x11").replace('\x80', "\x12");
        const QByteArray part = bytes.mid(random.below(200), random.below(6));
        const QByteArray behind = bytes.mid(random.below(200), random.below(4));
        compare(bytes, patternLike(random, part) + (random.oneIn(2) ? ".*" : "") +
                           patternLike(random, behind));
    }
}

// Around the sixteen characters that are compared and skipped at once.
TEST(MatchingAgainstSteps, somethingElseAtEveryPlaceOfALongPattern)
{
    const LeakCheckPause pause;
    const QByteArray bytes = hex("F0006B2D3041424344454647480F0E0D0C0B0A09F7");
    const std::string digits = bytes.toHex().toUpper().toStdString();
    for (size_t length = 13; length <= digits.size() && !HasFatalFailure(); length += 3) {
        for (size_t at = 0; at <= length; ++at) {
            for (const char* piece :
                 {"*", " *", ".*", ". *", " ", "XX", "X", "[0F]", ")", "|", "V"})
                compare(bytes, digits.substr(0, at) + piece + digits.substr(at, length - at));
            std::string dots = digits.substr(0, length);
            dots.replace(at / 2, at - at / 2, at - at / 2, '.');
            compare(bytes, dots);
            compare(bytes, dots + "*");
            compare(bytes.left(7), dots + " *");
            compare(bytes, "(" + dots + "|" + digits.substr(0, at) + "0)");
        }
    }
}

// The digits in front of a class, and those after it, are compared sixteen at a time as well.
TEST(MatchingAgainstSteps, aClassAtEveryPlaceOfALongPattern)
{
    const QByteArray bytes = hex("F0006B2D3041424344454647480F0E0D0C0B0A09F7");
    const std::string digits = bytes.toHex().toUpper().toStdString();
    for (size_t length = 1; length <= digits.size() && !HasFatalFailure(); ++length) {
        for (size_t at = 0; at < length; ++at) {
            const std::string pattern = digits.substr(0, at) + "[" + digits[at] + "0]" +
                                        digits.substr(at + 1, length - at - 1);
            compare(bytes, pattern);
            compare(bytes.left(static_cast<int>(length / 2)), pattern);
            compare(bytes, pattern.substr(0, pattern.size() - 1) + "3");
            compare(bytes, "(" + pattern + "|" + pattern + ")");
        }
    }
}

TEST(MatchingAgainstSteps, alternativesOfManyDigits)
{
    const LeakCheckPause pause;
    Random random(9);
    const std::vector<std::string> rare = {"..",   ".",  "XX", "x", "V", " ",
                                           "[0F]", ".*", "*",  "^", "("};
    for (int i = 0; i < 20000 && !HasFatalFailure(); ++i) {
        const QByteArray bytes = random.bytes(random.below(20));
        std::string pattern = random.oneIn(8) ? " (" : "(";
        for (int alternatives = random.between(1, 4); alternatives > 0; --alternatives) {
            std::string digits = bytes.left(random.below(bytes.size() + 1)).toHex().toStdString();
            const auto count = static_cast<qsizetype>(digits.size());
            if (random.oneIn(2) && count > 0)
                digits[static_cast<size_t>(random.below(count))] = "0F.7a"[random.below(5)];
            if (random.oneIn(3))
                digits.insert(static_cast<size_t>(random.below(count + 1)), random.of(rare));
            pattern += digits + (alternatives > 1 ? "|" : "");
        }
        compare(bytes, pattern + (random.oneIn(16) ? "" : ")") + (random.oneIn(16) ? "0" : ""));
    }
}

// Long enough for whole blocks to be left out, with near fits everywhere and the fit in any place, the
// last of the buffer included.
TEST(MatchingAgainstSteps, searchesThatLeaveBlocksOut)
{
    Random random(8);
    const std::vector<std::string> patterns = {
        "F0006B2D30..4[23]0C",    "0C", "C", ".C0", "[0C]0C0", "F0.*6B.*C0", "0.0.0.0C", "V0C",
        "1111111111111111111110C"};
    for (int i = 0; i < 4000 && !HasFatalFailure(); ++i) {
        QByteArray bytes(40 + random.below(300), random.oneIn(2) ? '\x11' : '\xF0');
        for (int k = random.below(4); k > 0; --k) {
            const QByteArray part =
                hex(random.oneIn(2) ? "F0006B2D3000420C" : "00F0006B2D3041430C0");
            const int at = random.below(bytes.size());
            bytes.replace(at, part.size(), part.left(random.between(1, part.size())));
        }
        compare(bytes, random.of(patterns));
    }
}

TEST(MatchingAgainstSteps, aFitIsFoundAtEveryPlaceOfALongBuffer)
{
    for (int at = 0; at <= 2 * 300 - 10; ++at) {
        QByteArray digits(600, '1');
        digits.replace(at, 10, "006B2D304C");
        for (const char* pattern : {"006B2D30.C", "11.006B2D30", "0.6B2D304C", "..006B", "304C"})
            compare(QByteArray::fromHex(digits), pattern);
    }
}

TEST(MatchingAgainstSteps, everyPatternOfFewTokensAgainstEveryShortBuffer)
{
    const std::vector<std::string> tokens = {"0", "F", ".", ".*", "[0F]", "V",
                                             "(", "|", ")", "X",  "*"};
    std::vector<std::string> patterns = {""};
    for (size_t from = 0, length = 0; length < 4; ++length) {
        const size_t to = patterns.size();
        for (; from < to; ++from) {
            for (const std::string& token : tokens)
                patterns.push_back(patterns[from] + token);
        }
    }
    const QList<QByteArray> buffers = {hex(""),     hex("00"),   hex("0F"),   hex("F0"),
                                       hex("FF"),   hex("000F"), hex("F00F"), hex("0FF0"),
                                       hex("00FF"), hex("1F01")};
    for (const std::string& pattern : patterns) {
        for (const QByteArray& bytes : buffers)
            compare(bytes, pattern);
        if (HasFatalFailure())
            return;
    }
}

TEST(MatchingAgainstSteps, regularExpressions)
{
    Random random(4);
    for (int i = 0; i < 10000; ++i) {
        const QByteArray bytes = random.bytes(random.below(8));
        const QRegExp rx(QString::fromLatin1(patternLike(random, bytes).c_str()));
        const bool atStart = random.oneIn(2);
        ASSERT_EQ(HxMidiData(bytes).match(rx, atStart), transcription::match(bytes, rx, atStart))
            << rx.pattern().toStdString();
    }
}

TEST(MatchingAgainstSteps, rawBytes)
{
    Random random(5);
    for (int i = 0; i < 30000; ++i) {
        const QByteArray bytes = random.bytes(random.below(12));
        const QByteArray raw = random.oneIn(2) ? bytes.mid(random.below(12), random.below(6))
                                               : random.bytes(random.below(4));
        const bool expected = transcription::containsRaw(bytes, raw);
        ASSERT_EQ(AdoptedBuffer(bytes).data.contains(raw), expected);
        ASSERT_EQ(HxMidiData(bytes).contains(raw), expected);
        ASSERT_EQ(HxMidiData(bytes).contains(HxMidiData(raw)), expected);
    }
}

TEST(MatchingAgainstSteps, startsWithReadsPatternTextUpToAZeroByte)
{
    Random random(6);
    for (int i = 0; i < 10000; ++i) {
        const QByteArray bytes = random.bytes(random.below(8));
        QByteArray text(patternLike(random, bytes).c_str());
        if (random.oneIn(4))
            text.insert(random.below(text.size() + 1), '\0');
        const bool expected = transcription::match(bytes, text.constData(), true);
        ASSERT_EQ(HxMidiData(bytes).startsWith(text), expected);
        ASSERT_EQ(HxMidiData(bytes).startsWith(HxMidiData(text)), expected);
        const AdoptedBuffer adopted(text);
        ASSERT_EQ(HxMidiData(bytes).startsWith(adopted.data), expected);
    }
}

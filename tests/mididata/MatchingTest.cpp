#include "tests/mididata/Bytes.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* bytes;
    const char* pattern;
    bool anywhere;
    bool atStart;
};

void expectAll(const std::vector<Case>& cases)
{
    for (const Case& c : cases) {
        const HxMidiData data = dataOf(c.bytes);
        EXPECT_EQ(data.match(c.pattern, false), c.anywhere) << c.bytes << " : " << c.pattern;
        EXPECT_EQ(data.match(c.pattern, true), c.atStart) << c.bytes << " : " << c.pattern;
        EXPECT_EQ(data.contains(c.pattern), c.anywhere) << c.bytes << " : " << c.pattern;
        EXPECT_EQ(data.startsWith(c.pattern), c.atStart) << c.bytes << " : " << c.pattern;
    }
}

} // namespace

TEST(Matching, dotsStandForHexDigits)
{
    expectAll({{"F07E000602", "F0 7E .. 06 02", true, true},
               {"F07E00060210F7", "F0 7E .. 06 02", true, true},
               {"F07E000603", "F0 7E .. 06 02", false, false},
               {"F07E0006", "F0 7E .. 06 02", false, false},
               {"F07E", "F. .E", true, true},
               {"F07E", ". . . .", true, true},
               {"F07E", ".....", false, false}});
}

TEST(Matching, theMatchAtTheStartBeginsWithTheFirstByte)
{
    expectAll({{"F07E06", "7e 06", true, false},
               {"F07E0602", "7e 06", true, false},
               {"F07E000602", "7e 06", false, false}});
}

TEST(Matching, aMatchMayBeginInTheMiddleOfAByte)
{
    expectAll({{"17E0", "7E", true, false},
               {"07E0", "7E", true, false},
               {"7E17E0", "17E0", true, false}});
}

TEST(Matching, theFirstMatchDecidesWhetherItIsAtTheStart)
{
    expectAll({{"00F000F0", "F0", true, false}, {"F000F0", "F0", true, true}});
}

TEST(Matching, letterCaseAndBlanksDoNotMatter)
{
    expectAll({{"F07E", "f07e", true, true}, {"F07E", " f 0 7 e ", true, true}});
}

TEST(Matching, blanksGoBeforeAnythingIsRead)
{
    expectAll({{"F07E", "F0 7E . *", true, true},
               {"F07E", "(F0 7E . *|F7)", true, true},
               {"F07E", "F0 7E [0123456789ABCDEF]*", true, true},
               {"F07E", "F0 7E [0123456789ABCDEF] *", true, true},
               {"F07E01", "F0 7E .. . *", true, true},
               {"F07E01", "F0 7E ... *", true, true},
               {"F07E", "F0 7E X X *", false, false},
               {"F07E01", "F0 7E X X *", true, true},
               {"F07E", ". * F7", false, false},
               {"F07EF7", ". *F7", true, true},
               {"F07E", "F07 . *", true, true}});
}

TEST(Matching, noOtherWhiteSpaceIsRemoved)
{
    expectAll({{"F07E", "F0\t7E", false, false}, {"F07E", "F07E\n", false, false}});
}

TEST(Matching, pairsOfXAreWildcards)
{
    expectAll({{"F07E06", "F0 XX 06", true, true},
               {"F07E06", "F0 xX 06", true, true},
               {"F07E06", "F0 X X 06", true, true},
               {"F07E06", "F0 XXX 6", false, false}, // two dots and an X
               {"F07E06", "F0 XXXX", true, true}});
}

TEST(Matching, classesOfDigits)
{
    expectAll({{"F04208", "F0 42 0[89]", true, true},
               {"F04209", "F0 42 0[89]", true, true},
               {"F0420A", "F0 42 0[89]", false, false},
               {"F0420B", "F0 42 0[a-c]", true, true},
               {"F0420B", "F0 42 0[^a]", true, true}});
}

TEST(Matching, dotStarIsAnyRunOfDigits)
{
    expectAll({{"F000414208F7", "F0 00 41 42 08..*F7", false, false}, // one digit at least
               {"F00041420801F7", "F0 00 41 42 08..*F7", true, true},
               {"F00041420801020304F7AA", "F0 00 41 42 08..*F7", true, true},
               {"F00041420801", "F0 00 41 42 08..*F7", false, false}});
}

TEST(Matching, alternationAcceptsTheLongAndTheShortReply)
{
    const char* const pattern = "(F0 00 6B 2D 30 41 2F .. .. .. .. F7|F0 00 6B 2D 30 41 2F 46 F7)";
    expectAll({{"F0006B2D30412F00300041F7", pattern, true, true},
               {"F0006B2D30412F46F7", pattern, true, true},
               {"F0006B2D30412F47F7", pattern, false, false},
               {"00F0006B2D30412F46F7", pattern, true, false}});
}

TEST(Matching, theValueMarkerIsNoWildcard)
{
    expectAll({{"F07E", "F0 VV", false, false}, {"F07E", "vv", false, false}});
}

TEST(Matching, anEmptyPatternFitsEveryBuffer)
{
    expectAll({{"F07E", "", true, true}, {"", "", true, true}, {"", "  ", true, true}});
}

TEST(Matching, anEmptyBufferFitsNothingElse)
{
    expectAll({{"", "F0", false, false}, {"", ".", false, false}, {"", ".*", true, true}});
}

TEST(Matching, aNullPatternIsAnEmptyOne)
{
    const char* const none = nullptr;
    EXPECT_TRUE(dataOf("F0").match(none, true));
    EXPECT_TRUE(HxMidiData().contains(none));
    EXPECT_TRUE(HxMidiData().startsWith(none));
}

TEST(Matching, regularExpressionsOfAnyKind)
{
    expectAll({{"F07E06", "^F0", true, true},
               {"F07E06", "06$", true, false},
               {"F07E06", "F0(7E)?06", true, true},
               {"F07E06", "(F0|7E)+06", true, true},
               {"F07E06", "F{1}0", true, true},
               {"F07E06", "0[7-8]*", true, false}, // the first fit is the second digit
               {"F07E06", "F0\\d", false, false},  // upper-cased: no digit
               {"F07E06", "F0\\D", false, false}});
}

TEST(Matching, aPatternThatIsNoRegularExpressionFitsNothing)
{
    expectAll({{"F07E", "(", false, false},
               {"F07E", "F0[", false, false},
               {"F07E", "*F0", false, false}});
}

TEST(Matching, eightBitPatternTextIsLatin1)
{
    expectAll({{"F07E", "F0\xE9", false, false}, {"F07E", "F0[^\xE9]", true, true}});
}

TEST(Matching, aRegularExpressionIsTakenAsItIsButIgnoresCase)
{
    const HxMidiData data = dataOf("F07E06");
    EXPECT_TRUE(data.match(QRegExp(QStringLiteral("f07e")), true));
    EXPECT_FALSE(data.match(QRegExp(QStringLiteral("F0 7E")), false)); // its blank stays
    EXPECT_FALSE(data.match(QRegExp(QStringLiteral("F0XX")), false));
    EXPECT_TRUE(data.match(QRegExp(QStringLiteral("7E")), false));
    EXPECT_FALSE(data.match(QRegExp(QStringLiteral("7E")), true));
    EXPECT_TRUE(data.match(QRegExp(QStringLiteral("f0\\d")), true));
}

TEST(Matching, aRegularExpressionKeepsItsSyntaxAndTheCallersCopyItsCase)
{
    const QRegExp wildcard(QStringLiteral("f0*06"), Qt::CaseSensitive, QRegExp::Wildcard);
    EXPECT_TRUE(dataOf("F07E06").match(wildcard, true));
    EXPECT_EQ(wildcard.caseSensitivity(), Qt::CaseSensitive);
    const QRegExp fixed(QStringLiteral("."), Qt::CaseSensitive, QRegExp::FixedString);
    EXPECT_FALSE(dataOf("F07E06").match(fixed, false));
}

TEST(Matching, containsSearchesAnArrayAsRawBytes)
{
    const HxMidiData data = dataOf("F0006B2DF7");
    EXPECT_TRUE(data.contains(hex("006B")));
    EXPECT_TRUE(data.contains(hex("F0006B2DF7")));
    EXPECT_FALSE(data.contains(hex("06B2")));
    EXPECT_FALSE(data.contains(QByteArray("F0 00 6B 2D")));
    EXPECT_TRUE(HxMidiData(QByteArray("..F0 00 6B 2D..")).contains(QByteArray("F0 00 6B 2D")));
    EXPECT_TRUE(data.contains(QByteArray()));
    EXPECT_TRUE(HxMidiData().contains(QByteArray()));
}

TEST(Matching, containsSearchesAnotherBufferAsRawBytes)
{
    const HxMidiData data = dataOf("F0006B2DF7");
    EXPECT_TRUE(data.contains(dataOf("6B2D")));
    EXPECT_FALSE(data.contains(dataOf("2D6B")));
    EXPECT_TRUE(data.contains(HxMidiData()));
}

TEST(Matching, startsWithReadsAnArrayAsPatternText)
{
    const HxMidiData data = dataOf("F0006B2DF7");
    EXPECT_TRUE(data.startsWith(QByteArray("F0 00 6B 2D")));
    EXPECT_TRUE(data.startsWith(QByteArray("F0 .. 6B")));
    EXPECT_FALSE(data.startsWith(hex("F0006B")));
    EXPECT_TRUE(data.startsWith(QByteArray("F0\0 garbage", 11)));
    EXPECT_TRUE(data.startsWith(QByteArray()));
}

TEST(Matching, startsWithReadsAnotherBufferAsPatternText)
{
    const HxMidiData data = dataOf("F0006B2DF7");
    EXPECT_TRUE(data.startsWith(HxMidiData(QByteArray("F0 00 6B"))));
    EXPECT_FALSE(data.startsWith(dataOf("F0006B")));
    EXPECT_TRUE(data.startsWith(HxMidiData()));
}

TEST(Matching, patternTextFromAdoptedMemoryEndsWithIt)
{
    const HxMidiData data = dataOf("F0006B2DF7");
    const AdoptedBuffer pattern(QByteArray("F0 00"));
    EXPECT_TRUE(data.startsWith(pattern.data));
    EXPECT_TRUE(data.startsWith(pattern.data.bytes));
    const AdoptedBuffer withZero(QByteArray("F0\0XY", 5));
    EXPECT_TRUE(data.startsWith(withZero.data));
    EXPECT_TRUE(data.startsWith(withZero.data.bytes));
    EXPECT_TRUE(AdoptedBuffer(hex("F000")).data.match("F000", true));
}

TEST(Matching, searchingReadsNothingBehindAdoptedMemory)
{
    for (int size = 0; size <= 140; ++size) {
        const AdoptedBuffer adopted(QByteArray(size, '\x11'));
        EXPECT_FALSE(adopted.data.match("12", false)) << size;
        EXPECT_FALSE(adopted.data.match("11.*12.*F7", true)) << size;
        EXPECT_EQ(adopted.data.match("1111", false), size >= 2) << size;
    }
}

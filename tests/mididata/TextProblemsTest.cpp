// What the languages of the buffer cannot read, or read otherwise than it looks: kind and place.
#include "mididata/Builder.h"
#include "mididata/HexText.h"
#include "mididata/HxMidiData.h"
#include "mididata/PatternText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using hx::TextProblem;
using hx::TextProblemKind;
using Problems = std::vector<TextProblem>;

hx::ProblemSink into(Problems& problems)
{
    return [&problems](const TextProblem& problem) { problems.push_back(problem); };
}

void expectProblems(const Problems& problems, const Problems& expected)
{
    ASSERT_EQ(problems.size(), expected.size());
    for (size_t i = 0; i < problems.size(); ++i) {
        EXPECT_EQ(int(problems.at(i).kind), int(expected.at(i).kind)) << "problem " << i;
        EXPECT_EQ(problems.at(i).offset, expected.at(i).offset) << "problem " << i;
        EXPECT_EQ(problems.at(i).length, expected.at(i).length) << "problem " << i;
    }
}

void expectHexText(const char* text, hx::Blanks blanks, const QByteArray& bytes,
                   const Problems& expected)
{
    SCOPED_TRACE(text);
    LogCapture log;
    Problems problems;
    EXPECT_EQ(hx::readHexText(text, blanks, into(problems)), bytes);
    expectProblems(problems, expected);
    EXPECT_EQ(log.texts(), QStringList());
}

void expectPattern(const char* pattern, const Problems& expected)
{
    SCOPED_TRACE(pattern);
    Problems problems;
    hx::reportPattern(pattern, into(problems));
    expectProblems(problems, expected);
}

// Gives every field the same, and notes where it was asked.
class SameArguments final : public hx::BuilderArguments {
public:
    explicit SameArguments(const std::optional<QByteArray>& text) : m_text(text) {}

    std::optional<int> number(const hx::FieldPlace& place) override { return note<int>(place, 5); }
    std::optional<quint32> word(const hx::FieldPlace& place) override
    {
        return note<quint32>(place, 129);
    }
    std::optional<double> real(const hx::FieldPlace& place) override
    {
        return note<double>(place, 1.0);
    }
    std::optional<QByteArray> hexBytes(const hx::FieldPlace& place) override
    {
        asked.push_back(int(place.offset));
        return m_text;
    }
    std::optional<QByteArray> characters(const hx::FieldPlace& place) override
    {
        return hexBytes(place);
    }

    std::vector<int> asked; // offsets

private:
    template <typename Value>
    std::optional<Value> note(const hx::FieldPlace& place, Value value)
    {
        asked.push_back(int(place.offset));
        return m_text ? std::optional<Value>(value) : std::nullopt;
    }

    std::optional<QByteArray> m_text;
};

} // namespace

TEST(TextProblems, PlainHexTextHasNone)
{
    expectHexText("F0 7e,7F", hx::Blanks::Split, QByteArray::fromHex("F07E7F"), {});
    expectHexText("F 07E 7F", hx::Blanks::Removed, QByteArray::fromHex("F07E7F"), {});
    expectHexText("  ", hx::Blanks::Removed, "", {});
}

TEST(TextProblems, HexTextNamesEachNumberThatItCannotRead)
{
    expectHexText("F0 .. 80000000 F7", hx::Blanks::Split, QByteArray::fromHex("F0F7"),
                  {{TextProblemKind::NotANumber, 3, 2}, {TextProblemKind::NumberTooLarge, 6, 8}});
}

TEST(TextProblems, HexTextEndsAtTheNumberWithoutBytes)
{
    expectHexText("10 -1 ZZ", hx::Blanks::Split, "\x10",
                  {{TextProblemKind::NumberWithoutBytes, 3, 2}});
}

TEST(TextProblems, HexTextNamesEachNumberThatGivesOtherBytesThanItShows)
{
    expectHexText("123 007F FFFF -5 12345", hx::Blanks::Split,
                  QByteArray::fromHex("00237F00FFFFFFFFFFFB012345"),
                  {{TextProblemKind::NumberReadDifferently, 0, 3},
                   {TextProblemKind::NumberReadDifferently, 4, 4},
                   {TextProblemKind::NumberReadDifferently, 9, 4},
                   {TextProblemKind::NumberReadDifferently, 14, 2}});
}

TEST(TextProblems, PlacesCountTheBlanksThatAreRemoved)
{
    expectHexText(" F0 , Z  Z ,F7", hx::Blanks::Removed, QByteArray::fromHex("F0F7"),
                  {{TextProblemKind::NotANumber, 6, 4}});
}

TEST(TextProblems, HexTextOfOneCharacterOrOfHalvesIsNamedAsAWhole)
{
    expectHexText(" 7 ", hx::Blanks::Removed, "", {{TextProblemKind::SingleCharacter, 1, 1}});
    expectHexText(" F0 7 ", hx::Blanks::Removed, "", {{TextProblemKind::OddDigits, 1, 4}});
}

TEST(TextProblems, FormatsNameWhatGivesNoBytesAndAskForArgumentsAtTheirPlaces)
{
    SameArguments arguments(QByteArray(""));
    Problems problems;
    HxMidiData data;
    LogCapture log;
    hx::appendMessage(data, "F0 zz VV 123 -1 mstr 11 V14", arguments, into(problems));
    EXPECT_EQ(data.bytes, QByteArray::fromHex("F005002301"
                                              "01"));
    EXPECT_EQ(arguments.asked, (std::vector<int>{6, 16, 24}));
    expectProblems(problems, {{TextProblemKind::NotANumber, 3, 2},
                              {TextProblemKind::NumberReadDifferently, 9, 3},
                              {TextProblemKind::NumberWithoutBytes, 13, 2},
                              {TextProblemKind::FieldWithoutBytes, 16, 4},
                              {TextProblemKind::PieceSkipped, 21, 2}});
    EXPECT_EQ(log.texts(), QStringList());
}

TEST(TextProblems, AFieldWithoutAnArgumentGivesNoBytesAndSkipsNothing)
{
    SameArguments arguments(std::nullopt);
    Problems problems;
    HxMidiData data;
    hx::appendMessage(data, "F0 VV UT F32 CSTR F7", arguments, into(problems));
    EXPECT_EQ(data.bytes, QByteArray::fromHex("F0F7"));
    expectProblems(problems, {});
}

TEST(TextProblems, PatternsNameWhatQRegExpRefusesThemFor)
{
    expectPattern("F0 (7E", {{TextProblemKind::ParenthesisNotClosed, 3, 1}});
    expectPattern("F0 )", {{TextProblemKind::ParenthesisNotOpen, 3, 1}});
    expectPattern("F0 [7", {{TextProblemKind::BracketNotClosed, 3, 1}});
    expectPattern("F0 \\", {{TextProblemKind::NothingEscaped, 3, 1}});
    expectPattern("* F0", {{TextProblemKind::NothingToRepeat, 0, 1}});
    expectPattern("(F0){9999}", {{TextProblemKind::PatternTooLarge, 0, 10}});
}

TEST(TextProblems, PatternsNameWhatNeverFits)
{
    expectPattern("F0 VV XX x .. F7",
                  {{TextProblemKind::NeverFits, 3, 2}, {TextProblemKind::NeverFits, 9, 1}});
    expectPattern("V V", {{TextProblemKind::NeverFits, 0, 3}});
    expectPattern("\\d", {{TextProblemKind::LetterEscaped, 0, 2}});
    expectPattern("  ", {{TextProblemKind::EmptyPattern, 2, 0}});
    expectPattern("F0 .* (08|09) [0-7]+ F7", {});
}

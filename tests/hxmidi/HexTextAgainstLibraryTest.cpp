// What the program reads from any text against HxMidiData: the same bytes, complaints where the buffer
// logs a line, and no line of its own.
#include "apps/hxmidi/findings/HexTextFindings.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/Random.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> textPieces = {
    "F0", "7e", "00", "F7", "7",    "123",      "0x",       "0X7F", "-1", "-5", "+5",
    "..", "XX", "VV", "G",  "FFFF", "FFFFFFFF", "80000000", "x",    "-",  "+",  "12345"};

std::string randomText(Random& random)
{
    const std::vector<std::string> separators = {"", "", "", " ", " ", ",", ", "};
    std::string text;
    const int count = random.below(7);
    for (int i = 0; i < count; ++i)
        text += random.of(textPieces) + random.of(separators);
    return random.oneIn(5) ? " " + text : text;
}

HxMidiData readByLibrary(const std::string& text, bool tokens)
{
    if (!tokens)
        return HxMidiData(text.c_str());
    HxMidiData data;
    data.setText(text.c_str());
    return data;
}

// A text of one character is the only one that the library drops without a word.
bool isSingleCharacter(const std::string& text, bool tokens)
{
    QByteArray read = QByteArray::fromStdString(text);
    if (!tokens)
        read.replace(' ', "");
    return read.trimmed().size() == 1;
}

void compare(const std::string& text, bool tokens)
{
    SCOPED_TRACE("text '" + text + (tokens ? "' as tokens" : "'"));
    LogCapture libraryLog;
    const HxMidiData expected = readByLibrary(text, tokens);
    const bool libraryComplains = !libraryLog.lines().isEmpty() || isSingleCharacter(text, tokens);

    LogCapture programLog;
    hx::midi::Findings findings;
    const QByteArray typed = QByteArray::fromStdString(text);
    const QByteArray read = hx::midi::readHexText(typed, {QString(), typed},
                                                  tokens ? hx::Blanks::Split : hx::Blanks::Removed,
                                                  hx::midi::Severity::Error, findings);

    EXPECT_EQ(findings.hasErrors(), libraryComplains);
    EXPECT_EQ(read, expected.bytes);
    EXPECT_EQ(programLog.texts(), QStringList());
}

} // namespace

TEST(HexTextAgainstLibrary, GivesTheSameBytesAndComplainsWhereItDoes)
{
    Random random(1);
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        const std::string text = randomText(random);
        compare(text, false);
        compare(text, true);
    }
}

#include "tests/mididata/Bytes.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const std::vector<std::string> oddTokens = {"..",
                                            "XX",
                                            "vv",
                                            "7",
                                            "123",
                                            "12345",
                                            "123456",
                                            "0x7F",
                                            "0X1",
                                            "0x",
                                            "-1",
                                            "-2",
                                            "+5",
                                            "-",
                                            "+",
                                            "FFFF",
                                            "FFFE",
                                            "FFFFFF",
                                            "FFFFFFFF",
                                            "7FFFFFFF",
                                            "G0",
                                            "0G",
                                            "f\t",
                                            "\tf",
                                            "-80000000",
                                            "80000000",
                                            "",
                                            "\xB2\xB3",
                                            "\xE9\xE9",
                                            "0x123",
                                            "\n",
                                            "\t",
                                            "\xA0",
                                            "1\n2",
                                            "00",
                                            "007F",
                                            "0x-1",
                                            "-0x1",
                                            "1000000000",
                                            "\x85"
                                            "1"};

const std::vector<std::string> separators = {" ", ",", "", "  ", ", ", " ,", "\n", "\t", "\n "};

std::string pair(Random& random)
{
    static const std::string digits = "0123456789ABCDEFabcdef";
    const auto digit = [&] { return digits[static_cast<size_t>(random.below(22))]; };
    return {digit(), digit()};
}

/** A text that is mostly pairs, with one kind of separator and now and then another. */
std::string hexText(Random& random)
{
    const std::string usual = random.of(separators);
    const int oddness = random.of(std::vector<int>{2, 8, 1000});
    std::string text = random.oneIn(8) ? random.of(oddTokens) : std::string();
    for (int tokens = random.below(20); tokens > 0; --tokens) {
        text += random.oneIn(oddness) ? random.of(oddTokens) : pair(random);
        text += random.oneIn(2 * oddness) ? random.of(separators) : usual;
    }
    if (!text.empty() && random.oneIn(4)) { // one character that does not belong there
        static const std::string strangers = " ,;:/@`\n\tGgx0-+.\x85";
        const auto at = static_cast<size_t>(random.below(static_cast<int>(text.size())));
        text[at] = strangers[static_cast<size_t>(random.below(static_cast<int>(strangers.size())))];
    }
    return text;
}

struct Outcome {
    QByteArray bytes;
    QStringList log;
};

template <typename Reading>
Outcome outcomeOf(Reading reading)
{
    LogCapture log;
    const QByteArray bytes = reading();
    return {bytes, log.texts()};
}

void expectEqual(const Outcome& ours, const Outcome& steps, const std::string& text)
{
    ASSERT_EQ(ours.bytes, steps.bytes) << '"' << text << '"';
    ASSERT_EQ(ours.log, steps.log) << '"' << text << '"';
}

} // namespace

TEST(HexTextAgainstSteps, setText)
{
    Random random(1);
    HxMidiData data;
    for (int i = 0; i < 100000 && !HasFatalFailure(); ++i) {
        const std::string text = hexText(random);
        expectEqual(outcomeOf([&] { return data.setText(text.c_str()), data.bytes; }),
                    outcomeOf([&] { return transcription::setText(text.c_str()); }), text);
    }
}

TEST(HexTextAgainstSteps, constructorFromCharacters)
{
    Random random(2);
    for (int i = 0; i < 100000 && !HasFatalFailure(); ++i) {
        const std::string text = hexText(random);
        expectEqual(outcomeOf([&] { return HxMidiData(text.c_str()).bytes; }),
                    outcomeOf([&] { return transcription::fromText(text.c_str()); }), text);
    }
}

TEST(HexTextAgainstSteps, constructorFromQString)
{
    Random random(3);
    for (int i = 0; i < 100000 && !HasFatalFailure(); ++i) {
        const std::string text = hexText(random);
        QString string = QString::fromLatin1(text.c_str());
        if (random.oneIn(50))
            string.insert(random.below(string.size() + 1), QChar(random.below(0x3000)));
        expectEqual(outcomeOf([&] { return HxMidiData(string).bytes; }),
                    outcomeOf([&] { return transcription::fromText(string); }), text);
    }
}

TEST(HexTextAgainstSteps, everyPairOfCharactersAmongSixteen)
{
    Random random(6);
    for (int pair = 0x0101; pair < 0x10000 && !HasFatalFailure(); ++pair) {
        std::string text = "0123456789ABcdef";
        const auto at = static_cast<size_t>(2 * random.below(8));
        text[at] = static_cast<char>(pair >> 8);
        text[at + 1] = static_cast<char>(pair & 0xFF);
        HxMidiData data;
        expectEqual(outcomeOf([&] { return data.setText(text.c_str()), data.bytes; }),
                    outcomeOf([&] { return transcription::setText(text.c_str()); }), text);
    }
}

TEST(HexTextAgainstSteps, is0xHexStrIsWhatDecidesForOneNumber)
{
    Random random(4);
    for (int i = 0; i < 10000; ++i) {
        QString text = QString::fromLatin1(hexText(random).c_str());
        const bool expected = text.length() >= 3 && text.left(2).toLower() == QLatin1String("0x");
        ASSERT_EQ(HxMidiData::is0xHexStr(text), expected);
    }
}

TEST(HexTextAgainstSteps, numberBytes)
{
    Random random(5);
    LogCapture log;
    for (int i = 0; i < 20000; ++i) {
        const unsigned int value = (random.word() >> random.below(32)) + (random.word() & 3) - 2;
        ASSERT_EQ(HxMidiData::numHexToByteArray(value), transcription::numHexToByteArray(value));
    }
}

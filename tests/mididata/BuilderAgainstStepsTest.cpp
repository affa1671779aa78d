#include "tests/mididata/Bytes.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>

namespace {

const std::vector<std::string> textArguments = {"",  "41 42", "AB",    "XX", "0x123456",
                                                " ", "7",     "F0,7E", "-1"};

/** Literals and other tokens that take no argument. */
const std::vector<std::string> literals = {"F0",      "7e",       "00",       "F7",   "7",   "123",
                                           "12345",   "0x41",     "-1",       "-2",   "+5",  "XX",
                                           "F0,7E",   "",         "\tF0",     "F0\n", "V15", "NIB",
                                           "NIB24F7", "FFFFFFFF", "80000000", "\xDF", "\xB2"};

std::string changedCase(Random& random, std::string name)
{
    for (char& c : name) {
        if (random.oneIn(3) && c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return name;
}

std::string formatOf(Random& random, const std::vector<std::string>& fields)
{
    std::string format;
    for (const std::string& field : fields) {
        for (int n = random.below(3); n > 0; --n)
            format += random.of(literals) + " ";
        format += changedCase(random, field) + " ";
    }
    if (random.oneIn(2))
        format.pop_back();
    return format;
}

QByteArray appendSteps(QByteArray bytes, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    transcription::vSetData(bytes, format, args);
    va_end(args);
    return bytes;
}

QByteArray appendOurs(const QByteArray& bytes, const char* format, ...)
{
    HxMidiData data(bytes);
    va_list args;
    va_start(args, format);
    data.vSetData(format, args);
    va_end(args);
    return data.bytes;
}

/** Compares setData() and vSetData() with the steps, bytes and log lines. */
template <typename... Arguments>
void compare(const std::string& format, Arguments... arguments)
{
    LogCapture outer;
    const QByteArray before = QByteArray::fromHex("0102");
    HxMidiData data(before);
    data.setData(format.c_str(), arguments...);
    const QByteArray ours = data.bytes + appendOurs(before, format.c_str(), arguments...);
    const QStringList ourLog = outer.texts();
    LogCapture inner;
    const QByteArray steps = transcription::setData(format.c_str(), arguments...) +
                             appendSteps(before, format.c_str(), arguments...);
    ASSERT_EQ(ours, steps) << '"' << format << '"';
    ASSERT_EQ(ourLog, inner.texts()) << '"' << format << '"';
}

} // namespace

TEST(BuilderAgainstSteps, numbers)
{
    Random random(1);
    const std::vector<std::string> names = {"VV", "V8",  "P8",  "P14",   "V14",
                                            "UT", "V32", "I32", "NIB24", "NIB32"};
    for (int i = 0; i < 20000 && !HasFatalFailure(); ++i) {
        const std::string format =
            formatOf(random, {random.of(names), random.of(names), random.of(names)});
        const auto value = [&] { return random.word() >> random.below(32); };
        compare(format, value(), value(), value());
    }
}

TEST(BuilderAgainstSteps, fieldsBehindManyLiterals)
{
    Random random(6);
    for (int i = 0; i < 3000 && !HasFatalFailure(); ++i) {
        std::string literalsBefore;
        for (int n = random.between(40, 80); n > 0; --n)
            literalsBefore += "0F ";
        compare(literalsBefore + formatOf(random, {"NIB32", "CSTR", "UT"}), random.word(), "text",
                random.word());
    }
}

TEST(BuilderAgainstSteps, floats)
{
    Random random(2);
    for (int i = 0; i < 5000 && !HasFatalFailure(); ++i) {
        const double value = (random.below(2000000) - 1000000) / double(1 << random.below(20));
        compare(formatOf(random, {"F32", "V14"}), value, random.word());
    }
}

TEST(BuilderAgainstSteps, textsThatMayFail)
{
    Random random(3);
    const std::vector<std::string> names = {"MSTR", "CSTR"};
    for (int i = 0; i < 20000 && !HasFatalFailure(); ++i) {
        const std::string format = formatOf(random, {random.of(names), random.of(names)});
        compare(format, random.of(textArguments).c_str(), random.of(textArguments).c_str());
    }
}

TEST(BuilderAgainstSteps, literalsAloneFewAndMany)
{
    Random random(4);
    for (int i = 0; i < 10000 && !HasFatalFailure(); ++i) {
        std::string format;
        const bool longOne = random.oneIn(20);
        for (int n = random.below(longOne ? 200 : 12); n > 0; --n) {
            const bool plain = longOne && !random.oneIn(30);
            format += (plain ? "7A" : random.of(literals)) + (n > 1 ? " " : "");
        }
        compare(format);
    }
}

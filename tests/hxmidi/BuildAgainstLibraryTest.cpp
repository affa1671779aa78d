// Messages that the program builds token by token against one call of HxMidiData::setData().
#include "apps/hxmidi/commands/MessageBuilder.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/Random.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

enum class Type { Integer, Word, Real, Text };

struct Argument {
    Type type = Type::Integer;
    int integer = 0;
    unsigned int word = 0;
    double real = 0;
    std::string text;

    std::string typed() const
    {
        switch (type) {
        case Type::Integer:
            return std::to_string(integer);
        case Type::Word:
            return std::to_string(word);
        case Type::Real: {
            char digits[64];
            std::snprintf(digits, sizeof(digits), "%.17g", real);
            return digits;
        }
        case Type::Text:
            break;
        }
        return text;
    }
};

constexpr int mostArguments = 4;

// Calls setData() once, with the arguments at their own types: one instance of this function for
// every order of types.
template <typename... Given>
HxMidiData setData(const std::string& format, const std::vector<Argument>& arguments,
                   Given... given)
{
    constexpr size_t count = sizeof...(given);
    if (count == arguments.size()) {
        HxMidiData data;
        data.setData(format.c_str(), given...);
        return data;
    }
    if constexpr (count < mostArguments) {
        const Argument& next = arguments.at(count);
        switch (next.type) {
        case Type::Integer:
            return setData(format, arguments, given..., next.integer);
        case Type::Word:
            return setData(format, arguments, given..., next.word);
        case Type::Real:
            return setData(format, arguments, given..., next.real);
        case Type::Text:
            return setData(format, arguments, given..., next.text.c_str());
        }
    }
    ADD_FAILURE() << "more arguments than this test can pass";
    return HxMidiData();
}

Argument randomArgument(Random& random, const std::string& field)
{
    static const std::vector<std::string> texts = {"",  "41 42", "AB", "ZZ",      "41,ZZ,42",
                                                   " ", "7",     "-1", "0x123456"};
    static const std::vector<double> reals = {0, 1, -1.5, 3.4e38, 1e-45, -0.1, 16777217};
    Argument argument;
    if (field == "MSTR" || field == "CSTR") {
        argument.type = Type::Text;
        argument.text = random.of(texts);
    } else if (field == "F32") {
        argument.type = Type::Real;
        argument.real = random.of(reals);
    } else if (field == "VV" || field == "V8" || field == "P8") {
        argument.type = Type::Integer;
        argument.integer = random.oneIn(2) ? random.below(256) : random.position(70000);
    } else {
        argument.type = Type::Word;
        argument.word =
            random.oneIn(2) ? random.word() : static_cast<unsigned int>(random.below(300));
    }
    return argument;
}

const std::vector<std::string> textFields = {"VV",  "V8",  "P8",    "P14",   "V14",  "UT",  "V32",
                                             "I32", "F32", "NIB24", "NIB32", "MSTR", "CSTR"};
const std::vector<std::string> literals = {"F0", "7e",    "123", "FFFF", "-1",
                                           "XX", "F0,7E", "",    "F7"};

struct Case {
    std::string format;
    std::vector<Argument> arguments;
};

std::string randomCase(Random& random, std::string name)
{
    for (char& c : name)
        c = random.oneIn(4) && c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return name;
}

bool givesNoBytes(const std::string& field, const Argument& argument)
{
    if (field == "MSTR")
        return HxMidiData(argument.text.c_str()).bytes.isEmpty();
    return field == "CSTR" && argument.text.empty();
}

// Tokens separated by blanks, at most four of them fields with an argument. The token after a
// text without bytes is passed over, so that, a field or not, it gets no argument.
Case makeCase(Random& random)
{
    LogCapture quiet;
    Case made;
    bool skipped = false;
    const int tokens = random.below(9);
    for (int i = 0; i < tokens; ++i) {
        const bool mayBeField = skipped || int(made.arguments.size()) < mostArguments;
        const bool isField = mayBeField && random.oneIn(2);
        const std::string token = random.of(isField ? textFields : literals);
        made.format += (i > 0 ? " " : "") + randomCase(random, token);
        const bool takesArgument = isField && !skipped;
        if (takesArgument)
            made.arguments.push_back(randomArgument(random, token));
        skipped = takesArgument && givesNoBytes(token, made.arguments.back());
    }
    return made;
}

void compare(const Case& tested)
{
    SCOPED_TRACE("format '" + tested.format + "'");
    QByteArrayList arguments;
    for (const Argument& argument : tested.arguments)
        arguments << QByteArray::fromStdString(argument.typed());
    hx::midi::Findings findings;
    LogCapture programLog;
    const HxMidiData built =
        hx::midi::buildMessage(QByteArray::fromStdString(tested.format), arguments, true, findings);
    EXPECT_EQ(programLog.texts(), QStringList());
    LogCapture libraryLog;
    EXPECT_EQ(built.bytes, setData(tested.format, tested.arguments).bytes);
    EXPECT_FALSE(findings.hasErrors());
}

} // namespace

TEST(BuildAgainstLibrary, GivesTheBytesOfOneCall)
{
    Random random(2);
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i)
        compare(makeCase(random));
}

// Builder formats with arguments of the types they ask for, against the transcription.
#include "fuzz/support/FuzzTarget.h"
#include "fuzz/support/Logged.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <QList>

#include <cstring>
#include <vector>

namespace {

using namespace hx::fuzz;

constexpr size_t mostArguments = 4;

enum class Kind { None, Integer, Real, HexText, Characters };

struct Argument {
    Kind kind = Kind::None;
    unsigned int integer = 0;
    double real = 0;
    QByteArray text;
};

Kind kindOf(const QByteArray& token)
{
    const QByteArray name = token.toUpper();
    if (name == "F32")
        return Kind::Real;
    if (name == "MSTR")
        return Kind::HexText;
    if (name == "CSTR")
        return Kind::Characters;
    static const QList<QByteArray> integers = {"VV", "V8",  "P8",  "P14",   "V14",
                                               "UT", "V32", "I32", "NIB24", "NIB32"};
    return integers.contains(name) ? Kind::Integer : Kind::None;
}

double realOf(FuzzInput& input)
{
    const quint64 bits = quint64(input.word()) << 32 | input.word();
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

Argument argumentOf(Kind kind, FuzzInput& input)
{
    Argument argument;
    argument.kind = kind;
    if (kind == Kind::Integer)
        argument.integer = static_cast<unsigned int>(input.number());
    else if (kind == Kind::Real)
        argument.real = realOf(input);
    else
        argument.text = input.take(input.byte() % 32).constData();
    return argument;
}

bool isFailure(const Argument& argument)
{
    if (argument.kind == Kind::HexText)
        return transcription::fromText(argument.text.constData()).isEmpty();
    return argument.kind == Kind::Characters && argument.text.isEmpty();
}

// A format, cut behind the last token that there is an argument for, and its arguments.
struct Call {
    QByteArray format;
    std::vector<Argument> arguments;
};

Call callOf(FuzzInput& input)
{
    Call call;
    const QByteArray text = input.block().constData();
    QList<QByteArray> kept;
    bool skipped = false; // the token behind a failed one takes no argument
    for (const QByteArray& token : text.split(' ')) {
        const Kind kind = skipped ? Kind::None : kindOf(token);
        skipped = false;
        if (kind != Kind::None) {
            if (call.arguments.size() == mostArguments)
                break;
            call.arguments.push_back(argumentOf(kind, input));
            skipped = isFailure(call.arguments.back());
        }
        kept.append(token);
    }
    call.format = kept.join(' ');
    return call;
}

// Calls `build(format, values...)` with the values of the arguments from `index` on behind those
// that are there already.
template <typename Build, typename... Values>
void apply(const Call& call, Build build, Values... values)
{
    constexpr size_t index = sizeof...(Values);
    if constexpr (index < mostArguments) {
        if (index < call.arguments.size()) {
            const Argument& argument = call.arguments[index];
            if (argument.kind == Kind::Integer)
                apply(call, build, values..., argument.integer);
            else if (argument.kind == Kind::Real)
                apply(call, build, values..., argument.real);
            else
                apply(call, build, values..., argument.text.constData());
            return;
        }
    }
    build(call.format.constData(), values...);
}

void appendTo(HxMidiData& data, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    data.vSetData(format, arguments);
    va_end(arguments);
}

void readBack(unsigned int value, double real)
{
    HxMidiData data;
    data.setData("V14 UT V32 I32 F32", value, value, value, value, real);
    requireSame(data.get14bit(0, -1), static_cast<int>(value & 0x3FFF), "V14 reads back");
    requireSame(data.getUtime(2, -1), value, "UT reads back");
    requireSame(data.get32bit(7, -1), static_cast<int>(value), "V32 reads back");
    requireSame(data.get32bit(12, -1), static_cast<int>(value), "I32 reads back");
    const auto single = static_cast<float>(real);
    const float read = data.getFloat32(17, 0.0F);
    require(std::memcmp(&single, &read, sizeof(read)) == 0 || single != single, "F32 reads back");
}

void run(FuzzInput& input)
{
    const Call call = callOf(input);
    HxMidiData data(QByteArray("old"));
    data.auxA = 1;
    QByteArray expected;
    const QStringList lines = logged(
        [&] { apply(call, [&](const char* f, auto... values) { data.setData(f, values...); }); });
    const QStringList expectedLines = logged([&] {
        apply(call, [&](const char* f, auto... values) {
            expected = transcription::setData(f, values...);
        });
    });
    requireSame(data.bytes, expected, "setData");
    requireSame(lines, expectedLines, "the lines that setData logs");
    requireSame(data.auxA, quint64(0), "auxA after setData");

    HxMidiData appended(QByteArray("old"));
    apply(call, [&](const char* f, auto... values) { appendTo(appended, f, values...); });
    requireSame(appended.bytes, "old" + expected, "vSetData appends");
    readBack(static_cast<unsigned int>(input.number()), realOf(input));
}

const Target target("builder", run);

} // namespace

#include "mididata/Builder.h"

#include "mididata/HexDigits.h"
#include "mididata/HexNumber.h"
#include "mididata/HxMidiData.h"
#include "mididata/NumberBytes.h"
#include "mididata/fast/FastPaths.h"

#include <QDebug>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

// A piece of the format, and its key as findBuilderField() takes it.
struct Piece {
    const char* begin;
    const char* end;
    quint64 key;
};

// The piece that begins here and ends before a blank or with the text.
Piece pieceAt(const char* begin)
{
    const char* end = begin;
    while (*end != ' ' && *end != '\0')
        ++end;
    return {begin, end, hx::fieldKey({begin, static_cast<size_t>(end - begin)})};
}

quint32 singlePrecisionBits(double value)
{
    const auto single = static_cast<float>(value);
    quint32 bits = 0;
    std::memcpy(&bits, &single, sizeof(bits));
    return bits;
}

// One run over a format. Collects single bytes, so that a short message is allocated once.
class Builder {
public:
    Builder(HxMidiData& data, const char* format, hx::BuilderArguments& arguments,
            const hx::ProblemSink& report)
        : m_data(data), m_format(format), m_arguments(arguments), m_report(report)
    {
    }

    void run();

private:
    const char* appendPlainPieces(const char* at);
    const char* skipPiece(const char* at);
    bool appendPiece(const Piece& piece);
    bool appendField(const hx::FieldPlace& place);
    void appendGroups(const hx::BuilderField& field, std::optional<quint32> value);
    void appendLiteral(const Piece& piece);
    void appendNumber(unsigned int value);
    bool appendBytes(const std::optional<QByteArray>& bytes);
    void flush();
    void report(hx::TextProblemKind kind, const Piece& piece) const;

    HxMidiData& m_data;
    const char* m_format;
    hx::BuilderArguments& m_arguments;
    const hx::ProblemSink& m_report;
    static constexpr int collectedCapacity = 64;
    char m_collected[collectedCapacity] = {};
    int m_collectedSize = 0;
};

void Builder::run()
{
    const char* at = appendPlainPieces(m_format);
    while (*at != '\0') {
        const Piece piece = pieceAt(at);
        at = piece.end;
        if (!appendPiece(piece)) {
            report(hx::TextProblemKind::FieldWithoutBytes, piece);
            at = skipPiece(at);
        }
        if (*at != '\0')
            at = appendPlainPieces(at + 1);
    }
    flush();
}

// The failed field left the list of pieces, and the next one moved up to where the search goes on.
const char* Builder::skipPiece(const char* at)
{
    if (*at == '\0')
        return at;
    const Piece next = pieceAt(at + 1);
    report(hx::TextProblemKind::PieceSkipped, next);
    return next.end;
}

// Appends the two-digit numbers that are here, as appendLiteral() would one by one.
const char* Builder::appendPlainPieces(const char* at)
{
    if (!hx::fastPaths)
        return at;
    char* to = m_collected + m_collectedSize;
    while (to != std::end(m_collected) && hx::hexValue(at[0]) >= 0 && hx::hexValue(at[1]) >= 0) {
        if (at[2] != ' ' && at[2] != '\0')
            break;
        *to++ = static_cast<char>(hx::hexByte(at[0], at[1]));
        at += at[2] == ' ' ? 3 : 2;
    }
    m_collectedSize = static_cast<int>(to - m_collected);
    return at;
}

// Appends the bytes of one piece. False when it is a field whose text argument has no bytes.
bool Builder::appendPiece(const Piece& piece)
{
    const hx::BuilderField* const field = hx::findBuilderField(piece.key);
    if (field != nullptr)
        return appendField({*field, piece.begin - m_format, piece.end - piece.begin});
    if (piece.begin != piece.end)
        appendLiteral(piece);
    return true;
}

bool Builder::appendField(const hx::FieldPlace& place)
{
    switch (place.field.kind) {
    case hx::FieldKind::Number:
        if (const auto number = m_arguments.number(place))
            appendNumber(static_cast<unsigned int>(std::max(*number, 0)));
        return true;
    case hx::FieldKind::Groups:
        appendGroups(place.field, m_arguments.word(place));
        return true;
    case hx::FieldKind::Float:
        if (const auto value = m_arguments.real(place))
            appendGroups(place.field, singlePrecisionBits(*value));
        return true;
    case hx::FieldKind::HexText:
        return appendBytes(m_arguments.hexBytes(place));
    case hx::FieldKind::Characters:
        return appendBytes(m_arguments.characters(place));
    }
    return true;
}

void Builder::appendGroups(const hx::BuilderField& field, std::optional<quint32> value)
{
    constexpr int mostGroups = 8;
    if (!value)
        return;
    if (m_collectedSize > collectedCapacity - mostGroups)
        flush();
    const quint32 mask = (1u << field.groupBits) - 1;
    char* to = m_collected + m_collectedSize;
    for (int shift = field.topShift; shift >= 0; shift -= field.groupBits)
        *to++ = static_cast<char>((*value >> shift) & mask);
    m_collectedSize = static_cast<int>(to - m_collected);
}

void Builder::appendLiteral(const Piece& piece)
{
    const std::string_view token(piece.begin, static_cast<size_t>(piece.end - piece.begin));
    const hx::HexNumber number = hx::readHexNumber(token);
    const auto problem = hx::problemOf(token, number);
    if (problem)
        report(*problem, piece);
    if (number.ok)
        appendNumber(number.value);
}

void Builder::appendNumber(unsigned int value)
{
    if (value <= 0xFF && m_collectedSize < collectedCapacity) {
        m_collected[m_collectedSize++] = static_cast<char>(value);
        return;
    }
    flush();
    m_data.bytes.append(hx::numberBytes(value));
}

// False when there are bytes, but none of them.
bool Builder::appendBytes(const std::optional<QByteArray>& bytes)
{
    flush();
    if (bytes && !bytes->isEmpty())
        m_data.bytes.append(*bytes);
    return !bytes || !bytes->isEmpty();
}

void Builder::flush()
{
    if (m_collectedSize == 0)
        return;
    if (m_data.bytes.isEmpty())
        m_data.bytes = QByteArray(m_collected, m_collectedSize);
    else
        m_data.bytes.append(m_collected, m_collectedSize);
    m_collectedSize = 0;
}

void Builder::report(hx::TextProblemKind kind, const Piece& piece) const
{
    m_report({kind, piece.begin - m_format, piece.end - piece.begin});
}

// A copy of an argument list, from which the fields take their arguments in turn.
class ListedArguments final : public hx::BuilderArguments {
public:
    explicit ListedArguments(va_list list) { va_copy(m_list, list); }
    ~ListedArguments() override { va_end(m_list); }
    ListedArguments(const ListedArguments&) = delete;
    ListedArguments& operator=(const ListedArguments&) = delete;

    std::optional<int> number(const hx::FieldPlace&) override { return va_arg(m_list, int); }

    std::optional<quint32> word(const hx::FieldPlace&) override
    {
        return va_arg(m_list, unsigned int);
    }

    std::optional<double> real(const hx::FieldPlace&) override { return va_arg(m_list, double); }

    std::optional<QByteArray> hexBytes(const hx::FieldPlace&) override
    {
        return HxMidiData(va_arg(m_list, const char*)).bytes;
    }

    std::optional<QByteArray> characters(const hx::FieldPlace&) override
    {
        return QByteArray(va_arg(m_list, const char*));
    }

private:
    va_list m_list{};
};

// What is not a hex number gives no bytes, and no line either.
void logBuilderProblem(const hx::TextProblem& problem, const char* format)
{
    const QLatin1String piece(format + problem.offset, static_cast<int>(problem.length));
    if (problem.kind == hx::TextProblemKind::NumberWithoutBytes)
        hx::logNumberWithoutBytes();
    else if (problem.kind == hx::TextProblemKind::FieldWithoutBytes)
        qDebug() << "Invalid value for format( " << format << " ) at specifier "
                 << QString(piece).toUpper();
}

} // namespace

void hx::appendMessage(HxMidiData& data, const char* format, BuilderArguments& arguments,
                       const ProblemSink& report)
{
    Builder(data, format, arguments, report).run();
}

void HxMidiData::setData(const char* fmt, ...)
{
    HxMidiData built; // another buffer: the format and the texts may lie in this one
    va_list args;
    va_start(args, fmt);
    built.vSetData(fmt, args);
    va_end(args);
    auxA = 0;
    source = nullptr;
    bytes.swap(built.bytes);
}

void HxMidiData::vSetData(const char* fmt, va_list args)
{
    if (fmt == nullptr)
        return;
    const QByteArray original = bytes; // keeps the format and the texts that may lie in it
    ListedArguments arguments(args);
    hx::appendMessage(*this, fmt, arguments,
                      [fmt](const hx::TextProblem& problem) { logBuilderProblem(problem, fmt); });
}

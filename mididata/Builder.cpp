#include "mididata/BuilderFields.h"
#include "mididata/HexDigits.h"
#include "mididata/HexNumber.h"
#include "mididata/HxMidiData.h"

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

/** A copy of an argument list, for functions to take their arguments from in turn. */
struct Arguments {
    explicit Arguments(va_list args) { va_copy(list, args); }
    ~Arguments() { va_end(list); }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    va_list list{};
};

/** One run over a format. Collects single bytes, so that a short message is allocated once. */
class Builder {
public:
    Builder(HxMidiData& target, const char* wholeFormat) : data(target), format(wholeFormat) {}

    void run(Arguments& arguments);

private:
    const char* appendPlainPieces(const char* at);
    bool appendPiece(const Piece& piece, Arguments& arguments);
    bool appendField(const hx::BuilderField& field, Arguments& arguments);
    void appendGroups(const hx::BuilderField& field, quint32 value);
    void appendLiteral(const Piece& piece);
    void appendNumber(unsigned int value);
    bool appendBytes(const QByteArray& added);
    void flush();

    HxMidiData& data;
    const char* format;
    static constexpr int collectedCapacity = 64;
    char collected[collectedCapacity] = {};
    int collectedSize = 0;
};

void Builder::run(Arguments& arguments)
{
    const char* at = appendPlainPieces(format);
    while (*at != '\0') {
        const Piece piece = pieceAt(at);
        at = piece.end;
        if (!appendPiece(piece, arguments) && *at != '\0')
            at = pieceAt(at + 1).end; // the failed field left the list, and the next one moved up
        if (*at != '\0')
            at = appendPlainPieces(at + 1);
    }
    flush();
}

/** Appends the two-digit numbers that stand here, as appendLiteral() would one by one. */
const char* Builder::appendPlainPieces(const char* at)
{
    char* to = collected + collectedSize;
    while (to != std::end(collected) && hx::hexValue(at[0]) >= 0 && hx::hexValue(at[1]) >= 0) {
        if (at[2] != ' ' && at[2] != '\0')
            break;
        *to++ = static_cast<char>(hx::hexByte(at[0], at[1]));
        at += at[2] == ' ' ? 3 : 2;
    }
    collectedSize = static_cast<int>(to - collected);
    return at;
}

/** Appends what one piece stands for. False when it is a field whose text argument has no bytes. */
bool Builder::appendPiece(const Piece& piece, Arguments& arguments)
{
    const hx::BuilderField* const field = hx::findBuilderField(piece.key);
    if (field == nullptr) {
        appendLiteral(piece);
        return true;
    }
    if (appendField(*field, arguments))
        return true;
    qDebug() << "Invalid value for format( " << format << " ) at specifier "
             << QLatin1String(field->name.data(), static_cast<int>(field->name.size()));
    return false;
}

bool Builder::appendField(const hx::BuilderField& field, Arguments& arguments)
{
    switch (field.kind) {
    case hx::FieldKind::Number:
        appendNumber(static_cast<unsigned int>(std::max(va_arg(arguments.list, int), 0)));
        return true;
    case hx::FieldKind::Groups:
        appendGroups(field, va_arg(arguments.list, unsigned int));
        return true;
    case hx::FieldKind::Float:
        appendGroups(field, singlePrecisionBits(va_arg(arguments.list, double)));
        return true;
    case hx::FieldKind::HexText:
        return appendBytes(HxMidiData(va_arg(arguments.list, const char*)).bytes);
    case hx::FieldKind::Characters:
        return appendBytes(QByteArray(va_arg(arguments.list, const char*)));
    }
    return true;
}

void Builder::appendGroups(const hx::BuilderField& field, quint32 value)
{
    constexpr int mostGroups = 8;
    if (collectedSize > collectedCapacity - mostGroups)
        flush();
    const quint32 mask = (1u << field.groupBits) - 1;
    char* to = collected + collectedSize;
    for (int shift = field.topShift; shift >= 0; shift -= field.groupBits)
        *to++ = static_cast<char>((value >> shift) & mask);
    collectedSize = static_cast<int>(to - collected);
}

void Builder::appendLiteral(const Piece& piece)
{
    const hx::HexNumber number =
        hx::readHexNumber({piece.begin, static_cast<size_t>(piece.end - piece.begin)});
    if (number.ok)
        appendNumber(number.value);
}

/** Equal to appendNum(), which a single byte need not go through. */
void Builder::appendNumber(unsigned int value)
{
    if (value <= 0xFF && collectedSize < collectedCapacity) {
        collected[collectedSize++] = static_cast<char>(value);
        return;
    }
    flush();
    data.appendNum(value);
}

bool Builder::appendBytes(const QByteArray& added)
{
    flush();
    if (!added.isEmpty())
        data.bytes.append(added);
    return !added.isEmpty();
}

void Builder::flush()
{
    if (collectedSize == 0)
        return;
    if (data.bytes.isEmpty())
        data.bytes = QByteArray(collected, collectedSize);
    else
        data.bytes.append(collected, collectedSize);
    collectedSize = 0;
}

} // namespace

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
    const QByteArray outlived = bytes; // the format and the texts may lie in it
    Arguments arguments(args);
    Builder(*this, fmt).run(arguments);
}

#include "apps/hxmidi/commands/FieldReference.h"

#include "apps/hxmidi/input/NumberText.h"
#include "qt/Saturated.h"

#include <algorithm>
#include <limits>

namespace hx::midi {

namespace {

struct TypeRow {
    const char* name;
    FieldType type;
    int size;         // bytes; 0 for texts
    bool signedBytes; // the getter takes a byte of 80 and above for a negative number
};

constexpr TypeRow types[] = {
    {"14bit", FieldType::Bits14, 2, true},
    {"utime", FieldType::UTime, 5, false},
    {"float32", FieldType::Float32, 5, false},
    {"32bit", FieldType::Bits32, 5, true},
    {"32bitle", FieldType::Bits32LittleEndian, 5, true},
    {"int1", FieldType::Int1, 1, true},
    {"int2", FieldType::Int2, 2, true},
    {"int3", FieldType::Int3, 3, true},
    {"int4", FieldType::Int4, 4, true},
    {"string", FieldType::String, 0, false},
    {"ascii", FieldType::Ascii, 0, false},
};

constexpr NumberRange indexRange = {0, std::numeric_limits<int>::max()};

const TypeRow* findType(const QByteArray& name)
{
    const auto found = std::find_if(std::begin(types), std::end(types),
                                    [&](const TypeRow& row) { return name == row.name; });
    return found == std::end(types) ? nullptr : found;
}

const TypeRow& rowOf(FieldType type)
{
    return *std::find_if(std::begin(types), std::end(types),
                         [&](const TypeRow& row) { return row.type == type; });
}

QString typeNames()
{
    QStringList names;
    for (const TypeRow& row : types)
        names << QString::fromLatin1(row.name);
    return names.join(QLatin1Char(' '));
}

QString quotedText(const QString& text)
{
    QString shown;
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            shown += QLatin1Char('\\');
        if (c.category() == QChar::Other_Control)
            shown += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            shown += c;
    }
    return QLatin1Char('"') + shown + QLatin1Char('"');
}

FieldValue textValue(const QString& text)
{
    return {quotedText(text), text};
}

FieldValue numberValue(qint64 value)
{
    return {QString::number(value), double(value)};
}

// JSON has no infinity and no NaN: they become null.
FieldValue floatValue(float value)
{
    return {QString::number(double(value), 'g', 9), double(value)};
}

int lengthOf(const FieldReference& field, int size)
{
    return field.length > 0 ? field.length : std::max(size - field.position, 0);
}

FieldValue valueOf(const HxMidiData& data, const FieldReference& field, int fallback)
{
    const int at = field.position;
    switch (field.type) {
    case FieldType::Bits14:
        return numberValue(data.get14bit(at, fallback));
    case FieldType::UTime:
        return numberValue(data.getUtime(at, fallback));
    case FieldType::Float32:
        return floatValue(data.getFloat32(at, static_cast<float>(fallback)));
    case FieldType::Bits32:
        return numberValue(data.get32bit(at, fallback));
    case FieldType::Bits32LittleEndian:
        return numberValue(data.get32bitLE(at, fallback));
    case FieldType::Int1:
    case FieldType::Int2:
    case FieldType::Int3:
    case FieldType::Int4:
        return numberValue(data.toInt(at, rowOf(field.type).size, fallback));
    case FieldType::Ascii:
        return textValue(data.toAsciiString(at, lengthOf(field, saturated(data.bytes.size()))));
    case FieldType::String:
        break;
    }
    return textValue(data.getString(at, field.length));
}

Place wholeOf(const FieldReference& field)
{
    return {{QString(), field.text}, {0, saturated(field.text.size())}};
}

bool isText(const TypeRow& row)
{
    return row.size == 0;
}

// Whether the field lies within the data; a 14-bit one may, by the library's rule, lack its end.
bool isInside(const HxMidiData& data, const FieldReference& field)
{
    const TypeRow& row = rowOf(field.type);
    const int size = isText(row) ? field.length : row.size;
    const int free = field.type == FieldType::Bits14 ? row.size : 0;
    return qint64(field.position) + size <= qint64(data.bytes.size()) + free;
}

void warnOfField(const HxMidiData& data, const FieldReference& field, Findings& findings)
{
    const TypeRow& row = rowOf(field.type);
    const QByteArray bytes = data.mid(field.position, row.size);
    if (bytes.size() < row.size)
        findings.warning(QStringLiteral("only %1 of the 2 bytes are there, missing ones count as 0")
                             .arg(bytes.size()),
                         QStringLiteral("correct the position"), wholeOf(field));
    const bool high =
        std::any_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
    if (row.signedBytes && high)
        findings.warning(
            QStringLiteral("the bytes %1 hold one above 7F, which may count as negative")
                .arg(HxMidiData(bytes).toString(' ', -1)),
            QStringLiteral("see that the field does not reach into a status byte"), wholeOf(field));
}

void reportOutside(const HxMidiData& data, const FieldReference& field, Findings& findings)
{
    findings.error(QStringLiteral("%1 does not lie within the data").arg(quoted(field.text)),
                   QStringLiteral("a field within its %1 bytes").arg(data.bytes.size()),
                   QStringLiteral("correct the position, or give a value with --fallback"),
                   wholeOf(field));
}

} // namespace

bool looksLikeField(const QByteArray& word)
{
    return word.indexOf('@') > 0;
}

std::optional<FieldReference> readFieldReference(const QByteArray& word, Findings& findings)
{
    const SourceText source{QString(), word};
    const int at = saturated(word.indexOf('@'));
    const TypeRow* const row = findType(word.left(at).toLower());
    if (row == nullptr) {
        findings.error(QStringLiteral("%1 is not a type of field").arg(quoted(word.left(at))),
                       typeNames(), QStringLiteral("write TYPE@POSITION, such as 14bit@7"),
                       Place{source, {0, at}});
        return std::nullopt;
    }
    const int size = saturated(word.size());
    const int plus = isText(*row) ? saturated(word.indexOf('+', at)) : -1;
    const int end = plus < 0 ? size : plus;
    const auto position = readNumber({source, {at + 1, end - at - 1}}, indexRange,
                                     QStringLiteral("a position"), findings);
    FieldReference field{word, row->type, int(position.value_or(0)), 0};
    if (plus < 0)
        return position ? std::optional<FieldReference>(field) : std::nullopt;
    const auto length = readNumber({source, {plus + 1, size - plus - 1}}, {1, indexRange.greatest},
                                   QStringLiteral("a length"), findings);
    field.length = int(length.value_or(0));
    return position && length ? std::optional<FieldReference>(field) : std::nullopt;
}

std::optional<FieldValue> readField(const HxMidiData& data, const FieldReference& field,
                                    std::optional<int> fallback, Findings& findings)
{
    if (!isInside(data, field) && (!fallback || isText(rowOf(field.type)))) {
        reportOutside(data, field, findings);
        return std::nullopt;
    }
    if (isInside(data, field) && !isText(rowOf(field.type)))
        warnOfField(data, field, findings);
    return valueOf(data, field, fallback.value_or(0));
}

} // namespace hx::midi

// The field formats of the builder language.
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace hx {

// What a field takes from the argument list, and how it lays it out.
enum class FieldKind { Number, Groups, Float, HexText, Characters };

// A text of up to eight characters in upper case, as one number; 0 for a longer one.
constexpr quint64 fieldKey(std::string_view text)
{
    quint64 key = 0;
    for (const char c : text) {
        const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        key = key << 8 | static_cast<unsigned char>(upper);
    }
    return text.size() <= sizeof(key) ? key : 0;
}

// A field of the format. Groups are cut from the value's bit `topShift` downward.
struct BuilderField {
    constexpr BuilderField(std::string_view n, FieldKind k, int shift = 0, int bits = 0)
        : name(n), key(fieldKey(n)), kind(k), topShift(shift), groupBits(bits)
    {
    }

    std::string_view name;
    quint64 key;
    FieldKind kind;
    int topShift;
    int groupBits;
};

inline constexpr BuilderField builderFields[] = {
    {"VV", FieldKind::Number},           {"V8", FieldKind::Number},
    {"P8", FieldKind::Number},           {"P14", FieldKind::Groups, 7, 7},
    {"V14", FieldKind::Groups, 7, 7},    {"UT", FieldKind::Groups, 28, 7},
    {"V32", FieldKind::Groups, 28, 7},   {"I32", FieldKind::Groups, 28, 7},
    {"F32", FieldKind::Float, 28, 7},    {"NIB24", FieldKind::Groups, 20, 4},
    {"NIB32", FieldKind::Groups, 28, 4}, {"MSTR", FieldKind::HexText},
    {"CSTR", FieldKind::Characters},
};

// The field that a piece of the format names; null when it names none.
inline const BuilderField* findBuilderField(quint64 key)
{
    const auto* const field = std::find_if(std::begin(builderFields), std::end(builderFields),
                                           [=](const BuilderField& f) { return f.key == key; });
    return field != std::end(builderFields) ? field : nullptr;
}

inline const BuilderField* findBuilderField(std::string_view piece)
{
    return findBuilderField(fieldKey(piece));
}

} // namespace hx

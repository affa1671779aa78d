#include "apps/hxmidi/commands/BuilderField.h"

#include <algorithm>

namespace hx {

namespace {

constexpr BuilderField builderFields[] = {
    {"VV", ArgumentType::Integer, 0},      {"V8", ArgumentType::Integer, 0},
    {"P8", ArgumentType::Integer, 0},      {"P14", ArgumentType::Word, 14},
    {"V14", ArgumentType::Word, 14},       {"UT", ArgumentType::Word, 32},
    {"V32", ArgumentType::Word, 32},       {"I32", ArgumentType::Word, 32},
    {"F32", ArgumentType::Real, 0},        {"NIB24", ArgumentType::Word, 24},
    {"NIB32", ArgumentType::Word, 32},     {"MSTR", ArgumentType::HexText, 0},
    {"CSTR", ArgumentType::Characters, 0},
};

} // namespace

const BuilderField* findBuilderField(const QByteArray& token)
{
    const QByteArray upper = token.toUpper();
    const auto found = std::find_if(std::begin(builderFields), std::end(builderFields),
                                    [&](const BuilderField& field) { return upper == field.name; });
    return found == std::end(builderFields) ? nullptr : found;
}

QByteArray builderFieldNames()
{
    QByteArray names;
    for (const BuilderField& field : builderFields)
        names += QByteArray(field.name) + ' ';
    return names.trimmed();
}

} // namespace hx

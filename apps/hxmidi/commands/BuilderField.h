// The fields of a builder format, as this program must know them to read each field's argument.
#pragma once

#include <QByteArray>

namespace hx {

// What a field wants as its argument.
enum class ArgumentType {
    Integer,    // int
    Word,       // 32-bit unsigned; a negative number is taken by its bit pattern
    Real,       // double
    HexText,    // const char*
    Characters, // const char*
};

struct BuilderField {
    const char* name;
    ArgumentType type;
    int bits; // of a Word that reach the bytes; 0 for other types
};

// The field that a token of a format names, or null when it names none. Case does not matter.
const BuilderField* findBuilderField(const QByteArray& token);

// All names, separated by blanks.
QByteArray builderFieldNames();

} // namespace hx

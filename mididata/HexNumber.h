// A token of hex text or of a builder format, read as a number.
#pragma once

#include "mididata/TextProblem.h"

#include <QByteArray>

#include <optional>
#include <string_view>

namespace hx {

struct HexNumber {
    unsigned int value;
    bool ok;
};

// Reads the whole token by the rules of QString::toInt() in base 16: an optional sign and 0x prefix,
// white space at either end; the value must fit a signed 32-bit integer.
HexNumber readHexNumber(std::string_view token);

// The bytes that a token's digits show, two digits each.
QByteArray shownBytes(std::string_view token);

// What is wrong with a token that was read as this number. Nothing when its bytes are the shown
// ones.
std::optional<TextProblemKind> problemOf(std::string_view token, const HexNumber& number);

} // namespace hx

// Matches most text patterns on the bytes themselves.
//
// Equal to searching the compact hex text with the pattern's regular expression, for this grammar:
//
//     pattern  = sequence | "(" sequence { "|" sequence } ")"
//     sequence = { item }                    not empty in parentheses
//     item     = ( digit | letter | "." | "XX" | class ) [ "*" ]
//     class    = "[" digit { digit } "]"
//
// Blanks may stand anywhere, lower case counts as upper case. A letter that is not a hex digit never
// fits. A star may follow only what stands for any digit: ".", "XX", a class of all sixteen.
//
// So each item is one digit, or a gap of any digits: there is nothing to remember and nothing to go
// back to. Nothing is allocated, and nothing is kept from one call to the next.
#pragma once

#include <QByteArray>

namespace hx {

enum class Fit { No, Yes, OutsideGrammar };

// Whether the pattern, which ends at `end` with a zero, fits the buffer anywhere, in the middle of a byte too, or
// at its start.
Fit fitItems(const char* pattern, const char* end, const QByteArray& bytes, bool atStart);

} // namespace hx

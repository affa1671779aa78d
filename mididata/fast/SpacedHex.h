// Pairs of hex digits with one separator between each, read sixteen pairs at a time.
//
// Equal to reading pair by pair: no pair depends on another, so their first digits, their second digits
// and their separators are gathered and read side by side. Only on processors that gather bytes in one
// step, and only whole blocks: the rest is left to the caller.
#pragma once

#include <QChar>

namespace hx {

// The two characters that may separate pairs.
struct Separators {
    char first;
    char second;

    bool operator()(char c) const { return c == first || c == second; }
    bool operator()(QChar c) const { return c == QLatin1Char(first) || c == QLatin1Char(second); }
};

// How many pairs of `length` characters have been read to `to`; stops before a block in which there is
// something else.
qint64 readSpacedPairs(const char* text, qint64 length, char* to, Separators separators);
qint64 readSpacedPairs(const QChar* text, qint64 length, char* to, Separators separators);

} // namespace hx

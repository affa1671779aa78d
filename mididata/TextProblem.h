// What is wrong with a text of the buffer's languages (hex text, builder format, pattern), as data. The
// library's own log lines are made from it, and so are the messages of a program that points at the
// place. Not installed.
#pragma once

#include <QtGlobal>

#include <functional>

namespace hx {

enum class TextProblemKind {
    // A number of hex text or of a builder format.
    NotANumber,            // it gives no bytes
    NumberTooLarge,        // does not fit a signed 32-bit integer; it gives no bytes
    NumberWithoutBytes,    // -1, the only such value; hex text ends before it
    NumberReadDifferently, // it gives other bytes than its digits show, as 123 gives 00 23

    // Hex text as a whole; it gives no bytes.
    SingleCharacter,
    OddDigits, // without separators, so that there are only pairs

    // A piece of a builder format.
    FieldWithoutBytes, // its text argument has none
    PieceSkipped,      // the one after a field without bytes

    // A pattern that is not a regular expression. It never fits.
    NotAnExpression, // as a whole, where no place is known
    ParenthesisNotOpen,
    ParenthesisNotClosed,
    BracketNotClosed,
    NothingEscaped,
    NothingToRepeat,
    PatternTooLarge, // for the memory of QRegExp

    // A pattern that may not mean what it seems to.
    EmptyPattern,  // it fits anything
    NeverFits,     // letters and signs that are not hex digits
    LetterEscaped, // in upper case, as all letters
};

// A piece of the text; a length of 0 points between two characters or at the end.
struct TextProblem {
    TextProblemKind kind;
    qint64 offset;
    qint64 length;
};

// Receives every problem when it is met.
using ProblemSink = std::function<void(const TextProblem&)>;

} // namespace hx

// A pattern without blanks taken apart into the elements of a regular expression.
#pragma once

#include "mididata/TextProblem.h"

#include <QVector>

#include <string_view>

namespace hx {

// A character outside classes and repetitions that means itself.
struct PatternLiteral {
    qint64 offset;
    char character; // in upper case
};

struct PatternElements {
    QVector<PatternLiteral> literals;
    QVector<qint64> escapes; // offsets of backslashes before a lower-case letter
    qint64 size = 0;         // elements when all repetitions are written out
    int depth = 0;           // of parentheses

    // What QRegExp may refuse the pattern for. It alone decides whether it does.
    QVector<TextProblem> mistakes;
};

// Takes plain ASCII apart as QRegExp would.
PatternElements scanPattern(std::string_view pattern);

} // namespace hx

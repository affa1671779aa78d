// A pattern taken apart into the elements of a regular expression, each with its place.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include <QVector>

namespace hx {

// A character outside classes and repetitions that stands for itself.
struct PatternLiteral {
    int at;
    char character; // in upper case
};

struct PatternElements {
    QVector<PatternLiteral> literals;
    QVector<int> escapes; // of backslashes before a lower-case letter
    qint64 size = 0;      // elements when all repetitions are written out
    int depth = 0;        // of parentheses
};

// Takes printable ASCII apart as QRegExp would; blanks count for nothing. Should QRegExp refuse the
// pattern, `why` holds the places of unbalanced parentheses and brackets and of repetitions of
// nothing as errors; QRegExp alone decides whether they are.
PatternElements scanPattern(const SourceText& pattern, Findings& why);

} // namespace hx

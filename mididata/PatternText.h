// What a pattern text means, and what is wrong with one. Not installed.
#pragma once

#include "mididata/TextProblem.h"

#include <QRegExp>

#include <string_view>

namespace hx {

// With its repetitions written out and its parentheses counted, a pattern beyond these makes QRegExp run
// out of memory or of stack.
constexpr qint64 mostPatternElements = 10000;
constexpr int deepestPattern = 100;

// The regular expression that a pattern means: without blanks, in upper case, XX as two dots.
QRegExp patternExpression(const QString& pattern);

// Tells what makes a pattern of plain ASCII unusable; when nothing does, what may surprise about it.
void reportPattern(std::string_view pattern, const ProblemSink& report);

} // namespace hx

// A text pattern looked at before HxMidiData applies it: the library takes a pattern that is no
// regular expression for one that never fits.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include <QRegExp>

namespace hx {

// The regular expression that HxMidiData::match() makes of a pattern: without blanks, in upper
// case, XX as two dots.
QRegExp expressionOf(const QByteArray& pattern);

// Reports what makes a pattern unusable as an error, and what can never fit hex text, such as VV,
// as a warning. Returns whether it can be used. A pattern that repetitions blow up beyond what
// QRegExp can hold is refused too.
bool checkPattern(const SourceText& pattern, Findings& findings);

} // namespace hx

// The line that contains a piece, with a caret under the piece.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

namespace hx::midi {

// Line and column count from 1; the column in characters.
struct LineAndColumn {
    int line = 1;
    int column = 1;
};

LineAndColumn lineAndColumn(const Place& place);

// Two lines, each indented by two blanks and ended by a line feed: the part of the line around the
// piece, and "^~~~" below the piece itself.
QString excerpt(const Place& place);

} // namespace hx::midi

// The grammar of hex text applied to a text piece by piece, to say what is wrong where. The bytes
// themselves are then read by HxMidiData.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

namespace hx {

// What a blank is: the constructors of HxMidiData remove it, setText() splits at it.
enum class Blanks { Removed, Split };

// Reports every piece that HxMidiData would skip or stumble over, with `badPiece` as severity, and
// warns of every piece whose bytes may surprise. Returns the text without the bad pieces: what
// HxMidiData reads from it is what it reads from the whole text, but it finds nothing to log.
// A character that is not printable ASCII is always an error. Places are given in `source`, whose
// text is `text` or the same with other white space where `text` has blanks.
QByteArray checkHexText(const QByteArray& text, const SourceText& source, Blanks blanks,
                        Severity badPiece, Findings& findings);

} // namespace hx

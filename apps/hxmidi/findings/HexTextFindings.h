// Hex text read by the library, with a finding for each piece that it cannot read or reads otherwise
// than it looks.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include "mididata/HexText.h"

namespace hx::midi {

// The bytes that HxMidiData reads from `text`. A piece that gives none is a finding of severity
// `badPiece`, one whose bytes may surprise a warning. A character that is not printable ASCII is always
// an error. Places are given in `source`, whose text is `text` or the same with other white space where
// `text` has blanks.
QByteArray readHexText(const QByteArray& text, const SourceText& source, Blanks blanks,
                       Severity badPiece, Findings& findings);

} // namespace hx::midi

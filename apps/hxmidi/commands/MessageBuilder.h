// Builder formats with arguments that are texts: each is read as the type its field wants.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include "mididata/HxMidiData.h"

namespace hx::midi {

// Builds what HxMidiData::setData() builds from `format` and the arguments.
//
// Errors: a field without an argument, an argument that is not of its field's type, an argument
// that no field takes. Errors that become warnings with `lenient`: a token that is neither a field
// nor a hex number, which the library ignores; bad hex text for MSTR, which it leaves out; and a
// text argument without bytes, after which it skips the next token.
HxMidiData buildMessage(const QByteArray& format, const QByteArrayList& arguments, bool lenient,
                        Findings& findings);

} // namespace hx::midi

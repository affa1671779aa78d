// A field of a reply whose bytes are themselves hex text.
#pragma once

#include "mididata/HxMidiData.h"

namespace hx {

// The up to 8 bytes from `offset` on, read as characters up to the first zero byte and parsed as
// hex text. Of the 8 places those outside the data count as missing: an `offset` of -2 takes the
// first 6 bytes. An empty buffer when no byte is there or the text denotes none; text that is not
// hex is logged as by HxMidiData's constructor.
HxMidiData hexTextField(const HxMidiData& data, int offset);

} // namespace hx

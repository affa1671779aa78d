// Numbers of hex text and of builder formats that the library reads otherwise than they look, in words.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include "mididata/TextProblem.h"

namespace hx::midi {

// What is wrong with the number `token`, with `severity`; one that is only read differently is never
// more than a warning. `next` says what to do where nothing better is known.
Finding numberFinding(TextProblemKind kind, const QByteArray& token, const Place& place,
                      Severity severity, const QString& next);

} // namespace hx::midi

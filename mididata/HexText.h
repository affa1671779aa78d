// Hex text to bytes, with a word on each piece that gives none or others than it shows. Not installed.
#pragma once

#include "mididata/TextProblem.h"

#include <QByteArray>

#include <string_view>

namespace hx {

// What a blank is: the constructors of HxMidiData remove it, setText() splits at it.
enum class Blanks { Removed, Split };

// The bytes that HxMidiData reads from the text, which may hold zeros. Logs nothing.
QByteArray readHexText(std::string_view text, Blanks blanks, const ProblemSink& report);

} // namespace hx

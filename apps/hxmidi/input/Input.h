// The bytes that a command works on, from words on the command line, files and standard input.
#pragma once

#include "apps/hxmidi/findings/Outcome.h"

#include "mididata/HxMidiData.h"

#include <string>
#include <vector>

namespace hx::midi {

// How data is written.
enum class InputForm {
    Auto, // hex text, unless a file or standard input holds a byte that no text has
    Raw,
    Hex,
    Decimal,
    CArray,
};

struct InputOptions {
    std::vector<std::string> words; // hex text, @FILE or @-; none means @-
    InputForm form = InputForm::Auto;
    bool raw = false;     // the short way to write InputForm::Raw
    bool tokens = false;  // hex text is read as by setText(), not as by the constructors
    bool lenient = false; // bad pieces of hex text are left out with a warning
};

// More is no MIDI data that this program could work on in memory.
constexpr int mostInputBytes = 4 * 1024 * 1024;

// Reads everything the words name, joined in their order; with errors in the outcome the result is
// of no use.
HxMidiData readInput(const InputOptions& options, Outcome& outcome);

} // namespace hx::midi

// Every rendering as text, against the step-by-step transcription.
#include "fuzz/support/FuzzTarget.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

namespace {

using namespace hx::fuzz;

void run(FuzzInput& input)
{
    const int first = input.number();
    const int second = input.number();
    const char separator = static_cast<char>(input.byte());
    const HxMidiData data(input.rest());
    const QByteArray& bytes = data.bytes;

    requireSame(data.toString(first), transcription::toString(bytes, first), "toString(int)");
    requireSame(data.toString(first).isNull(), bytes.isEmpty(),
                "only the text of no bytes is null");
    requireSame(data.toStringFromEnd(first), transcription::toStringFromEnd(bytes, first),
                "toStringFromEnd");
    requireSame(data.toString(separator, first), transcription::toString(bytes, separator, first),
                "toString(char, int)");
    requireSame(data.toString(separator, first, second),
                transcription::toString(bytes, separator, first, second),
                "toString(char, int, int)");
    requireSame(data.toStringDec(), transcription::toStringDec(bytes), "toStringDec");
    requireSame(data.toStringTable(first, second),
                transcription::toStringTable(bytes, first, second), "toStringTable");
    requireSame(data.toStringTable(first, 16), transcription::toStringTable(bytes, first, 16),
                "toStringTable with 16 columns");
}

const Target target("rendering", run);

} // namespace

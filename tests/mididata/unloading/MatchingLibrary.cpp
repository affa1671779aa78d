// A library with the byte buffer in it, as a plugin is one.
#include "mididata/HxMidiData.h"

extern "C" Q_DECL_EXPORT bool matchesInLibrary(const char* bytes, const char* pattern)
{
    return HxMidiData(QByteArray::fromHex(bytes)).match(pattern, true);
}

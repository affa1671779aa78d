// Nothing but the header: it must bring along all that it needs, under a consumer's own warnings.
#include "mididata/HxMidiData.h"

// Uses the byte buffer and nothing else of the kit.
#include "mididata/HxMidiData.h"

#include <cstdio>

int main()
{
    HxMidiData message;
    message.setData("F0 7E V14 F7", 0x2345u);
    std::printf("%s %s\n", qPrintable(message.toString(' ', -1)),
                message.match("F0 7E .. .. F7", true) ? "fits" : "does not fit");
    return 0;
}

// hxupdate: updates the firmware of a MIDI product, in a window.
#include "apps/hxupdate/window/Start.h"

int main(int argc, char** argv)
{
    return hxupdate::start(argc, argv);
}

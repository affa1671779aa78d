// Every page that the window can show, each brought about on a window of its own.
#pragma once

#include "tests/hxupdate/WindowBench.h"

struct Scene {
    const char* name;
    std::function<void(WindowBench&)> bringAbout;
};

const QList<Scene>& scenes();

// Lets a transfer that waits in a scene go on, so that the window can go away.
void endScene(WindowBench& bench);

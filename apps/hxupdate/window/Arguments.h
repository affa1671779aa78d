// What the program was started with.
#pragma once

#include <QString>

namespace hxupdate {

struct Arguments {
    QString pluginPlace;
    bool isSimulated = false;
    QString image; // empty: none was given
};

// Ends the program when help or the version is asked for, or an argument is wrong.
Arguments readArguments(const QStringList& words);

} // namespace hxupdate

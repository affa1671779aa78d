// For plugins whose instance function is their own instead of the one that moc makes: include this
// before the moc file and define `pluginInstance`.
#pragma once

#include <QtPlugin>

static QObject* pluginInstance();

// The body of the function that Qt's macros export.
#undef Q_PLUGIN_INSTANCE
#define Q_PLUGIN_INSTANCE(Class)                                                                   \
    {                                                                                              \
        return pluginInstance();                                                                   \
    }

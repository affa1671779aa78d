// For plugins whose instance function is their own instead of the one that moc makes: include this
// before the moc file and define `pluginInstance`.
#pragma once

#include <QtPlugin>

static QObject* pluginInstance();

#undef QT_MOC_EXPORT_PLUGIN
#define QT_MOC_EXPORT_PLUGIN(Class, name)                                                          \
    Q_EXTERN_C Q_DECL_EXPORT QObject* qt_plugin_instance()                                         \
    {                                                                                              \
        return pluginInstance();                                                                   \
    }                                                                                              \
    Q_EXTERN_C Q_DECL_EXPORT const char* qt_plugin_query_metadata()                                \
    {                                                                                              \
        return reinterpret_cast<const char*>(qt_pluginMetaData);                                   \
    }

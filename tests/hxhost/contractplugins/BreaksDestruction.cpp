// Its instance function gives the one object, dead or alive: once it is deleted, nothing.
#include "tests/hxhost/contractplugins/SoundPlugin.h"

#include <QPointer>

class BreaksDestruction : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksDestruction" FILE "keys.json")
};

#undef QT_MOC_EXPORT_PLUGIN
#define QT_MOC_EXPORT_PLUGIN(Class, name)                                                          \
    Q_EXTERN_C Q_DECL_EXPORT QObject* qt_plugin_instance()                                         \
    {                                                                                              \
        static const QPointer<QObject> only(new Class);                                            \
        return only;                                                                               \
    }                                                                                              \
    Q_EXTERN_C Q_DECL_EXPORT const char* qt_plugin_query_metadata()                                \
    {                                                                                              \
        return reinterpret_cast<const char*>(qt_pluginMetaData);                                   \
    }

#include "BreaksDestruction.moc"

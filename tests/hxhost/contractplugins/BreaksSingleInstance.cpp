// Its instance function makes a new object at each call.
#include "tests/hxhost/contractplugins/SoundPlugin.h"

class BreaksSingleInstance : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksSingleInstance" FILE "keys.json")
};

#undef QT_MOC_EXPORT_PLUGIN
#define QT_MOC_EXPORT_PLUGIN(Class, name)                                                          \
    Q_EXTERN_C Q_DECL_EXPORT QObject* qt_plugin_instance()                                         \
    {                                                                                              \
        static QObject owner;                                                                      \
        auto* const another = new Class;                                                           \
        another->setParent(&owner);                                                                \
        return another;                                                                            \
    }                                                                                              \
    Q_EXTERN_C Q_DECL_EXPORT const char* qt_plugin_query_metadata()                                \
    {                                                                                              \
        return reinterpret_cast<const char*>(qt_pluginMetaData);                                   \
    }

#include "BreaksSingleInstance.moc"

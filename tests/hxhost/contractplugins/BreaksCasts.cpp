// Its casts take a name in upper or lower case.
#include "tests/hxhost/contractplugins/PluginInstance.h"
#include "tests/hxhost/contractplugins/SoundPlugin.h"

#include <QPointer>

class BreaksCasts : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksCasts" FILE "keys.json")
};

class CaselessCasts : public BreaksCasts {
public:
    void* qt_metacast(const char* name) override
    {
        return qstricmp(name, "DeviceInterface") == 0 ? static_cast<DeviceInterface*>(this)
                                                      : BreaksCasts::qt_metacast(name);
    }
};

static QObject* pluginInstance()
{
    static QPointer<QObject> only;
    if (!only)
        only = new CaselessCasts;
    return only;
}

#include "BreaksCasts.moc"

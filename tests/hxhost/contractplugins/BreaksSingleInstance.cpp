// Its instance function makes a new object at each call.
#include "tests/hxhost/contractplugins/PluginInstance.h"
#include "tests/hxhost/contractplugins/SoundPlugin.h"

class BreaksSingleInstance : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksSingleInstance" FILE "keys.json")
};

static QObject* pluginInstance()
{
    static QObject owner;
    auto* const another = new BreaksSingleInstance;
    another->setParent(&owner);
    return another;
}

#include "BreaksSingleInstance.moc"

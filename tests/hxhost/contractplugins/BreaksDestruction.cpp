// Its instance function gives the one object, dead or alive: once it is deleted, nothing.
#include "tests/hxhost/contractplugins/PluginInstance.h"
#include "tests/hxhost/contractplugins/SoundPlugin.h"

#include <QPointer>

class BreaksDestruction : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksDestruction" FILE "keys.json")
};

static QObject* pluginInstance()
{
    static const QPointer<QObject> only(new BreaksDestruction);
    return only;
}

#include "BreaksDestruction.moc"

// Its object is of a class derived from the one that the metadata names.
#include "tests/hxhost/contractplugins/PluginInstance.h"
#include "tests/hxhost/contractplugins/SoundPlugin.h"

#include <QPointer>

class BreaksClassName : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksClassName" FILE "keys.json")
};

class AnotherClass : public BreaksClassName {
    Q_OBJECT
};

static QObject* pluginInstance()
{
    static QPointer<QObject> only;
    if (!only)
        only = new AnotherClass;
    return only;
}

#include "BreaksClassName.moc"

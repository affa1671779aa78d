#include "tests/hxhost/contractplugins/SoundPlugin.h"

class BreaksInterfaceId : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.AnotherClass" FILE "keys.json")
};

#include "BreaksInterfaceId.moc"

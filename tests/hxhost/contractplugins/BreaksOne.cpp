#include "tests/hxhost/contractplugins/SoundPlugin.h"

class BreaksOne : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksOne" FILE "keys.json")
};

#include "BreaksOne.moc"

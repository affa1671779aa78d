#include "tests/hxhost/contractplugins/SoundPlugin.h"

class BreaksKeys : public SoundPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.BreaksKeys" FILE "bad-keys.json")
};

#include "BreaksKeys.moc"

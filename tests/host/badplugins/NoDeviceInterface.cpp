#include "tests/host/badplugins/RanMark.h"

#include <QObject>
#include <QtPlugin>

class NoDeviceInterface : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.NoDeviceInterface" FILE "keys.json")
};

#include "NoDeviceInterface.moc"

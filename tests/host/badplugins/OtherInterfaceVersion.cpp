#include "tests/host/badplugins/RanMark.h"

#include <QObject>
#include <QtPlugin>

class OtherInterfaceVersion : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface/2.0.OtherInterfaceVersion" FILE
                          "keys.json")
};

#include "OtherInterfaceVersion.moc"

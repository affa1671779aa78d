#include "tests/host/badplugins/RanMark.h"

#include <QObject>
#include <QtPlugin>

class BareInterface : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface" FILE "keys.json")
};

#include "BareInterface.moc"

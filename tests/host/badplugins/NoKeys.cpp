#include "tests/host/badplugins/RanMark.h"

#include <QObject>
#include <QtPlugin>

class NoKeys : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.NoKeys" FILE "emptykeys.json")
};

#include "NoKeys.moc"

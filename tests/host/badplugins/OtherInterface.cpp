#include "tests/host/badplugins/RanMark.h"

#include <QObject>
#include <QtPlugin>

class OtherInterface : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.OtherInterface" FILE "keys.json")
};

#include "OtherInterface.moc"

#include "tests/host/badplugins/RanMark.h"

#include <QObject>
#include <QtPlugin>

// What a later interface might be; the metadata does not tell it from the present one.
class LaterInterface {
public:
    virtual ~LaterInterface() = default;
};

Q_DECLARE_INTERFACE(LaterInterface, "com.tarv.qtio.DeviceInterface/2.0")

class OtherVersionInside : public QObject, public LaterInterface {
    Q_OBJECT
    Q_INTERFACES(LaterInterface)
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.OtherVersionInside" FILE "keys.json")
};

#include "OtherVersionInside.moc"

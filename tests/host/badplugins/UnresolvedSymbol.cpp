#include "tests/host/badplugins/RanMark.h"

#include <QObject>
#include <QVariant>
#include <QtPlugin>

// Defined nowhere: the library can be built, but not loaded.
int definedNowhere();

class UnresolvedSymbol : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.UnresolvedSymbol" FILE "keys.json")

public:
    UnresolvedSymbol() { setProperty("value", definedNowhere()); }
};

#include "UnresolvedSymbol.moc"

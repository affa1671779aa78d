// A host of thirty lines: loads a device plugin and asks it who it is. Usage: minimal-host PLUGIN
#include "deviceinterface/DeviceInterface.h"

#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>
#include <QTextStream>

int main(int argc, char** argv)
{
    QTextStream out(stdout);
    if (argc != 2) {
        out << "usage: minimal-host PLUGIN\n";
        return 2;
    }
    QPluginLoader loader(QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath());
    const QString identifier = loader.metaData().value("IID").toString(); // runs no plugin code
    if (!identifier.startsWith("com.tarv.qtio.DeviceInterface.")) {
        out << "not a device plugin: " << argv[1] << ": "
            << (identifier.isEmpty() ? loader.errorString() : identifier) << '\n';
        return 1;
    }
    auto* device = qobject_cast<DeviceInterface*>(loader.instance());
    if (!device) {
        out << "cannot load the plugin: " << loader.errorString() << '\n';
        return 1;
    }
    out << device->productName() << " on port \"" << device->productPortName()
        << "\", identifier 0x" << QString::number(device->fidpid(), 16) << '\n';
    out << "identity request: " << device->lookupStr("identify") << '\n';
    return loader.unload() ? 0 : 1;
}

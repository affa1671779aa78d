// Loads the plugin named by the first argument and asks for its names, when it has any.
#include "deviceinterface/DeviceInterface.h"

#include <QPluginLoader>
#include <QTextStream>

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    QPluginLoader loader(QString::fromLocal8Bit(argv[1]));
    QTextStream out(stdout);
    if (loader.instance() == nullptr) {
        out << loader.errorString() << '\n';
        return 1;
    }
    if (auto* device = qobject_cast<DeviceInterface*>(loader.instance()))
        out << device->productName() << ' ' << device->productPortName() << '\n';
    return 0;
}

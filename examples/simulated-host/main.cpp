// A host that talks to a product: the simulated one, over the reference host's bus.
// Usage: simulated-host PLUGIN
#include "host/bus/PortBus.h"
#include "host/product/PluginLoader.h"
#include "ports/SimulatedIdentity.h"
#include "ports/SimulatedPort.h"

#include <QTextStream>

int main(int argc, char** argv)
{
    QTextStream out(stdout);
    if (argc != 2) {
        out << "usage: simulated-host PLUGIN\n";
        return 2;
    }
    const hx::PluginLoadResult loaded = hx::loadPlugin(QString::fromLocal8Bit(argv[1]));
    if (!loaded.ok()) {
        out << loaded.problem.what << '\n';
        return 1;
    }
    DeviceInterface& device = loaded.plugin->device();
    const auto identity = hx::simulatedIdentity(hx::describeProduct(device));
    if (!identity) {
        out << "the plugin does not say enough of its product to simulate it\n";
        return 1;
    }
    const hx::sim::SimulatedProduct product(*identity);
    hx::SimulatedPort port{
        hx::sim::FaultyProduct(product)}; // hx::RtMidiPort::open() gives a real one
    hx::PortBus bus(port);
    device.bus = &bus;

    out << "version: " << device.versionNumber() << '\n';
    const HxMidiData command(device.lookupStr(QStringLiteral("esn.read")));
    const QString pattern = device.lookupStr(QStringLiteral("esn.read.response"));
    const HxMidiData reply = bus.transact(command, pattern, 2200);
    if (reply.bytes.isEmpty()) {
        out << bus.errorText << '\n';
        return 1;
    }
    out << "serial number: " << HxMidiData(reply.mid(7, 8)).toString(-1) << '\n';
    return 0;
}

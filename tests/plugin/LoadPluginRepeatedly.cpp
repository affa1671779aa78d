// Loads a plugin, uses it and unloads it, as often as it is told; run under a leak checker.
// Usage: load_plugin_repeatedly FILE TIMES
#include "deviceinterface/DeviceInterface.h"

#include <QPluginLoader>
#include <QString>

#include <cstdio>
#include <cstdlib>

namespace {

class SilentBus : public Bus {
public:
    BusData transact(BusData, QString, unsigned) override { return {}; }
    BusData transactExpect(BusData const&, ResponceData const&, unsigned) override { return {}; }
};

void silence(QtMsgType, const QMessageLogContext&, const QString&) {}

bool loadUseUnload(const QString& file)
{
    QPluginLoader loader(file);
    loader.setLoadHints(QLibrary::LoadHints()); // newer Qt keeps the library in memory otherwise
    auto* device = qobject_cast<DeviceInterface*>(loader.instance());
    if (!device)
        return false;
    SilentBus bus;
    device->bus = &bus;
    const bool answered = device->fidpid() == 0x300041 && device->versionNumber() == 0 &&
                          device->esn().isNull() && !device->isCodeValid(CodeType::Fwu) &&
                          device->lookupStr(QStringLiteral("reset")).size() == 20;
    return loader.unload() && answered && !loader.isLoaded();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return EXIT_FAILURE;
    qInstallMessageHandler(silence);
    const long times = std::strtol(argv[2], nullptr, 10);
    for (long i = 0; i < times; ++i) {
        if (!loadUseUnload(QString::fromLocal8Bit(argv[1]))) {
            std::fprintf(stderr, "round %ld failed\n", i + 1);
            return EXIT_FAILURE;
        }
    }
    std::printf("%ld rounds\n", times);
    return times > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

// Updates the simulated product over and over in one process and measures its resident memory.
// Usage: hxsoak PLUGIN UPDATES MOST_GROWTH_KIB
#include "host/image/ImageBuilder.h"
#include "host/product/PluginLoader.h"
#include "host/update/UpdateRun.h"
#include "ports/SimulatedPort.h"
#include "tests/support/Valdrin.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace hx;

namespace {

constexpr int warmUp = 100; // updates until every cache and pool has its size

// What a host keeps from one update to the next, or makes anew for each.
struct Session {
    explicit Session(const QString& plugin) : loaded(loadPlugin(plugin)), bus(port)
    {
        if (loaded.ok())
            loaded.plugin->device().bus = &bus;
    }

    PluginLoadResult loaded;
    SimulatedPort port{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};
    PortBus bus;
};

UpdateImage imageOf(const ProductDescription& product, int round)
{
    QByteArray code(8192, '\0');
    for (int i = 0; i < code.size(); ++i)
        code[i] = static_cast<char>(i * 31 + i / 256 + round);
    const Result<BuiltImage> built =
        buildImage(product, code, CodeType::Fwu, QStringLiteral("1.0.2.4"));
    return parseUpdateImage(imageFileOf(built->messages), product);
}

bool update(Session& session, int round)
{
    if (!session.loaded.ok()) {
        std::fprintf(stderr, "%s\n", qPrintable(session.loaded.problem.what));
        return false;
    }
    DeviceInterface& device = session.loaded.plugin->device();
    const UpdateImage image = imageOf(describeProduct(device), round);
    const UpdateResult result = runUpdate(device, session.bus, image);
    const sim::SimulatedProduct& product = session.port.product();
    const bool good =
        result.succeeded() && product.isCodeValid() && product.codeBytes() == image.code;
    if (!good)
        std::fprintf(stderr, "update %d failed: %s\n", round, qPrintable(result.reason));
    return good;
}

// In KiB; 0 where the system does not say.
long residentMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const auto at = text.indexOf("VmRSS:");
    return at < 0 ? 0 : text.mid(at + 6).trimmed().split(' ').first().toLong();
}

long measured(int updates)
{
    const long kib = residentMemory();
    std::printf("after %d updates: %ld KiB resident\n", updates, kib);
    std::fflush(stdout);
    return kib;
}

void silence(QtMsgType, const QMessageLogContext&, const QString&) {}

// By turns in a session that stays and in one of its own, plugin loading included.
int soak(const QString& plugin, int updates, long mostGrowth)
{
    Session kept(plugin);
    long before = 0;
    for (int round = 1; round <= updates; ++round) {
        const auto fresh = round % 2 == 0 ? std::make_unique<Session>(plugin) : nullptr;
        if (!update(fresh ? *fresh : kept, round))
            return EXIT_FAILURE;
        if (round == warmUp)
            before = measured(round);
    }
    const long growth = measured(updates) - before;
    if (before == 0) {
        std::fprintf(stderr, "this system does not tell the resident memory of a process\n");
        return EXIT_FAILURE;
    }
    std::printf("growth %ld KiB, at most %ld allowed\n", growth, mostGrowth);
    return growth <= mostGrowth ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    const int updates = argc == 4 ? std::atoi(argv[2]) : 0;
    if (updates <= warmUp) {
        std::fprintf(stderr, "usage: hxsoak PLUGIN UPDATES MOST_GROWTH_KIB; more than %d updates\n",
                     warmUp);
        return 2;
    }
    qInstallMessageHandler(silence);
    return soak(QString::fromLocal8Bit(argv[1]), updates, std::atol(argv[3]));
}

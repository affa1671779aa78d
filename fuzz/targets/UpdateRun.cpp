// The host's update over a wire on which anything goes wrong: never a success unless the product
// holds the image, always an end in bounded time, and a run without faults always recovers it.
#include "host/update/UpdateRun.h"

#include "fuzz/support/Description.h"
#include "fuzz/support/FaultyWire.h"
#include "fuzz/support/FuzzTarget.h"
#include "host/image/ImageBuilder.h"
#include "plugin/ValdrinBootInterface.h"
#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

namespace {

using namespace hx;
using namespace hx::sim;
using namespace hx::fuzz;

// Thirteen identity requests and every other exchange to its last retry and timeout.
constexpr Microseconds longestRun = 240 * 1000 * microsecondsPerMillisecond;
constexpr int mostMessages = 60;

const UpdateImage& image()
{
    static const UpdateImage parsed = [] {
        const Result<BuiltImage> built =
            buildImage(description(), codeOfSize(150), CodeType::Fwu, QStringLiteral("5.6.7.8"));
        return parseUpdateImage(imageFileOf(built->messages), description());
    }();
    return parsed;
}

bool holdsImage(const sim::SimulatedProduct& product)
{
    return product.isCodeValid() && product.codeBytes() == image().code &&
           product.code().version == sim::VersionDigits{{'5', '6', '7', '8'}};
}

UpdateResult update(sim::SimulatedProduct& product, FaultyWire& wire)
{
    static ValdrinBootInterface device;
    wire.watchFor(bytesOf("F0006B2D304131") + image().expectedChecksum() + '\xF7');
    PortBus bus(wire);
    device.bus = &bus;
    const qint64 writesBefore = product.memoryWrites();
    const UpdateResult result = runUpdate(device, bus, image());
    device.bus = nullptr;
    require(wire.clock().now() <= longestRun, "a run ends in bounded time");
    require(wire.messagesSent() <= mostMessages, "a run sends a bounded number of messages");
    requireSame(result.succeeded(), result.reason.isEmpty(), "a failure has its reason");
    require(!result.productState.isEmpty(), "a run says what state the product is in");
    require(result.touched || product.memoryWrites() == writesBefore,
            "a product that is said to be untouched is");
    return result;
}

void run(FuzzInput& input)
{
    sim::SimulatedProductSettings settings;
    settings.memorySize = 300;
    sim::SimulatedProduct product(sim::valdrin(), settings);
    if (input.flag()) { // interrupted in an update before
        product.receive(image().messages.at(0).bytes);
        require(!product.isCodeValid(), "an update that was begun leaves no valid code");
    }
    FaultyWire wire(product, &input);
    const UpdateResult result = update(product, wire);
    if (result.succeeded() && !wire.wasForged())
        require(holdsImage(product), "success means that the product holds the image");
    if (result.succeeded())
        return;

    product.failPowerAfter(-1);
    FaultyWire goodWire(product, nullptr);
    const UpdateResult again = update(product, goodWire);
    requireSame(again.reason, QString(), "a run without faults succeeds");
    require(holdsImage(product), "a run without faults recovers the product");
}

const Target target("update_run", run);

} // namespace

// What the host reads of a product over a wire on which anything goes wrong: a reading is good only
// when its reply is a whole one, and over a good wire it is what the product holds.
#include "fuzz/support/FaultyWire.h"
#include "fuzz/support/FuzzTarget.h"
#include "host/product/ProductState.h"
#include "plugin/ValdrinBootInterface.h"
#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

namespace {

using namespace hx;
using namespace hx::sim;
using namespace hx::fuzz;

constexpr Microseconds longestRead = 120 * 1000 * microsecondsPerMillisecond;

void requireSound(const Reading& reading, const char* head, int size)
{
    requireSame(reading.good(), reading.reason.isEmpty(), "what is not good has its reason");
    if (!reading.good())
        return;
    const QByteArray start = QByteArray::fromHex(head);
    require(reading.raw.bytes.startsWith(start) && reading.raw.bytes.endsWith('\xF7'),
            "a good reading has its reply");
    require(size == 0 || reading.raw.bytes.size() == size, "a good reply has its size");
}

void requireSound(const ProductInfo& info)
{
    requireSound(info.identity, "F07E", 0);
    if (info.identity.state == ReadingState::Good)
        requireSame(info.identity.versionBytes.size(), 4, "an identity has four version bytes");
    if (info.gender.state == ReadingState::NotRead)
        return;
    requireSound(info.gender, "F0006B2D30412F", 12);
    requireSound(info.version, "F0006B2D30", 12);
    requireSound(info.stored, "F0006B2D304130", 12);
    requireSound(info.calculated, "F0006B2D304131", 12);
    requireSound(info.esn, "F0006B2D304121", 16);
    requireSound(info.dsp0, "F0006B2D30414208", 0);
    requireSound(info.dsp1, "F0006B2D30414209", 0);
}

void requireTrue(const ProductInfo& info, const sim::SimulatedProduct& product)
{
    require(info.identity.good() && info.gender.good() && info.stored.good() &&
                info.calculated.good() && info.esn.good() && info.dsp0.good() && info.dsp1.good(),
            "over a good wire everything is read");
    requireSame(info.version.good(), product.isCodeValid(), "the version of valid code is read");
    requireSame(info.stored.groups == info.calculated.groups, product.isCodeValid(),
                "the checksums agree for valid code");
    requireSame(info.gender.fidpid, 0x300041u, "the identifier");
    require(info.dsp0.present && info.dsp0.size == quint32(product.codeBytes().size()),
            "the code's size");
}

ProductInfo read(FaultyWire& wire)
{
    static ValdrinBootInterface device;
    PortBus bus(wire);
    device.bus = &bus;
    ProductReader reader(device, bus);
    const ProductInfo info = readProductInfo(reader);
    const ProductAssessment assessment = assessProduct(reader);
    device.bus = nullptr;
    require(!assessment.state.isEmpty(), "an assessment says what is known");
    require(wire.clock().now() <= longestRead, "reading ends in bounded time");
    requireSound(info);
    return info;
}

void run(FuzzInput& input)
{
    sim::SimulatedProductSettings settings;
    settings.memorySize = 300;
    sim::SimulatedProduct product(sim::valdrin(), settings);
    if (input.flag()) // an update that stops in the middle
        product.receive(dataMessage(0, 0, codeOfSize(100)));
    const QByteArray before = product.save();
    FaultyWire wire(product, &input);
    read(wire);
    if (product.save() != before)
        return; // a command that was changed on the way became another one
    FaultyWire goodWire(product, nullptr);
    requireTrue(read(goodWire), product);
}

const Target target("product_info", run);

} // namespace

#include "tests/sweep/Trial.h"

#include "host/image/ImageBuilder.h"
#include "host/image/ImageFile.h"
#include "qt/Saturated.h"
#include "tests/support/Valdrin.h"
#include "tests/sweep/Examination.h"

namespace sweep {

namespace {

hx::UpdateImage smallImage(const hx::ProductDescription& product)
{
    QByteArray code(codeSize, '\0');
    for (int i = 0; i < codeSize; ++i)
        code[i] = static_cast<char>(i * 31 + 7);
    const hx::Result<hx::BuiltImage> built =
        hx::buildImage(product, code, CodeType::Fwu, QStringLiteral("1.0.2.4"));
    return hx::parseUpdateImage(hx::imageFileOf(built->messages), product);
}

} // namespace

Laboratory::Laboratory(DeviceInterface& device, const Flaw* flaw, const PortOver& portOver)
    : m_device(device), m_flaw(flaw), m_portOver(portOver),
      m_image(smallImage(hx::describeProduct(device))), m_fresh(hx::sim::valdrin())
{
}

TrialReport Laboratory::tryScenario(const Scenario& scenario)
{
    ProductOnTrial product(m_fresh, m_flaw);
    FaultyLink link(product, scenario);
    const auto update = [&] {
        const std::unique_ptr<hx::MidiPort> port = m_portOver ? m_portOver(link) : nullptr;
        hx::PortBus bus(port ? *port : link, {},
                        m_patience); // a new run knows nothing of the one before
        m_device.bus = &bus;
        const hx::UpdateResult result = hx::runUpdate(m_device, bus, m_image);
        m_device.bus = nullptr;
        return result;
    };
    const hx::UpdateResult result = update();
    TrialReport report;
    report.outcome = result.outcome;
    report.reason = result.reason;
    report.productState = result.productState;
    report.record = link.record();
    report.isFalseSuccess = result.succeeded() && !holds(product.code(), m_image) &&
                            !holds(link.codeWhenCalculated(), m_image);
    report.complaints =
        complaintsAbout({scenario, m_image, result, link, m_patience, link.clock().now()},
                        m_fresh.code(), product.code());
    link.repair();
    const hx::UpdateResult again = update();
    if (!again.succeeded() || !holds(product.code(), m_image))
        report.complaints << QStringLiteral("a second update does not recover the product: ") +
                                 updateOutcomeText(again.outcome) + QStringLiteral(", ") +
                                 again.reason;
    return report;
}

std::vector<int> Laboratory::messageSizes(Direction direction)
{
    const WireEvent::Kind kind =
        direction == Direction::Out ? WireEvent::Kind::Sent : WireEvent::Kind::Arrived;
    std::vector<int> sizes;
    for (const WireEvent& event : tryScenario(Scenario()).record) {
        if (event.kind == kind)
            sizes.push_back(hx::saturated(event.bytes.size()));
    }
    return sizes;
}

std::vector<Topic> Laboratory::topics()
{
    std::vector<Topic> topics;
    for (const WireEvent& event : tryScenario(Scenario()).record) {
        if (event.kind == WireEvent::Kind::Sent)
            topics.push_back(topicOf(event.bytes));
    }
    return topics;
}

std::vector<int> Laboratory::memoryWrites()
{
    hx::sim::SimulatedProduct product = m_fresh;
    std::vector<int> writes;
    for (const WireEvent& event : tryScenario(Scenario()).record) {
        if (event.kind != WireEvent::Kind::Sent)
            continue;
        const qint64 before = product.memoryWrites();
        product.receive(event.bytes);
        writes.push_back(static_cast<int>(product.memoryWrites() - before));
    }
    return writes;
}

} // namespace sweep

#include "bench/Bench.h"
#include "host/image/ImageBuilder.h"
#include "host/image/ImageFile.h"
#include "host/image/UpdateImage.h"
#include "host/product/PluginLoader.h"
#include "host/update/UpdatePlan.h"
#include "host/update/UpdateSender.h"
#include "qt/Saturated.h"

#include <QTemporaryFile>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace hxbench {

namespace {

/** A product at an in-process port that acknowledges whatever it is sent, at once. */
class AcknowledgingPort final : public hx::MidiPort {
public:
    QString name() const override { return QStringLiteral("acknowledging"); }
    hx::Clock& clock() override { return m_clock; }

    qint64 send(const QByteArray& message) override
    {
        m_isWaiting = true;
        return message.size();
    }

    hx::MidiChunk receive(hx::Microseconds) override
    {
        if (!m_isWaiting)
            return {};
        m_isWaiting = false;
        return {m_acknowledgement, m_clock.now()};
    }

private:
    hx::SteadyClock m_clock;
    QByteArray m_acknowledgement = QByteArray::fromHex("F0006B2D3041430C00F7");
    bool m_isWaiting = false;
};

hx::UpdateImage imageOf(const QByteArray& code, const hx::ProductDescription& product)
{
    QTemporaryFile file;
    file.open();
    file.write(
        hx::buildImage(product, code, CodeType::Fwu, QStringLiteral("1.0.2.4"))->fileContent());
    file.close();
    return hx::loadUpdateImage(file.fileName(), product);
}

/** The update loop over one image; each iteration of the bar is one message. */
class UpdateLoop {
public:
    UpdateLoop()
        : m_plugin(hx::loadPlugin(QStringLiteral(HXBENCH_PLUGIN))),
          m_image(imageOf(mixedBytes(256 * 1024), hx::describeProduct(m_plugin.plugin->device())))
    {
    }

    int messages() const { return hx::saturated(m_image.messages.size()); }

    void run()
    {
        hx::PortBus bus(m_port);
        const hx::UpdatePlan plan = hx::planUpdate(m_plugin.plugin->device(), m_image);
        const hx::SendReport report = hx::UpdateSender(bus, plan, m_image, {}).sendAll();
        if (report.end != hx::SendEnd::Good)
            std::abort();
    }

private:
    hx::PluginLoadResult m_plugin;
    hx::UpdateImage m_image;
    AcknowledgingPort m_port;
};

} // namespace

void addUpdateLoop()
{
    benchmark::RegisterBenchmark("update loop/message/own", [](benchmark::State& state) {
        UpdateLoop loop;
        const std::uint64_t before = allocationCount();
        while (state.KeepRunningBatch(loop.messages()))
            loop.run();
        if (countsAllocations()) {
            const auto allocations = static_cast<double>(allocationCount() - before);
            state.counters["allocations"] = allocations / static_cast<double>(state.iterations());
        }
    });
}

} // namespace hxbench

// A sample of the sweep over a pseudo terminal: what the host makes of a fault does not depend on
// what carries the bytes.
#include "host/product/PluginLoader.h"
#include "tests/sweep/LinkedDevice.h"
#include "tests/sweep/Sweep.h"

#include <gtest/gtest.h>

#include <vector>

using namespace sweep;

namespace {

constexpr std::size_t sampleSize = 500;

std::vector<Scenario> allScenarios(Laboratory& laboratory)
{
    std::vector<Scenario> all;
    forEachScenario(laboratory, [&all](const Scenario& scenario) { all.push_back(scenario); });
    return all;
}

} // namespace

TEST(DeviceSweep, EveryFaultOfASampleEndsOverADeviceAsItDoesOnTheWire)
{
    const hx::PluginLoadResult loaded = hx::loadPlugin(QStringLiteral(HX_PLUGIN_FILE));
    ASSERT_TRUE(loaded.ok()) << loaded.problem.what.toStdString();
    Laboratory wire(loaded.plugin->device());
    std::size_t opened = 0;
    Laboratory device(loaded.plugin->device(), nullptr, [&opened](FaultyLink& link) {
        std::unique_ptr<hx::MidiPort> port = deviceOver(link);
        opened += port ? 1 : 0;
        return port;
    });
    const std::vector<Scenario> all = allScenarios(wire);
    for (std::size_t number = 0; number < sampleSize; ++number) {
        const Scenario& scenario = all[number * all.size() / sampleSize];
        const TrialReport report = device.tryScenario(scenario);
        EXPECT_TRUE(report.complaints.isEmpty()) << scenarioText(scenario).toStdString() << ": "
                                                 << report.complaints.join("; ").toStdString();
        EXPECT_EQ(report.outcome, wire.tryScenario(scenario).outcome)
            << scenarioText(scenario).toStdString();
    }
    EXPECT_EQ(opened, 2 * sampleSize) << "the update with the fault and the one after it";
}

// The simulated product to try the window on.
#include "apps/hxupdate/model/SimulatorPorts.h"
#include "apps/hxupdate/model/Plugins.h"

#include "host/product/ProductState.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hxupdate;

namespace {

class SimulatorPortsTest : public testing::Test {
protected:
    SimulatorPortsTest() { plugins.load(QStringLiteral(HX_PLUGIN_FILE)); }

    std::unique_ptr<hx::MidiPort> open()
    {
        auto port = ports.open(ports.list().value(0), plugins.device(0), nullptr);
        return port ? std::move(*port) : nullptr;
    }

    Plugins plugins;
    hx::ManualClock* real = new hx::ManualClock; // owned by the ports
    SimulatorPorts ports{QStringLiteral(HX_PLUGIN_FILE), std::unique_ptr<hx::Clock>(real)};
};

} // namespace

TEST_F(SimulatorPortsTest, HasOnePortWithThePluginsProduct)
{
    ASSERT_EQ(ports.list().size(), 1);
    const auto port = open();
    EXPECT_EQ(port->name(), ports.list().first());
    hx::PortBus bus(*port);
    hx::ProductReader reader(plugins.device(0), bus);
    const hx::ProductAssessment assessment = hx::assessProduct(reader);
    EXPECT_EQ(assessment.condition, hx::ProductCondition::CodeIntact);
}

TEST_F(SimulatorPortsTest, BytesTakeAsLongAsOnAWire)
{
    const auto port = open();
    ASSERT_EQ(port->send(QByteArray(1000, '\x01')), 1000);
    EXPECT_EQ(real->now(), 1000 * 320);
}

TEST_F(SimulatorPortsTest, WaitsTakeAsLongAsTheyAre)
{
    const auto port = open();
    const hx::Microseconds before = real->now();
    const hx::MidiChunk none = port->receive(port->clock().now() + hx::microsecondsPerSecond);
    EXPECT_TRUE(none.bytes.isEmpty());
    EXPECT_EQ(real->now() - before, hx::microsecondsPerSecond);
}

TEST_F(SimulatorPortsTest, TheProductKeepsWhatItWasToldAfterThePortIsClosed)
{
    const hx::Microseconds first = open()->clock().now();
    ASSERT_EQ(open()->send(QByteArray(10, '\x01')), 10);
    EXPECT_GT(open()->clock().now(), first);
}

TEST(SimulatorPorts, WithoutAPluginThereIsNoPort)
{
    SimulatorPorts ports(QStringLiteral("/no/such/folder"));
    EXPECT_TRUE(ports.list().isEmpty());
    Plugins plugins;
    plugins.load(QStringLiteral(HX_PLUGIN_FILE));
    const auto port = ports.open("simulator", plugins.device(0), nullptr);
    ASSERT_FALSE(port);
    EXPECT_EQ(port.problem().what,
              "there is no port \"simulator\": no plugin says which product to simulate");
}

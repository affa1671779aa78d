// The ports of a machine that this file makes up: which there are, and which input answers.
#include "apps/hxupdate/model/MachinePorts.h"

#include "host/product/PluginLoader.h"
#include "ports/SimulatedPort.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

using namespace hxupdate;

namespace {

class MachinePortsTest : public testing::Test {
protected:
    MachinePortsTest()
    {
        system.list = [this] { return backends; };
        system.open = [this](const hx::PortAddress& address) { return open(address); };
    }

    std::unique_ptr<hx::MidiPort> openPort(const QString& port)
    {
        auto result = MachinePorts(system).open(port, m_loaded.plugin->device(), nullptr);
        if (result)
            return std::move(*result);
        error = result.problem().what;
        return nullptr;
    }

    QList<hx::MidiBackend> backends = {{"alsa", "ALSA", {"Valdrin in"}, {"Valdrin"}, {}},
                                       {"jack", "Jack", {"Synth in"}, {"Synth", "Lights"}, {}}};
    MidiSystem system;
    QStringList opened;
    QStringList answering = {"Valdrin in"}; // inputs by which a product answers
    QStringList held;
    QString error;

private:
    hx::Result<std::unique_ptr<hx::MidiPort>> open(const hx::PortAddress& address)
    {
        opened << address.input;
        if (held.contains(address.input))
            return hx::Problem{hx::ExitCode::NoPort, QStringLiteral("another program holds it"),
                               QString(), QString()};
        const hx::sim::SimulatedProduct product(hx::sim::valdrin());
        hx::sim::FaultPlan plan;
        if (!answering.contains(address.input))
            plan << *hx::sim::parseFault(QStringLiteral("silent"), &error);
        return std::unique_ptr<hx::MidiPort>(std::make_unique<hx::SimulatedPort>(
            hx::sim::FaultyProduct(product, plan), hx::SimulatedPortOptions{{0, 0}, 0}));
    }

    hx::PluginLoadResult m_loaded = hx::loadPlugin(QStringLiteral(HX_PLUGIN_FILE));
};

} // namespace

TEST_F(MachinePortsTest, EveryOutputIsNamedWithItsSystem)
{
    EXPECT_EQ(MachinePorts(system).list(),
              QStringList({"alsa:Valdrin", "jack:Synth", "jack:Lights"}));
}

TEST_F(MachinePortsTest, TheOnlyInputIsOpenedWithoutAQuestion)
{
    answering.clear();
    EXPECT_NE(openPort("alsa:Valdrin"), nullptr);
    EXPECT_EQ(opened, QStringList({"Valdrin in"}));
    EXPECT_EQ(error, QString());
}

TEST_F(MachinePortsTest, OfSeveralInputsTheOneThatAnswersIsTaken)
{
    backends[0].inputs = QStringList({"Valdrin in 1", "Valdrin in 2", "Valdrin in 3"});
    answering = QStringList({"Valdrin in 2"});
    ASSERT_NE(openPort("alsa:Valdrin"), nullptr) << error.toStdString();
    EXPECT_EQ(opened.last(), "Valdrin in 2");
}

TEST_F(MachinePortsTest, WhereNoInputAnswersTheReasonIsTold)
{
    backends[0].inputs = QStringList({"Valdrin in 1", "Valdrin in 2"});
    EXPECT_EQ(openPort("alsa:Valdrin"), nullptr);
    EXPECT_TRUE(error.contains("Valdrin in 2")) << error.toStdString();
}

TEST_F(MachinePortsTest, APortThatHasGoneIsTold)
{
    EXPECT_EQ(openPort("alsa:Other"), nullptr);
    EXPECT_TRUE(error.contains("alsa:Other")) << error.toStdString();
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(MachinePortsTest, APortThatIsHeldIsTold)
{
    held = QStringList({"Valdrin in"});
    EXPECT_EQ(openPort("alsa:Valdrin"), nullptr);
    EXPECT_EQ(error, "another program holds it");
}

TEST_F(MachinePortsTest, TheMachinesOwnPortsAreReachedByTheMidiLibrary)
{
    const MidiSystem own = midiSystemOfMachine();
    EXPECT_FALSE(own.list().isEmpty()); // systems, with ports or without
    const auto none = own.open({"no such system", "out", "in"});
    ASSERT_FALSE(none);
    EXPECT_TRUE(none.problem().what.contains("no such system"))
        << none.problem().what.toStdString();
}

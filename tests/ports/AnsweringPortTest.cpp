// Which input carries the answers is found out by asking.
#include "ports/AnsweringPort.h"

#include "host/product/PluginLoader.h"
#include "ports/SimulatedPort.h"
#include "tests/ports/SimulatedExchange.h"

#include <gtest/gtest.h>

#include <map>

namespace hx {

namespace {

class Answering : public ::testing::Test {
protected:
    // A product whose answers come by this input, with this fault.
    void plugIn(const char* input, const char* fault)
    {
        m_faults[QString::fromLatin1(input)] = fault;
    }

    Result<AnsweringPort> open(const QStringList& inputs, const Patience& patience = {})
    {
        PortSelection selection;
        selection.address = PortAddress{"core", "Boot loader", inputs.first()};
        for (const QString& input : inputs.mid(1))
            selection.others << PortAddress{"core", "Boot loader", input};
        return openAnswering(
            selection, m_loaded.plugin->device(),
            [this](const PortAddress& address) { return openOne(address); }, patience);
    }

    QStringList asked;

private:
    Result<std::unique_ptr<MidiPort>> openOne(const PortAddress& address)
    {
        asked << address.input;
        if (m_faults.count(address.input) == 0)
            return Problem{ExitCode::NoPort, QStringLiteral("held by another program"), QString(),
                           QString()};
        return std::unique_ptr<MidiPort>(
            std::make_unique<SimulatedPort>(productWith(m_faults[address.input])));
    }

    PluginLoadResult m_loaded = loadPlugin(QStringLiteral(HX_PLUGIN_FILE));
    std::map<QString, const char*> m_faults;
};

} // namespace

TEST_F(Answering, AnInputThatIsTheOnlyOneIsOpenedUnasked)
{
    plugIn("a", "silent");
    EXPECT_TRUE(open({"a"}));
    EXPECT_EQ(asked, QStringList{"a"});
}

TEST_F(Answering, TheFirstInputByWhichTheProductAnswersIsTaken)
{
    plugIn("a", "silent");
    plugIn("b", "noise");
    plugIn("c", "noise");
    const Result<AnsweringPort> found = open({"a", "b", "c"});
    ASSERT_TRUE(found) << found.problem().what.toStdString();
    EXPECT_EQ(found->input, "b");
    EXPECT_EQ(asked, QStringList({"a", "b"}));
}

TEST_F(Answering, AnotherProductIsTakenWhenTheRightOneDoesNotAnswer)
{
    plugIn("a", "silent");
    plugIn("b", "wrong-model");
    EXPECT_EQ(open({"a", "b"})->input, "b");
    plugIn("a", "noise");
    EXPECT_EQ(open({"b", "a"})->input, "a");
}

TEST_F(Answering, EachInputIsAskedThreeTimesAndThenAllAreListed)
{
    plugIn("a", "silent");
    plugIn("b", "silent");
    const Result<AnsweringPort> found = open({"a", "b"});
    ASSERT_FALSE(found);
    EXPECT_EQ(found.problem().what.toStdString(),
              "no answer to core:Boot loader came through any of the inputs that may belong "
              "to it: core:a, core:b; name the one that does with --in-port");
    EXPECT_EQ(asked, QStringList({"a", "b", "a", "b", "a", "b"}));
}

TEST_F(Answering, WithPatienceAnAnswerThatComesLateIsWaitedFor)
{
    plugIn("a", "silent");
    plugIn("b", "delay-reply:1-:7000");
    EXPECT_FALSE(open({"a", "b"}));
    const Result<AnsweringPort> found = open({"a", "b"}, slowHostPatience);
    ASSERT_TRUE(found) << found.problem().what.toStdString();
    EXPECT_EQ(found->input, "b");
}

TEST_F(Answering, AnInputThatCannotBeOpenedEndsTheSearch)
{
    plugIn("a", "silent");
    const Result<AnsweringPort> found = open({"a", "b"});
    ASSERT_FALSE(found);
    EXPECT_EQ(found.problem().what, "held by another program");
}

} // namespace hx

// A part of the sweep that takes few seconds; hxsweep tries all of it.
#include "tests/sweep/Sweep.h"
#include "host/product/PluginLoader.h"
#include "tests/sweep/Pairs.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <tuple>

using namespace sweep;

namespace {

constexpr int leastScenarios = 100000;
constexpr int leastFaultsAtAByte = 15;
constexpr int part = 61; // prime, so that every fault and every byte comes into it
constexpr int partOfPermanent = 37;
constexpr quint64 somePairs = 500;

std::string complaintsOf(const TrialReport& report)
{
    return report.complaints.join("; ").toStdString();
}

class Sweep : public testing::Test {
protected:
    static void SetUpTestSuite() { loaded() = hx::loadPlugin(QStringLiteral(HX_PLUGIN_FILE)); }
    static void TearDownTestSuite() { loaded() = hx::PluginLoadResult(); }

    void SetUp() override
    {
        ASSERT_TRUE(loaded().ok()) << loaded().problem.what.toStdString();
        laboratory = std::make_unique<Laboratory>(device());
    }

    static DeviceInterface& device() { return loaded().plugin->device(); }

    TrialReport tryLine(const char* line)
    {
        QString error;
        const auto scenario = parseScenario(QString::fromLatin1(line), &error);
        EXPECT_TRUE(scenario.has_value()) << error.toStdString();
        return laboratory->tryScenario(scenario.value_or(Scenario()));
    }

    void expectPasses(const Scenario& scenario)
    {
        const TrialReport report = laboratory->tryScenario(scenario);
        EXPECT_TRUE(report.complaints.isEmpty())
            << scenarioText(scenario).toStdString() << ": " << complaintsOf(report);
    }

    std::unique_ptr<Laboratory> laboratory;

private:
    static hx::PluginLoadResult& loaded()
    {
        static hx::PluginLoadResult result;
        return result;
    }
};

} // namespace

TEST_F(Sweep, EveryScenarioOfAPartPasses)
{
    int seen = 0;
    forEachScenario(*laboratory, [&](const Scenario& scenario) {
        if (seen++ % part == 0)
            expectPasses(scenario);
    });
}

TEST_F(Sweep, EveryScenarioOfAPartOfThePermanentFaultsPasses)
{
    int seen = 0;
    forEachPermanentFault(*laboratory, [&](const Scenario& scenario) {
        if (seen++ % partOfPermanent == 0)
            expectPasses(scenario);
    });
}

TEST_F(Sweep, EveryFaultOfASlowSystemEndsHonestly)
{
    int scenarios = 0;
    forEachPortFault(*laboratory, [&](const Scenario& scenario) {
        ++scenarios;
        expectPasses(scenario);
    });
    EXPECT_GE(scenarios, 1300);
}

TEST_F(Sweep, PatienceGetsOverWhatItCanAndEndsTheRestHonestly)
{
    laboratory->setPatience(hx::slowHostPatience);
    forEachPortFault(*laboratory, [&](const Scenario& scenario) { expectPasses(scenario); });
}

// The four that were seen in the field, as a person without and with --slow-host meets them.
TEST_F(Sweep, WhatSlowSystemsWereSeenToDoIsGotOverWithPatience)
{
    const struct {
        const char* line;
        hx::UpdateOutcome usual;
        hx::UpdateOutcome patient;
    } cases[] = {
        {"in 1.6 packets 1000 x*", hx::UpdateOutcome::Succeeded, hx::UpdateOutcome::Succeeded},
        {"in 1.6 packets 1100000 x*", hx::UpdateOutcome::NoAnswer, hx::UpdateOutcome::Succeeded},
        {"out 1.6 packets 340000 x*", hx::UpdateOutcome::Succeeded, hx::UpdateOutcome::Succeeded},
        {"out 1.0 cap 2048 x*", hx::UpdateOutcome::Succeeded, hx::UpdateOutcome::Succeeded},
        {"out 1.0 cap 100 x*", hx::UpdateOutcome::NoAnswer, hx::UpdateOutcome::NoAnswer},
        {"out 4.20 abort x1", hx::UpdateOutcome::PortLost, hx::UpdateOutcome::Succeeded},
        {"out 4.20 abort x*", hx::UpdateOutcome::PortLost, hx::UpdateOutcome::PortLost},
        {"in 1.8 garble 2000000 x*", hx::UpdateOutcome::Succeeded, hx::UpdateOutcome::Succeeded},
        {"in 1.8 garble 5000000 x*", hx::UpdateOutcome::WrongProduct, hx::UpdateOutcome::Succeeded},
    };
    for (const auto& one : cases) {
        laboratory->setPatience({});
        const TrialReport usual = tryLine(one.line);
        EXPECT_EQ(complaintsOf(usual), "") << one.line;
        EXPECT_EQ(usual.outcome, one.usual) << one.line;
        laboratory->setPatience(hx::slowHostPatience);
        const TrialReport patient = tryLine(one.line);
        EXPECT_EQ(complaintsOf(patient), "") << one.line;
        EXPECT_EQ(patient.outcome, one.patient) << one.line;
    }
}

TEST_F(Sweep, EveryPairOfAFewPasses)
{
    const Pairs pairs(*laboratory, 2);
    for (quint64 number = 0; number < somePairs; ++number)
        expectPasses(pairs.pair(number));
}

TEST_F(Sweep, TheSameSeedDrawsTheSamePairsAndAnotherOneOthers)
{
    const Pairs one(*laboratory, 1);
    const Pairs same(*laboratory, 1);
    const Pairs other(*laboratory, 2);
    EXPECT_GE(one.faultCount(), 30000u);
    std::set<QString> lines;
    for (quint64 number = 0; number < somePairs; ++number) {
        const Scenario pair = one.pair(number);
        ASSERT_EQ(pair.faults.size(), 2u);
        EXPECT_NE(faultText(pair.faults[0]), faultText(pair.faults[1]));
        EXPECT_EQ(scenarioText(pair), scenarioText(same.pair(number)));
        EXPECT_NE(scenarioText(pair), scenarioText(other.pair(number)));
        lines.insert(scenarioText(pair));
    }
    EXPECT_EQ(lines.size(), somePairs);
}

// Each kind of fault in each direction, and each message of an update, is among those that stay.
TEST_F(Sweep, PermanentFaultsAreOfEveryKindAndOnEveryTopic)
{
    std::set<std::tuple<Direction, FaultKind, Topic>> met;
    forEachPermanentFault(*laboratory, [&](const Scenario& scenario) {
        const Fault& fault = scenario.faults.front();
        EXPECT_EQ(fault.strikes, 0);
        met.insert(std::make_tuple(fault.direction, fault.kind, fault.topic));
    });
    for (const FaultKind kind : {FaultKind::Drop, FaultKind::Flip, FaultKind::Truncate,
                                 FaultKind::Insert, FaultKind::Delay, FaultKind::Vanish}) {
        for (const Direction direction : {Direction::Out, Direction::In}) {
            for (const Topic topic : allTopics())
                EXPECT_EQ(met.count(std::make_tuple(direction, kind, topic)), 1u);
        }
    }
    EXPECT_EQ(met.count({Direction::Out, FaultKind::UnsteadyWrite, Topic::Closing}), 1u);
}

TEST_F(Sweep, TwoFaultsInOneMessageBothStrike)
{
    // What the sum of a data message cannot tell is found by the file check.
    const TrialReport report = tryLine("out 3.17 flip 40 x1 + out 3.18 flip 40 x1");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_TRUE(report.reason.startsWith("message 3 of 4 was refused for good"))
        << report.reason.toStdString();
    const TrialReport late = tryLine("in 4.3 delay 500000 x1 + in 4.5 drop x1");
    EXPECT_EQ(complaintsOf(late), "");
    EXPECT_EQ(late.outcome, hx::UpdateOutcome::Succeeded);
}

// Late data erased the product while its last answer, true when it was given, was on its way.
TEST_F(Sweep, WhatComesAfterTheLastAnswerIsNotTheHostsToKnow)
{
    const TrialReport report = tryLine("in 10.4 delay 2190000 x2 + out 3.0 delay 2200001 x2");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_FALSE(report.isFalseSuccess);
}

TEST_F(Sweep, APortThatIsGoneSaysMoreThanTheAnswerThatDidNotComeBefore)
{
    const TrialReport report = tryLine("in 9.4 deaf 30000000 x1 + in 10.7 vanish x1");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_EQ(report.outcome, hx::UpdateOutcome::PortLost);
}

// The sum of the file check is the same, the version is another one: only the host sees it.
TEST_F(Sweep, AVersionChangedUnderTheSameSumIsNoSuccess)
{
    const TrialReport report = tryLine("out 5.18 flip 02 x* + out 5.20 flip 02 x*");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_EQ(report.outcome, hx::UpdateOutcome::VerificationFailed);
}

TEST_F(Sweep, CodeOfAnotherKindOnTheWayIsNoSuccess)
{
    const TrialReport report = tryLine("out 9.0 reorder x2 + out 3.6 flip 01 x*");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_NE(report.outcome, hx::UpdateOutcome::Succeeded);
}

TEST_F(Sweep, WhereEveryAnswerIsChangedTheHostSaysWhatTheAnswersSay)
{
    for (const char* line :
         {"in 6.7 answer 02 x1 + in 8.9 flip 01 x*", "in 9.7 merge x1 + in 6.9 flip 01 x*"})
        EXPECT_EQ(complaintsOf(tryLine(line)), "") << line;
}

TEST_F(Sweep, EveryBrokenProductIsFoundAndNoneIsCalledUpdated)
{
    EXPECT_GE(allFlaws().size(), 20u);
    for (const Flaw& flaw : allFlaws()) {
        EXPECT_EQ(complaintsOf(tryLine(flaw.scenario)), "") << flaw.name << ": the sound product";
        laboratory = std::make_unique<Laboratory>(device(), &flaw);
        const TrialReport report = tryLine(flaw.scenario);
        EXPECT_NE(complaintsOf(report), "") << flaw.name;
        EXPECT_NE(report.outcome, hx::UpdateOutcome::Succeeded) << flaw.name;
        laboratory = std::make_unique<Laboratory>(device());
    }
}

TEST_F(Sweep, AChangedVersionDoesNotHideThatTheProductHoldsTheImage)
{
    const TrialReport report = tryLine("in 6.0 power-off x1 + in 9.8 flip 02 x1");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_TRUE(report.productState.startsWith("The product holds the code of the image"))
        << report.productState.toStdString();
}

TEST_F(Sweep, PowerThatFailsAgainWhileAClearMarkIsClearedCallsNothingValid)
{
    const TrialReport report = tryLine("out 3.0 power-cut 4 x* + out 6.0 unsteady-write 0 x*");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_FALSE(report.productState.contains("intact")) << report.productState.toStdString();
}

// A cell failed, and the run ended before the file check; the next one began with the message that
// the product had taken as last.
TEST_F(Sweep, ASecondRunMendsACellThatFailedAfterTheFirstMessage)
{
    const TrialReport report = tryLine("out 3.0 bad-cell 40 x1 + out 4.49 answer 02 x*");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_EQ(report.outcome, hx::UpdateOutcome::Failed);
}

TEST_F(Sweep, APortThatIsGoneAfterARefusalDoesNotHideTheRefusal)
{
    const TrialReport report = tryLine("out 4.6 vanish x1 + out 3.24 answer 02 x1");
    EXPECT_EQ(complaintsOf(report), "");
    EXPECT_EQ(report.outcome, hx::UpdateOutcome::Failed);
    EXPECT_TRUE(report.productState.contains("state is not known"))
        << report.productState.toStdString();
}

TEST_F(Sweep, HasEnoughScenariosAndFaultsAtEveryByte)
{
    int scenarios = 0;
    std::set<QString> lines;
    std::map<std::tuple<Direction, int, int>, std::set<FaultKind>> kinds;
    forEachScenario(*laboratory, [&](const Scenario& scenario) {
        ++scenarios;
        lines.insert(scenarioText(scenario));
        const Fault& fault = scenario.faults.front();
        kinds[{fault.direction, fault.message, fault.byte}].insert(fault.kind);
    });
    EXPECT_GE(scenarios, leastScenarios);
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(scenarios)); // no line stands twice
    for (const Direction direction : {Direction::Out, Direction::In}) {
        int message = 0;
        for (const int size : laboratory->messageSizes(direction)) {
            ++message;
            for (int byte = 0; byte < size; ++byte)
                EXPECT_GE(kinds[std::make_tuple(direction, message, byte)].size(),
                          static_cast<std::size_t>(leastFaultsAtAByte))
                    << message << "." << byte;
        }
    }
}

TEST_F(Sweep, TheUpdateWithoutAFaultHasTenExchanges)
{
    EXPECT_EQ(laboratory->messageSizes(Direction::Out),
              std::vector<int>({6, 8, 146, 62, 25, 7, 6, 8, 8, 8}));
    EXPECT_EQ(laboratory->messageSizes(Direction::In),
              std::vector<int>({17, 12, 10, 10, 10, 10, 17, 12, 12, 12}));
    EXPECT_EQ(laboratory->memoryWrites(), std::vector<int>({0, 0, 115, 38, 0, 3, 0, 0, 0, 0}));
}

TEST_F(Sweep, FaultsEndAsTheyMust)
{
    struct Row {
        const char* line;
        hx::UpdateOutcome outcome;
    };
    using hx::UpdateOutcome;
    const Row rows[] = {
        {"out 1.0 none x1", UpdateOutcome::Succeeded},
        {"out 3.20 flip 01 x1", UpdateOutcome::Succeeded},
        {"out 3.20 flip 01 x*", UpdateOutcome::Failed},
        {"out 3.20 truncate x1", UpdateOutcome::Succeeded},
        {"out 3.20 truncate x*", UpdateOutcome::NoAnswer},
        {"in 4.0 delay 2199999 x1", UpdateOutcome::Succeeded},
        {"in 4.0 delay 2200001 x1", UpdateOutcome::Succeeded},
        {"in 4.8 flip 02 x1", UpdateOutcome::Failed},
        {"in 9.7 flip 01 x1", UpdateOutcome::Succeeded},
        {"in 9.7 flip 01 x*", UpdateOutcome::VerificationFailed},
        {"in 1.10 flip 03 x*", UpdateOutcome::WrongProduct},
        {"in 10.11 vanish x1", UpdateOutcome::PortLost},
        {"out 3.0 power-cut 60 x1", UpdateOutcome::Succeeded},
        {"out 4.0 power-cut 20 x1", UpdateOutcome::Failed},
        {"out 6.0 bad-cell 3 x1", UpdateOutcome::VerificationFailed},
        {"out 3.0 half-write 60 x1", UpdateOutcome::Succeeded},
        {"out 3.0 unsteady-write 2 x*", UpdateOutcome::NoAnswer},
        {"out 6.0 unsteady-write 2 x1", UpdateOutcome::Failed},
        {"in data.8 flip 02 x*", UpdateOutcome::Failed},
        {"out closing.0 truncate x*", UpdateOutcome::NoAnswer},
        {"in stored.7 flip 01 x*", UpdateOutcome::VerificationFailed},
        {"in 3.0 reorder x2", UpdateOutcome::Succeeded},
        {"out 1.0 deaf 30000000 x1", UpdateOutcome::NoAnswer},
    };
    for (const Row& row : rows) {
        const TrialReport report = tryLine(row.line);
        EXPECT_EQ(updateOutcomeText(report.outcome).toStdString(),
                  updateOutcomeText(row.outcome).toStdString())
            << row.line;
        EXPECT_EQ(complaintsOf(report), "") << row.line;
    }
}

TEST_F(Sweep, AScenarioEndsTheSameEveryTime)
{
    const char* line = "out 4.30 delay 2199999 x*";
    const TrialReport first = tryLine(line);
    const TrialReport second = tryLine(line);
    ASSERT_EQ(first.record.size(), second.record.size());
    for (std::size_t i = 0; i < first.record.size(); ++i) {
        EXPECT_EQ(first.record[i].time, second.record[i].time);
        EXPECT_EQ(first.record[i].bytes, second.record[i].bytes);
    }
}

TEST(ScenarioLine, ReadsBackAsItWasWritten)
{
    for (const FaultKind kind : allFaultKinds()) {
        const Scenario scenario{{{Direction::In, 9, 7, kind, 0, 0}}};
        QString error;
        const QString line = scenarioText(scenario);
        const auto back = parseScenario(line, &error);
        ASSERT_TRUE(back.has_value()) << error.toStdString();
        EXPECT_EQ(back->faults.front().kind, kind);
        EXPECT_EQ(scenarioText(*back), line);
    }
    for (const Topic topic : allTopics()) {
        const Scenario scenario{{{Direction::Out, 1, 7, FaultKind::Drop, 0, 0, topic}}};
        QString error;
        const auto back = parseScenario(scenarioText(scenario), &error);
        ASSERT_TRUE(back.has_value()) << error.toStdString();
        EXPECT_EQ(back->faults.front().topic, topic);
    }
    QString error;
    const auto pair = parseScenario("out 3.17 flip 40 x2 + in data.0 drop x*", &error);
    ASSERT_TRUE(pair.has_value());
    EXPECT_EQ(scenarioText(*pair), "out 3.17 flip 40 x2 + in data.0 drop x*");
    const auto flip = parseScenario("out 3.17 flip 40 x2", &error);
    ASSERT_TRUE(flip.has_value());
    EXPECT_EQ(flip->faults.front().value, 0x40);
    EXPECT_EQ(flip->faults.front().strikes, 2);
    EXPECT_EQ(scenarioText(*flip), "out 3.17 flip 40 x2");
}

TEST(ScenarioLine, SaysWhichPieceIsWrong)
{
    for (const char* line :
         {"", "up 3.17 drop x1", "out 3 drop x1", "out 0.1 drop x1", "out 3.17 break x1",
          "out 3.17 flip x1", "out 3.17 flip 40", "out 3.17 drop x0", "out 3.17 drop x1 more",
          "out data.17 drop x1", "out 3.17 drop x1 +", "out 3.17 drop x1 + out 4.0 none"}) {
        QString error;
        EXPECT_FALSE(parseScenario(QString::fromLatin1(line), &error).has_value()) << line;
        EXPECT_TRUE(error.contains("a scenario reads")) << line;
    }
}

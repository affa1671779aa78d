// A part of the sweep that takes few seconds; hxsweep tries all of it.
#include "tests/sweep/Sweep.h"
#include "host/product/PluginLoader.h"

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

class Sweep : public testing::Test {
protected:
    static void SetUpTestSuite() { loaded() = hx::loadPlugin(QStringLiteral(HX_PLUGIN_FILE)); }
    static void TearDownTestSuite() { loaded() = hx::PluginLoadResult(); }

    void SetUp() override
    {
        ASSERT_TRUE(loaded().ok()) << loaded().error.toStdString();
        laboratory = std::make_unique<Laboratory>(loaded().plugin->device());
    }

    TrialReport tryLine(const char* line)
    {
        QString error;
        const auto scenario = parseScenario(QString::fromLatin1(line), &error);
        EXPECT_TRUE(scenario.has_value()) << error.toStdString();
        return laboratory->tryScenario(scenario.value_or(Scenario()));
    }

    std::unique_ptr<Laboratory> laboratory;

private:
    static hx::PluginLoadResult& loaded()
    {
        static hx::PluginLoadResult result;
        return result;
    }
};

std::string complaintsOf(const TrialReport& report)
{
    return report.complaints.join("; ").toStdString();
}

} // namespace

TEST_F(Sweep, EveryScenarioOfAPartPasses)
{
    int seen = 0;
    forEachScenario(*laboratory, [&](const Scenario& scenario) {
        if (seen++ % part != 0)
            return;
        const TrialReport report = laboratory->tryScenario(scenario);
        EXPECT_TRUE(report.complaints.isEmpty())
            << scenarioText(scenario).toStdString() << ": " << complaintsOf(report);
    });
}

TEST_F(Sweep, HasEnoughScenariosAndFaultsAtEveryByte)
{
    int scenarios = 0;
    std::set<QString> lines;
    std::map<std::tuple<Direction, int, int>, std::set<FaultKind>> kinds;
    forEachScenario(*laboratory, [&](const Scenario& scenario) {
        ++scenarios;
        lines.insert(scenarioText(scenario));
        kinds[{scenario.direction, scenario.message, scenario.byte}].insert(scenario.fault);
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
        const Scenario scenario{Direction::In, 9, 7, kind, 0, 0};
        QString error;
        const QString line = scenarioText(scenario);
        const auto back = parseScenario(line, &error);
        ASSERT_TRUE(back.has_value()) << error.toStdString();
        EXPECT_EQ(back->fault, kind);
        EXPECT_EQ(scenarioText(*back), line);
    }
    QString error;
    const auto flip = parseScenario("out 3.17 flip 40 x2", &error);
    ASSERT_TRUE(flip.has_value());
    EXPECT_EQ(flip->value, 0x40);
    EXPECT_EQ(flip->strikes, 2);
    EXPECT_EQ(scenarioText(*flip), "out 3.17 flip 40 x2");
}

TEST(ScenarioLine, SaysWhichPieceIsWrong)
{
    for (const char* line :
         {"", "up 3.17 drop x1", "out 3 drop x1", "out 0.1 drop x1", "out 3.17 break x1",
          "out 3.17 flip x1", "out 3.17 flip 40", "out 3.17 drop x0", "out 3.17 drop x1 more"}) {
        QString error;
        EXPECT_FALSE(parseScenario(QString::fromLatin1(line), &error).has_value()) << line;
        EXPECT_TRUE(error.contains("a scenario reads")) << line;
    }
}

// Work in a process of its own, and what a plugin is asked there.
#include "host/product/PluginTrial.h"

#include "tests/host/StubPlugin.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <vector>

#include <unistd.h>

using namespace hx;

namespace {

class AskedPlugin : public StubPlugin {
public:
    QString productName() const override { return QStringLiteral("Asked"); }
    bool isCodeValid(CodeType kind) override
    {
        kinds.push_back(kind);
        return bus != nullptr && !bus->transact(BusData("F0 F7"), QString(), 1).bytes.isEmpty();
    }
    QString lookupStr(QString key) const override
    {
        keys.push_back(key);
        return QString();
    }

    std::vector<CodeType> kinds;
    mutable std::vector<QString> keys;
};

} // namespace

TEST(PluginTrial, SaysNothingOfWorkThatComesToItsEnd)
{
    EXPECT_EQ(trialProblem([] {}), "");
}

TEST(PluginTrial, SaysWhichSignalEndedTheWork)
{
    EXPECT_EQ(trialProblem([] { std::raise(SIGTERM); }), "it crashed (Terminated)");
}

TEST(PluginTrial, SaysThatTheWorkEndedTheProgram)
{
    EXPECT_EQ(trialProblem([] { _exit(7); }), "it ended the program with exit code 7");
}

TEST(PluginTrial, AsksAPluginEverythingOverABusThatIsSilent)
{
    AskedPlugin plugin;
    askEverything(plugin);
    EXPECT_EQ(plugin.bus, nullptr);
    EXPECT_TRUE(plugin.lastError.endsWith(":322 - Asked")) << plugin.lastError.toStdString();
    EXPECT_EQ(plugin.kinds, (std::vector<CodeType>{CodeType::Fwu, CodeType::Fwd}));
    EXPECT_EQ(plugin.keys, std::vector<QString>{QStringLiteral("identify.response")});
    EXPECT_EQ(plugin.asked, 1);
}

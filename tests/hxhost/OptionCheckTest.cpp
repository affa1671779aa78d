// Options that are wrong are refused before anything is sent.
#include "tests/hxhost/HxHost.h"

#include "apps/hxhost/report/ResultSchema.h"

namespace {

class OptionCheck : public HxHostTest {
protected:
    // Refused as a wrong use, with nothing sent and nothing left behind by the product.
    void expectRefused(QStringList words, const char* what) const
    {
        const QString state = path("state");
        const QString trace = path("trace");
        words << "--trace" << trace;
        for (QString& word : words)
            word.replace("STATE", state);
        const ProgramResult ended = hxhost(words);
        EXPECT_EQ(ended.exitCode, 2) << words.join(' ').toStdString();
        EXPECT_TRUE(ended.err.startsWith(QByteArray("error: ") + what)) << ended.err.toStdString();
        EXPECT_FALSE(QFile::exists(state)) << words.join(' ').toStdString();
        EXPECT_FALSE(QFile::exists(trace)) << words.join(' ').toStdString();
    }
};

} // namespace

TEST_F(OptionCheck, FieldThatNoResultHasIsRefusedBeforeAnythingIsSent)
{
    const QString syx = image();
    for (const QString& json : {QString("--json"), QString("-q")}) {
        expectRefused({"update", syx, "--port", "simulator:STATE", "--field", "colour", json},
                      "the result of 'update' has no value \"colour\"\n");
        expectRefused({"verify", "--port", "simulator:STATE", "--field", "checksum.colour", json},
                      "the result of 'verify' has no value \"checksum.colour\"\n");
        expectRefused({"info", "--port", "simulator:STATE", "--field", "version.", json},
                      "the result of 'info' has no value \"version.\"\n");
        expectRefused({"recover", "--port", "simulator:STATE", "--field", "0", json},
                      "the result of 'recover' has no value \"0\"\n");
    }
}

TEST_F(OptionCheck, FieldThatAnotherResultOfTheCommandHasIsAnEmptyLine)
{
    const ProgramResult ended =
        hxhost({"update", image(), "--port", "simulator", "--field", "messages.failed", "-q"});
    EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
    EXPECT_EQ(ended.out.toStdString(), "\n");
}

TEST_F(OptionCheck, EveryNameThatIsListedIsAField)
{
    for (const char* command :
         {"update", "batch", "verify", "identify", "info", "recover", "image build",
          "image inspect", "inspect", "check", "ports", "monitor", "simulate", "trace"}) {
        const QStringList names = hx::host::resultFields(command);
        EXPECT_GE(names.size(), 3) << command;
        for (const QString& name : names)
            EXPECT_TRUE(hx::host::resultHasField(command, name))
                << command << ' ' << name.toStdString();
        EXPECT_FALSE(hx::host::resultHasField(command, "colour")) << command;
    }
    EXPECT_TRUE(hx::host::resultHasField("update", "steps.2.found"));
    EXPECT_FALSE(hx::host::resultHasField("update", "steps.found"));
    EXPECT_FALSE(hx::host::resultHasField("update", ""));
}

TEST_F(OptionCheck, FaultIsRefusedWhereNoSimulatedProductIs)
{
    const QString syx = image();
    const QString trace = path("session");
    ASSERT_EQ(hxhost({"identify", "--port", "simulator", "--trace", trace}).exitCode, 0);
    expectRefused({"update", syx, "--fault", "silent"},
                  "--fault cannot be given for the product's own port: only the simulated product "
                  "has faults on demand\n");
    expectRefused({"identify", "--port", "Valdrin", "--fault", "silent"},
                  "--fault cannot be given for the port \"Valdrin\": ");
    expectRefused({"identify", "--port", "simulators", "--fault", "silent"},
                  "--fault cannot be given for the port \"simulators\": ");
    expectRefused({"identify", "--port", "replay:" + trace, "--fault", "silent", "--json"},
                  "--fault cannot be given for the port \"replay:");
    expectRefused({"identify", "--port", "Valdrin", "--serial", "Unit0001"},
                  "--serial cannot be given for the port \"Valdrin\": only the simulated product "
                  "has a serial number of your choice\n");
    expectRefused({"monitor", "--fault", "noise"}, "--fault cannot be given for the product's ");
}

TEST_F(OptionCheck, InPortIsRefusedWhereItWouldNotBeUsed)
{
    expectRefused({"identify", "--port", "simulator", "--in-port", "Valdrin"},
                  "--in-port \"Valdrin\" cannot be given for the port \"simulator\", whose answers "
                  "come by itself\n");
    expectRefused({"identify", "--port", "replay:none.trace", "--in-port", "Valdrin"},
                  "--in-port \"Valdrin\" cannot be given for the port \"replay:none.trace\", ");
}

// A plugin whose dictionary lacks something: what would be read by it is unknown, and nothing is guessed.
#include "host/product/ProductReadings.h"

#include "tests/host/Bytes.h"
#include "tests/host/StubPlugin.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScriptedPort.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

class PatientPlugin : public StubPlugin {
public:
    int lookupInt(QString) const override { return 100; } // milliseconds
};

class IncompletePlugin : public testing::Test {
protected:
    void answerWith(const char* bytes)
    {
        port.answer = [=](const QByteArray&, int) { port.arrive(hex(bytes), 1000); };
    }

    ProductReader reader() { return {plugin, bus}; }

    PatientPlugin plugin;
    ScriptedPort port;
    PortBus bus{port};
};

} // namespace

TEST_F(IncompletePlugin, WithoutCommandsAsksNothing)
{
    EXPECT_EQ(reader().identity(3).state, ReadingState::Unknown);
    EXPECT_EQ(reader().identity().reason, "the plugin's dictionary has no \"identify\"");
    EXPECT_EQ(reader().version().state, ReadingState::Unknown);
    EXPECT_EQ(reader().version().reason, "the plugin's dictionary has no \"version.read.user\"");
    EXPECT_TRUE(port.sent.empty());
}

TEST_F(IncompletePlugin, WithoutAPatternForTheAnswerAsksNothing)
{
    plugin.texts = {{"identify", "F07E7F0601F7"}};
    EXPECT_EQ(reader().identity().reason, "the plugin's dictionary has no \"identify.response\"");
    EXPECT_TRUE(port.sent.empty());
}

TEST_F(IncompletePlugin, WhosePatternDoesNotShowTheValueGivesNone)
{
    plugin.texts = {{"gender.read", "F07B12052FF7"}, {"gender.read.response", "F07B12052F..*F7"}};
    answerWith("F07B12052F0102F7");
    const GenderReading gender = reader().gender();
    EXPECT_EQ(gender.state, ReadingState::Malformed);
    EXPECT_EQ(gender.reason, "the pattern \"F07B12052F..*F7\" does not show where the value is");
    EXPECT_EQ(gender.raw.bytes, hex("F07B12052F0102F7"));
}

TEST_F(IncompletePlugin, WithoutTheOffsetsOfACodeImageDoesNotCallItPresent)
{
    plugin.texts = {{"id.dsp0", "F07B120508F7"},
                    {"id.dsp0.response", "F07B120508....F7"},
                    {"id.dsp0.response.invalid", "F07B12050802F7"},
                    {"id.dsp*.response", "F07B120508....F7"}};
    answerWith("F07B1205080102F7");
    const CodeImageReading image = reader().codeImage(0);
    EXPECT_EQ(image.state, ReadingState::Unknown);
    EXPECT_EQ(image.reason, "the plugin's dictionary has no \"id.dsp.offset.code_ver\"");
    EXPECT_FALSE(image.present);
}

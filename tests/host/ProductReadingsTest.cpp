#include "host/product/ProductReadings.h"

#include "tests/host/Bytes.h"
#include "tests/host/ImageSamples.h"
#include "tests/host/ProductSession.h"
#include "tests/host/StubPlugin.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScriptedPort.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

// The real plugin over a port on which a test answers each command itself.
class ScriptedReadings : public testing::Test {
protected:
    ScriptedReadings()
    {
        loaded = loadPlugin(QStringLiteral(HX_PLUGIN_FILE));
        loaded.plugin->device().bus = &bus;
    }

    void answerWith(const char* bytes)
    {
        port.answer = [=](const QByteArray&, int) { port.arrive(hex(bytes), 1000); };
    }

    ProductReader reader() { return {loaded.plugin->device(), bus}; }

    ScriptedPort port;
    PortBus bus{port};
    PluginLoadResult loaded;
};

// Its pattern fits the product 0x120005 of the maker 7B alone, and of that the versions that begin
// with 1.
class VersionOnePlugin : public StubPlugin {
public:
    VersionOnePlugin()
    {
        supported = 0x120005;
        texts = {{"identify", "F07E7F0601F7"},
                 {"identify.response", "F07E..06027B1200050031......F7"},
                 {"version.read.user", "F07B12052EF7"},
                 {"version.read.user.crc", "F07B120530F7"}};
    }
    int lookupInt(QString) const override { return 100; }
};

} // namespace

TEST(ProductReadings, ReadsEverythingFromAProduct)
{
    ProductSession session;
    ProductReader reader(session.device(), session.bus);
    const ProductInfo info = readProductInfo(reader);

    EXPECT_TRUE(info.identity.good()) << info.identity.reason.toStdString();
    EXPECT_EQ(info.identity.manufacturer, hex("006B2D"));
    EXPECT_EQ(info.identity.fidpid, 0x300041u);
    EXPECT_EQ(info.identity.version, "1.0.2.3");
    EXPECT_TRUE(reader.isServed(info.identity));
    EXPECT_EQ(info.gender.fidpid, 0x300041u);
    EXPECT_EQ(info.version.version, "1.0.2.3");
    EXPECT_EQ(info.version.versionBytes, hex("31303233"));
    EXPECT_TRUE(info.stored.good());
    EXPECT_EQ(info.stored.groups, info.calculated.groups);
    EXPECT_EQ(info.stored.groups.size(), 4);
    EXPECT_EQ(info.esn.number, "30410001");
    EXPECT_TRUE(info.dsp0.present);
    EXPECT_EQ(info.dsp0.version, 1023);
    EXPECT_EQ(info.dsp0.size, 256u);
    EXPECT_EQ(info.dsp0.responseFlag, 0);
    EXPECT_EQ(info.dsp0.bankStatus, 1);
    EXPECT_TRUE(info.dsp1.good());
    EXPECT_FALSE(info.dsp1.present);
    EXPECT_TRUE(session.log.lines().isEmpty());
}

TEST(ProductReadings, PutsThePluginsOwnAnswersBesideTheHosts)
{
    ProductSession session;
    const PluginAnswers answers = askPlugin(session.device());
    EXPECT_EQ(answers.versionNumber, 1023);
    EXPECT_TRUE(answers.esn.isNull());
    // The plugin compares the echoed command bytes too: equal checksums count as different.
    EXPECT_FALSE(answers.fwuValid);
    EXPECT_FALSE(answers.fwdValid);
    // Only the three keys that the dictionary lacks are logged, and no wait was made for them.
    EXPECT_EQ(session.log.texts().size(), 3);
    EXPECT_LT(session.port.clock().now(), 1000 * 1000);
}

TEST(ProductReadings, StopsAfterAnIdentityThatDoesNotCome)
{
    ProductSession session({"silent"});
    ProductReader reader(session.device(), session.bus);
    const ProductInfo info = readProductInfo(reader);
    EXPECT_EQ(info.identity.state, ReadingState::NoAnswer);
    EXPECT_TRUE(info.identity.reason.startsWith("no answer: waited 2200 ms for identify.response"))
        << info.identity.reason.toStdString();
    EXPECT_EQ(info.gender.state, ReadingState::NotRead);
}

TEST(ProductReadings, SaysThatThePortIsGone)
{
    ProductSession session({"vanish"});
    ProductReader reader(session.device(), session.bus);
    EXPECT_EQ(reader.identity().state, ReadingState::PortLost);
    EXPECT_EQ(reader.version().state, ReadingState::PortLost);
}

TEST(ProductReadings, TellsARefusalFromNoAnswer)
{
    ProductSession session({"refuse"});
    ProductReader reader(session.device(), session.bus);
    for (const Reading& reading : std::initializer_list<Reading>{
             reader.version(), reader.storedChecksum(), reader.calculatedChecksum(), reader.esn(),
             reader.gender(), reader.codeImage(0), reader.codeImage(1)}) {
        EXPECT_EQ(reading.state, ReadingState::Refused) << reading.key.toStdString();
        EXPECT_TRUE(reading.reason.startsWith("the product refused it: F0 00 6B 2D 30 41"))
            << reading.reason.toStdString();
    }
    EXPECT_LT(session.port.clock().now(), 100 * 1000);
}

TEST(ProductReadings, AsksAgainWhileNoAnswerComes)
{
    ProductSession session({"drop-reply:1-2", "drop-reply:4-6"});
    ProductReader reader(session.device(), session.bus);
    EXPECT_EQ(reader.version().state, ReadingState::Good);
    EXPECT_EQ(reader.version().state, ReadingState::NoAnswer);
    EXPECT_EQ(reader.version().state, ReadingState::Good);
}

TEST(ProductReadings, ReadsThroughNoise)
{
    SimulatedPortOptions options;
    options.chunkSize = 3;
    ProductSession session({"noise"}, sim::SimulatedProductSettings(), options);
    ProductReader reader(session.device(), session.bus);
    EXPECT_TRUE(readProductInfo(reader).dsp0.present);
}

TEST_F(ScriptedReadings, TakesAChecksumThatBeginsWith46ForAChecksum)
{
    answerWith("F0006B2D304130 46 01 02 03 F7");
    const ChecksumReading stored = reader().storedChecksum();
    EXPECT_TRUE(stored.good()) << stored.reason.toStdString();
    EXPECT_EQ(stored.groups, hex("46010203"));
    EXPECT_EQ(stored.value, 0x46u << 21 | 1u << 14 | 2u << 7 | 3u);
}

TEST_F(ScriptedReadings, TakesASerialNumberThatBeginsWith46ForANumber)
{
    answerWith("F0006B2D304121 4641424344454647 F7");
    EXPECT_EQ(reader().esn().number, "FABCDEFG");
}

TEST_F(ScriptedReadings, FindsAReplyOfTheWrongLengthMalformed)
{
    answerWith("F0006B2D304130 01 02 03 04 05 F7");
    const ChecksumReading stored = reader().storedChecksum();
    EXPECT_EQ(stored.state, ReadingState::Malformed);
    EXPECT_EQ(stored.reason,
              "the reply F0 00 6B 2D 30 41 30 01 02 03 04 05 F7 has 13 bytes; expected 12");
    EXPECT_TRUE(stored.groups.isEmpty());

    answerWith("F0006B2D30414208 01 F7");
    EXPECT_EQ(reader().codeImage(0).state, ReadingState::Malformed);
}

TEST_F(ScriptedReadings, SaysThatThereIsNoCodeImage)
{
    answerWith("F0006B2D30414208 02 F7");
    EXPECT_TRUE(reader().codeImage(0).good());
    EXPECT_FALSE(reader().codeImage(0).present);
}

TEST_F(ScriptedReadings, DoesNotTakeTheReplyOfAnotherCommand)
{
    answerWith("F0006B2D304131 01 02 03 04 F7");
    EXPECT_EQ(reader().storedChecksum().state, ReadingState::NoAnswer);
}

TEST_F(ScriptedReadings, WaitsPastOthersForAProductThatThePluginServes)
{
    answerWith("F07E0006020041001000020031303030F7" // another maker, three-byte number
               "F07E000602006B2D3000410031303233F7");
    const IdentityReading identity = reader().identity();
    EXPECT_EQ(identity.fidpid, 0x300041u);
    EXPECT_TRUE(reader().isServed(identity));
}

TEST_F(ScriptedReadings, ReportsAnotherProductWhenOnlyThatAnswers)
{
    answerWith("F07E000602006B2D3000420031303233F7");
    const IdentityReading identity = reader().identity();
    EXPECT_TRUE(identity.good());
    EXPECT_EQ(identity.fidpid, 0x300042u);
    EXPECT_FALSE(reader().isServed(identity));
}

TEST_F(ScriptedReadings, BelievesAnotherProductThatAnswersTheSameTwice)
{
    answerWith("F07E000602006B2D3000420031303233F7");
    EXPECT_EQ(reader().identity(10).fidpid, 0x300042u);
    EXPECT_EQ(port.sent.size(), 2u);
}

TEST_F(ScriptedReadings, DoesNotBelieveAnotherProductThatAnswersDifferentlyEachTime)
{
    port.answer = [this](const QByteArray&, int index) {
        static const char* const models[] = {"42", "43", "41"};
        port.arrive(hex("F07E000602006B2D3000") + hex(models[index]) + hex("0031303233F7"), 1000);
    };
    const IdentityReading identity = reader().identity();
    EXPECT_EQ(identity.fidpid, 0x300041u);
    EXPECT_EQ(port.sent.size(), 3u);
}

// The plugin's pattern has room for a manufacturer of three bytes alone.
TEST_F(ScriptedReadings, TellsAnotherProductThatThePatternKeepsOut)
{
    answerWith("F07E00060241010002 0031303030F7");
    const IdentityReading identity = reader().identity();
    EXPECT_EQ(identity.state, ReadingState::OtherProduct);
    EXPECT_EQ(identity.reason, "something answered, but not as this plugin's product: "
                               "F0 7E 00 06 02 41 01 00 02 00 31 30 30 30 F7");
    EXPECT_EQ(identity.manufacturer, hex("41"));
    EXPECT_EQ(identity.fidpid, 0x010002u);
    EXPECT_FALSE(reader().isServed(identity));
}

TEST_F(ScriptedReadings, AsksOnPastAProductThatThePatternKeepsOut)
{
    port.answer = [this](const QByteArray&, int index) {
        port.arrive(hex("F07E00060241010002 0031303030F7"), 1000);
        if (index == 7)
            port.arrive(hex("F07E000602006B2D3000410031303233F7"), 2000);
    };
    const IdentityReading identity = reader().identity(10);
    EXPECT_TRUE(reader().isServed(identity));
    EXPECT_EQ(port.sent.size(), 8u);
}

// It has the maker and the numbers of a served one: that it is another product is not known.
TEST(ProductReadings, AReplyWithTheRightNumbersThatThePatternKeepsOutIsNoAnswer)
{
    VersionOnePlugin plugin;
    ScriptedPort port;
    PortBus bus(port);
    port.answer = [&](const QByteArray&, int) {
        port.arrive(hex("F07E0006027B12000500 32303030F7"), 1000);
    };
    ProductReader reader(plugin, bus);
    const IdentityReading identity = reader.identity();
    EXPECT_EQ(reader.product().manufacturer(), hex("7B"));
    EXPECT_EQ(identity.state, ReadingState::NoAnswer);
    EXPECT_EQ(identity.reason, "something answered, but not as this plugin's product: "
                               "F0 7E 00 06 02 7B 12 00 05 00 32 30 30 30 F7");
}

TEST_F(ScriptedReadings, TheSameNumbersOfAnotherMakerAreAnotherProduct)
{
    answerWith("F07E000602000102300041 0031303233F7");
    const IdentityReading identity = reader().identity();
    EXPECT_EQ(identity.fidpid, 0x300041u);
    EXPECT_FALSE(reader().isServed(identity));
}

TEST_F(ScriptedReadings, AnInterruptEndsAReading)
{
    std::atomic<bool> flag{true};
    bus.watchInterrupt(&flag);
    EXPECT_EQ(reader().version().state, ReadingState::Interrupted);
    EXPECT_EQ(reader().identity().state, ReadingState::Interrupted);
}

TEST(IdentityReply, ReadsBothFormsOfManufacturer)
{
    const IdentityReading longForm = parseIdentity(HxMidiData(hex("F07E050602006B2D30004100"
                                                                  "31303233F7")));
    EXPECT_EQ(longForm.manufacturer, hex("006B2D"));
    EXPECT_EQ(longForm.version, "1.0.2.3");
    const IdentityReading shortForm = parseIdentity(HxMidiData(hex("F07E0506024130004100"
                                                                   "31303233F7")));
    EXPECT_EQ(shortForm.manufacturer, hex("41"));
    EXPECT_EQ(shortForm.fidpid, 0x300041u);
    EXPECT_EQ(shortForm.versionBytes, hex("31303233"));
}

TEST(IdentityReply, KeepsTheHighHalvesOfFamilyAndModel)
{
    const IdentityReading identity = parseIdentity(HxMidiData(hex("F07E050602006B2D30014101"
                                                                  "31303233F7")));
    EXPECT_EQ(identity.fidpid, 0xB000C1u);
}

TEST(IdentityReply, RefusesAnythingElse)
{
    for (const char* text : {"", "F0F7", "F07E000602", "F07E000602006B2D300041003130323334F7",
                             "F07E00060100006B2D3000410031303233F7"}) {
        const IdentityReading identity = parseIdentity(HxMidiData(hex(text)));
        EXPECT_EQ(identity.state, ReadingState::Malformed) << text;
        EXPECT_FALSE(identity.reason.isEmpty());
    }
}

TEST(VersionText, ShowsBytesThatAreNoTextAsHex)
{
    EXPECT_EQ(versionTextOf("1023"), "1.0.2.3");
    EXPECT_EQ(versionTextOf(hex("01000203")), "01 00 02 03");
    EXPECT_EQ(versionTextOf(QByteArray()), "");
}

TEST(ReadingState, HasAWordForEachState)
{
    QStringList words;
    for (int i = 0; i <= static_cast<int>(ReadingState::Unknown); ++i)
        words << readingStateText(static_cast<ReadingState>(i));
    EXPECT_EQ(words.removeDuplicates(), 0);
}

// The protocol dictionary through the plugin's three lookups.
#include "plugin/ValdrinBootInterface.h"
#include "tests/support/FakeBus.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

namespace {

struct TextEntry {
    const char* key;
    const char* compact;
};

// Every text of the dictionary, written out in the form in which it is read.
// clang-format off
const TextEntry textEntries[] = {
    {"reset", "F0006B2D30411B0958F7"},
    {"identify", "F07E7F0601F7"},
    {"identify.response", "F07E..0602......................F7"},
    {"gender", "F0006B2D30412FF7"},
    {"gender.response", "F0006B2D30412F00vv00vvF7"},
    {"id.dsp0", "F0006B2D30414208F7"},
    {"id.dsp1", "F0006B2D30414209F7"},
    {"id.dsp*.response", "F0006B2D3041420[89]..........................F7"},
    {"id.dsp0.response", "F0006B2D30414208..*F7"},
    {"id.dsp1.response", "F0006B2D30414209..........................F7"},
    {"id.dsp0.response.invalid", "F0006B2D3041420802F7"},
    {"id.dsp1.response.invalid", "F0006B2D3041420902F7"},
    {"rawgender.read", "F0006B2D3041420D0FNIB24F7"},
    {"rawgender.read.response", "F0006B2D3041420D................................................................F7"},
    {"version.read.user.crc", "F0006B2D304130F7"},
    {"version.read.user.crc.response", "F0006B2D304130........"},
    {"version.calc.user.crc", "F0006B2D304131F7"},
    {"version.calc.user.crc.response", "F0006B2D304131........"},
    {"esn.read", "F0006B2D304121F7"},
    {"esn.read.response", "F0006B2D304121................F7"},
    {"loader.set.dfu", "F0006B2D30411C01F7"},
    {"loader.set.user", "F0006B2D30411C00F7"},
    {"loader.set.boot", "F0006B2D30411C02F7"},
    {"version.read.user", "F0006B2D30412EF7"},
    {"version.read.user.response", "(F0006B2D30..2E........F7|F0006B2D30..2E46F7)"},
    {"gender.read", "F0006B2D30412FF7"},
    {"gender.read.response", "(F0006B2D30412F........F7|F0006B2D30412F46F7)"},
    {"fwupdate.fwu.response.any", "F0006B2D30414[23]0C..F7"},
    {"fwupdate.fwu.response.good", "F0006B2D30..4[23]0C00F7"},
    {"fwupdate.fwu.response.bad", "F0006B2D30..4[23]0C01F7"},
    {"fwupdate.fwu.response.failed", "F0006B2D30..4[23]0C02F7"},
    {"fwupdate.fwu.filecheck", "F0006B2D3041430C................................F7"},
    {"fwupdate.fwd.filecheck", "F0006B2D30..420C................................F7"},
    {"fwupdate.fwd.response.any", "F0006B2D30414[23]0C..F7"},
    {"fwupdate.fwd.response.good", "F0006B2D30..4[23]0C00F7"},
    {"fwupdate.fwd.response.bad", "F0006B2D30..4[23]0C01F7"},
    {"fwupdate.fwd.response.failed", "F0006B2D30..4[23]0C02F7"},
};
// clang-format on

struct NumberEntry {
    const char* key;
    int value;
};

const NumberEntry numberEntries[] = {
    {"id.dsp.offset.response_flag", 10}, {"id.dsp.offset.bank_status", 20},
    {"id.dsp.offset.code_size", 12},     {"id.dsp.offset.code_ver", 8},
    {"command.timeout.ms", 2200},        {"command.timeout.s", 2},
};

class ProtocolTable : public testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(log.onlyDefaultDebug()); }

    ValdrinBootInterface plugin;
    LogCapture log;
};

QString missingKeyLine(const char* key)
{
    return QStringLiteral("ERROR: Missing MIDI Protocol for key:  \"%1\"").arg(QLatin1String(key));
}

} // namespace

TEST_F(ProtocolTable, holdsExactly43Keys)
{
    EXPECT_EQ(plugin.protocolMap.size(), 43);
    EXPECT_EQ(std::size(textEntries) + std::size(numberEntries), 43U);
}

TEST_F(ProtocolTable, everyTextIsStoredInCompactForm)
{
    for (const TextEntry& entry : textEntries) {
        const QVariant value = plugin.lookup(QLatin1String(entry.key));
        EXPECT_EQ(value.userType(), QMetaType::QString) << entry.key;
        EXPECT_EQ(value.toString(), QLatin1String(entry.compact)) << entry.key;
        EXPECT_EQ(plugin.lookupStr(QLatin1String(entry.key)), QLatin1String(entry.compact));
    }
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(ProtocolTable, noTextHoldsABlank)
{
    for (const QVariant& value : qAsConst(plugin.protocolMap))
        EXPECT_FALSE(value.toString().contains(QLatin1Char(' '))) << value.toString().toStdString();
}

TEST_F(ProtocolTable, everyNumberIsStoredAsInt)
{
    for (const NumberEntry& entry : numberEntries) {
        EXPECT_EQ(plugin.lookup(QLatin1String(entry.key)).userType(), QMetaType::Int) << entry.key;
        EXPECT_EQ(plugin.lookupInt(QLatin1String(entry.key)), entry.value) << entry.key;
    }
}

TEST_F(ProtocolTable, aNumberReadAsTextIsDecimal)
{
    EXPECT_EQ(plugin.lookupStr("command.timeout.ms"), "2200");
}

TEST_F(ProtocolTable, aTextReadAsNumberIsZeroAndNotLogged)
{
    for (const TextEntry& entry : textEntries)
        EXPECT_EQ(plugin.lookupInt(QLatin1String(entry.key)), 0) << entry.key;
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(ProtocolTable, theLongRawIdentifierPatternReplacesTheShortOne)
{
    const QString pattern = plugin.lookupStr("rawgender.read.response");
    EXPECT_EQ(pattern, QString("F0006B2D3041420D") + QString("..").repeated(32) + "F7");
    EXPECT_EQ(pattern.size(), 2 * 41);
}

TEST_F(ProtocolTable, aMissingKeyIsLoggedOnceByEachLookup)
{
    EXPECT_FALSE(plugin.lookup("get.esn.cmd").isValid());
    EXPECT_EQ(log.texts(), QStringList{missingKeyLine("get.esn.cmd")});
    EXPECT_EQ(plugin.lookupInt("get.esn.cmd"), 0);
    EXPECT_EQ(plugin.lookupStr("get.esn.cmd"), QString());
    EXPECT_EQ(log.texts().size(), 3);
    EXPECT_EQ(log.texts().at(1), missingKeyLine("get.esn.cmd"));
    EXPECT_EQ(log.texts().at(2), missingKeyLine("get.esn.cmd"));
}

TEST_F(ProtocolTable, keysAreCaseSensitive)
{
    EXPECT_FALSE(plugin.lookup("RESET").isValid());
    EXPECT_EQ(log.texts(), QStringList{missingKeyLine("RESET")});
}

TEST_F(ProtocolTable, theKeysOfTheSerialNumberReadStayMissing)
{
    for (const char* key : {"get.esn.cmd", "get.esn.rtval.response", "get.esn.rtval.offset"})
        EXPECT_FALSE(plugin.protocolMap.contains(QLatin1String(key))) << key;
}

TEST_F(ProtocolTable, aPresentKeyWithAnInvalidValueIsLoggedToo)
{
    plugin.protocolMap.insert("hollow", QVariant());
    EXPECT_FALSE(plugin.lookup("hollow").isValid());
    EXPECT_EQ(log.texts(), QStringList{missingKeyLine("hollow")});
}

TEST_F(ProtocolTable, typedLookupsGoThroughASubclassesLookup)
{
    class Subclass : public ValdrinBootInterface {
    public:
        QVariant lookup(QString key) const override { return key.size(); }
    };
    const Subclass subclass;
    EXPECT_EQ(subclass.lookupInt("abc"), 3);
    EXPECT_EQ(subclass.lookupStr("abcd"), "4");
}

// A plugin for another product may answer its keys by overriding `lookup` alone, or answer typed
// lookups in its own way: which of them an exchange asks is seen from outside.
TEST_F(ProtocolTable, exchangesAskTheUntypedLookup)
{
    class Recorder : public ValdrinBootInterface {
    public:
        QVariant lookup(QString key) const override { return keys += key, QVariant(); }
        int lookupInt(QString) const override { return typed = true, 0; }
        QString lookupStr(QString) const override { return typed = true, QString(); }
        mutable QStringList keys;
        mutable bool typed = false;
    };
    Recorder recorder;
    FakeBus bus;
    recorder.bus = &bus;
    recorder.esn();
    hx::getRawFidPid(0, &recorder);
    EXPECT_EQ(recorder.keys,
              (QStringList{"get.esn.cmd", "get.esn.rtval.response", "get.esn.rtval.offset",
                           "rawgender.read", "rawgender.read.response", "command.timeout.ms"}));
    EXPECT_FALSE(recorder.typed);
}

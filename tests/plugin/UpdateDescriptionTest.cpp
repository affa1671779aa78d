// The description of an update exchange.
#include "plugin/ValdrinBootInterface.h"
#include "tests/plugin/LoadedPlugin.h"

namespace {

const HxMidiData fwuData("F0 00 6B 2D 30 41 43 0A F7");
const HxMidiData fwdData("F0 00 6B 2D 30 41 42 0A F7");
const HxMidiData closing("F0 00 6B 2D 30 41 F7");

void expectAsConstructed(const FwUpdateProtocol& protocol)
{
    EXPECT_EQ(protocol.codeType, CodeType::Unknown);
    EXPECT_EQ(protocol.timeoutMs, 5500);
    for (const ResponceData* pattern :
         {&protocol.responseAny, &protocol.responseBad, &protocol.responseFailed,
          &protocol.responseGood, &protocol.fileCheck}) {
        EXPECT_TRUE(pattern->rx.pattern().isEmpty());
    }
}

} // namespace

TEST(FwUpdateProtocolRecord, beginsUnknownAndEmptyWithTimeout5500)
{
    const FwUpdateProtocol protocol;
    expectAsConstructed(protocol);
    EXPECT_EQ(protocol.fidpid, 0);
}

TEST(ResponceData, compilesItsTextCaseSensitivelyAsARegularExpression)
{
    const ResponceData response("F0 4[23]");
    EXPECT_EQ(response.rx.pattern(), "F0 4[23]");
    EXPECT_EQ(response.rx.caseSensitivity(), Qt::CaseSensitive);
    EXPECT_EQ(response.rx.patternSyntax(), QRegExp::RegExp);
    EXPECT_TRUE(ResponceData().rx.pattern().isEmpty());
    EXPECT_TRUE(ResponceData(nullptr).rx.pattern().isEmpty());
}

TEST(CodeTypeTag, namesEachKind)
{
    EXPECT_EQ(QString(hx::codeTypeTag(CodeType::Unknown)), "unk");
    EXPECT_EQ(QString(hx::codeTypeTag(CodeType::Fwu)), "fwu");
    EXPECT_EQ(QString(hx::codeTypeTag(CodeType::Fwd)), "fwd");
    EXPECT_EQ(static_cast<int>(CodeType::Unknown), 0);
    EXPECT_EQ(static_cast<int>(CodeType::Fwu), 1);
    EXPECT_EQ(static_cast<int>(CodeType::Fwd), 2);
}

TEST_F(LoadedPlugin, fwuImageGetsTheFwuPatterns)
{
    const FwUpdateProtocol protocol = device->getUpdateProtocol("any", {fwuData, closing});
    EXPECT_EQ(protocol.fidpid, 0x300041);
    EXPECT_EQ(protocol.codeType, CodeType::Fwu);
    EXPECT_EQ(protocol.responseAny.rx.pattern(), "F0006B2D30414[23]0C..F7");
    EXPECT_EQ(protocol.responseGood.rx.pattern(), "F0006B2D30..4[23]0C00F7");
    EXPECT_EQ(protocol.responseBad.rx.pattern(), "F0006B2D30..4[23]0C01F7");
    EXPECT_EQ(protocol.responseFailed.rx.pattern(), "F0006B2D30..4[23]0C02F7");
    EXPECT_EQ(protocol.fileCheck.rx.pattern(),
              "F0006B2D3041430C" + QString("..").repeated(16) + "F7");
    EXPECT_EQ(protocol.responseAny.rx.caseSensitivity(), Qt::CaseSensitive);
    EXPECT_EQ(protocol.timeoutMs, 2200);
    EXPECT_TRUE(device->lastError.isEmpty());
    EXPECT_TRUE(log.texts().isEmpty());
    EXPECT_TRUE(bus.exchanges.isEmpty());
}

TEST_F(LoadedPlugin, fwdImageDiffersInItsFileCheckOnly)
{
    const FwUpdateProtocol protocol = device->getUpdateProtocol("any", {fwdData, fwuData, closing});
    EXPECT_EQ(protocol.fidpid, 0x300041);
    EXPECT_EQ(protocol.codeType, CodeType::Fwd);
    EXPECT_EQ(protocol.responseAny.rx.pattern(), "F0006B2D30414[23]0C..F7");
    EXPECT_EQ(protocol.responseGood.rx.pattern(), "F0006B2D30..4[23]0C00F7");
    EXPECT_EQ(protocol.responseBad.rx.pattern(), "F0006B2D30..4[23]0C01F7");
    EXPECT_EQ(protocol.responseFailed.rx.pattern(), "F0006B2D30..4[23]0C02F7");
    EXPECT_EQ(protocol.fileCheck.rx.pattern(),
              "F0006B2D30..420C" + QString("..").repeated(16) + "F7");
    EXPECT_EQ(protocol.timeoutMs, 2200);
}

TEST_F(LoadedPlugin, theIdentifierIsThatOfTheClosingMessage)
{
    const HxMidiData foreign("F0 00 6B 2D 31 42 43 0A F7");
    const FwUpdateProtocol protocol = device->getUpdateProtocol("any", {foreign, closing});
    EXPECT_EQ(protocol.codeType, CodeType::Fwu);
    EXPECT_EQ(protocol.fidpid, 0x300041);
}

TEST_F(LoadedPlugin, theNameHasNoEffect)
{
    for (const QString& name : {QString(), QString("fwd"), QString("%1")}) {
        const FwUpdateProtocol protocol = device->getUpdateProtocol(name, {fwuData, closing});
        EXPECT_EQ(protocol.codeType, CodeType::Fwu);
        EXPECT_EQ(protocol.fidpid, 0x300041);
    }
}

TEST_F(LoadedPlugin, anEmptyListIsABadArgument)
{
    const FwUpdateProtocol protocol = device->getUpdateProtocol("x", {});
    expectAsConstructed(protocol);
    EXPECT_EQ(protocol.fidpid, 0);
    EXPECT_TRUE(device->lastError.endsWith(":322 - Bad input arguments"));
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(LoadedPlugin, aFirstOrLastMessageUnderSevenBytesIsAMismatch)
{
    const HxMidiData six("F0 00 6B 2D 30 41");
    for (const QList<HxMidiData>& data :
         {QList<HxMidiData>{six, closing}, QList<HxMidiData>{fwuData, six},
          QList<HxMidiData>{HxMidiData()}}) {
        device->setLastError(QString());
        const FwUpdateProtocol protocol = device->getUpdateProtocol("x", data);
        expectAsConstructed(protocol);
        EXPECT_EQ(protocol.fidpid, 0);
        EXPECT_TRUE(device->lastError.endsWith(":322 - Update data mismatch"));
    }
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(LoadedPlugin, imagesOfUnknownKindAreLoggedAndRecordNoError)
{
    const QList<QList<HxMidiData>> images{
        {closing},                                           // first is last: byte 6 is F7
        {fwuData, HxMidiData("F0 00 6B 2D 30 41 00 F7")},    // eight bytes
        {fwuData, HxMidiData("F0 00 6B 2D 30 41 F7 F7")},    // eight, with a closing message inside
        {fwuData, HxMidiData("F0 00 6B 2D 31 42 F7")},       // another family and model
        {fwuData, fwuData},                                  // no closing message
        {HxMidiData("F0 00 6B 2D 30 41 44 0A F7"), closing}, // unknown command byte
    };
    for (const QList<HxMidiData>& image : images) {
        const LogCapture ownLines;
        const FwUpdateProtocol protocol = device->getUpdateProtocol("x", image);
        expectAsConstructed(protocol);
        EXPECT_EQ(protocol.fidpid, 0x7F007F);
        EXPECT_EQ(ownLines.texts(), QStringList{"ERROR: CodeType is unknown."});
        EXPECT_TRUE(ownLines.onlyDefaultDebug());
        EXPECT_TRUE(device->lastError.isEmpty());
    }
}

TEST(UpdateDescription, missingKeysLeaveTheirPatternsEmpty)
{
    ValdrinBootInterface plugin;
    LogCapture log;
    plugin.protocolMap.remove("fwupdate.fwu.response.bad");
    plugin.protocolMap.remove("command.timeout.ms");
    const FwUpdateProtocol protocol = plugin.getUpdateProtocol("x", {fwuData, closing});
    EXPECT_TRUE(protocol.responseBad.rx.pattern().isEmpty());
    EXPECT_FALSE(protocol.responseGood.rx.pattern().isEmpty());
    EXPECT_EQ(protocol.timeoutMs, 0);
    EXPECT_EQ(log.texts(),
              (QStringList{"ERROR: Missing MIDI Protocol for key:  \"fwupdate.fwu.response.bad\"",
                           "ERROR: Missing MIDI Protocol for key:  \"command.timeout.ms\""}));
    EXPECT_TRUE(plugin.lastError.isEmpty());
}

TEST(UpdateDescription, aPatternOutsideLatin1IsCompiledAsItStands)
{
    ValdrinBootInterface plugin;
    const QString cyrillic = QString(QChar(0x416)) + "0C";
    const QString zeroInside = QString("F0") + QChar(0) + "F7";
    plugin.protocolMap.insert("fwupdate.fwu.response.any", cyrillic);
    plugin.protocolMap.insert("fwupdate.fwu.filecheck", zeroInside);
    const FwUpdateProtocol protocol = plugin.getUpdateProtocol("x", {fwuData, closing});
    EXPECT_EQ(protocol.responseAny.rx.pattern(), cyrillic);
    EXPECT_EQ(protocol.fileCheck.rx.pattern(), zeroInside);
    EXPECT_EQ(protocol.responseAny.rx.caseSensitivity(), Qt::CaseSensitive);
    EXPECT_EQ(protocol.responseAny.rx.patternSyntax(), QRegExp::RegExp);
}

TEST(UpdateDescription, theTimeoutComesFromTheDictionary)
{
    ValdrinBootInterface plugin;
    plugin.protocolMap.insert("command.timeout.ms", 4711);
    EXPECT_EQ(plugin.getUpdateProtocol("x", {fwuData, closing}).timeoutMs, 4711);
}

TEST(UpdateDescription, patternsAreReadInTheirOrder)
{
    class Recorder : public ValdrinBootInterface {
    public:
        QVariant lookup(QString key) const override
        {
            keys += key;
            return ValdrinBootInterface::lookup(key);
        }
        mutable QStringList keys;
    };
    Recorder plugin;
    plugin.getUpdateProtocol("x", {fwdData, closing});
    EXPECT_EQ(plugin.keys,
              (QStringList{"fwupdate.fwd.response.any", "fwupdate.fwd.response.bad",
                           "fwupdate.fwd.response.failed", "fwupdate.fwd.response.good",
                           "fwupdate.fwd.filecheck", "command.timeout.ms"}));
}

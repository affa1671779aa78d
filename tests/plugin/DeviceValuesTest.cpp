// Typed values out of a reply.
#include "plugin/ValdrinBootInterface.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

QVariant value(const HxMidiData& data, int type, int offset)
{
    static ValdrinBootInterface plugin;
    return plugin.getValueWithTypeAndOffset(data, type, offset);
}

HxMidiData packedFloat(float number)
{
    HxMidiData data;
    data.setData("F32", static_cast<double>(number));
    return data;
}

} // namespace

TEST(DeviceValue, aFloatIsTruncatedTowardZero)
{
    EXPECT_EQ(value(packedFloat(3.99F), 3, 0), QVariant(3U));
    EXPECT_EQ(value(packedFloat(-3.99F), 3, 0), QVariant(4294967293U));
    EXPECT_EQ(value(packedFloat(-3.99F), 3, 0).userType(), QMetaType::UInt);
}

TEST(DeviceValue, aFloatThatIsMissingGivesMinus99999)
{
    EXPECT_EQ(value(HxMidiData("03 7C 00 00"), 3, 0), QVariant(4294867297U));
    EXPECT_EQ(value(HxMidiData("03 7C 00 00 00"), 3, 1), QVariant(4294867297U));
    EXPECT_EQ(value(HxMidiData("03 7C 00 00 00"), 3, -1), QVariant(4294867297U));
}

TEST(DeviceValue, aFloatBeyond32BitsKeepsItsLowWord)
{
    EXPECT_EQ(value(packedFloat(4294967296.0F * 3 + 1024), 3, 0), QVariant(1024U));
}

TEST(DeviceValue, aFloatThatNo64BitIntegerHoldsGivesZero)
{
    using Limits = std::numeric_limits<float>;
    for (const float number : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                               Limits::max(), Limits::lowest(), 9223372036854775808.0F}) {
        EXPECT_EQ(value(packedFloat(number), 3, 0), QVariant(0U)) << number;
    }
    EXPECT_EQ(value(packedFloat(-9223372036854775808.0F), 3, 0), QVariant(0U));
}

TEST(DeviceValue, a32BitNumberIsUnsigned)
{
    EXPECT_EQ(value(HxMidiData("F0 01 11 51 2C 78 F7"), 4, 1), QVariant(0x12345678U));
    EXPECT_EQ(value(HxMidiData("0F 7F 7F 7F 7F"), 4, 0), QVariant(4294967295U));
    EXPECT_EQ(value(HxMidiData("0F 7F 7F 7F 7F"), 4, 0).userType(), QMetaType::UInt);
}

TEST(DeviceValue, a32BitNumberThatIsMissingIsAllOnes)
{
    EXPECT_EQ(value(HxMidiData("00 00 00 00"), 4, 0), QVariant(4294967295U));
}

TEST(DeviceValue, hexTextEndsAtAZeroOrAfterEightBytes)
{
    const HxMidiData data(QByteArray("\xF0"
                                     "F07E061A\0"
                                     "22",
                                     12));
    EXPECT_EQ(value(data, 6, 1), QVariant(QStringLiteral("F07E061A")));
    EXPECT_EQ(value(data, 6, 3), QVariant(QStringLiteral("7E061A")));
    EXPECT_EQ(value(data, 6, 3).userType(), QMetaType::QString);
}

TEST(DeviceValue, hexTextIsAtMostEightCharacters)
{
    EXPECT_EQ(value(HxMidiData(QByteArray("00112233445566")), 6, 0), QVariant("00112233"));
    EXPECT_EQ(value(HxMidiData(QByteArray("00112233445566")), 6, 2), QVariant("11223344"));
    EXPECT_EQ(value(HxMidiData(QByteArray("0011223")), 6, 1), QVariant("011223"));
}

TEST(DeviceValue, hexTextBeforeTheFirstByteCountsAsMissing)
{
    const HxMidiData data(QByteArray("00112233445566"));
    EXPECT_EQ(value(data, 6, -2), QVariant("001122"));
    EXPECT_EQ(value(data, 6, -8).toString(), QString());
    EXPECT_EQ(value(data, 6, std::numeric_limits<int>::min()).toString(), QString());
}

TEST(DeviceValue, hexTextEndsWithAnAdoptedBufferAndNotAtTheNextZero)
{
    const char memory[] = "01020304";
    HxMidiData adopted;
    adopted.copyFromBuffer(memory, 4);
    EXPECT_EQ(value(adopted, 6, 0), QVariant("0102"));
    EXPECT_EQ(value(adopted, 6, 2), QVariant("02"));
}

TEST(DeviceValue, hexTextOfWhatIsNotThereIsAnEmptyText)
{
    LogCapture log;
    for (const int offset : {4, 5, 1000, std::numeric_limits<int>::max()}) {
        const QVariant result = value(HxMidiData(QByteArray("F07E")), 6, offset);
        EXPECT_EQ(result.userType(), QMetaType::QString) << offset;
        EXPECT_TRUE(result.toString().isEmpty()) << offset;
    }
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST(DeviceValue, hexTextThatIsNoneIsLogged)
{
    LogCapture log;
    EXPECT_EQ(value(HxMidiData(QByteArray("zz")), 6, 0).toString(), QString());
    EXPECT_EQ(log.texts(), QStringList{"HxMidiData::HxMidiData(const char*,int) - error converting "
                                       "hex string:  \"zz\""});
}

TEST(DeviceValue, theReaderIsAnOrdinaryMember)
{
    using Reader = QVariant (ValdrinBootInterface::*)(BusData const&, int, int);
    const Reader reader = &ValdrinBootInterface::getValueWithTypeAndOffset;
    ValdrinBootInterface plugin;
    EXPECT_EQ((plugin.*reader)(HxMidiData("0F 7F 7F 7F 7F"), 4, 0), QVariant(4294967295U));
}

TEST(DeviceValue, otherTypesAreInvalid)
{
    const HxMidiData data("F0 01 11 51 2C 78 F7");
    for (const int type : {-1, 0, 1, 2, 5, 7, 99, std::numeric_limits<int>::min()})
        EXPECT_FALSE(value(data, type, 0).isValid()) << type;
}

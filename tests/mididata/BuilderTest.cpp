#include "tests/mididata/Bytes.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <limits>
#include <utility>

namespace {

template <typename... Arguments>
QByteArray built(const char* format, Arguments... arguments)
{
    HxMidiData data;
    data.setData(format, arguments...);
    return data.bytes;
}

void appendTo(HxMidiData& data, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    data.vSetData(format, args);
    va_end(args);
}

} // namespace

TEST(Builder, fourteenBitValue)
{
    EXPECT_EQ(built("F0 7E V14 F7", 0x2345u), hex("F07E4645F7"));
    EXPECT_EQ(built("F0 7E V14 F7", 0x1FFFFu), hex("F07E7F7FF7"));
    EXPECT_EQ(built("P14", 0x2345u), hex("4645"));
}

TEST(Builder, fiveGroupsOfSevenBits)
{
    EXPECT_EQ(built("UT", 0x12345678u), hex("0111512C78"));
    EXPECT_EQ(built("V32", 0x12345678u), hex("0111512C78"));
    EXPECT_EQ(built("I32", 0x12345678u), hex("0111512C78"));
    EXPECT_EQ(built("I32", -1), hex("0F7F7F7F7F"));
    EXPECT_EQ(built("UT", 0xFFFFFFFFu), hex("0F7F7F7F7F"));
}

TEST(Builder, nibbles)
{
    EXPECT_EQ(built("NIB24", 0x123456u), hex("010203040506"));
    EXPECT_EQ(built("NIB24", 0xFF123456u), hex("010203040506"));
    EXPECT_EQ(built("NIB32", 0x89ABCDEFu), hex("08090A0B0C0D0E0F"));
}

TEST(Builder, singlePrecisionNumber)
{
    EXPECT_EQ(built("F32", 1.0), hex("037C000000"));
    EXPECT_EQ(built("F32", 1.0f), hex("037C000000"));
    EXPECT_EQ(built("F32", -0.0), hex("0800000000"));
}

TEST(Builder, numberAsAppendNumFormsIt)
{
    EXPECT_EQ(built("VV", 0x85), hex("85"));
    EXPECT_EQ(built("VV", 300), hex("002C"));
    EXPECT_EQ(built("VV", 0xFFFF), hex("00FFFF"));
    EXPECT_EQ(built("VV", std::numeric_limits<int>::max()), hex("7FFFFFFF"));
    EXPECT_EQ(built("V8 P8", 5, 6), hex("0506"));
}

TEST(Builder, aNegativeNumberGivesOneZeroByte)
{
    EXPECT_EQ(built("VV", -1), hex("00"));
    EXPECT_EQ(built("VV", std::numeric_limits<int>::min()), hex("00"));
}

TEST(Builder, textArguments)
{
    EXPECT_EQ(built("CSTR", "AB"), hex("4142"));
    EXPECT_EQ(built("CSTR", "\xFF"), hex("FF"));
    EXPECT_EQ(built("MSTR", "41 42"), hex("4142"));
    EXPECT_EQ(built("F0 CSTR MSTR F7", "AB", "0x123456"), hex("F04142123456F7"));
}

TEST(Builder, everythingMayBeWrittenInLowerCase)
{
    EXPECT_EQ(built("f0 7e v14 nib24 cstr ab f7", 0x2345u, 0x123456u, "xy"),
              hex("F07E46450102030405067879ABF7"));
}

TEST(Builder, valuesReadBackWithTheMatchingGetter)
{
    HxMidiData data;
    data.setData("V14 UT F32 V32", 0x2345u, 0xDEADBEEFu, -12.5, 0x12345678u);
    EXPECT_EQ(data.get14bit(0, -1), 0x2345);
    EXPECT_EQ(data.getUtime(2, -1), 0xDEADBEEFu);
    EXPECT_EQ(data.getFloat32(7, 0), -12.5f);
    EXPECT_EQ(data.get32bit(12, -1), 0x12345678);
}

TEST(Builder, onlyBlanksSeparateAndEmptyPiecesAreSkipped)
{
    LogCapture log;
    EXPECT_EQ(built(" F0  7E "), hex("F07E"));
    EXPECT_EQ(built("F0,7E V8", 5), hex("05"));
    EXPECT_EQ(built("F0\t\n7E 01"), hex("01"));
    EXPECT_EQ(built("\tF0\n 01"), hex("F001")); // a number may have white space around it
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST(Builder, aCompactTextIsOneToken)
{
    EXPECT_EQ(built("F07E"), hex("007E"));
    EXPECT_EQ(built("F0006B2D3041420D0FNIB24F7"), QByteArray());
}

TEST(Builder, literalsAreNumbersOfAnyWidth)
{
    EXPECT_EQ(built("7 0x1234 123456 -2 +5"), hex("07 0034 123456 FFFFFFFE 05"));
}

TEST(Builder, aLiteralThatIsNotHexIsSkippedWithoutAMessage)
{
    LogCapture log;
    EXPECT_EQ(built("F0 .. XYZ V15 F7"), hex("F0F7"));
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST(Builder, minusOneIsLoggedAndTheRestFollows)
{
    LogCapture log;
    EXPECT_EQ(built("10 -1 20"), hex("1020"));
    EXPECT_EQ(log.texts(),
              QStringList(QStringLiteral("HxMidiData::numHexToByteArray(quint32) - error")));
}

TEST(Builder, aFailingHexTextIsLoggedAndTheNextLiteralLost)
{
    LogCapture log;
    EXPECT_EQ(built("F0 MSTR 11 F7", ""), hex("F0F7"));
    EXPECT_EQ(log.texts(), QStringList(QStringLiteral("Invalid value for format(  F0 MSTR 11 F7  ) "
                                                      "at specifier  \"MSTR\"")));
    EXPECT_TRUE(log.onlyDefaultDebug());
}

TEST(Builder, theLogShowsTheFormatAsPassedAndTheTokenInUpperCase)
{
    LogCapture log;
    EXPECT_EQ(built("f0 cstr", ""), hex("F0"));
    EXPECT_EQ(log.texts(), QStringList(QStringLiteral(
                               "Invalid value for format(  f0 cstr  ) at specifier  \"CSTR\"")));
}

TEST(Builder, aHexTextThatDoesNotConvertIsAFailureWithBothLines)
{
    LogCapture log;
    EXPECT_EQ(built("MSTR 11 22", "XX"), hex("22"));
    EXPECT_EQ(log.texts(),
              QStringList({QStringLiteral("HxMidiData::HxMidiData(const char*,int) - error "
                                          "converting hex string:  \"XX\""),
                           QStringLiteral("Invalid value for format(  MSTR 11 22  ) at specifier  "
                                          "\"MSTR\"")}));
}

TEST(Builder, aFieldLostBehindAFailureTakesNoArgument)
{
    LogCapture log;
    EXPECT_EQ(built("CSTR V8 V8", "", 0x21), hex("21"));
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(Builder, anEmptyPieceCanBeWhatAFailureLoses)
{
    LogCapture log;
    EXPECT_EQ(built("F0 MSTR  11 F7", ""), hex("F011F7"));
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(Builder, aFailureAtTheEndLosesNothing)
{
    LogCapture log;
    EXPECT_EQ(built("F0 CSTR", static_cast<const char*>(nullptr)), hex("F0"));
    EXPECT_EQ(built("F0 MSTR ", static_cast<const char*>(nullptr)), hex("F0"));
    EXPECT_EQ(log.lines().size(), 2);
}

TEST(Builder, vSetDataAppendsAndSetDataStartsAfresh)
{
    HxMidiData data(hex("01"));
    data.auxA = 1;
    data.auxB = 2;
    appendTo(data, "F0 V8", 5);
    EXPECT_EQ(data.bytes, hex("01F005"));
    EXPECT_EQ(data.auxA, 1u);
    data.setData("F0 V8", 6);
    EXPECT_EQ(data.bytes, hex("F006"));
    EXPECT_EQ(data.auxA, 0u);
    EXPECT_EQ(data.source, nullptr);
    EXPECT_EQ(data.auxB, 2u);
}

TEST(Builder, aNullFormatGivesAnEmptyBuffer)
{
    HxMidiData data(hex("01"));
    appendTo(data, nullptr);
    EXPECT_EQ(data.bytes, hex("01"));
    data.setData(nullptr);
    EXPECT_EQ(data.bytes, QByteArray());
}

TEST(Builder, aFormatThatGivesNothingLeavesANullArray)
{
    LogCapture log;
    EXPECT_TRUE(built("").isNull());
    EXPECT_TRUE(built("XYZ").isNull());
    EXPECT_TRUE(built("CSTR", "").isNull());
}

TEST(Builder, argumentsInTheBuffersOwnStorageAreReadAsCopiesOfThemWouldBe)
{
    HxMidiData data(QByteArray("4142"));
    data.setData("CSTR 01 MSTR", data.bytes.constData(), data.bytes.constData());
    EXPECT_EQ(data.bytes, hex("34313432 01 4142"));
    data = HxMidiData(QByteArray("4142"));
    appendTo(data, "CSTR 01 MSTR", data.bytes.constData(), data.bytes.constData());
    EXPECT_EQ(data.bytes, hex("34313432 34313432 01 4142"));
}

TEST(Builder, theFormatMayLieInTheBuffersOwnStorage)
{
    HxMidiData data(QByteArray("F0 V8 F7"));
    data.setData(data.bytes.constData(), 5);
    EXPECT_EQ(data.bytes, hex("F005F7"));
}

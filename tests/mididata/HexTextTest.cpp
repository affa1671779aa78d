#include "tests/mididata/Bytes.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

QByteArray setTextBytes(const char* text)
{
    HxMidiData data;
    data.setText(text);
    return data.bytes;
}

QString convertingLine(const char* text)
{
    return QStringLiteral(
               "HxMidiData::HxMidiData(const char*,int) - error converting hex string:  \"%1\"")
        .arg(QLatin1String(text));
}

QString formatLine(const char* text)
{
    return QStringLiteral(
               "HxMidiData::HxMidiData(const char*,int) - invalid hex string format:  \"%1\"")
        .arg(QLatin1String(text));
}

const QString numberLine = QStringLiteral("HxMidiData::numHexToByteArray(quint32) - error");

} // namespace

TEST(HexText, spacedTextGivesTheSameBytesWithAndWithoutItsBlanks)
{
    EXPECT_EQ(HxMidiData(QStringLiteral("F0 7E 7F 06 01 F7")).bytes, hex("F07E7F0601F7"));
    EXPECT_EQ(HxMidiData("F0 7E 7F 06 01 F7").bytes, hex("F07E7F0601F7"));
    EXPECT_EQ(setTextBytes("F0 7E 7F 06 01 F7"), hex("F07E7F0601F7"));
}

TEST(HexText, aChangeableQStringIsReadAndLeftAlone)
{
    QString text = QStringLiteral("F0 7E\n F7");
    EXPECT_EQ(HxMidiData(text).bytes, hex("F07EF7"));
    EXPECT_EQ(text, QStringLiteral("F0 7E\n F7"));
}

TEST(HexText, commasSeparateAndEmptyTokensAreSkipped)
{
    EXPECT_EQ(setTextBytes("F0,7E,,06"), hex("F07E06"));
    EXPECT_EQ(setTextBytes(",F0"), hex("F0"));
    EXPECT_EQ(setTextBytes("F0,"), hex("F0"));
    EXPECT_EQ(setTextBytes("F0 , 7E"), hex("F07E"));
    EXPECT_EQ(setTextBytes(",,"), QByteArray());
}

TEST(HexText, separatedTokensAreNumbersOfAnyWidth)
{
    EXPECT_EQ(setTextBytes("7 123 12345 007F"), hex("07002301 2345 7F"));
    EXPECT_EQ(HxMidiData("7,123,12345,007F").bytes, hex("070023012345 7F"));
}

TEST(HexText, withoutBlanksTheConstructorsReadPairs)
{
    EXPECT_EQ(HxMidiData("7 123 45").bytes, hex("712345"));
}

TEST(HexText, lowerCaseDigitsAreDigits)
{
    EXPECT_EQ(HxMidiData("f0aBcD").bytes, hex("F0ABCD"));
}

TEST(HexText, oddNumberOfDigitsIsLoggedAndGivesAnEmptyBuffer)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData("F07").bytes, QByteArray());
    EXPECT_EQ(log.texts(), QStringList(formatLine("F07")));
    EXPECT_TRUE(log.onlyDefaultDebug());
}

TEST(HexText, oneCharacterIsEmptyAndNotLogged)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData("7").bytes, QByteArray());
    EXPECT_EQ(setTextBytes(" 7\t"), QByteArray());
    EXPECT_EQ(setTextBytes(""), QByteArray());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST(HexText, prefixedTextIsOneNumber)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData("0x3041").bytes, hex("0041"));
    EXPECT_EQ(HxMidiData("0x123456").bytes, hex("123456"));
    EXPECT_EQ(HxMidiData("0X7F").bytes, hex("7F"));
    EXPECT_EQ(HxMidiData("0x123").bytes, hex("0023"));
    EXPECT_EQ(HxMidiData("0x7FFFFFFF").bytes, hex("7FFFFFFF"));
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST(HexText, aPrefixedNumberTooLargeForAnIntIsLogged)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData("0x80000000").bytes, QByteArray());
    EXPECT_EQ(log.texts(), QStringList(convertingLine("0x80000000")));
}

TEST(HexText, aBarePrefixIsAPairThatDoesNotConvert)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData("0x").bytes, QByteArray());
    EXPECT_EQ(log.texts(), QStringList(convertingLine("0x")));
}

TEST(HexText, nothingButBlanksAndCommasSeparates)
{
    LogCapture log;
    EXPECT_EQ(setTextBytes("F0;7E"), QByteArray());
    EXPECT_EQ(log.texts(), QStringList(formatLine("F0;7E")));
}

TEST(HexText, wildcardIsLoggedOnceAndItsNeighboursAreKept)
{
    LogCapture log;
    EXPECT_EQ(setTextBytes("F0 .. F7"), hex("F0F7"));
    EXPECT_EQ(log.texts(), QStringList(convertingLine("F0 .. F7")));
    EXPECT_TRUE(log.onlyDefaultDebug());
}

TEST(HexText, everyBadTokenLogsTheWholeText)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData("F0 XX vv F7").bytes, hex("F0F7"));
    EXPECT_EQ(log.texts(), QStringList({convertingLine("F0XXvvF7"), convertingLine("F0XXvvF7")}));
}

TEST(HexText, minusOneEndsTheText)
{
    LogCapture log;
    EXPECT_EQ(setTextBytes("10 -1 20"), hex("10"));
    EXPECT_EQ(log.texts(), QStringList(numberLine));
}

TEST(HexText, minusOneEndsACompactTextToo)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData("10-120").bytes, hex("10"));
    EXPECT_EQ(log.texts(), QStringList(numberLine));
}

TEST(HexText, signsAreAccepted)
{
    EXPECT_EQ(setTextBytes("+5 -2"), hex("05FFFFFFFE"));
    EXPECT_EQ(HxMidiData("+5-2").bytes, hex("05FFFFFFFE"));
}

TEST(HexText, whiteSpaceIsTrimmedFromTheEndsOnly)
{
    LogCapture log;
    EXPECT_EQ(setTextBytes("\t\n F07E\r\v\f\x85\xA0"), hex("F07E"));
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_EQ(setTextBytes("F0\n7E 01"), hex("01"));
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(HexText, onlyTheQStringConstructorsRemoveNewlines)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData(QStringLiteral("F0\n7E\n")).bytes, hex("F07E"));
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_EQ(HxMidiData("F0\n7E").bytes, QByteArray());
    EXPECT_EQ(log.texts(), QStringList(formatLine("F0\\n7E")));
}

TEST(HexText, aQStringIsReadAsItsUtf8UpToAZeroCharacter)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData(QString(QLatin1String("F0\0F7", 5))).bytes, hex("F0"));
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_EQ(HxMidiData(QString(QChar(0x20AC))).bytes, QByteArray()); // three bytes in UTF-8
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(HexText, nullTextGivesAnEmptyBuffer)
{
    LogCapture log;
    EXPECT_EQ(HxMidiData(static_cast<const char*>(nullptr)).bytes, QByteArray());
    EXPECT_EQ(setTextBytes(nullptr), QByteArray());
    EXPECT_EQ(HxMidiData(QString()).bytes, QByteArray());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST(HexText, aTextWithoutBytesLeavesANullArray)
{
    LogCapture log;
    EXPECT_TRUE(setTextBytes("").isNull());
    EXPECT_TRUE(setTextBytes("XX").isNull());
    EXPECT_TRUE(HxMidiData("F07").bytes.isNull());
    EXPECT_TRUE(HxMidiData(QStringLiteral("F0X")).bytes.isNull());
}

TEST(HexText, setTextReplacesTheContentsAndResetsAuxAAndSource)
{
    HxMidiData data(hex("010203"));
    data.auxA = 1;
    data.auxB = 2;
    data.auxC = 3;
    data.source = reinterpret_cast<HxMidiIn*>(&data);
    data.setText("F0");
    EXPECT_EQ(data.bytes, hex("F0"));
    EXPECT_EQ(data.auxA, 0u);
    EXPECT_EQ(data.source, nullptr);
    EXPECT_EQ(data.auxB, 2u);
    EXPECT_EQ(data.auxC, 3u);
}

TEST(HexText, textInTheBuffersOwnStorageIsReadAsACopyOfItWouldBe)
{
    HxMidiData data(QByteArray("F0 7E 123"));
    data.setText(data.bytes.constData() + 3);
    EXPECT_EQ(data.bytes, hex("7E0023"));
}

// Qt 6 itself takes "\xA0" "7E" for no number.
TEST(HexText, aTokenMayBeginOrEndWithAnyBlankOfLatin1)
{
    HxMidiData data;
    data.setText("F0,\xA0"
                 "7E,06\x85,\t01,02\v");
    EXPECT_EQ(data.bytes, hex("F07E060102"));
}

TEST(HexText, is0xHexStrLooksAtTheFirstTwoOfThreeCharacters)
{
    const auto is0x = [](const char* text) {
        QString s = QString::fromLatin1(text);
        return HxMidiData::is0xHexStr(s);
    };
    EXPECT_TRUE(is0x("0x1"));
    EXPECT_TRUE(is0x("0X1"));
    EXPECT_TRUE(is0x("0x no digits"));
    EXPECT_FALSE(is0x("0x"));
    EXPECT_FALSE(is0x("1x1"));
    EXPECT_FALSE(is0x(" 0x1"));
    EXPECT_FALSE(is0x(""));
}

#include "tests/mididata/Bytes.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

struct Form {
    unsigned int value;
    const char* digits;
};

const Form forms[] = {
    {0, "00"},
    {5, "05"},
    {0xFF, "FF"},
    {0x100, "0000"},
    {300, "002C"},
    {0x1234, "0034"},
    {0xFFFE, "00FE"},
    {0xFFFF, "00FFFF"},
    {70000, "011170"},
    {0xFFFFFE, "FFFFFE"},
    {0xFFFFFF, "00FFFFFF"},
    {0x12345678, "12345678"},
    {0xFFFFFFFE, "FFFFFFFE"},
};

} // namespace

TEST(NumberBytes, everyFormOfNumHexToByteArray)
{
    LogCapture log;
    for (const Form& form : forms)
        EXPECT_EQ(HxMidiData::numHexToByteArray(form.value), hex(form.digits)) << form.value;
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST(NumberBytes, appendNumAppendsTheSameBytes)
{
    for (const Form& form : forms) {
        HxMidiData data(hex("AA"));
        EXPECT_TRUE(data.appendNum(form.value));
        EXPECT_EQ(data.bytes, hex("AA") + hex(form.digits)) << form.value;
    }
}

TEST(NumberBytes, allOnesGiveNothingAndOneLogLine)
{
    LogCapture log;
    HxMidiData data(hex("AA"));
    EXPECT_FALSE(data.appendNum(0xFFFFFFFFu));
    EXPECT_EQ(data.bytes, hex("AA"));
    EXPECT_EQ(HxMidiData::numHexToByteArray(0xFFFFFFFFu), QByteArray());
    const QString line = QStringLiteral("HxMidiData::numHexToByteArray(quint32) - error");
    EXPECT_EQ(log.texts(), QStringList({line, line}));
    EXPECT_TRUE(log.onlyDefaultDebug());
}

#include "tests/mididata/Bytes.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <new>
#include <vector>

namespace {

HxMidiIn* const someInput = reinterpret_cast<HxMidiIn*>(0x1000);

/** Whether the members beside the bytes have the values that construction gives them. */
testing::AssertionResult isFresh(const HxMidiData& data)
{
    if (data.auxA == 0 && data.source == nullptr && data.auxB == 0 && data.auxC == 0)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "a member beside the bytes is set";
}

HxMidiData filled()
{
    HxMidiData data(hex("F001F7"));
    data.auxA = 1;
    data.source = someInput;
    data.auxB = 2;
    data.auxC = 3;
    return data;
}

testing::AssertionResult isFilled(const HxMidiData& data)
{
    if (data.bytes == hex("F001F7") && data.auxA == 1 && data.source == someInput &&
        data.auxB == 2 && data.auxC == 3)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "a member was not copied";
}

} // namespace

TEST(Construction, defaultIsEmptyAndZero)
{
    const HxMidiData data;
    EXPECT_TRUE(data.bytes.isEmpty());
    EXPECT_TRUE(isFresh(data));
}

TEST(Construction, fromAVectorKeepsTheInput)
{
    const HxMidiData data(std::vector<unsigned char>{0xF0, 0x7E, 0xF7}, someInput);
    EXPECT_EQ(data.bytes, hex("F07EF7"));
    EXPECT_EQ(data.source, someInput);
    EXPECT_EQ(data.auxA, 0u);
    EXPECT_EQ(data.auxB, 0u);
}

TEST(Construction, fromAnEmptyVectorIsEmpty)
{
    const HxMidiData data(std::vector<unsigned char>(), nullptr);
    EXPECT_TRUE(data.bytes.isEmpty());
    EXPECT_TRUE(isFresh(data));
}

TEST(Construction, fromAVectorWhoseSizeIsNegativeAsAnIntIsEmpty)
{
    std::vector<unsigned char> huge;
    try {
        huge.resize(size_t(1) << 31);
    } catch (const std::bad_alloc&) {
        GTEST_SKIP() << "2 GiB of memory are needed";
    }
    const HxMidiData data(huge, someInput);
    EXPECT_TRUE(data.bytes.isEmpty());
    EXPECT_EQ(data.source, someInput);
}

TEST(Construction, fromANumber)
{
    EXPECT_EQ(HxMidiData(0x1234).bytes, hex("0034"));
    EXPECT_EQ(HxMidiData(5).bytes, hex("05"));
    EXPECT_EQ(HxMidiData(0).bytes, hex("00"));
    EXPECT_EQ(HxMidiData(-2).bytes, hex("FFFFFFFE"));
    EXPECT_TRUE(isFresh(HxMidiData(5)));
}

TEST(Construction, fromMinusOneIsEmptyAndLogged)
{
    LogCapture log;
    EXPECT_TRUE(HxMidiData(-1).bytes.isEmpty());
    EXPECT_EQ(log.texts(),
              QStringList(QStringLiteral("HxMidiData::numHexToByteArray(quint32) - error")));
}

TEST(Construction, fromAnArraySharesItsStorage)
{
    const QByteArray array = hex("F07E");
    const HxMidiData data(array);
    EXPECT_EQ(data.bytes.constData(), array.constData());
    EXPECT_TRUE(isFresh(data));
}

TEST(Construction, fromTextIsFresh)
{
    EXPECT_TRUE(isFresh(HxMidiData("F0")));
    EXPECT_TRUE(isFresh(HxMidiData(QStringLiteral("F0"))));
}

TEST(Construction, copyingTakesAllFiveMembersAndSharesTheBytes)
{
    const HxMidiData original = filled();
    const HxMidiData copy(original);
    EXPECT_TRUE(isFilled(copy));
    EXPECT_EQ(copy.bytes.constData(), original.bytes.constData());
    HxMidiData assigned;
    assigned = original;
    EXPECT_TRUE(isFilled(assigned));
    const QList<HxMidiData> list = {original};
    EXPECT_TRUE(isFilled(list.first()));
}

TEST(Construction, aChangedCopyLeavesTheOriginalAlone)
{
    const HxMidiData original = filled();
    HxMidiData copy(original);
    copy.set14bit(0, 0);
    EXPECT_EQ(original.bytes, hex("F001F7"));
}

TEST(Construction, clearKeepsAuxBAndAuxC)
{
    HxMidiData data = filled();
    data.clear();
    EXPECT_TRUE(data.bytes.isEmpty());
    EXPECT_EQ(data.auxA, 0u);
    EXPECT_EQ(data.source, nullptr);
    EXPECT_EQ(data.auxB, 2u);
    EXPECT_EQ(data.auxC, 3u);
}

TEST(Construction, copyFromBufferLooksAtTheCallersMemoryUntilTheFirstWrite)
{
    char memory[] = {'\x01', '\x02', '\x03'};
    HxMidiData data = filled();
    data.copyFromBuffer(memory, 3);
    EXPECT_EQ(data.bytes.constData(), memory);
    EXPECT_EQ(data.auxA, 1u);
    EXPECT_EQ(data.source, someInput);
    const HxMidiData copy = data;
    data.set14bit(0, 0x3FFF);
    EXPECT_EQ(data.bytes, hex("7F7F03"));
    EXPECT_EQ(memory[0], '\x01');
    EXPECT_EQ(copy.bytes, hex("010203"));
}

TEST(Construction, copyFromBufferTakesTheLengthAsAnInt)
{
    const char memory[] = {'\x01', '\x02', '\x03'};
    HxMidiData data = filled();
    data.copyFromBuffer(memory, size_t(1) << 31);
    EXPECT_TRUE(data.bytes.isEmpty());
    data = filled();
    data.copyFromBuffer(memory, ~size_t(0));
    EXPECT_TRUE(data.bytes.isEmpty());
    data.copyFromBuffer(memory, size_t((quint64(1) << 32) + 2)); // 2 where addresses have 32 bits
    EXPECT_EQ(data.bytes, hex("0102"));
}

TEST(Construction, copyFromANullBufferIsEmpty)
{
    HxMidiData data = filled();
    data.copyFromBuffer(nullptr, 3);
    EXPECT_TRUE(data.bytes.isEmpty());
    EXPECT_EQ(data.auxA, 1u);
}

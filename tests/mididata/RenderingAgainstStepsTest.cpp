#include "tests/mididata/Bytes.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"

#include <gtest/gtest.h>

TEST(RenderingAgainstSteps, compactAndSeparated)
{
    Random random(1);
    for (int i = 0; i < 60000; ++i) {
        const QByteArray bytes = random.bytes(random.below(random.oneIn(20) ? 200 : 12));
        const HxMidiData data(bytes);
        const int start = random.position(bytes.size());
        const int len = random.position(bytes.size());
        const char sep = static_cast<char>(random.below(256));
        ASSERT_EQ(data.toString(len), transcription::toString(bytes, len));
        ASSERT_EQ(data.toStringFromEnd(len), transcription::toStringFromEnd(bytes, len));
        ASSERT_EQ(data.toString(sep, len), transcription::toString(bytes, sep, len));
        ASSERT_EQ(data.toString(sep, start, len), transcription::toString(bytes, sep, start, len))
            << bytes.size() << ' ' << start << ' ' << len;
    }
}

TEST(RenderingAgainstSteps, decimal)
{
    Random random(2);
    for (int i = 0; i < 30000; ++i) {
        const QByteArray bytes = random.bytes(random.below(40));
        ASSERT_EQ(HxMidiData(bytes).toStringDec(), transcription::toStringDec(bytes));
    }
}

TEST(RenderingAgainstSteps, dumpTableOfEveryLengthAndColumnCount)
{
    Random random(3);
    for (int size = 0; size <= 150; ++size) {
        const QByteArray bytes = random.bytes(size);
        for (int columns = -1; columns <= 41; ++columns) {
            ASSERT_EQ(HxMidiData(bytes).toStringTable(-1, columns),
                      transcription::toStringTable(bytes, -1, columns))
                << size << " bytes, " << columns << " columns";
        }
    }
}

TEST(RenderingAgainstSteps, dumpTableOfAnyLength)
{
    Random random(4);
    for (int i = 0; i < 10000; ++i) {
        const QByteArray bytes = random.bytes(random.below(80));
        const int len = random.position(bytes.size());
        const int columns = random.oneIn(3) ? 16 : random.position(20);
        ASSERT_EQ(HxMidiData(bytes).toStringTable(len, columns),
                  transcription::toStringTable(bytes, len, columns))
            << bytes.size() << " bytes, " << len << " shown, " << columns << " columns";
    }
}

TEST(RenderingAgainstSteps, largeDumpTables)
{
    Random random(5);
    for (const int size : {4095, 4096, 4097, 4112, 9000}) {
        const QByteArray bytes = random.bytes(size);
        for (const int columns : {1, 7, 8, 16, 17, 64, 4096, 5000}) {
            ASSERT_EQ(HxMidiData(bytes).toStringTable(-1, columns),
                      transcription::toStringTable(bytes, -1, columns))
                << size << " bytes, " << columns << " columns";
        }
    }
}

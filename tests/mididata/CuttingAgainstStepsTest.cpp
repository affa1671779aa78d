#include "tests/mididata/Bytes.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"

#include <gtest/gtest.h>

namespace {

/** `copyToBuffer` into memory that shows what it left alone. */
QByteArray mirrored(const HxMidiData& data, int start, int count)
{
    QByteArray room(data.bytes.size(), '\x55');
    data.copyToBuffer(room.data(), start, count);
    return room;
}

QByteArray expectedMirror(const QByteArray& bytes, int start, int count)
{
    const QByteArray section = transcription::copied(bytes, start, count);
    QByteArray room(bytes.size(), '\x55');
    for (int i = 0; i < section.size(); ++i)
        room[start + i] = section.at(i);
    return room;
}

} // namespace

TEST(CuttingAgainstSteps, splitOnStatus)
{
    Random random(1);
    for (int i = 0; i < 50000; ++i) {
        const QByteArray bytes = random.bytes(random.below(40));
        ASSERT_EQ(bytesOf(HxMidiData(bytes).splitOnStatus()), transcription::splitOnStatus(bytes))
            << bytes.toHex().toStdString();
    }
}

TEST(CuttingAgainstSteps, split)
{
    Random random(2);
    for (int i = 0; i < 50000; ++i) {
        const QByteArray bytes = random.bytes(random.below(40));
        const int n = random.oneIn(2) ? random.position(bytes.size()) : random.between(-12, 12);
        ASSERT_EQ(bytesOf(HxMidiData(bytes).split(n)), transcription::split(bytes, n))
            << bytes.size() << ' ' << n;
    }
}

TEST(CuttingAgainstSteps, copyingOut)
{
    Random random(3);
    for (int i = 0; i < 30000; ++i) {
        HxMidiData data(random.bytes(random.below(20)));
        const int start = random.position(data.bytes.size());
        const int count = random.position(data.bytes.size());
        const std::vector<unsigned char> copy = data.toStdVector(start, count);
        const QByteArray section = transcription::copied(data.bytes, start, count);
        ASSERT_TRUE(std::equal(copy.begin(), copy.end(), section.begin(), section.end(),
                               [](unsigned char a, char b) { return static_cast<char>(a) == b; }))
            << start << ' ' << count;
        ASSERT_EQ(mirrored(data, start, count), expectedMirror(data.bytes, start, count));
    }
}

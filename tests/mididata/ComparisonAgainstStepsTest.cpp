#include "qt/Saturated.h"
#include "tests/mididata/Bytes.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"

#include <gtest/gtest.h>

namespace {

struct Pair {
    QByteArray mine;
    QByteArray other;
};

/** Two arrays that differ in few places, by little, and now and then in size. */
Pair similar(Random& random, int longest)
{
    Pair pair;
    pair.mine = random.bytes(random.below(longest + 1));
    pair.other = pair.mine;
    for (int n = pair.mine.isEmpty() ? 0 : random.below(4); n > 0; --n) {
        const int at = random.below(pair.mine.size());
        pair.other[at] = static_cast<char>(pair.other.at(at) + random.between(-6, 6));
    }
    if (random.oneIn(4))
        pair.other.chop(random.below(4));
    if (random.oneIn(4))
        pair.other += random.bytes(random.below(4));
    return pair;
}

} // namespace

TEST(ComparisonAgainstSteps, isSame)
{
    Random random(1);
    for (int i = 0; i < 50000; ++i) {
        const Pair pair = similar(random, random.oneIn(20) ? 800 : 90);
        ASSERT_EQ(HxMidiData(pair.mine).isSame(HxMidiData(pair.other)),
                  transcription::isSame(pair.mine, pair.other))
            << pair.mine.toHex().toStdString() << ' ' << pair.other.toHex().toStdString();
    }
}

TEST(ComparisonAgainstSteps, diff)
{
    Random random(2);
    for (int i = 0; i < 50000; ++i) {
        const Pair pair = similar(random, random.oneIn(20) ? 300 : 12);
        const int count = random.position(pair.mine.size());
        const int offset = random.position(pair.mine.size());
        ASSERT_EQ(HxMidiData(pair.mine).diff(HxMidiData(pair.other), count, offset),
                  transcription::diff(pair.mine, pair.other, count, offset))
            << count << ' ' << offset;
    }
}

TEST(ComparisonAgainstSteps, diffAgainstRawBytes)
{
    Random random(3);
    for (int i = 0; i < 20000; ++i) {
        const Pair pair = similar(random, 40);
        ASSERT_EQ(
            HxMidiData(pair.mine).diff(pair.other.constData(), hx::saturated(pair.other.size())),
            transcription::diff(pair.mine, pair.other, -1, -1));
    }
}

TEST(ComparisonAgainstSteps, diffToMap)
{
    Random random(4);
    for (int i = 0; i < 50000; ++i) {
        const Pair pair = similar(random, random.oneIn(20) ? 300 : 12);
        std::pair<int, int> range(random.position(pair.mine.size()),
                                  random.position(pair.mine.size()));
        if (range.first < -100)
            range.first = -100; // the steps walk there one by one
        ASSERT_EQ(HxMidiData(pair.mine).diffToMap(HxMidiData(pair.other), range),
                  transcription::diffToMap(pair.mine, pair.other, range))
            << range.first << ' ' << range.second;
    }
}

TEST(ComparisonAgainstSteps, hashAndChannel)
{
    Random random(5);
    for (int i = 0; i < 30000; ++i) {
        const QByteArray bytes = random.bytes(random.below(40));
        const auto fallback = static_cast<unsigned char>(random.below(256));
        ASSERT_EQ(HxMidiData(bytes).hash(), transcription::hash(bytes));
        ASSERT_EQ(HxMidiData::detectMidiCh(HxMidiData(bytes), fallback),
                  transcription::detectMidiCh(bytes, fallback));
    }
}

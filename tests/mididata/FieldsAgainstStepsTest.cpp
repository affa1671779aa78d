#include "tests/mididata/Bytes.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

unsigned int bitsOf(float value)
{
    unsigned int bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

} // namespace

TEST(FieldsAgainstSteps, getters)
{
    Random random(1);
    for (int i = 0; i < 60000; ++i) {
        const QByteArray bytes = random.bytes(random.below(14));
        const HxMidiData data(bytes);
        const int pos = random.position(bytes.size());
        const int fallback = random.between(-9, 9);
        ASSERT_EQ(data.get14bit(pos, fallback), transcription::get14bit(bytes, pos, fallback));
        ASSERT_EQ(data.getUtime(pos, fallback), transcription::getUtime(bytes, pos, fallback));
        ASSERT_EQ(data.get32bit(pos, fallback), transcription::get32bit(bytes, pos, fallback));
        ASSERT_EQ(data.get32bitLE(pos, fallback), transcription::get32bitLE(bytes, pos, fallback));
        ASSERT_EQ(bitsOf(data.getFloat32(pos, 1.5f)),
                  bitsOf(transcription::getFloat32(bytes, pos, 1.5f)));
        const int width = random.oneIn(8) ? random.position(4) : random.between(0, 5);
        ASSERT_EQ(data.toInt(pos, width, fallback),
                  transcription::toInt(bytes, pos, width, fallback));
    }
}

TEST(FieldsAgainstSteps, set14bit)
{
    Random random(2);
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes = random.bytes(random.below(8));
        HxMidiData data(bytes);
        const int pos = random.position(bytes.size());
        const int value = static_cast<int>(random.word());
        ASSERT_EQ(data.set14bit(pos, value), transcription::set14bit(bytes, pos, value));
        ASSERT_EQ(data.bytes, bytes);
    }
}

TEST(FieldsAgainstSteps, texts)
{
    Random random(3);
    for (int i = 0; i < 30000; ++i) {
        const QByteArray bytes = random.bytes(random.below(20));
        const int pos = random.position(bytes.size());
        const int len = random.position(bytes.size());
        ASSERT_EQ(HxMidiData(bytes).toAsciiString(pos, len),
                  transcription::toAsciiString(bytes, pos, len));
        const int nearPos = random.between(-4, bytes.size() + 4);
        const int nearLen = random.between(-4, bytes.size() + 4);
        ASSERT_EQ(HxMidiData(bytes).getString(nearPos, nearLen),
                  transcription::getString(bytes, nearPos, nearLen))
            << nearPos << ' ' << nearLen;
    }
}

TEST(FieldsAgainstSteps, textsThatReachTheirCap)
{
    const QByteArray bytes("ABC");
    for (const int pos : {-2147483647 - 1, -1, 0, 2, 2147483647}) {
        ASSERT_EQ(HxMidiData(bytes).getString(pos, 2147483647),
                  transcription::getString(bytes, pos, 2147483647))
            << pos;
    }
}

TEST(FieldsAgainstSteps, sums)
{
    Random random(4);
    for (int i = 0; i < 60000; ++i) {
        const QByteArray bytes = random.bytes(random.below(40));
        const HxMidiData data(bytes);
        const int pos = random.position(bytes.size());
        const int end = random.position(bytes.size());
        ASSERT_EQ(data.sumOfSection(pos, end), transcription::sumOfSection(bytes, pos, end))
            << pos << ' ' << end;
        ASSERT_EQ(data.sum32(static_cast<unsigned int>(pos), end),
                  transcription::sum32(bytes, static_cast<unsigned int>(pos), end))
            << pos << ' ' << end;
    }
}

TEST(FieldsAgainstSteps, packing)
{
    Random random(5);
    for (int i = 0; i < 30000; ++i) {
        const QByteArray source = random.bytes(random.below(60));
        QByteArray packed(source.size() + (source.size() + 6) / 7, '\0');
        const auto n = static_cast<unsigned int>(source.size());
        const unsigned int written = HxMidiData().cvt8to7(packed.data(), source.constData(), n);
        ASSERT_EQ(static_cast<int>(written), packed.size());
        ASSERT_EQ(packed, transcription::cvt8to7(source));
    }
}

// Blocks with one of four words, found by each of the ways that a processor may take.
#include "mididata/fast/WordScan.h"

#include "tests/mididata/Random.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <cstring>

namespace {

bool hasWord(const hx::SoughtWords& sought, const char* block)
{
    for (qint64 i = 0; i < hx::wordBlock; i += 2) {
        for (const quint16 word : sought) {
            if (std::memcmp(block + i, &word, sizeof(word)) == 0)
                return true;
        }
    }
    return false;
}

qint64 findOneByOne(const hx::SoughtWords& sought, const char* data, qint64 at, qint64 last)
{
    while (at <= last && !hasWord(sought, data + at))
        at += hx::wordBlock;
    return at;
}

} // namespace

TEST(WordScan, everyWayFindsTheBlockThatTheWordsTellOneByOne)
{
    const hx::SoughtWords sought = {0x00F0, 0x6B00, 0x0600, 0xB206};
    Random random(1);
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes(64 + random.below(400), '\x11');
        for (int k = random.below(3); k > 0; --k) {
            const int at = random.below(bytes.size() - 1);
            std::memcpy(bytes.data() + at, &sought[random.below(4)], 2);
        }
        const qint64 last = bytes.size() - hx::wordBlock;
        const qint64 at = random.below(static_cast<int>(last) + 1);
        const qint64 expected = findOneByOne(sought, bytes.constData(), at, last);
        ASSERT_EQ(hx::findWords(sought, bytes.constData(), at, last), expected);
        ASSERT_EQ(hx::findWordsAnywhere(sought, bytes.constData(), at, last), expected);
    }
}

// Every short pattern over every kind of item, beside the regular expression that it stands for; on more
// buffers in exhaustive/, which takes minutes.
#include "tests/mididata/Bytes.h"
#include "tests/mididata/ShortPatterns.h"
#include "tests/support/LeakCheckPause.h"

#include <gtest/gtest.h>

namespace {

// Buffers of up to three bytes in which these items fit in some places and not in others.
const QList<QByteArray> buffers = {hex(""), hex("F0"), hex("0F"), hex("F07F"), hex("7F00F0")};

// Adds 2 for each buffer and returns the first that matches otherwise than the expression, or -1.
int firstDifference(const std::string& pattern, int& comparisons)
{
    const QRegExp rx(expressionOfItems(pattern));
    for (int i = 0; i < buffers.size(); ++i) {
        const HxMidiData data(buffers[i]);
        const int position = rx.indexIn(QString::fromLatin1(buffers[i].toHex().toUpper()));
        comparisons += 2;
        if (data.match(pattern.c_str(), false) != (position >= 0) ||
            data.match(pattern.c_str(), true) != (position == 0))
            return i;
    }
    return -1;
}

} // namespace

// Some of these are no regular expressions; QRegExp's parser loses memory over them.
TEST(MatchingExhaustive, everyPatternOfUpToFiveItems)
{
    const LeakCheckPause pause;
    int comparisons = 0;
    for (const std::string& pattern : shortPatterns(5)) {
        const int differing = firstDifference(pattern, comparisons);
        ASSERT_EQ(differing, -1) << '"' << pattern << "\" on "
                                 << buffers.value(differing).toHex().toStdString();
    }
    EXPECT_EQ(comparisons, 1111110);
}

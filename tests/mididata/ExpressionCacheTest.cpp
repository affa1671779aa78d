// Patterns that only a regular expression describes, matched again and again.
#include "tests/mididata/Bytes.h"
#include "tests/mididata/transcription/Transcription.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

#include <dlfcn.h>

namespace {

const QByteArray reply = hex("F0006B2D3041430C00F7");

// Outside the small grammar: "^", with `count` of any digits in the end.
QByteArray outsidePattern(int count)
{
    return "^F0006B2D30(41|42)430C.{" + QByteArray::number(count) + ",}";
}

void matchManyInTurn(int patterns)
{
    const HxMidiData data(reply);
    for (int round = 0; round < 3; ++round) {
        for (int count = 0; count < patterns; ++count)
            EXPECT_EQ(data.match(outsidePattern(count).constData(), true), count <= 4) << count;
    }
}

} // namespace

TEST(ExpressionCache, aPatternGivesTheSameForEveryBufferItIsMatchedWith)
{
    const QByteArray pattern = outsidePattern(2);
    for (const char* bytes :
         {"F0006B2D3041430C00F7", "F0006B2D3043430C00F7", "", "F0006B2D3042430C0F",
          "00F0006B2D3041430C00F7", "F0006B2D3041430C00F7"}) {
        for (const bool atStart : {true, false})
            EXPECT_EQ(HxMidiData(hex(bytes)).match(pattern.constData(), atStart),
                      transcription::match(hex(bytes), pattern.constData(), atStart))
                << bytes;
    }
}

// Texts of up to 1024 bytes are written over each other.
TEST(ExpressionCache, aPatternGivesTheSameForBuffersOfEveryLength)
{
    const char* const pattern = "^F0.+41F7$";
    for (const int length : {4, 3, 1023, 1024, 1025, 5, 5, 2000, 1024, 1, 4}) {
        for (const char last : {'\xF7', '\xF6'}) {
            QByteArray bytes(length, '\x41');
            bytes.replace(0, 1, "\xF0");
            bytes.replace(length - 1, 1, &last, 1);
            EXPECT_EQ(HxMidiData(bytes).match(pattern, true),
                      transcription::match(bytes, pattern, true))
                << length << " bytes";
        }
    }
}

TEST(ExpressionCache, morePatternsThanAreKeptStillMatch)
{
    for (const int patterns : {1, 7, 8, 9, 20})
        matchManyInTurn(patterns);
}

TEST(ExpressionCache, eachThreadHasItsOwn)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(matchManyInTurn, 12);
    for (std::thread& thread : threads)
        thread.join();
}

TEST(ExpressionCache, aLibraryIsUnloadedWhileAThreadThatMatchedStillRuns)
{
    void* const library = dlopen(MATCHING_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    using Matches = bool (*)(const char*, const char*);
    const auto matches = reinterpret_cast<Matches>(dlsym(library, "matchesInLibrary"));
    std::promise<void> matched;
    std::promise<void> unloaded;
    std::thread thread([&] {
        EXPECT_TRUE(matches("F0006B2D3041430C00F7", outsidePattern(2).constData()));
        matched.set_value();
        unloaded.get_future().wait();
    });
    matched.get_future().wait();
    EXPECT_TRUE(matches("F0006B2D3042430C00F7", outsidePattern(2).constData()));
    EXPECT_EQ(dlclose(library), 0);
    EXPECT_EQ(dlopen(MATCHING_LIBRARY, RTLD_LAZY | RTLD_NOLOAD), nullptr);
    unloaded.set_value();
    thread.join();
}

// Patterns and bytes looked for in long buffers that do not hold them.
#include "bench/Bench.h"
#include "bench/HexPeers.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#ifdef HXBENCH_HYPERSCAN
#include <hs.h>
#endif
#ifdef HXBENCH_RE2
#include <re2/re2.h>
#endif

#include <cstring>
#include <memory>
#include <string>

namespace hxbench {

namespace {

constexpr auto pattern = "F0006B2D30..4[23]0C";

#ifdef HXBENCH_HYPERSCAN
// An expression compiled beforehand; says only whether it occurs.
class HyperscanExpression {
public:
    explicit HyperscanExpression(const char* text)
    {
        hs_compile_error_t* error = nullptr;
        hs_compile(text, HS_FLAG_SINGLEMATCH, HS_MODE_BLOCK, nullptr, &m_database, &error);
        hs_alloc_scratch(m_database, &m_scratch);
    }
    ~HyperscanExpression()
    {
        hs_free_scratch(m_scratch);
        hs_free_database(m_database);
    }
    HyperscanExpression(const HyperscanExpression&) = delete;
    HyperscanExpression& operator=(const HyperscanExpression&) = delete;

    bool occursIn(const QByteArray& text) const
    {
        const auto stop = [](unsigned, unsigned long long, unsigned long long, unsigned, void*) {
            return 1;
        };
        return hs_scan(m_database, text.constData(), static_cast<unsigned>(text.size()), 0,
                       m_scratch, stop, nullptr) == HS_SCAN_TERMINATED;
    }

private:
    hs_database_t* m_database = nullptr;
    hs_scratch_t* m_scratch = nullptr;
};
#endif

void addPatternSearch(int size)
{
    const HxMidiData data(mixedBytes(size));
    const QByteArray text = data.bytes.toHex().toUpper();
    const std::string name = "search/" + sizeName(size) + "/";
    add(name + "own", [=] { return data.match(pattern, false); });
    if (size <= 65536)
        add(name + "steps", [=] { return transcription::match(data.bytes, pattern, false); });
#ifdef HXBENCH_RE2
    const auto re2 = std::make_shared<re2::RE2>(pattern);
    const re2::StringPiece piece(text.constData(), static_cast<size_t>(text.size()));
    add(name + "re2", [=] { return !text.isNull() && re2::RE2::PartialMatch(piece, *re2); });
#endif
#ifdef HXBENCH_HYPERSCAN
    const auto hyperscan = std::make_shared<HyperscanExpression>(pattern);
    add(name + "hyperscan", [=] { return hyperscan->occursIn(text); });
#endif
}

// What the pattern begins with, again and again: every block holds a place that nearly fits.
void addNearlyEverywhere(int size)
{
    QByteArray bytes;
    while (bytes.size() < size)
        bytes += QByteArray("\xF0\x00\x6B\x2D\x30", 5);
    const HxMidiData data(bytes.left(size));
    add("search nearly everywhere/" + sizeName(size) + "/own",
        [=] { return data.match(pattern, false); });
}

void addRawSearch(int size)
{
    const HxMidiData data(mixedBytes(size));
    const QByteArray part("\xF0\x00\x6B\x2D\x30\x41", 6);
    const std::string name = "contains/" + sizeName(size) + "/";
    add(name + "own", [=] { return data.contains(part); });
    add(name + "qbytearray", [=] { return data.bytes.contains(part); });
    add(name + "memmem", [=] {
        return memmem(data.bytes.constData(), static_cast<size_t>(size), part.constData(),
                      static_cast<size_t>(part.size())) != nullptr;
    });
#ifdef HXBENCH_ABSL
    add(name + "absl", [=] { return abslContains(data.bytes, part); });
#endif
}

} // namespace

void addSearching()
{
    for (const int size : {1024, 65536, 1 << 20}) {
        addPatternSearch(size);
        addRawSearch(size);
    }
    for (const int size : {65536, 2 * 65536, 4 * 65536})
        addNearlyEverywhere(size);
}

} // namespace hxbench

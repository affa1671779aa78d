// diff, diffToMap, isSame and hash, against the transcription.
#include "fuzz/support/FuzzTarget.h"
#include "mididata/HxMidiData.h"
#include "qt/Saturated.h"
#include "tests/mididata/transcription/Transcription.h"

namespace {

using namespace hx::fuzz;

// Two long buffers that differ in a few places, for the ranges that lie far out.
std::pair<QByteArray, QByteArray> longBuffers(FuzzInput& input)
{
    QByteArray mine(600 + input.byte(), static_cast<char>(input.byte()));
    QByteArray other = mine;
    for (int left = input.byte() % 8; left > 0; --left) {
        const int at = static_cast<int>(input.word() >> 22); // 0 to 1023
        if (at < other.size())
            other[at] = static_cast<char>(other.at(at) + input.byte() % 16 - 8);
    }
    if (input.flag())
        other.chop(input.byte());
    return {mine, other};
}

std::pair<QByteArray, QByteArray> shortBuffers(FuzzInput& input)
{
    const QByteArray mine = input.block();
    QByteArray other = input.rest();
    if (other.size() < mine.size() && (other.size() & 1) != 0)
        other += mine.mid(other.size());
    return {mine, other};
}

void compare(const HxMidiData& mine, const HxMidiData& other, int first, int second)
{
    const QByteArray& a = mine.bytes;
    const QByteArray& b = other.bytes;
    requireSame(mine.isSame(other), transcription::isSame(a, b), "isSame");
    requireSame(mine.isSame(other), other.isSame(mine), "isSame either way");
    require(mine.isSame(mine), "a buffer is the same as itself");
    requireSame(mine.diff(other, first, second), transcription::diff(a, b, first, second), "diff");
    requireSame(mine.diff(b.constData(), hx::saturated(b.size())),
                transcription::diff(a, b, -1, -1), "diff with raw bytes");
    requireSame(mine.diffToMap(other, {first, second}),
                transcription::diffToMap(a, b, {first, second}), "diffToMap");
    requireSame(mine.diff(mine, first, second), QStringList(), "no difference with itself");
    requireSame(mine.hash(), transcription::hash(a), "hash");
}

// The map of all differences is what makes one buffer of the other.
void applyDifferences(const HxMidiData& mine, const HxMidiData& other)
{
    if (mine.bytes.size() != other.bytes.size())
        return;
    HxMidiData copy = mine;
    const QMap<unsigned int, unsigned char> map = mine.diffToMap(other, {0, -1});
    for (auto at = map.cbegin(); at != map.cend(); ++at)
        copy.bytes[static_cast<int>(at.key())] = static_cast<char>(at.value());
    requireSame(copy.bytes, other.bytes, "the map leads to the other buffer");
    requireSame(map.size(), mine.diff(other, -1, -1).size(), "as many entries as lines");
}

void run(FuzzInput& input)
{
    const int first = input.number();
    const int second = input.number();
    const auto buffers = input.flag() ? longBuffers(input) : shortBuffers(input);
    const HxMidiData mine(buffers.first);
    const HxMidiData other(buffers.second);
    compare(mine, other, first, second);
    applyDifferences(mine, other);
}

const Target target("comparison", run);

} // namespace

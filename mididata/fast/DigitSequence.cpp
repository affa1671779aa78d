#include "mididata/fast/DigitPattern.h"

namespace hx {

const char* DigitSequence::read(const char* at)
{
    DigitMask* begin = masks;
    DigitMask* next = masks;
    runCount = 0;
    while (at != nullptr && next < masks + maxDigits) {
        const DigitMask mask = plainMask(*at);
        if (mask != notPlain) {
            *next++ = mask;
            ++at;
        } else if (endsSequence(*at)) {
            runs[runCount++] = {begin, next};
            return at;
        } else if (*at != '*') {
            at = readSpecialItem(at, next);
        } else if (next != begin && next[-1] == anyDigit) {
            runs[runCount++] = {begin, next - 1};
            begin = next;
            ++at;
        } else {
            return nullptr;
        }
    }
    return nullptr;
}

bool DigitSequence::isFound(const BufferDigits& digits, qint64 pos) const
{
    for (int i = 0; i < runCount; ++i) {
        pos = digits.find(runs[i], pos);
        if (pos < 0)
            return false;
        pos += runs[i].size();
    }
    return true;
}

} // namespace hx

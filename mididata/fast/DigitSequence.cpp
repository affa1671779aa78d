#include "mididata/fast/DigitSequence.h"

#include <algorithm>

namespace hx {

const char* DigitSequence::read(const char* at)
{
    DigitMask* begin = m_masks;
    DigitMask* next = m_masks;
    m_runCount = 0;
    for (at = skipBlanks(at); !endsSequence(*at);) {
        const PatternItem item = readItem(at);
        if (item.next == nullptr || (next - m_masks) + m_runCount >= maxDigits)
            return nullptr;
        next = std::fill_n(next, item.width, item.mask);
        if (item.hasGap) {
            m_runs[m_runCount++] = {begin, next};
            begin = next;
        }
        at = item.next;
    }
    m_runs[m_runCount++] = {begin, next};
    return at;
}

bool DigitSequence::isFound(const BufferDigits& digits, qint64 pos) const
{
    for (int i = 0; i < m_runCount; ++i) {
        pos = digits.find(m_runs[i], pos);
        if (pos < 0)
            return false;
        pos += m_runs[i].size();
    }
    return true;
}

} // namespace hx

#include "mididata/fast/DigitPattern.h"

#include "mididata/fast/DigitSequence.h"
#include "mididata/fast/PatternBlocks.h"
#include "mididata/fast/PlainPattern.h"

namespace hx {

namespace {

// Reads a pattern's sequences with a reader: read(at) reads one and returns the place where it
// ends, or null when it is outside the grammar; hasFit() says whether one of them fits.
template <typename Reader>
Fit readPattern(const char* at, Reader&& reader)
{
    at = skipBlanks(at);
    if (*at != '(') {
        at = reader.read(at);
    } else {
        do {
            at = skipBlanks(at + 1);
            at = endsSequence(*at) ? nullptr : reader.read(at);
        } while (at != nullptr && *at == '|');
        at = at != nullptr && *at == ')' ? skipBlanks(at + 1) : nullptr;
    }
    if (at == nullptr || *at != '\0')
        return Fit::OutsideGrammar;
    return reader.hasFit() ? Fit::Yes : Fit::No;
}

// Looks for each sequence anywhere.
class SearchReader {
public:
    explicit SearchReader(const QByteArray& bytes) : m_digits(bytes) {}

    const char* read(const char* at)
    {
        DigitSequence sequence;
        at = sequence.read(at);
        m_found = m_found || (at != nullptr && sequence.isFound(m_digits, 0));
        return at;
    }

    bool hasFit() const { return m_found; }

private:
    BufferDigits m_digits;
    bool m_found = false;
};

// Compares each sequence with the buffer's start while it reads, item by item.
class StartReader {
public:
    StartReader(const char* begin, const char* end, const QByteArray& bytes)
        : m_bytes(bytes), m_digits(bytes), m_begin(begin), m_end(end)
    {
    }

    const char* read(const char* at);

    bool hasFit() const { return m_found; }

private:
    const char* skipSequence(const char* at) const;
    const char* readItems(const char* at);
    const char* skipFitting(const char* at, qint64& pos) const;
    const char* readAfterGap(const char* at, qint64 pos);

    const QByteArray& m_bytes;
    BufferDigits m_digits;
    const char* m_begin;
    const char* m_end;
    bool m_found = false;
};

// Reads the rest of a sequence, of which no digit counts any more.
const char* StartReader::skipSequence(const char* at) const
{
    while (at != nullptr) {
        at = skipPlainBlocks(m_begin, at, m_end);
        if (endsSequence(*at))
            return at;
        at = readItem(at).next;
    }
    return nullptr;
}

// Reads the rest of a sequence, which may be anywhere from the digit `pos` on.
const char* StartReader::readAfterGap(const char* at, qint64 pos)
{
    DigitSequence rest;
    at = rest.read(at);
    m_found = at != nullptr && rest.isFound(m_digits, pos);
    return at;
}

// One of several sequences may be plain though the pattern is not.
const char* StartReader::read(const char* at)
{
    if (m_found)
        return skipSequence(at);
    const char* const end = at == m_begin ? at : sequenceEnd(at, m_end);
    const PlainFit plain = fitPlain(at, end - at, m_bytes);
    m_found = plain == PlainFit::Yes;
    return plain == PlainFit::NotPlain ? readItems(at) : end;
}

// As skipFittingPairs(); the last characters of the pattern are compared at once.
const char* StartReader::skipFitting(const char* at, qint64& pos) const
{
    const char* const bytes = m_digits.wholeBytes(pos, m_end - at);
    return bytes != nullptr && fitsRest(m_begin, at, m_end, bytes)
               ? m_end
               : m_digits.skipFittingPairs(at, pos);
}

const char* StartReader::readItems(const char* at)
{
    const ComparedBlocks blocks = compareBlocks(at, m_end, m_bytes);
    if (!blocks.fit)
        return skipSequence(blocks.next);
    qint64 pos = blocks.digit;
    for (at = skipFitting(blocks.next, pos); !endsSequence(*at);) {
        const PatternItem item = readItem(at);
        if (item.next == nullptr)
            return nullptr;
        if (!m_digits.haveAll(item.mask, pos, item.width))
            return skipSequence(item.next);
        pos += item.width;
        if (item.hasGap)
            return readAfterGap(item.next, pos);
        at = skipFitting(item.next, pos);
    }
    m_found = true;
    return at;
}

// Apart from fitItems(): its sequence takes much of the stack.
Q_NEVER_INLINE Fit search(const char* pattern, const QByteArray& bytes)
{
    return readPattern(pattern, SearchReader(bytes));
}

} // namespace

Fit fitItems(const char* pattern, const char* end, const QByteArray& bytes, bool atStart)
{
    // What fits at the start fits anywhere, and is found sooner.
    const Fit fit = readPattern(pattern, StartReader(pattern, end, bytes));
    return atStart || fit != Fit::No ? fit : search(pattern, bytes);
}

} // namespace hx

#include "mididata/fast/DigitPattern.h"

namespace hx {

namespace {

/**
 * Reads a pattern's sequences with a reader: read(at) reads one and returns the place where it
 * ends, or null when it is outside the grammar; fits() says whether one of them so far fits.
 */
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
    return reader.fits() ? Fit::Yes : Fit::No;
}

/** Reads each sequence whole, then looks for it. */
class SequenceReader {
public:
    SequenceReader(const QByteArray& bytes, bool start) : digits(bytes), atStart(start) {}

    const char* read(const char* at)
    {
        DigitSequence sequence;
        at = sequence.read(at);
        found = found || (at != nullptr && sequence.fits(digits, atStart));
        return at;
    }

    bool fits() const { return found; }

private:
    BufferDigits digits;
    bool atStart;
    bool found = false;
};

/** Compares each sequence with the buffer's start while it reads. */
class StartReader {
public:
    explicit StartReader(const QByteArray& bytes) : digits(bytes) {}

    const char* read(const char* at);

    bool fits() const { return found; }

private:
    const char* readFittingItem(const char* at, qint64& pos) const;
    const char* readBehindGap(const char* at, qint64 pos);

    BufferDigits digits;
    bool found = false;
};

/** Reads an item and steps over its digit. Null when it does not fit or is outside the grammar. */
const char* StartReader::readFittingItem(const char* at, qint64& pos) const
{
    DigitMask mask = plainMask(*at);
    if (mask != notPlain)
        return digits.has(mask, pos++) ? at + 1 : nullptr;
    DigitMask* next = &mask;
    at = readSpecialItem(at, next);
    const bool isBlank = next == &mask;
    return isBlank || digits.has(mask, pos++) ? at : nullptr;
}

/** Reads the rest of a sequence, which may stand anywhere from the digit `pos` on. */
const char* StartReader::readBehindGap(const char* at, qint64 pos)
{
    DigitSequence rest;
    at = rest.read(at);
    found = at != nullptr && rest.isFound(digits, pos);
    return at;
}

const char* StartReader::read(const char* at)
{
    const char* const begin = at;
    qint64 pos = 0;
    const char* next = found ? nullptr : at; // after one that fits, only the grammar matters
    for (; next != nullptr; next = readFittingItem(at, pos)) {
        at = pos % 2 == 0 ? digits.skipFittingPairs(next, pos) : next;
        if (at[0] == '.' && at[1] == '*')
            return readBehindGap(at + 2, pos);
        if (at[0] == '*') // its dot was in a pair
            return at != begin && at[-1] == '.' ? readBehindGap(at + 1, pos - 1) : nullptr;
        if (isX(*at)) // perhaps the beginning of a gap, "XX*"
            return nullptr;
        if (endsSequence(*at)) {
            found = true;
            return at;
        }
    }
    DigitSequence rest;
    return rest.read(at);
}

} // namespace

Fit fitAtStart(const char* pattern, const QByteArray& bytes)
{
    return readPattern(pattern, StartReader(bytes));
}

Fit fit(const char* pattern, const QByteArray& bytes, bool atStart)
{
    return readPattern(pattern, SequenceReader(bytes, atStart));
}

} // namespace hx

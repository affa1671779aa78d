// Words of two bytes looked for at every other place.
//
// Equal to looking at each place for three neighbouring bytes, but for blocks that hold them nowhere:
// wherever the three are, their first two or their last two are a word that begins an even number of
// bytes after the block. So half of the places need not be looked at. A block that is found may hold
// one of the words by chance.
#pragma once

#include <QtGlobal>

namespace hx {

// The words of two triples of bytes, as they lie in memory.
using SoughtWords = quint16[4];

constexpr qint64 wordBlock = 64; // bytes

// The first of the blocks at `at`, one block after it and so on, up to `last`, that holds one of the
// words; a place after `last` when there is none.
qint64 findWords(const SoughtWords& sought, const char* data, qint64 at, qint64 last);

// The same without what only some processors have.
qint64 findWordsAnywhere(const SoughtWords& sought, const char* data, qint64 at, qint64 last);

} // namespace hx

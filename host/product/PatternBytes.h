/** @file
 * What the text of a reply pattern says about the bytes of a message.
 */
#pragma once

#include <QString>

#include <vector>

namespace hx {

/** What a pattern says about one byte. */
struct PatternByte {
    enum class Kind {
        Fixed,   /**< has this value: "41" */
        Limited, /**< one of some: "4[23]" */
        Open,    /**< any: ".." */
    };

    Kind kind = Kind::Open;
    quint8 value = 0; /**< when it is fixed */

    bool isOpen() const { return kind == Kind::Open; }
    bool isFixed() const { return kind == Kind::Fixed; }
};

/**
 * The bytes that a pattern fixes or leaves open; of several alternatives, those of the first. They
 * end where the pattern no longer says how many bytes follow ("..*") or describes something else.
 * `isWhole` is true when the whole pattern was read.
 */
struct PatternBytes {
    std::vector<PatternByte> bytes;
    bool isWhole = false;
};

PatternBytes patternBytes(const QString& pattern);

/**
 * Where the value is in the replies of a pattern: its last open bytes. Positions count from the F0.
 */
struct ReplyLayout {
    int position = 0;
    int count = 0; /**< 0: the pattern does not say */

    bool isKnown() const { return count > 0; }
    int replyBytes() const { return position + count + 1; } /**< with the F7 */
};

ReplyLayout replyLayout(const QString& pattern);

} // namespace hx

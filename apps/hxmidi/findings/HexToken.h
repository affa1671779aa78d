// One token of hex digits as the library turns it into bytes, and what may surprise about it.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include <QByteArray>

namespace hx {

struct HexToken {
    enum class Kind {
        Number,
        NotHex,   // no hex number at all
        TooLarge, // one that does not fit a signed 32-bit integer
        MinusOne, // 0xFFFFFFFF, the one value without bytes
    };

    Kind kind = Kind::NotHex;
    QByteArray bytes; // of a Number
};

HexToken readHexToken(const QByteArray& token);

// Warns when the bytes are not the ones that the digits show: of 123 only the low byte is kept.
void warnOfSurprise(const QByteArray& token, const HexToken& read, const Place& place,
                    Findings& findings);

// Reports a token that is no Number, with `severity`; `next` says what to do where nothing better
// is known.
void reportBadToken(const QByteArray& token, const HexToken& read, const Place& place,
                    Severity severity, const QString& next, Findings& findings);

} // namespace hx

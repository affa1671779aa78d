// System Exclusive messages in words, as far as every maker's mean the same.
#pragma once

#include "mididata/HxMidiData.h"

#include <QJsonObject>
#include <QStringList>

namespace hx::midi {

struct MessageMeaning {
    QString words;       // empty for a message that is not System Exclusive
    QStringList parts;   // of an identity reply, each in words
    QJsonObject details; // "kind" and, of an identity reply, its parts
};

// What one message says, beginning with its status byte. Only the identity request and reply are
// taken apart; of other messages there is the family they belong to.
MessageMeaning meaningOf(const HxMidiData& message);

} // namespace hx::midi

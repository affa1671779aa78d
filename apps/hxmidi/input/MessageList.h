// The messages of a byte stream with their places and meanings.
#pragma once

#include "apps/hxmidi/input/UniversalMessage.h"

#include <QJsonArray>

namespace hx::midi {

struct PlacedMessage {
    int at; // index of the first byte
    HxMidiData data;
    MessageMeaning meaning;
};

// The pieces of splitOnStatus().
QList<PlacedMessage> messagesOf(const HxMidiData& stream);

// Objects with at, bytes and, where there is one, meaning.
QJsonArray toJson(const QList<PlacedMessage>& messages);

} // namespace hx::midi

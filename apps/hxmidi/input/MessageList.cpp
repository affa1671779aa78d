#include "apps/hxmidi/input/MessageList.h"

#include "qt/Saturated.h"

namespace hx::midi {

QList<PlacedMessage> messagesOf(const HxMidiData& stream)
{
    QList<PlacedMessage> messages;
    int at = 0;
    for (const HxMidiData& piece : stream.splitOnStatus()) {
        messages += PlacedMessage{at, piece, meaningOf(piece)};
        at += saturated(piece.bytes.size());
    }
    return messages;
}

QJsonArray toJson(const QList<PlacedMessage>& messages)
{
    QJsonArray array;
    for (const PlacedMessage& message : messages) {
        QJsonObject object{{QStringLiteral("at"), message.at},
                           {QStringLiteral("bytes"), message.data.toString(' ', -1)}};
        if (!message.meaning.words.isEmpty()) {
            object.insert(QStringLiteral("words"), message.meaning.words);
            object.insert(QStringLiteral("meaning"), message.meaning.details);
        }
        array.append(object);
    }
    return array;
}

} // namespace hx::midi

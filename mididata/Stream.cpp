#include "mididata/HxMidiData.h"

#include <QDataStream>

QDataStream& operator<<(QDataStream& stream, const HxMidiData& data)
{
    return stream << data.bytes;
}

QDataStream& operator>>(QDataStream& stream, HxMidiData& data)
{
    return stream >> data.bytes;
}

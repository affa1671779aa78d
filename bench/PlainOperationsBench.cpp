#include "bench/Bench.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <QDataStream>
#include <QIODevice>

namespace hxbench {

namespace {

template <typename Value>
QByteArray streamed(const Value& value)
{
    QByteArray form;
    QDataStream stream(&form, QIODevice::WriteOnly);
    stream << value;
    return form;
}

void addHash()
{
    const HxMidiData data(mixedBytes(4096));
    add("hash/4K/own", [=] { return data.hash(); });
    add("hash/4K/steps", [=] { return transcription::hash(data.bytes); });
}

void addStream()
{
    const HxMidiData data(mixedBytes(48));
    add("stream/48/own", [=] { return streamed(data); });
    add("stream/48/steps", [=] { return streamed(data.bytes); });
}

void addCopy()
{
    const HxMidiData data(mixedBytes(48));
    add("copy/48/own", [=] { return HxMidiData(data); });
    add("copy/48/steps", [=] { return QByteArray(data.bytes); });
}

void addAppend()
{
    const HxMidiData data(mixedBytes(48));
    add("append/48/own", [=] {
        HxMidiData sum(data);
        sum.append(data);
        return sum;
    });
    add("append/48/steps", [=] {
        QByteArray sum(data.bytes);
        sum.append(data.bytes);
        return sum;
    });
}

} // namespace

void addPlainOperations()
{
    addHash();
    addStream();
    addCopy();
    addAppend();
}

} // namespace hxbench

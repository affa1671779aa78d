#include "bench/Bench.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <QList>

namespace hxbench {

namespace {

/** Cuts where the cuts are known: one array and one list element a piece. */
QList<HxMidiData> cutEvery(int length, const QByteArray& stream)
{
    QList<HxMidiData> pieces;
    for (int at = 0; at < stream.size(); at += length) {
        pieces.append(HxMidiData());
        pieces.last().bytes = QByteArray(stream.constData() + at, length);
    }
    return pieces;
}

/** The steps' pieces as the list of buffers that the operation returns. */
QList<HxMidiData> steps(const QByteArray& stream)
{
    QList<HxMidiData> pieces;
    for (const QByteArray& piece : transcription::splitOnStatus(stream))
        pieces.append(HxMidiData(piece));
    return pieces;
}

} // namespace

void addCutting()
{
    for (const int size : {1 << 20, 1 << 21, 1 << 22}) {
        const std::string name = "splitOnStatus/" + sizeName(size) + "/";
        const HxMidiData data(messageStream(size));
        add(name + "own", [=] { return data.splitOnStatus(); });
        add(name + "steps", [=] { return steps(data.bytes); });
        add(name + "floor", [=] { return cutEvery(48, data.bytes); });
    }
    const HxMidiData data(messageStream(1 << 20, 267));
    add("splitOnStatus/267/own", [=] { return data.splitOnStatus(); });
    add("splitOnStatus/267/floor", [=] { return cutEvery(267, data.bytes); });
}

} // namespace hxbench

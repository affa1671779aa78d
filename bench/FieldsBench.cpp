#include "bench/Bench.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <memory>
#include <numeric>

namespace hxbench {

namespace {

constexpr int mebi = 1 << 20;

void addSums()
{
    for (const int size : {48, mebi}) {
        const HxMidiData data(mixedBytes(size));
        add("sum32/" + sizeName(size) + "/own", [=] { return data.sum32(0, size); });
        add("sum32/" + sizeName(size) + "/accumulate", [=] {
            const auto* const bytes =
                reinterpret_cast<const unsigned char*>(data.bytes.constData());
            return std::accumulate(bytes, bytes + data.bytes.size(), 0u);
        });
    }
    const HxMidiData data(mixedBytes(mebi));
    add("sum32/1M/steps", [=] { return transcription::sum32(data.bytes, 0, mebi); });
    add("sumOfSection/1M/own", [=] { return data.sumOfSection(0, -1); });
    add("sumOfSection/1M/steps", [=] { return transcription::sumOfSection(data.bytes, 0, -1); });
}

void addPacking()
{
    const QByteArray source = mixedBytes(mebi);
    const auto room = std::make_shared<QByteArray>(mebi + (mebi + 6) / 7, '\0');
    add("cvt8to7/1M/own",
        [=] { return HxMidiData().cvt8to7(room->data(), source.constData(), mebi); });
    add("cvt8to7/1M/steps", [=] { return transcription::cvt8to7(source); });
}

void addGetters()
{
    const HxMidiData data(mixedBytes(48));
    add("getters/48/own", [=] {
        return data.get14bit(3, 0) + data.get32bit(5, 0) + data.toInt(9, 4, 0) +
               static_cast<int>(data.getUtime(11, 0));
    });
    add("getters/48/steps", [=] {
        return transcription::get14bit(data.bytes, 3, 0) +
               transcription::get32bit(data.bytes, 5, 0) +
               transcription::toInt(data.bytes, 9, 4, 0) +
               static_cast<int>(transcription::getUtime(data.bytes, 11, 0));
    });
}

} // namespace

void addFields()
{
    addSums();
    addPacking();
    addGetters();
}

} // namespace hxbench

// Standard MIDI Files: files written from events, whose messages are known, and damaged ones.
#include "fuzz/support/FuzzTarget.h"
#include "fuzz/support/ImageChecks.h"

#include <algorithm>
#include <map>

namespace {

using namespace hx;
using namespace hx::fuzz;

struct Event {
    qint64 ticks = 0;
    QByteArray stream; // what it adds to the SysEx bytes
};

QByteArray bigEndian(quint32 value, int size)
{
    QByteArray bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

QByteArray variableLength(quint32 value)
{
    QByteArray bytes(1, static_cast<char>(value & 0x7F));
    while ((value >>= 7) != 0)
        bytes.prepend(static_cast<char>(0x80 | (value & 0x7F)));
    return bytes;
}

// Writes one event into the track, and what it means into `events`.
QByteArray writeEvent(FuzzInput& input, qint64* ticks, std::vector<Event>* events)
{
    const int how = input.byte();
    const quint32 delta = how & 0x20 ? input.word() >> 4 : quint32(how >> 6);
    *ticks += delta;
    QByteArray content = input.take(how % 16);
    if (how & 0x10)
        content += '\xF7';
    const QByteArray written = variableLength(static_cast<quint32>(content.size())) + content;
    switch (input.choice(3)) {
    case 0:
        events->push_back({*ticks, '\xF0' + content});
        return variableLength(delta) + '\xF0' + written;
    case 1:
        events->push_back({*ticks, content});
        return variableLength(delta) + '\xF7' + written;
    default:
        return variableLength(delta) + '\xFF' + static_cast<char>(how & 0x7F) + written;
    }
}

QByteArray writeTrack(FuzzInput& input, std::vector<Event>* events)
{
    qint64 ticks = 0;
    QByteArray track;
    for (int left = input.choice(8); left > 0; --left)
        track += writeEvent(input, &ticks, events);
    return "MTrk" + bigEndian(static_cast<quint32>(track.size()), 4) + track;
}

QByteArray writeFile(FuzzInput& input, std::vector<Event>* events)
{
    const int tracks = input.choice(4);
    const QByteArray more = input.take(input.choice(4)); // a longer header is allowed
    QByteArray content = "MThd" + bigEndian(6 + static_cast<quint32>(more.size()), 4);
    content += bigEndian(static_cast<quint32>(input.choice(2)), 2);
    content += bigEndian(static_cast<quint32>(tracks), 2) + bigEndian(96, 2) + more;
    for (int i = 0; i < tracks; ++i)
        content += writeTrack(input, events);
    return content;
}

void damage(FuzzInput& input, QByteArray* content)
{
    for (int left = 1 + input.choice(3); left > 0; --left) {
        const auto at = input.byte() % content->size();
        (*content)[at] = static_cast<char>(input.byte());
    }
    if (input.flag())
        content->truncate(4 + input.byte());
}

void checkPlaces(const QByteArray& content, const ImageFile& file)
{
    for (const FileMessage& message : file.messages) {
        for (int i = 0; i < message.data.bytes.size(); ++i)
            requireSame(content.at(int(message.offsetOf(i))), message.data.bytes.at(i),
                        "a byte's place");
    }
}

// The messages of all tracks by their time, those of equal time in the order of the file.
void checkMessages(const std::vector<Event>& events, const ImageFile& file)
{
    std::multimap<qint64, QByteArray> byTime; // which keeps the order of equal times
    for (const Event& event : events)
        byTime.emplace(event.ticks, event.stream);
    QByteArray stream;
    for (const auto& event : byTime)
        stream += event.second;
    const ScannedMessages expected = scanMessages(stream);
    requireSame(messagesOf(file), expected.messages, "the messages of the tracks");
    requireSame(file.problems.empty(), expected.isClean && !expected.messages.isEmpty(),
                "whatever else there is, is a problem");
}

void run(FuzzInput& input)
{
    const int how = input.choice(3);
    std::vector<Event> events;
    QByteArray content = how == 2 ? "MThd" + input.rest() : writeFile(input, &events);
    if (how == 1)
        damage(input, &content);
    const ImageFile file = parseImageFile(content);
    checkImageFile(content, file);
    if (!content.startsWith("MThd"))
        return;
    require(file.format == ImageFormat::MidiFile, "the format");
    checkPlaces(content, file);
    if (how == 0)
        checkMessages(events, file);
}

const Target target("image_midi", run);

} // namespace

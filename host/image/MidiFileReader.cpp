// Standard MIDI Files: a header chunk, then tracks of events with delta times. Only SysEx events
// (F0, and F7 for what follows a message cut into packets) carry an image; meta events are passed
// over, and any other event does not belong. Chunks of other kinds and bytes after the last chunk,
// which the format lets programs add, are skipped with a warning.
#include "host/image/ImageFileReaders.h"
#include "host/image/SysExCutter.h"

#include <QtEndian>

#include <algorithm>
#include <tuple>

namespace hx {

namespace {

constexpr quint8 sysExEvent = 0xF0;
constexpr quint8 packetEvent = 0xF7; // a further packet, or an escape
constexpr quint8 metaEvent = 0xFF;
constexpr int longestVariableLength = 4;
constexpr int headerContent = 6;

struct SysExEvent {
    qint64 ticks = 0; // from the start of the track
    int begin = 0;    // of its data in the file
    int end = 0;
    int statusOffset = -1; // of the F0 that belongs to the message; -1 for a packet
};

class MidiFileReader {
public:
    explicit MidiFileReader(const QByteArray& content) : m_content(content)
    {
        m_file.format = ImageFormat::MidiFile;
    }

    ImageFile read()
    {
        if (readHeader())
            readTracks();
        if (m_file.problems.empty())
            cutEvents();
        if (m_file.problems.empty() && m_file.messages.empty())
            refuse(-1, QStringLiteral("the file holds no SysEx event."));
        return std::move(m_file);
    }

private:
    bool refuse(qint64 offset, const QString& text)
    {
        addProblem(m_file.problems, {-1, offset}, text,
                   QStringLiteral("Check that this is the update image; get it again if it is."));
        return false;
    }

    bool refuseEnd() { return refuse(m_content.size(), QStringLiteral("the file is cut off.")); }

    bool has(qint64 count) const { return m_content.size() - m_position >= count; }

    quint8 next() { return static_cast<quint8>(m_content.at(m_position++)); }

    quint32 nextNumber(int count)
    {
        quint32 value = 0;
        for (int i = 0; i < count; ++i)
            value = value << 8 | next();
        return value;
    }

    bool readVariableLength(quint32* value, int end)
    {
        *value = 0;
        for (int i = 0; i < longestVariableLength; ++i) {
            if (m_position >= end)
                return refuse(m_position, QStringLiteral("a track ends inside an event."));
            const quint8 byte = next();
            *value = *value << 7 | (byte & 0x7F);
            if (byte < 0x80)
                return true;
        }
        return refuse(m_position - 1, QStringLiteral("a number has more than four bytes."));
    }

    bool readHeader()
    {
        m_position = 4;
        if (!has(4 + headerContent))
            return refuseEnd();
        const quint32 length = nextNumber(4);
        const quint32 format = nextNumber(2);
        m_tracks = nextNumber(2);
        if (length < headerContent)
            return refuse(4, QStringLiteral("the header has %1 bytes; expected 6.").arg(length));
        if (format > 1)
            return refuse(8,
                          QStringLiteral("the file has format %1; expected 0 or 1.").arg(format));
        if (!has(static_cast<qint64>(length) - 4))
            return refuseEnd();
        m_position += static_cast<int>(length) - 4;
        return true;
    }

    void readTracks()
    {
        for (quint32 track = 0; track < m_tracks; ++track) {
            skipOtherChunks();
            if (!readChunk())
                return;
        }
        skipOtherChunks();
        if (isAt("MTrk"))
            refuse(m_position, QStringLiteral("there are more tracks than the %1 that the header "
                                              "states.")
                                   .arg(m_tracks));
        else
            warnOfSkipped();
    }

    bool isAt(const char* type) const { return m_content.mid(m_position, 4) == type; }

    // A type of four printable characters, and as many bytes as it states.
    bool isAtOtherChunk() const
    {
        if (!has(8) || isAt("MTrk"))
            return false;
        for (int i = 0; i < 4; ++i) {
            const char letter = m_content.at(m_position + i);
            if (letter < ' ' || letter > '~')
                return false;
        }
        return has(8 + qint64(qFromBigEndian<quint32>(m_content.constData() + m_position + 4)));
    }

    void skipOtherChunks()
    {
        for (; isAtOtherChunk(); ++m_skippedChunks) {
            if (m_skippedChunks == 0)
                m_firstSkipped = m_position;
            m_position += 4;
            const quint32 length = nextNumber(4);
            m_position += int(length);
        }
    }

    void warnOfSkipped()
    {
        if (m_skippedChunks > 0)
            m_file.warnings
                << QStringLiteral("Skipped in the MIDI file: %1 not a track, the first \"%2\" at "
                                  "byte %3.")
                       .arg(m_skippedChunks == 1
                                ? QStringLiteral("1 chunk that is")
                                : QStringLiteral("%1 chunks that are").arg(m_skippedChunks),
                            QString::fromLatin1(m_content.mid(m_firstSkipped, 4)),
                            QString::number(m_firstSkipped));
        if (has(1))
            m_file.warnings << QStringLiteral("Skipped in the MIDI file: %1 bytes after the last "
                                              "chunk, from byte %2 on.")
                                   .arg(m_content.size() - m_position)
                                   .arg(m_position);
    }

    bool readChunk()
    {
        if (!has(8))
            return refuseEnd();
        if (!isAt("MTrk"))
            return refuse(m_position, QStringLiteral("expected a track (MTrk)."));
        m_position += 4;
        const quint32 length = nextNumber(4);
        if (!has(length))
            return refuseEnd();
        return readTrack(m_position + static_cast<int>(length));
    }

    bool readTrack(int end)
    {
        qint64 ticks = 0;
        while (m_position < end) {
            quint32 delta = 0;
            if (!readVariableLength(&delta, end))
                return false;
            ticks += delta;
            if (!readEvent(ticks, end))
                return false;
        }
        return true;
    }

    bool skipMetaType(int end)
    {
        if (m_position >= end)
            return refuse(m_position, QStringLiteral("a track ends inside an event."));
        ++m_position;
        return true;
    }

    bool readEvent(qint64 ticks, int end)
    {
        if (m_position >= end)
            return refuse(m_position, QStringLiteral("a track ends inside an event."));
        const int statusOffset = m_position;
        const quint8 status = next();
        if (status != sysExEvent && status != packetEvent && status != metaEvent)
            return refuse(
                statusOffset,
                QStringLiteral("the event %1 is not SysEx; an image has SysEx events only.")
                    .arg(QString::number(status, 16).toUpper()));
        if (status == metaEvent && !skipMetaType(end))
            return false;
        quint32 length = 0;
        if (!readVariableLength(&length, end))
            return false;
        if (length > static_cast<quint32>(end - m_position))
            return refuse(statusOffset, QStringLiteral("an event is longer than its track."));
        const int begin = m_position;
        m_position += static_cast<int>(length);
        if (status != metaEvent)
            m_events.push_back(
                {ticks, begin, m_position, status == sysExEvent ? statusOffset : -1});
        return true;
    }

    // Several tracks play at once: what is earlier is sent first, of equal times what the file has
    // first.
    void cutEvents()
    {
        std::sort(m_events.begin(), m_events.end(), [](const SysExEvent& a, const SysExEvent& b) {
            return std::tie(a.ticks, a.begin) < std::tie(b.ticks, b.begin);
        });
        SysExCutter cutter(m_file);
        for (const SysExEvent& event : m_events) {
            if (event.statusOffset >= 0)
                cutter.add(sysExEvent, event.statusOffset);
            for (int i = event.begin; i < event.end; ++i)
                cutter.add(static_cast<quint8>(m_content.at(i)), i);
        }
        cutter.finish();
    }

    const QByteArray& m_content;
    ImageFile m_file;
    std::vector<SysExEvent> m_events;
    quint32 m_tracks = 0;
    int m_position = 0;
    int m_skippedChunks = 0;
    int m_firstSkipped = 0;
};

} // namespace

bool isMidiFile(const QByteArray& content)
{
    return content.startsWith("MThd");
}

ImageFile readMidiFile(const QByteArray& content)
{
    return MidiFileReader(content).read();
}

} // namespace hx

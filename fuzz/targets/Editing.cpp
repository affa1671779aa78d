// Any order of changes to a buffer, against the same changes to a plain byte array; packing.
#include "fuzz/support/FuzzTarget.h"
#include "mididata/HxMidiData.h"
#include "qt/Saturated.h"
#include "tests/mididata/transcription/Transcription.h"

namespace {

using namespace hx::fuzz;

constexpr int largest = 4096;

// A buffer, what it should hold, and a copy that shared its storage before the last change.
class Edited {
public:
    void change(FuzzInput& input)
    {
        const HxMidiData copy = m_data;
        const QByteArray copied(m_data.bytes.constData(), m_data.bytes.size());
        step(input);
        requireSame(m_data.bytes, m_model, "the buffer after a change");
        requireSame(copy.bytes, copied, "a copy stays what it was");
    }

    int size() const { return hx::saturated(m_model.size()); }

private:
    void step(FuzzInput& input)
    {
        switch (input.choice(9)) {
        case 0:
            return append(input);
        case 1:
            return appendNum(input.flag() ? input.word() : static_cast<unsigned>(input.number()));
        case 2:
            return chomp(input.number());
        case 3:
            return replace(input);
        case 4:
            return adopt(input.block());
        case 5:
            return set14bit(input);
        case 6:
            m_data.append(m_data);
            m_model += QByteArray(m_model);
            return;
        case 7:
            m_data.fromRaw8bit(m_data.bytes);
            return m_model.clear();
        default:
            m_data.clear();
            return m_model.clear();
        }
    }

    void append(FuzzInput& input)
    {
        const QByteArray added = input.block();
        require(&m_data.append(HxMidiData(added)) == &m_data, "append returns the buffer");
        m_model += added;
    }

    void appendNum(unsigned int value)
    {
        const bool appended = m_data.appendNum(value);
        requireSame(appended, transcription::appendNum(m_model, value), "appendNum's result");
    }

    void chomp(int count)
    {
        m_data.chomp(count);
        if (count > 0)
            m_model = m_model.left(qMax(0, m_model.size() - count));
    }

    void replace(FuzzInput& input)
    {
        const int pos = input.choice(200);
        const int len = input.choice(64);
        const bool withItself = input.flag();
        const QByteArray with = withItself ? m_data.bytes : input.block();
        // A gap before the end is filled, unless nothing is put there.
        const QByteArray padded = with.isEmpty() ? m_model : m_model.leftJustified(pos, ' ');
        m_model = padded.left(pos) + with + padded.mid(pos + len);
        requireSame(m_data.replace(pos, len, with), m_model, "what replace returns");
    }

    void adopt(const QByteArray& bytes)
    {
        m_adopted = QByteArray(bytes.constData(), bytes.size());
        m_data.copyFromBuffer(m_adopted.constData(), static_cast<size_t>(m_adopted.size()));
        m_model = bytes;
        m_data.bytes.detach(); // the adopted memory may go away from here on
    }

    void set14bit(FuzzInput& input)
    {
        const int pos = input.number();
        const int value = input.number();
        const bool written = m_data.set14bit(pos, value);
        requireSame(written, transcription::set14bit(m_model, pos, value), "set14bit's result");
    }

    HxMidiData m_data;
    QByteArray m_model;
    QByteArray m_adopted;
};

QByteArray unpacked(const QByteArray& packed)
{
    QByteArray bytes;
    for (int at = 0; at < packed.size(); at += 8) {
        const QByteArray group = packed.mid(at + 1, 7);
        for (int i = 0; i < group.size(); ++i)
            bytes += static_cast<char>(group.at(i) | (packed.at(at) >> (6 - i) & 1) << 7);
    }
    return bytes;
}

void pack(const QByteArray& bytes)
{
    QByteArray packed(bytes.size() + (bytes.size() + 6) / 7, '\xFF');
    const unsigned int size = HxMidiData().cvt8to7(packed.data(), bytes.constData(),
                                                   static_cast<unsigned int>(bytes.size()));
    requireSame(static_cast<int>(size), packed.size(), "the packed size");
    requireSame(packed, transcription::cvt8to7(bytes), "cvt8to7");
    requireSame(unpacked(packed), bytes, "what was packed unpacks");
    for (const char byte : packed)
        require((byte & 0x80) == 0, "packed bytes have 7 bits");
}

void run(FuzzInput& input)
{
    pack(input.block());
    Edited edited;
    while (!input.atEnd() && edited.size() < largest)
        edited.change(input);
}

const Target target("editing", run);

} // namespace

// Takes a fuzzer's bytes apart, front to back. Past their end everything reads as zero or empty.
#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <limits>

namespace hx {
namespace fuzz {

class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size) : m_at(data), m_end(data + size) {}

    bool atEnd() const { return m_at == m_end; }

    uint8_t byte() { return atEnd() ? uint8_t(0) : *m_at++; }

    // Bit 0 of the next byte.
    bool flag() { return (byte() & 1) != 0; }

    // One of `count` choices, from 0.
    int choice(int count) { return byte() % count; }

    uint32_t word()
    {
        uint32_t value = 0;
        for (int i = 0; i < 4; ++i)
            value = value << 8 | byte();
        return value;
    }

    // Any int at all; most first bytes give one near 0 (-16 to 223), where positions and lengths of
    // short buffers lie, and some the ends of ranges.
    int number()
    {
        const int tag = byte();
        if (tag < 0xF0)
            return tag - 16;
        if (tag >= 0xFC)
            return static_cast<int>(word());
        static constexpr int ends[] = {std::numeric_limits<int>::min(),
                                       std::numeric_limits<int>::min() + 1,
                                       std::numeric_limits<int>::max(),
                                       std::numeric_limits<int>::max() - 1,
                                       0xFF,
                                       0x100,
                                       0xFFFE,
                                       0xFFFF,
                                       0xFFFFFE,
                                       0xFFFFFF,
                                       0x3FFF,
                                       0x4000};
        return ends[tag - 0xF0];
    }

    // Up to `length` bytes.
    QByteArray take(int length)
    {
        const auto left = m_end - m_at;
        const int size = left < length ? static_cast<int>(left) : length;
        const QByteArray bytes(reinterpret_cast<const char*>(m_at), size);
        m_at += size;
        return bytes;
    }

    // As many bytes as the next byte says.
    QByteArray block() { return take(byte()); }

    QByteArray rest() { return take(std::numeric_limits<int>::max()); }

private:
    const uint8_t* m_at;
    const uint8_t* m_end;
};

} // namespace fuzz
} // namespace hx

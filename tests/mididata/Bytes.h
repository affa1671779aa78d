#pragma once

#include "mididata/HxMidiData.h"
#include "tests/support/QtPrinting.h"

#include <QByteArray>
#include <QList>

#include <memory>

/** Bytes from hex digits, read by Qt and not by the class under test. */
inline QByteArray hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

inline QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

inline HxMidiData dataOf(const char* digits)
{
    return HxMidiData(hex(digits));
}

/** The pieces' bytes alone. */
inline QList<QByteArray> bytesOf(const QList<HxMidiData>& pieces)
{
    QList<QByteArray> all;
    for (const HxMidiData& piece : pieces)
        all.append(piece.bytes);
    return all;
}

/**
 * A buffer that looks at memory of exactly its size, without a terminating zero: whatever reads
 * past the end is found by the address sanitizer.
 */
class AdoptedBuffer {
public:
    explicit AdoptedBuffer(const QByteArray& bytes)
        : memory(new char[static_cast<size_t>(bytes.size())])
    {
        std::copy(bytes.begin(), bytes.end(), memory.get());
        data.copyFromBuffer(memory.get(), static_cast<size_t>(bytes.size()));
    }

private:
    std::unique_ptr<char[]> memory;

public:
    HxMidiData data;
};

/** @file
 * The memory of the simulated product that survives a loss of power: its code and what belongs to
 * it.
 */
#pragma once

#include <QByteArray>

#include <array>
#include <optional>

namespace hx::sim {

/** Four ASCII digits, 31 30 32 33 for version 1.0.2.3. */
using VersionDigits = std::array<quint8, 4>;

/** The kinds of code, named by the command byte of the messages that bring them. */
constexpr quint8 kindFwd = 0x42;
constexpr quint8 kindFwu = 0x43;

struct StoredCode {
    QByteArray bytes;           /**< what the code memory holds, from address 0 on */
    quint8 kind = kindFwu;      /**< kindFwu or kindFwd */
    bool valid = false;         /**< an update was closed, or the code is the factory's */
    VersionDigits version = {}; /**< of the code; has no meaning while `valid` is false */
    /** CRC-32 stored at closing; has no meaning while `valid` is false */
    quint32 crc = 0;
};

/** What is left of the write in which power fails. */
enum class CutWrite {
    Nothing, /**< it was not begun */
    Half,    /**< half of the bits are written, half of the block is erased; half a mark is none */
    Unsteady /**< the same, and a bit of it reads differently each time until it is erased again */
};

/**
 * Every change is made of single writes (a mark, an erased block, a byte), and power may fail at
 * any of them: what was written before stays, what follows is lost. The order of the writes is such
 * that incomplete code is never marked valid.
 */
class ProductMemory {
public:
    static constexpr int eraseBlock = 4096;

    const StoredCode& code() const { return m_code; }
    void setCode(const StoredCode& code);

    /**
     * Marks the code invalid, empties the memory block by block from its end, notes the new kind.
     */
    void erase(quint8 kind);

    /** Writes behind the bytes that are held. */
    void append(const QByteArray& bytes);

    /** Stores version and checksum, then marks the code valid. */
    void seal(const VersionDigits& version, quint32 crc);

    /** Inverts the lowest bit of the byte at `position`; outside of the code nothing happens. */
    void damage(int position);

    /**
     * Power fails after this many single writes from now, in the next one; a negative number means
     * that it does not.
     */
    void failPowerAfter(qint64 writes, CutWrite cut = CutWrite::Nothing);
    bool powerFailed() const { return m_powerFailed; }
    void restorePower();

    /** The memory is about to be read: an unsteady bit may now be another one. */
    void read();

    /** Single writes made since the memory exists. */
    qint64 writes() const { return m_writes; }

    /**
     * The address from which on the code may differ from what it was at the last call; none when
     * nothing at all was written since then.
     */
    std::optional<int> takeChange();

private:
    /** What is written at once; a block or a byte of the code has a position. */
    struct Cell {
        enum class Kind { None, Mark, Version, Checksum, CodeKind, Block, CodeByte };

        Kind kind = Kind::None;
        int position = 0;
        quint64 content = 0; /**< what is to be written */
    };

    bool write(const Cell& cell);
    bool changesNothing(const Cell& cell) const;
    void writeHalf(const Cell& cell);
    void eraseHalf(int start);
    void steady();
    void noteChange(int address);

    StoredCode m_code;
    CutWrite m_cut = CutWrite::Nothing;
    Cell m_unsteady;
    qint64 m_writes = 0;
    qint64 m_writesLeft = -1;
    bool m_powerFailed = false;
    std::optional<int> m_changedFrom;
};

} // namespace hx::sim

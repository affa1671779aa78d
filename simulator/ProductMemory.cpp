#include "simulator/ProductMemory.h"

#include "qt/Saturated.h"

#include <algorithm>
#include <utility>

namespace hx::sim {

namespace {

constexpr char erasedByte = '\xFF';
constexpr quint32 upperHalf = 0xFFFF0000u;

// Programming clears bits: those of the upper half are still set.
char halfProgrammed(quint64 byte)
{
    return static_cast<char>(byte | 0xF0u);
}

void invertBit(QByteArray* bytes, int position)
{
    if (position < bytes->size())
        (*bytes)[position] = static_cast<char>(bytes->at(position) ^ 1);
}

} // namespace

void ProductMemory::setCode(const StoredCode& code)
{
    m_code = code;
    m_unsteady = {};
    m_changedFrom.reset();
}

void ProductMemory::failPowerAfter(qint64 writes, CutWrite cut)
{
    m_writesLeft = writes;
    m_cut = cut;
}

bool ProductMemory::write(const Cell& cell)
{
    if (m_powerFailed)
        return false;
    m_powerFailed = m_writesLeft == 0;
    if (m_powerFailed) {
        if (m_cut != CutWrite::Nothing)
            writeHalf(cell);
        return false;
    }
    if (m_writesLeft > 0)
        --m_writesLeft;
    ++m_writes;
    return true;
}

// Clearing a mark again, where it is clear already and steady, changes no bit of it.
bool ProductMemory::changesNothing(const Cell& cell) const
{
    const bool isClearing = cell.kind == Cell::Kind::Mark && cell.content == 0;
    return isClearing && !m_code.valid && m_unsteady.kind != Cell::Kind::Mark;
}

void ProductMemory::writeHalf(const Cell& cell)
{
    if (changesNothing(cell))
        return;
    noteChange(saturated(m_code.bytes.size()));
    m_unsteady = m_cut == CutWrite::Unsteady ? cell : Cell();
    switch (cell.kind) {
    case Cell::Kind::Mark:
        m_code.valid = false;
        break;
    case Cell::Kind::Version:
        std::fill_n(m_code.version.begin(), 2, quint8{'0'});
        break;
    case Cell::Kind::Checksum:
        m_code.crc = static_cast<quint32>(cell.content) & upperHalf;
        break;
    case Cell::Kind::Block:
        eraseHalf(cell.position);
        break;
    case Cell::Kind::CodeByte:
        m_code.bytes.append(halfProgrammed(cell.content));
        break;
    case Cell::Kind::CodeKind:
    case Cell::Kind::None:
        break;
    }
}

void ProductMemory::eraseHalf(int start)
{
    const int size = saturated(m_code.bytes.size());
    const int middle = start + (size - start) / 2;
    noteChange(middle);
    m_code.bytes.replace(middle, size - middle, QByteArray(size - middle, erasedByte));
}

void ProductMemory::read()
{
    if (m_unsteady.kind == Cell::Kind::None)
        return;
    noteChange(std::min(m_unsteady.position, saturated(m_code.bytes.size())));
    switch (m_unsteady.kind) {
    case Cell::Kind::Mark:
        m_code.valid = !m_code.valid;
        break;
    case Cell::Kind::Version:
        m_code.version[0] ^= 1;
        break;
    case Cell::Kind::Checksum:
        m_code.crc ^= 1;
        break;
    case Cell::Kind::Block:
    case Cell::Kind::CodeByte:
        invertBit(&m_code.bytes, m_unsteady.position);
        break;
    case Cell::Kind::CodeKind:
    case Cell::Kind::None:
        break;
    }
}

// Mark, version and checksum are erased together; code when its block is.
void ProductMemory::steady()
{
    const bool isCode =
        m_unsteady.kind == Cell::Kind::Block || m_unsteady.kind == Cell::Kind::CodeByte;
    if (!isCode || m_unsteady.position >= m_code.bytes.size())
        m_unsteady = {};
}

void ProductMemory::erase(quint8 kind)
{
    if (!write({Cell::Kind::Mark}))
        return;
    noteChange(saturated(m_code.bytes.size()));
    m_code.valid = false;
    steady();
    while (!m_code.bytes.isEmpty()) {
        const int lastBlock = static_cast<int>(m_code.bytes.size() - 1) / eraseBlock;
        if (!write({Cell::Kind::Block, lastBlock * eraseBlock}))
            return;
        m_code.bytes.truncate(lastBlock * eraseBlock);
        noteChange(saturated(m_code.bytes.size()));
        steady();
    }
    if (write({Cell::Kind::CodeKind}))
        m_code.kind = kind;
}

void ProductMemory::append(const QByteArray& bytes)
{
    for (const char byte : bytes) {
        const int position = saturated(m_code.bytes.size());
        if (!write({Cell::Kind::CodeByte, position, static_cast<quint8>(byte)}))
            return;
        noteChange(position);
        m_code.bytes.append(byte);
    }
}

void ProductMemory::seal(const VersionDigits& version, quint32 crc)
{
    if (!write({Cell::Kind::Version}))
        return;
    noteChange(saturated(m_code.bytes.size()));
    m_code.version = version;
    if (!write({Cell::Kind::Checksum, 0, crc}))
        return;
    m_code.crc = crc;
    if (write({Cell::Kind::Mark, 0, 1}))
        m_code.valid = true;
}

void ProductMemory::damage(int position)
{
    if (position < 0 || position >= m_code.bytes.size())
        return;
    noteChange(position);
    invertBit(&m_code.bytes, position);
}

void ProductMemory::noteChange(int address)
{
    m_changedFrom = std::min(m_changedFrom.value_or(address), address);
}

std::optional<int> ProductMemory::takeChange()
{
    return std::exchange(m_changedFrom, std::nullopt);
}

void ProductMemory::restorePower()
{
    m_powerFailed = false;
    m_writesLeft = -1;
}

} // namespace hx::sim

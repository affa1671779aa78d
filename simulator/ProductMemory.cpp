#include "simulator/ProductMemory.h"

#include <algorithm>
#include <utility>

namespace hx::sim {

void ProductMemory::setCode(const StoredCode& code)
{
    m_code = code;
    m_changedFrom.reset();
}

bool ProductMemory::write()
{
    if (m_writesLeft == 0)
        m_powerFailed = true;
    if (m_powerFailed)
        return false;
    if (m_writesLeft > 0)
        --m_writesLeft;
    ++m_writes;
    return true;
}

void ProductMemory::erase(quint8 kind)
{
    if (!write())
        return;
    noteChange(m_code.bytes.size());
    m_code.valid = false;
    while (!m_code.bytes.isEmpty()) {
        if (!write())
            return;
        const int lastBlock = (m_code.bytes.size() - 1) / eraseBlock;
        m_code.bytes.truncate(lastBlock * eraseBlock);
        noteChange(m_code.bytes.size());
    }
    if (write())
        m_code.kind = kind;
}

void ProductMemory::append(const QByteArray& bytes)
{
    int written = 0;
    while (written < bytes.size() && write())
        ++written;
    if (written > 0)
        noteChange(m_code.bytes.size());
    m_code.bytes.append(bytes.constData(), written);
}

void ProductMemory::seal(const VersionDigits& version, quint32 crc)
{
    if (!write())
        return;
    noteChange(m_code.bytes.size());
    m_code.version = version;
    if (!write())
        return;
    m_code.crc = crc;
    if (write())
        m_code.valid = true;
}

void ProductMemory::damage(int position)
{
    if (position < 0 || position >= m_code.bytes.size())
        return;
    noteChange(position);
    m_code.bytes[position] = static_cast<char>(m_code.bytes.at(position) ^ 1);
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

#include "simulator/ProductMemory.h"

namespace hx {

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
    m_code.valid = false;
    while (!m_code.bytes.isEmpty()) {
        if (!write())
            return;
        const int lastBlock = (m_code.bytes.size() - 1) / eraseBlock;
        m_code.bytes.truncate(lastBlock * eraseBlock);
    }
    if (write())
        m_code.kind = kind;
}

void ProductMemory::append(const QByteArray& bytes)
{
    int written = 0;
    while (written < bytes.size() && write())
        ++written;
    m_code.bytes.append(bytes.constData(), written);
}

void ProductMemory::seal(const VersionDigits& version, quint32 crc)
{
    if (!write())
        return;
    m_code.version = version;
    if (!write())
        return;
    m_code.crc = crc;
    if (write())
        m_code.valid = true;
}

void ProductMemory::damage(int position)
{
    if (position >= 0 && position < m_code.bytes.size())
        m_code.bytes[position] = static_cast<char>(m_code.bytes.at(position) ^ 1);
}

void ProductMemory::restorePower()
{
    m_powerFailed = false;
    m_writesLeft = -1;
}

} // namespace hx

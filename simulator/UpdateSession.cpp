#include "simulator/UpdateSession.h"

#include "qt/Saturated.h"
#include "simulator/Crc32.h"
#include "simulator/WireFormat.h"

#include <algorithm>

namespace hx::sim {

namespace {

// Positions and sizes of the update messages' fields, counted from the F0;
// docs/formats/update-image.md.
constexpr int closingSize = 7;
constexpr int kindAt = 6;
constexpr int subCommandAt = 7;
constexpr int fieldsAt = 8;
constexpr quint8 dataCommand = 0x0A;
constexpr quint8 checkCommand = 0x0C; // also the command of an acknowledgement

constexpr int numberAt = 8;
constexpr int addressAt = 10;
constexpr int countAt = 15;
constexpr int packedAt = 16;
constexpr int fullCount = 112;

constexpr int lengthAt = 8;
constexpr int crcAt = 13;
constexpr int versionAt = 18;
constexpr int layoutAt = 22;
constexpr int fileCheckSize = 25;
constexpr quint8 knownLayout = 0x01;

quint8 byteOf(const QByteArray& message, int position)
{
    return static_cast<quint8>(message.at(position));
}

// The sum stands before the F7 and covers the fields before it.
bool sumFits(const QByteArray& message)
{
    const int sumAt = saturated(message.size()) - 2;
    return byteOf(message, sumAt) == sum7(message, fieldsAt, sumAt);
}

bool dataIsWhole(const QByteArray& message)
{
    if (message.size() <= packedAt)
        return false;
    const int count = byteOf(message, countAt);
    return count >= 1 && count <= fullCount && message.size() == packedAt + packedSize(count) + 2 &&
           sumFits(message);
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool fileCheckIsWhole(const QByteArray& message)
{
    if (message.size() != fileCheckSize || !sumFits(message) ||
        byteOf(message, layoutAt) != knownLayout)
        return false;
    const QByteArray digits = message.mid(versionAt, layoutAt - versionAt);
    return std::all_of(digits.cbegin(), digits.cend(), isDigit);
}

} // namespace

bool UpdateSession::isUpdateMessage(const QByteArray& message)
{
    if (message.size() == closingSize)
        return true;
    const quint8 kind = byteOf(message, kindAt);
    const quint8 command = byteOf(message, subCommandAt);
    return (kind == kindFwd || kind == kindFwu) &&
           (command == dataCommand || command == checkCommand);
}

void UpdateSession::forget()
{
    m_stage = Stage::None;
    m_kind = kindFwu;
    m_lastTaken.clear();
}

QByteArray UpdateSession::take(const QByteArray& message, ProductMemory& memory)
{
    const bool isClosing = message.size() == closingSize;
    const quint8 ackKind = isClosing ? m_kind : byteOf(message, kindAt);
    const Status status = judge(message, memory);
    if (status == Status::Failed)
        forget();
    if (status == Status::Good)
        m_lastTaken = message.mid(kindAt);
    QByteArray ack = message.left(kindAt);
    ack.append(static_cast<char>(ackKind)).append(static_cast<char>(checkCommand));
    return ack.append(static_cast<char>(status)).append('\xF7');
}

UpdateSession::Status UpdateSession::judge(const QByteArray& message, ProductMemory& memory)
{
    const bool isFirst = m_stage == Stage::Data && m_nextNumber == 1;
    if (!isFirst && message.mid(kindAt) == m_lastTaken) // its acknowledgement was lost
        return Status::Good;
    if (message.size() == closingSize)
        return takeClosing(memory);
    return byteOf(message, subCommandAt) == dataCommand ? takeData(message, memory)
                                                        : takeFileCheck(message, memory);
}

UpdateSession::Status UpdateSession::takeData(const QByteArray& message, ProductMemory& memory)
{
    QByteArray code;
    if (!dataIsWhole(message) ||
        !unpack(message.mid(packedAt, message.size() - packedAt - 2), &code))
        return Status::Bad;
    const auto number = static_cast<int>(readGroups(message, numberAt, 2));
    const quint64 address = readGroups(message, addressAt, 5);
    const quint8 kind = byteOf(message, kindAt);
    if (!follows(number, address, kind, memory) ||
        address + static_cast<quint64>(code.size()) > static_cast<quint64>(m_memorySize))
        return Status::Failed;
    if (number == 0)
        memory.erase(kind);
    memory.append(code);
    m_stage = Stage::Data;
    m_kind = kind;
    m_nextNumber = number + 1;
    m_tookShortData = code.size() < fullCount;
    return Status::Good;
}

// Message 0 may always come; any other one only directly behind a full one of the same update.
bool UpdateSession::follows(int number, quint64 address, quint8 kind,
                            const ProductMemory& memory) const
{
    if (number == 0)
        return address == 0;
    return m_stage == Stage::Data && kind == m_kind && number == m_nextNumber && !m_tookShortData &&
           address == static_cast<quint64>(memory.code().bytes.size());
}

UpdateSession::Status UpdateSession::takeFileCheck(const QByteArray& message,
                                                   const ProductMemory& memory)
{
    if (!fileCheckIsWhole(message))
        return Status::Bad;
    const QByteArray& held = memory.code().bytes;
    const bool isExpected = m_stage == Stage::Data && byteOf(message, kindAt) == m_kind;
    if (!isExpected || readGroups(message, lengthAt, 5) != static_cast<quint64>(held.size()) ||
        readGroups(message, crcAt, 5) != productCrc32(held))
        return Status::Failed;
    m_crc = productCrc32(held);
    std::copy_n(message.cbegin() + versionAt, m_version.size(), m_version.begin());
    m_stage = Stage::Checked;
    return Status::Good;
}

UpdateSession::Status UpdateSession::takeClosing(ProductMemory& memory)
{
    if (m_stage != Stage::Checked)
        return Status::Failed;
    memory.seal(m_version, m_crc);
    m_stage = Stage::Closed;
    return Status::Good;
}

} // namespace hx::sim

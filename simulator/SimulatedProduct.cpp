#include "simulator/SimulatedProduct.h"

#include "simulator/Crc32.h"
#include "simulator/MessageForm.h"
#include "simulator/StateChange.h"
#include "simulator/StateFile.h"
#include "simulator/WireFormat.h"

#include <algorithm>

namespace hx::sim {

namespace {

const QByteArray identityRequestTail = QByteArray::fromHex("0601F7");
constexpr quint8 allDevices = 0x7F;

constexpr quint8 erased = 0xFF;

constexpr int factoryCodeSize = 256;
constexpr int serialAt = 0; // in the identity block
constexpr int familyInBlockAt = 8;
constexpr int modelInBlockAt = 9;
constexpr int identityBlockSize = 16;
constexpr int rawReadSize = 16;
constexpr quint32 addressSpace = 0x1000000;

// An arbitrary pattern that holds every byte value once.
QByteArray factoryCode(int size)
{
    QByteArray code(size, '\0');
    for (int i = 0; i < size; ++i)
        code[i] = static_cast<char>((i * 37 + 11) & 0xFF);
    return code;
}

char to7Bit(quint8 byte)
{
    return static_cast<char>(byte & 0x7F);
}

template <typename Bytes>
QByteArray to7BitBytes(const Bytes& bytes)
{
    QByteArray result;
    for (const quint8 byte : bytes)
        result.append(to7Bit(byte));
    return result;
}

// The four digits as one number: 31 30 32 33 is 1023.
int versionNumber(const VersionDigits& version)
{
    int number = 0;
    for (const quint8 digit : version)
        number = number * 10 + (digit - '0');
    return number;
}

// What the product itself sends when it refuses or acknowledges is never a command: answering it
// would run on for ever on a cable that leads back.
bool isOwnAnswer(const QByteArray& message)
{
    const auto bodySize = message.size() - headSize - 1;
    return (bodySize == 2 && message.at(commandAt + 1) == refused) ||
           (bodySize == 3 && message.at(commandAt + 1) == 0x0C &&
            (message.at(commandAt) == kindFwd || message.at(commandAt) == kindFwu));
}

} // namespace

// A command is known by the bytes between the model byte and the F7: by all of them, or, when
// arguments follow, by the first ones.
struct SimulatedProduct::Command {
    QByteArray bytes;
    int argumentCount;
    QByteArray (SimulatedProduct::*answer)(const QByteArray& body);

    bool fits(const QByteArray& body) const
    {
        return body.size() == bytes.size() + argumentCount && body.startsWith(bytes);
    }
};

SimulatedProduct::SimulatedProduct(const ProductIdentity& identity,
                                   const SimulatedProductSettings& settings)
    : m_identity(identity), m_settings(settings)
{
    m_settings.memorySize = qBound(0, settings.memorySize, static_cast<int>(identityAddress));
    m_update = UpdateSession(m_settings.memorySize);
    StoredCode code;
    code.bytes = factoryCode(qMin(m_settings.memorySize, factoryCodeSize));
    code.valid = true;
    std::transform(settings.version.cbegin(), settings.version.cend(), code.version.begin(),
                   [](quint8 digit) { return digit >= '0' && digit <= '9' ? digit : '0'; });
    code.crc = productCrc32(code.bytes);
    m_memory.setCode(code);
}

QVector<SimulatedReply> SimulatedProduct::receive(const QByteArray& bytes)
{
    QVector<SimulatedReply> replies;
    const QVector<QByteArray> messages = m_reader.take(bytes);
    for (const QByteArray& message : messages) {
        m_memory.read();
        const QByteArray bytesBack = answer(message);
        if (m_memory.powerFailed())
            powerCycle();
        else if (!bytesBack.isEmpty())
            replies.append({bytesBack, m_settings.replyDelayUs});
    }
    return replies;
}

void SimulatedProduct::powerCycle()
{
    m_memory.restorePower();
    m_reader.clear();
    restart(ProductMode::User);
}

// Without valid code there is nothing to run but the boot loader.
QByteArray SimulatedProduct::restart(ProductMode mode)
{
    m_update.forget();
    m_mode = mode == ProductMode::User && !isCodeValid() ? ProductMode::Boot : mode;
    return QByteArray();
}

QByteArray SimulatedProduct::answer(const QByteArray& message)
{
    if (message.size() == universalHead.size() + 1 + identityRequestTail.size() &&
        message.startsWith(universalHead) && message.endsWith(identityRequestTail)) {
        const auto device = static_cast<quint8>(message.at(universalHead.size()));
        const bool isMeant = device == allDevices || device == (m_settings.deviceId & 0x7F);
        return isMeant ? identityReply() : QByteArray();
    }
    if (!message.startsWith(head()) || isOwnAnswer(message))
        return QByteArray();
    return isUpdateMessage(message) ? answerUpdate(message) : answerCommand(message);
}

bool SimulatedProduct::isUpdateMessage(const QByteArray& message) const
{
    return message.startsWith(head()) && !isOwnAnswer(message) &&
           UpdateSession::isUpdateMessage(message);
}

// While code is being written there is nothing to run; when it is whole it starts.
QByteArray SimulatedProduct::answerUpdate(const QByteArray& message)
{
    const bool wasUpdating = isUpdating();
    QByteArray ack = m_update.take(message, m_memory);
    if (isUpdating())
        m_mode = ProductMode::Boot;
    else if (wasUpdating && isCodeValid())
        m_mode = ProductMode::User;
    return ack;
}

QByteArray SimulatedProduct::answerCommand(const QByteArray& message)
{
    using Self = SimulatedProduct;
    static const QVector<Command> commands = {
        {QByteArray::fromHex("1B0958"), 0, &Self::answerReset},
        {QByteArray::fromHex("1C00"), 0, &Self::answerSetUser},
        {QByteArray::fromHex("1C01"), 0, &Self::answerSetDfu},
        {QByteArray::fromHex("1C02"), 0, &Self::answerSetBoot},
        {QByteArray::fromHex("21"), 0, &Self::answerSerialNumber},
        {QByteArray::fromHex("2E"), 0, &Self::answerVersion},
        {QByteArray::fromHex("2F"), 0, &Self::answerGender},
        {QByteArray::fromHex("30"), 0, &Self::answerStoredCrc},
        {QByteArray::fromHex("31"), 0, &Self::answerCalculatedCrc},
        {QByteArray::fromHex("4208"), 0, &Self::answerCodeImage},
        {QByteArray::fromHex("4209"), 0, &Self::answerCodeImage},
        {QByteArray::fromHex("420D0F"), 6, &Self::answerRawRead},
    };
    const QByteArray body = message.mid(headSize, message.size() - headSize - 1);
    const auto command = std::find_if(commands.cbegin(), commands.cend(),
                                      [&body](const Command& c) { return c.fits(body); });
    if (command == commands.cend())
        return refusal(static_cast<quint8>(body.at(0)));
    return (this->*command->answer)(body);
}

QByteArray SimulatedProduct::head() const
{
    const QByteArray start = sysExStart + manufacturer();
    return start + to7Bit(m_identity.family) + to7Bit(m_identity.model);
}

QByteArray SimulatedProduct::manufacturer() const
{
    return to7BitBytes(m_identity.manufacturer);
}

QByteArray SimulatedProduct::serialNumber() const
{
    if (m_settings.serialNumber)
        return to7BitBytes(*m_settings.serialNumber);
    const QByteArray word = QByteArray(1, to7Bit(m_identity.family)) + to7Bit(m_identity.model);
    return word.toHex().toUpper() + "0001";
}

QByteArray SimulatedProduct::reply(const QByteArray& body) const
{
    return head() + body + sysExEnd;
}

QByteArray SimulatedProduct::refusal(quint8 command) const
{
    return reply(QByteArray(1, static_cast<char>(command)).append(refused));
}

QByteArray SimulatedProduct::identityReply() const
{
    QByteArray message = universalHead;
    message.append(to7Bit(m_settings.deviceId)).append("\x06\x02", 2).append(manufacturer());
    message.append(to7Bit(m_identity.family)).append('\0');
    message.append(to7Bit(m_identity.model)).append('\0');
    message.append(to7BitBytes(isCodeValid() ? code().version : bootVersion));
    return message.append(sysExEnd);
}

QByteArray SimulatedProduct::answerReset(const QByteArray&)
{
    return restart(ProductMode::User);
}

QByteArray SimulatedProduct::answerSetUser(const QByteArray& body)
{
    return isCodeValid() ? restart(ProductMode::User) : refusal(static_cast<quint8>(body.at(0)));
}

QByteArray SimulatedProduct::answerSetDfu(const QByteArray&)
{
    return restart(ProductMode::Dfu);
}

QByteArray SimulatedProduct::answerSetBoot(const QByteArray&)
{
    return restart(ProductMode::Boot);
}

QByteArray SimulatedProduct::answerSerialNumber(const QByteArray& body)
{
    return reply(body + serialNumber());
}

QByteArray SimulatedProduct::answerVersion(const QByteArray& body)
{
    if (!isCodeValid())
        return refusal(static_cast<quint8>(body.at(0)));
    return reply(body + to7BitBytes(code().version));
}

QByteArray SimulatedProduct::answerGender(const QByteArray& body)
{
    QByteArray word(4, '\0');
    word[1] = to7Bit(m_identity.family);
    word[3] = to7Bit(m_identity.model);
    return reply(body + word);
}

QByteArray SimulatedProduct::answerStoredCrc(const QByteArray& body)
{
    const quint64 none = 0x0FFFFFFF; // 7F 7F 7F 7F
    return reply(body + writeGroups(isCodeValid() ? code().crc : none, 4));
}

QByteArray SimulatedProduct::answerCalculatedCrc(const QByteArray& body)
{
    return reply(body + writeGroups(productCrc32(codeBytes()), 4));
}

// Image dsp0 (08) is code of kind "fwu", dsp1 (09) of kind "fwd"; the memory holds one of the two.
QByteArray SimulatedProduct::answerCodeImage(const QByteArray& body)
{
    const quint8 kind = body.at(1) == 0x08 ? kindFwu : kindFwd;
    if (code().kind != kind || codeBytes().isEmpty())
        return reply(body + '\x02');
    QByteArray image = body;
    image.append(
        writeGroups(isCodeValid() ? static_cast<quint64>(versionNumber(code().version)) : 0,
                    2));   // code_ver, position 8
    image.append(2, '\0'); // response_flag, position 10
    image.append(
        writeGroups(static_cast<quint64>(codeBytes().size()), 5)); // code_size, position 12
    image.append(3, '\0');
    image.append(isCodeValid() ? '\1' : '\0'); // bank_status, position 20
    return reply(image);
}

QByteArray SimulatedProduct::answerRawRead(const QByteArray& body)
{
    constexpr int addressAt = 3;
    quint32 address = 0;
    QByteArray data = body;
    for (int i = addressAt; i < body.size(); ++i) {
        if (body.at(i) > 0x0F)
            return refusal(static_cast<quint8>(body.at(0)));
        address = address << 4 | static_cast<quint8>(body.at(i));
    }
    for (quint32 i = 0; i < rawReadSize; ++i) {
        const quint8 byte = byteAt(address + i);
        data.append(static_cast<char>(byte >> 4)).append(static_cast<char>(byte & 0x0F));
    }
    return reply(data);
}

// Beyond the code, and beyond the last address, the memory reads as erased.
quint8 SimulatedProduct::byteAt(quint32 address) const
{
    if (address >= identityAddress && address < addressSpace) {
        QByteArray block(identityBlockSize, static_cast<char>(erased));
        block.replace(serialAt, 8, serialNumber());
        block[familyInBlockAt] = to7Bit(m_identity.family);
        block[modelInBlockAt] = to7Bit(m_identity.model);
        return static_cast<quint8>(block.at(static_cast<int>(address - identityAddress)));
    }
    if (address < static_cast<quint32>(codeBytes().size()))
        return static_cast<quint8>(codeBytes().at(static_cast<int>(address)));
    return erased;
}

QByteArray SimulatedProduct::save() const
{
    return writeStateFile(code(), m_settings.serialNumber);
}

QByteArray SimulatedProduct::saveChange(int address) const
{
    return writeStateChange(code(), address);
}

bool SimulatedProduct::restore(const QByteArray& state, QString* error)
{
    StoredCode code;
    SerialNumber serialNumber;
    if (!readStateFile(state, m_settings.memorySize, &code, error, &serialNumber))
        return false;
    m_memory.setCode(code);
    m_settings.serialNumber = serialNumber;
    powerCycle();
    return true;
}

} // namespace hx::sim

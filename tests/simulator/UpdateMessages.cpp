#include "tests/simulator/UpdateMessages.h"

#include "qt/Saturated.h"

namespace hx::sim {

namespace {

// Bit by bit, so that it has nothing in common with a table.
quint32 crcBitByBit(const QByteArray& bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320u : crc >> 1;
    }
    return crc ^ 0xFFFFFFFF;
}

QByteArray packed(const QByteArray& code)
{
    QByteArray result;
    for (int start = 0; start < code.size(); start += 7) {
        const QByteArray run = code.mid(start, 7);
        int header = 0;
        QByteArray low;
        for (int i = 0; i < run.size(); ++i) {
            const int byte = static_cast<quint8>(run.at(i));
            header |= (byte >> 7) << (6 - i);
            low.append(static_cast<char>(byte & 0x7F));
        }
        result.append(static_cast<char>(header)).append(low);
    }
    return result;
}

} // namespace

QByteArray bytesOf(const char* hex)
{
    return QByteArray::fromHex(hex);
}

QByteArray hexOf(const QByteArray& bytes)
{
    return bytes.toHex(' ').toUpper();
}

QByteArray groups(quint64 value, int count)
{
    QByteArray result;
    for (int i = count - 1; i >= 0; --i)
        result.append(static_cast<char>(value >> (7 * i) & 0x7F));
    return result;
}

QByteArray withSum(const QByteArray& kindAndCommand, const QByteArray& fields)
{
    int sum = 0;
    for (const char byte : fields)
        sum += static_cast<quint8>(byte);
    QByteArray message = bytesOf("F0006B2D3041") + kindAndCommand + fields;
    return message.append(static_cast<char>(sum & 0x7F)).append('\xF7');
}

QByteArray dataMessage(int number, quint64 address, const QByteArray& code, quint8 kind)
{
    const QByteArray fields = groups(static_cast<quint64>(number), 2) + groups(address, 5) +
                              static_cast<char>(code.size()) + packed(code);
    return withSum(QByteArray(1, static_cast<char>(kind)) + '\x0A', fields);
}

QByteArray fileCheck(const QByteArray& code, const QByteArray& version, quint8 kind)
{
    const QByteArray fields = groups(static_cast<quint64>(code.size()), 5) +
                              groups(crcBitByBit(code), 5) + version + '\x01';
    return withSum(QByteArray(1, static_cast<char>(kind)) + '\x0C', fields);
}

QByteArray closing()
{
    return bytesOf("F0006B2D3041F7");
}

QVector<QByteArray> imageOf(const QByteArray& code, const QByteArray& version, quint8 kind)
{
    QVector<QByteArray> image;
    for (int address = 0; address < code.size(); address += 112)
        image.append(dataMessage(saturated(image.size()), static_cast<quint64>(address),
                                 code.mid(address, 112), kind));
    image.append(fileCheck(code, version, kind));
    image.append(closing());
    return image;
}

QByteArray codeOfSize(int size)
{
    QByteArray code;
    for (int i = 0; i < size; ++i)
        code.append(static_cast<char>((i * 73 + i / 256 * 29 + 5) & 0xFF));
    return code;
}

QByteArray answers(SimulatedProduct& product, const QByteArray& bytes)
{
    QByteArray text;
    const QVector<SimulatedReply> replies = product.receive(bytes);
    for (const SimulatedReply& reply : replies)
        text += (text.isEmpty() ? "" : " | ") + hexOf(reply.bytes);
    return text;
}

QByteArray answers(SimulatedProduct& product, const char* hex)
{
    return answers(product, bytesOf(hex));
}

} // namespace hx::sim

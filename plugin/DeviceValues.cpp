// Typed values out of a reply.
#include "plugin/HexTextField.h"
#include "plugin/ValdrinBootInterface.h"

#include <QByteArray>

namespace {

enum ValueType { truncatedFloat = 3, number32 = 4, hexText = 6 };

// Truncates toward zero and keeps the low 32 bits; 0 for what no 64-bit integer can hold.
quint32 truncatedToWord(float value)
{
    constexpr float limit = 9223372036854775808.0F; // 2^63
    const bool fits = value >= -limit && value < limit;
    return fits ? static_cast<quint32>(static_cast<qint64>(value)) : 0;
}

} // namespace

HxMidiData hx::hexTextField(const HxMidiData& data, int offset)
{
    const QByteArray field = data.bytes.mid(offset, 8); // may have no zero behind it; a copy has
    return HxMidiData(QByteArray(field.constData(), field.size()).constData());
}

QVariant ValdrinBootInterface::getValueWithTypeAndOffset(BusData const& data, int type, int offset)
{
    switch (type) {
    case truncatedFloat:
        return truncatedToWord(data.getFloat32(offset, -99999.0F));
    case number32:
        return static_cast<quint32>(data.get32bit(offset, -1));
    case hexText:
        return hx::hexTextField(data, offset).toString(-1);
    default:
        return {};
    }
}

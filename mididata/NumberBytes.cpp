#include "mididata/NumberBytes.h"

#include "mididata/HxMidiData.h"
#include "mididata/fast/FastPaths.h"

#include <QDebug>

namespace {

char byteAt(unsigned int value, int shift)
{
    return static_cast<char>(static_cast<unsigned char>(value >> shift));
}

} // namespace

QByteArray hx::numberBytes(unsigned int value)
{
    const char all[] = {byteAt(value, 24), byteAt(value, 16), byteAt(value, 8), byteAt(value, 0)};
    if (value == numberWithoutBytes)
        return QByteArray();
    if (value >= 0xFFFFFFu)
        return QByteArray(all, 4);
    if (value >= 0xFFFFu)
        return QByteArray(all + 1, 3);
    if (value <= 0xFFu)
        return QByteArray(1, all[3]);
    const char lowByteOnly[] = {'\0', all[3]}; // devices rely on the high byte being lost
    return QByteArray(lowByteOnly, 2);
}

void hx::logNumberWithoutBytes()
{
    qDebug() << "HxMidiData::numHexToByteArray(quint32) - error";
}

QByteArray HxMidiData::numHexToByteArray(unsigned int value)
{
    if (value == hx::numberWithoutBytes)
        hx::logNumberWithoutBytes();
    return hx::numberBytes(value);
}

bool HxMidiData::appendNum(unsigned int value)
{
    if (hx::fastPaths && value <= 0xFFu) { // without an array of its own
        bytes.append(byteAt(value, 0));
        return true;
    }
    const QByteArray number = numHexToByteArray(value);
    bytes.append(number);
    return !number.isEmpty();
}

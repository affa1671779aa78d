// The stream form: what a byte array's would give, whatever the bytes, and only the bytes.
#include "fuzz/support/FuzzTarget.h"
#include "mididata/HxMidiData.h"

#include <QDataStream>
#include <QIODevice>

namespace {

using namespace hx::fuzz;

HxMidiData tagged()
{
    HxMidiData data(QByteArray("old"));
    data.auxA = 1;
    data.source = reinterpret_cast<HxMidiIn*>(&data);
    data.auxB = 2;
    data.auxC = 3;
    return data;
}

template <typename Value>
QByteArray written(const Value& value, QDataStream::ByteOrder order)
{
    QByteArray form;
    QDataStream out(&form, QIODevice::WriteOnly);
    out.setByteOrder(order);
    out << value;
    return form;
}

void requireUntouched(const HxMidiData& data, const HxMidiIn* source)
{
    require(data.auxA == 1 && data.auxB == 2 && data.auxC == 3 && data.source == source,
            "reading replaces the bytes alone");
}

// What must come of the form: a length, all ones for a null array, and as many bytes.
struct Expected {
    QByteArray bytes;
    QDataStream::Status status = QDataStream::ReadPastEnd;
};

Expected expectedOf(const QByteArray& form, QDataStream::ByteOrder order)
{
    constexpr int lengthSize = 4;
    if (form.size() < lengthSize)
        return {};
    quint32 length = 0;
    for (int i = 0; i < lengthSize; ++i) {
        const int at = order == QDataStream::BigEndian ? i : lengthSize - 1 - i;
        length = length << 8 | static_cast<quint8>(form.at(at));
    }
    if (length == 0xFFFFFFFF)
        return {QByteArray(), QDataStream::Ok};
    if (length > static_cast<quint32>(form.size() - lengthSize))
        return {};
    return {QByteArray(form.constData() + lengthSize, static_cast<int>(length)), QDataStream::Ok};
}

void readAnything(const QByteArray& form, QDataStream::ByteOrder order)
{
    QDataStream in(form);
    in.setByteOrder(order);
    HxMidiData data = tagged();
    const HxMidiIn* const source = data.source;
    while (!in.atEnd() && in.status() == QDataStream::Ok) {
        const Expected expected = expectedOf(form.mid(static_cast<int>(in.device()->pos())), order);
        in >> data;
        requireSame(int(in.status()), int(expected.status), "the stream's state");
        requireSame(data.bytes, expected.bytes, "what is read");
        if (expected.status == QDataStream::Ok)
            requireSame(data.bytes.isNull(), expected.bytes.isNull(), "null is told from empty");
        requireUntouched(data, source);
    }
}

void goThere(const HxMidiData& data, QDataStream::ByteOrder order)
{
    const QByteArray form = written(data, order);
    requireSame(form, written(data.bytes, order), "the stream form is the byte array's");
    QDataStream in(form);
    in.setByteOrder(order);
    HxMidiData back = tagged();
    in >> back;
    requireSame(back.bytes, data.bytes, "there and back");
    require(in.atEnd() && in.status() == QDataStream::Ok, "nothing is left over");
}

void run(FuzzInput& input)
{
    const QDataStream::ByteOrder order =
        input.flag() ? QDataStream::LittleEndian : QDataStream::BigEndian;
    QByteArray form;
    const int pieces = 1 + input.byte() % 4;
    for (int i = 0; i < pieces; ++i) {
        const QByteArray bytes = input.block();
        goThere(HxMidiData(bytes), order);
        form += written(bytes, order);
    }
    if (input.byte() % 4 == 0)
        form += input.rest();
    else if (input.flag())
        form.chop(input.byte());
    readAnything(form, order);
}

const Target target("stream", run);

} // namespace

// The identifier word out of the product's memory.
#include "plugin/Identification.h"

#include "mididata/BuilderFields.h"
#include "plugin/ProductIdentity.h"
#include "plugin/Transport.h"

#include <QDebug>
#include <QRegularExpression>

namespace {

// A full reply: 8 header bytes, the echoed 0F and six address nibbles, 32 data nibbles, F7.
constexpr int fullReplySize = 48;
constexpr int dataPosition = 15;
constexpr int familyPosition = 8; // in the 16 bytes that were read
constexpr int modelPosition = 9;
constexpr unsigned neverWritten = 0xFF;

const QLatin1String addressField("NIB24");

// The dictionary keeps its template without blanks, but the builder splits at blanks only: puts them
// around the address and between the pairs. Any other text is the builder's as it is.
QString spacedTemplate(QString text)
{
    static const QRegularExpression piece(QStringLiteral("(NIB24|.(?=NIB24)|..)"),
                                          QRegularExpression::CaseInsensitiveOption |
                                              QRegularExpression::DotMatchesEverythingOption);
    if (!text.contains(QLatin1Char(' ')) && text.contains(addressField, Qt::CaseInsensitive))
        text.replace(piece, QStringLiteral("\\1 "));
    return text;
}

// Whether the builder takes one whole number at most for this template, an address. What it would
// do with any other argument list is undefined.
bool takesAnAddressAtMost(const QByteArray& format)
{
    int numbers = 0;
    const QList<QByteArray> pieces = format.split(' ');
    for (const QByteArray& piece : pieces) {
        const hx::BuilderField* const field =
            hx::findBuilderField({piece.constData(), size_t(piece.size())});
        if (field == nullptr)
            continue;
        if (field->kind != hx::FieldKind::Number && field->kind != hx::FieldKind::Groups)
            return false;
        ++numbers;
    }
    return numbers <= 1;
}

// Two nibble bytes joined into one byte; only their low halves count.
unsigned joinedNibbles(const QByteArray& nibbles, int index)
{
    const auto low = [&](int i) { return static_cast<unsigned>(nibbles.at(i)) & 0x0F; };
    return low(2 * index) << 4 | low(2 * index + 1);
}

} // namespace

unsigned hx::getRawFidPid(int address, DeviceInterface* device)
{
    if (!device)
        return unknownIdentifier;
    const QString text = device->lookup(QStringLiteral("rawgender.read")).toString();
    const QByteArray format = spacedTemplate(text).toLatin1();
    if (!takesAnAddressAtMost(format))
        return unknownIdentifier;
    HxMidiData command;
    command.setData(format.constData(), address);

    const QString pattern = device->lookup(QStringLiteral("rawgender.read.response")).toString();
    const BusData reply = midiOutWithCmdAndResponceStrings(command, pattern, device);
    if (reply.bytes.size() < fullReplySize)
        return unknownIdentifier;

    const QByteArray nibbles = reply.bytes.mid(dataPosition, 32);
    const unsigned family = joinedNibbles(nibbles, familyPosition);
    const unsigned model = joinedNibbles(nibbles, modelPosition);
    if (family == neverWritten && model == neverWritten)
        return unknownIdentifier;

    const unsigned identifier = family << 16 | model;
    qDebug().noquote() << "IOSUPORT: raw gender: " << QString::number(identifier, 16);
    return identifier;
}

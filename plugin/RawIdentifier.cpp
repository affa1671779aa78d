// The identifier word out of the product's memory.
#include "plugin/Identification.h"

#include "plugin/ProductIdentity.h"
#include "plugin/Transport.h"

#include <QDebug>
#include <QRegularExpression>
#include <QStringList>

#include <cctype>

namespace {

// A full reply: 8 header bytes, the echoed 0F and six address nibbles, 32 data nibbles, F7.
constexpr int fullReplySize = 48;
constexpr int dataPosition = 15;
constexpr int familyPosition = 8; // in the 16 bytes that were read
constexpr int modelPosition = 9;
constexpr unsigned neverWritten = 0xFF;

// The dictionary keeps templates without blanks, but the builder splits at blanks only: puts them
// back. A template that has blanks already is returned as it is.
QString spacedTemplate(QString text)
{
    static const QRegularExpression piece(QStringLiteral("(NIB24|..)"),
                                          QRegularExpression::CaseInsensitiveOption);
    if (!text.contains(QLatin1Char(' ')))
        text.replace(piece, QStringLiteral("\\1 "));
    return text;
}

bool isHexPair(const QString& token)
{
    const auto isHexDigit = [](QChar c) {
        return std::isxdigit(static_cast<unsigned char>(c.toLatin1()));
    };
    return token.size() == 2 && isHexDigit(token.at(0)) && isHexDigit(token.at(1));
}

// True when one argument, an address, is all that the builder will take for this template.
bool isAddressTemplate(const QString& spaced)
{
    int addresses = 0;
    const QStringList tokens = spaced.split(QLatin1Char(' '));
    for (const QString& token : tokens) {
        if (token.compare(QLatin1String("NIB24"), Qt::CaseInsensitive) == 0)
            ++addresses;
        else if (!token.isEmpty() && !isHexPair(token))
            return false;
    }
    return addresses <= 1;
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
    const QString spaced =
        spacedTemplate(device->lookup(QStringLiteral("rawgender.read")).toString());
    if (!isAddressTemplate(spaced))
        return unknownIdentifier;
    HxMidiData command;
    command.setData(spaced.toLatin1().constData(), address);

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

// The raw identifier read and typed values, with any dictionary, any address and any reply.
#include "fuzz/support/FuzzTarget.h"
#include "plugin/Identification.h"
#include "plugin/ValdrinBootInterface.h"
#include "tests/mididata/transcription/Transcription.h"

#include <cmath>

namespace {

using namespace hx::fuzz;

class OneReplyBus final : public Bus {
public:
    BusData transact(BusData command, QString pattern, unsigned timeoutMs) override
    {
        asked = true;
        commandSent = command.bytes;
        patternSent = pattern;
        timeoutSent = timeoutMs;
        return HxMidiData(reply);
    }

    BusData transactExpect(BusData const&, ResponceData const&, unsigned) override
    {
        fail("only transact is used", QString());
    }

    QByteArray reply;
    bool asked = false;
    QByteArray commandSent;
    QString patternSent;
    unsigned timeoutSent = 0;
};

// The product's plugin, with another dictionary.
class OtherDictionary final : public ValdrinBootInterface {
public:
    QVariant lookup(QString key) const override { return map.value(key); }

    QMap<QString, QVariant> map;
};

// The dictionary's compact form is spaced out around its address; any other text stays as it is.
QByteArray spacedTemplate(const QByteArray& text)
{
    const QByteArray upper = text.toUpper();
    if (text.contains(' ') || !upper.contains("NIB24"))
        return text;
    QByteArray spaced;
    for (int at = 0; at < text.size();) {
        const int size = upper.mid(at, 5) == "NIB24" ? 5 : upper.mid(at + 1, 5) == "NIB24" ? 1 : 2;
        spaced += text.mid(at, size) + ' ';
        at += size;
    }
    return spaced;
}

// Whether the builder takes one whole number at most.
bool isAddressTemplate(const QByteArray& spaced)
{
    const QList<QByteArray> numbers = {"VV", "V8",  "P8",  "P14",   "V14",
                                       "UT", "V32", "I32", "NIB24", "NIB32"};
    const QList<QByteArray> others = {"F32", "MSTR", "CSTR"};
    int count = 0;
    for (const QByteArray& token : spaced.toUpper().split(' ')) {
        if (others.contains(token))
            return false;
        count += numbers.contains(token) ? 1 : 0;
    }
    return count <= 1;
}

unsigned expectedIdentifier(const QByteArray& reply)
{
    if (reply.size() < 48)
        return 0x7F007F;
    const auto at = [&](int k) {
        return (reply.at(15 + 2 * k) & 0x0F) * 16 + (reply.at(16 + 2 * k) & 0x0F);
    };
    const bool isUnwritten = at(8) == 0xFF && at(9) == 0xFF;
    return isUnwritten ? 0x7F007F : static_cast<unsigned>(at(8) << 16 | at(9));
}

void readIdentifier(FuzzInput& input)
{
    static OtherDictionary device;
    OneReplyBus bus;
    device.bus = input.byte() != 0xFF ? &bus : nullptr;
    const int address = static_cast<int>(input.word());
    const int how = input.byte();
    const QByteArray any = input.take(how >> 3).constData(); // a text ends at a zero
    const QByteArray command = how & 1 ? any : QByteArray("F0006B420D0FNIB24F7");
    const QByteArray pattern = input.take(how % 8).constData();
    device.map = {{QStringLiteral("rawgender.read"), QString::fromLatin1(command)},
                  {QStringLiteral("rawgender.read.response"), QString::fromLatin1(pattern)},
                  {QStringLiteral("command.timeout.ms"), how}};
    bus.reply = input.rest();

    const unsigned identifier = hx::getRawFidPid(address, &device);
    const bool isAsked = device.bus != nullptr && isAddressTemplate(spacedTemplate(command));
    requireSame(bus.asked, isAsked, "whether the product is asked");
    requireSame(identifier, isAsked ? expectedIdentifier(bus.reply) : 0x7F007Fu, "getRawFidPid");
    if (isAsked) {
        requireSame(bus.patternSent, QString::fromLatin1(pattern), "the pattern");
        requireSame(bus.timeoutSent, unsigned(how), "the timeout");
    }
    if (isAsked)
        requireSame(bus.commandSent,
                    transcription::setData(spacedTemplate(command).constData(), unsigned(address)),
                    "the command");
}

quint32 truncated(float value)
{
    const double limit = 9223372036854775808.0;
    if (!(double(value) >= -limit && double(value) < limit))
        return 0;
    return static_cast<quint32>(static_cast<qint64>(std::trunc(double(value))));
}

QVariant expectedValue(const QByteArray& data, int type, int offset)
{
    if (type == 3)
        return truncated(transcription::getFloat32(data, offset, -99999.0F));
    if (type == 4)
        return static_cast<quint32>(transcription::get32bit(data, offset, -1));
    if (type == 6) {
        const QByteArray text(data.mid(offset, 8).constData());
        return transcription::toString(transcription::fromText(text.constData()), -1);
    }
    return {};
}

void readValue(FuzzInput& input)
{
    static ValdrinBootInterface device;
    const int type = input.choice(9) - 1;
    const int offset = input.number();
    const QByteArray data = input.rest();
    requireSame(device.getValueWithTypeAndOffset(HxMidiData(data), type, offset),
                expectedValue(data, type, offset), "getValueWithTypeAndOffset");
}

// A record keeps nothing of the reply before, and holds what the reply says.
void readIdentity(FuzzInput& input)
{
    HxIdentity identity;
    const QByteArray before = QByteArray::fromHex("F07E000602006B2D3000410031303233F7");
    require(identity.init(HxMidiData(before), 0), "a good reply is accepted");
    const int control = input.byte() % 3;
    const QByteArray reply = input.rest();
    if (!identity.init(HxMidiData(reply), control)) {
        require(identity.versionNumber == 0 && identity.versionText.isNull() &&
                    identity.reply.bytes.isEmpty() && identity.versionOffset == 10,
                "a refused reply resets the record");
        return;
    }
    require(reply.size() >= 16, "an accepted reply has 16 bytes");
    requireSame(identity.reply.bytes, reply, "the reply is kept");
    const int longer = reply.at(5) == 0 ? 2 : 0;
    requireSame(identity.versionOffset, 10 + longer, "where the version stands");
    requireSame(identity.familyOffset, 6 + longer, "where the family stands");
    requireSame(identity.manufacturerIdLength, 1 + longer, "the manufacturer's length");
    const QByteArray version = reply.mid(10 + longer, 4);
    QString text = QLatin1String(version.constData(), version.size());
    if (control != 0)
        text[0] = QChar(0);
    for (int at = 1; at < 7; at += 2)
        text.insert(at, QLatin1Char('.'));
    requireSame(identity.versionText, text, "the version text");
}

void run(FuzzInput& input)
{
    switch (input.choice(3)) {
    case 0:
        return readIdentifier(input);
    case 1:
        return readValue(input);
    default:
        return readIdentity(input);
    }
}

const Target target("raw_identifier", run);

} // namespace

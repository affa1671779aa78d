// The loaded plugin, driven through DeviceInterface, over a bus that returns anything: what it asks
// is always the same, and what it makes of the replies follows from them alone.
#include "deviceinterface/DeviceInterface.h"
#include "fuzz/support/FuzzTarget.h"
#include "tests/mididata/transcription/Transcription.h"

#include <QPluginLoader>

namespace {

using namespace hx::fuzz;

struct Exchange {
    QByteArray command;
    QString pattern;
    unsigned timeoutMs = 0;
    bool isCompiled = false;
};

class AnyBus final : public Bus {
public:
    BusData transact(BusData command, QString pattern, unsigned timeoutMs) override
    {
        asked.append({command.bytes, pattern, timeoutMs, false});
        return reply();
    }

    BusData transactExpect(BusData const& command, ResponceData const& expected,
                           unsigned timeoutMs) override
    {
        asked.append({command.bytes, expected.rx.pattern(), timeoutMs, true});
        return reply();
    }

    FuzzInput* input = nullptr;
    QList<Exchange> asked;
    QList<QByteArray> answered;
    qint32 version = 0; // what the plugin knows from the last identity reply

private:
    BusData reply() { return answered << replyOf(*input), HxMidiData(answered.last()); }

    // Anything, or what a product might say with a byte or two changed.
    static QByteArray replyOf(FuzzInput& input)
    {
        static const QByteArray likely[] = {
            QByteArray::fromHex("F0006B2D30413001020304F7"),
            QByteArray::fromHex("F0006B2D30413101020304F7"),
            QByteArray::fromHex("F07E00060200006B2D3000410031303233F7"),
            QByteArray::fromHex("F07E000602006B2D3000410031303233F7"),
            QByteArray::fromHex("F07E0006024130004100313233343536006B2DF7"),
            QByteArray("F07E7F06"),
        };
        const int how = input.byte();
        if (how < 0x40)
            return input.take(how % 32);
        QByteArray reply = likely[how % 6];
        for (int left = how >> 6; left > 1; --left)
            reply[input.byte() % reply.size()] = static_cast<char>(input.byte());
        if (how >= 0xE0)
            reply = reply.mid(input.byte() % 4, 17 - input.byte() % 4) + input.take(3);
        return reply;
    }
};

DeviceInterface* loadDevice()
{
    static QPluginLoader loader(QStringLiteral(HX_PLUGIN_FILE));
    auto* device = qobject_cast<DeviceInterface*>(loader.instance());
    if (device == nullptr)
        fail("the plugin loads", loader.errorString());
    return device;
}

void requireAsked(const AnyBus& bus, int index, const char* command, const char* pattern,
                  unsigned timeoutMs, bool isCompiled)
{
    require(index < bus.asked.size(), "the exchange takes place");
    const Exchange& exchange = bus.asked.at(index);
    requireSame(exchange.command, QByteArray::fromHex(command), "the command");
    requireSame(exchange.pattern, QString::fromLatin1(pattern), "the pattern");
    requireSame(exchange.timeoutMs, timeoutMs, "the timeout");
    requireSame(exchange.isCompiled, isCompiled, "the kind of exchange");
}

bool holdsIdentityHead(const QByteArray& hex)
{
    for (int at = 0; at + 10 <= hex.size(); ++at) {
        if (hex.mid(at, 4) == "f07e" && hex.mid(at + 6, 4) == "0602")
            return true;
    }
    return false;
}

// What versionNumber() must answer, when `before` is what it answered last.
qint32 expectedVersion(const QByteArray& reply, qint32 before)
{
    if (reply.isEmpty())
        return before;
    const QByteArray hex = reply.toHex();
    if (reply.size() < 16 || !hex.contains("006b2d") || !holdsIdentityHead(hex))
        return 0;
    const int at = reply.at(5) == 0 ? 12 : 10;
    qint32 number = 0;
    for (int i = 0; i < 4; ++i) {
        const char digit = reply.at(at + i);
        number = number * 10 + (digit >= '0' && digit <= '9' ? digit - '0' : 0);
    }
    return number;
}

int checksum(const QByteArray& reply, int missing)
{
    return reply.size() == 12 ? transcription::get32bit(reply, 6, missing) : missing;
}

void askVersion(DeviceInterface& device, AnyBus& bus)
{
    const qint32 answer = device.versionNumber();
    requireSame(bus.asked.size(), 1, "one exchange for the version");
    requireAsked(bus, 0, "F07E7F0601F7", "F0 7E .. 06 02 00 6B 2D 30 00 41 00 .. .. .. .. F7",
                 25000, true);
    bus.version = expectedVersion(bus.answered.at(0), bus.version);
    requireSame(answer, bus.version, "versionNumber");
}

void askCode(DeviceInterface& device, AnyBus& bus, CodeType kind)
{
    const bool isValid = device.isCodeValid(kind);
    if (kind != CodeType::Fwu) {
        require(!isValid && bus.asked.isEmpty(), "only fwu code is asked for");
        return;
    }
    requireSame(bus.asked.size(), 2, "two exchanges for the code");
    requireAsked(bus, 0, "F0006B2D304130F7", "F0 00 6B 2D 30 41 30", 2200, false);
    requireAsked(bus, 1, "F0006B2D304131F7", "F0 00 6B 2D 30 41 31", 2200, false);
    requireSame(isValid, checksum(bus.answered.at(0), 0) == checksum(bus.answered.at(1), 1),
                "isCodeValid");
}

void askSerialNumber(DeviceInterface& device, AnyBus& bus)
{
    const QString number = device.esn();
    requireSame(bus.asked.size(), 1, "one exchange for the serial number");
    requireAsked(bus, 0, "", "", 0xFFFFFFFF, false);
    const QByteArray text(bus.answered.at(0).left(8).constData()); // to the first zero
    const QByteArray bytes = transcription::fromText(text.constData());
    const bool isNumber = !bus.answered.at(0).isEmpty() && bytes.size() == 8;
    requireSame(number, isNumber ? transcription::toString(bytes, -1) : QString(), "esn");
    requireSame(number.isNull(), !isNumber, "no number is null");
}

void askRefusal(DeviceInterface& device, FuzzInput& input)
{
    const QByteArray reply = input.block();
    requireSame(device.isNak(HxMidiData(reply)), reply.size() < 8 || reply.at(7) == 0x46, "isNak");
}

void askKey(DeviceInterface& device, FuzzInput& input)
{
    static const char* const keys[] = {
        "reset",          "identify.response", "command.timeout.ms", "id.dsp*.response",
        "rawgender.read", "get.esn.cmd"};
    const int how = input.choice(8);
    const QString key = how < 6 ? QString::fromLatin1(keys[how]) : QString::fromUtf8(input.block());
    const QVariant value = device.lookup(key);
    requireSame(device.lookupInt(key), value.toInt(), "lookupInt");
    requireSame(device.lookupStr(key), value.toString(), "lookupStr");
    require(!value.toString().contains(QLatin1Char(' ')), "a text of the dictionary has no blank");
    if (how < 6)
        requireSame(value.isValid(), how != 5, "whether the key is known");
}

QList<HxMidiData> messagesOf(FuzzInput& input)
{
    QList<HxMidiData> messages;
    for (int left = input.choice(4); left > 0; --left) {
        const int how = input.byte();
        if (how < 0x80)
            messages += HxMidiData(input.take(how % 16));
        else
            messages +=
                HxMidiData(QByteArray::fromHex(how & 1 ? "F0006B2D3041F7" : "F0006B2D304143"));
        if (how >= 0xC0)
            messages.last().bytes[input.byte() % 7] = static_cast<char>(input.byte());
    }
    return messages;
}

void askUpdate(DeviceInterface& device, FuzzInput& input)
{
    const QList<HxMidiData> messages = messagesOf(input);
    device.lastError.clear();
    const FwUpdateProtocol protocol = device.getUpdateProtocol(QStringLiteral("any"), messages);
    QString error;
    if (messages.isEmpty())
        error = QStringLiteral("Bad input arguments");
    else if (messages.first().bytes.size() < 7 || messages.last().bytes.size() < 7)
        error = QStringLiteral("Update data mismatch");
    require(device.lastError.isEmpty() == error.isEmpty() && device.lastError.endsWith(error),
            "the error text");

    CodeType kind = CodeType::Unknown;
    if (error.isEmpty() && messages.last().bytes == QByteArray::fromHex("F0006B2D3041F7")) {
        const char command = messages.first().bytes.at(6);
        kind = command == 0x42   ? CodeType::Fwd
               : command == 0x43 ? CodeType::Fwu
                                 : CodeType::Unknown;
    }
    const bool isKnown = kind != CodeType::Unknown;
    requireSame(int(protocol.codeType), int(kind), "the kind of code");
    requireSame(protocol.timeoutMs, isKnown ? 2200 : 5500, "the timeout");
    requireSame(protocol.fidpid,
                isKnown           ? 0x300041
                : error.isEmpty() ? 0x7F007F
                                  : protocol.fidpid,
                "the identifier");
    requireSame(protocol.responseAny.rx.pattern(),
                isKnown ? QStringLiteral("F0006B2D30414[23]0C..F7") : QString(), "any reply");
    const QString fileCheck = kind == CodeType::Fwu ? QStringLiteral("F0006B2D3041430C")
                                                    : QStringLiteral("F0006B2D30..420C");
    requireSame(protocol.fileCheck.rx.pattern(),
                isKnown ? fileCheck + QString(32, QLatin1Char('.')) + QStringLiteral("F7")
                        : QString(),
                "the file check");
}

void askIdentity(DeviceInterface& device, FuzzInput& input)
{
    const auto word = static_cast<unsigned>(input.number());
    requireSame(device.canSupport(word), word == 0x300041, "canSupport");
    requireSame(device.fidpid(), 0x300041u, "fidpid");
    requireSame(device.rawFidpid(), 0x300041u, "rawFidpid");
    requireSame(device.productInPortName(), device.productPortName(), "the port names");
    requireSame(device.getFidPidNameMap().value(0x300041), QStringLiteral("ValdrinBoot"), "name");
    const QString message = QString::fromUtf8(input.block());
    device.setLastError(message);
    require(device.lastError.endsWith(QStringLiteral(":322 - ") + message), "setLastError");
}

void ask(DeviceInterface& device, AnyBus& bus, FuzzInput& input)
{
    switch (input.choice(9)) {
    case 0:
    case 1:
        return askVersion(device, bus);
    case 2:
    case 3:
        return askCode(device, bus, static_cast<CodeType>(input.choice(4)));
    case 4:
        return askSerialNumber(device, bus);
    case 5:
        return askRefusal(device, input);
    case 6:
        return askKey(device, input);
    case 7:
        return askUpdate(device, input);
    default:
        return askIdentity(device, input);
    }
}

// The plugin is the same in all runs; a reply that is no identity makes it forget the last one.
void forgetIdentity(DeviceInterface& device)
{
    const uint8_t oneByteReply[] = {0x01, 0x55};
    FuzzInput input(oneByteReply, sizeof(oneByteReply));
    AnyBus bus;
    bus.input = &input;
    device.bus = &bus;
    requireSame(device.versionNumber(), 0, "the version after a refused reply");
}

void run(FuzzInput& input)
{
    static DeviceInterface& device = *loadDevice();
    forgetIdentity(device);
    AnyBus bus;
    bus.input = &input;
    bus.errorText = QString::fromUtf8(input.take(input.byte() % 4));
    device.bus = &bus;
    while (!input.atEnd()) {
        bus.asked.clear();
        bus.answered.clear();
        ask(device, bus, input);
        requireSame(bus.asked.size(), bus.answered.size(), "every question has its reply");
    }
    device.bus = nullptr;
}

const Target target("plugin_replies", run);

} // namespace

#include "host/product/ProductReadings.h"

#include "host/base/HexText.h"
#include "host/product/RefusalForm.h"

namespace hx {

namespace {

constexpr int commandBytes = 7;  // F0 up to the command byte, which a refusal repeats
constexpr int valuePosition = 7; // of the first value byte in a reply
constexpr int checksumGroups = 4;
constexpr int serialNumberBytes = 8;
constexpr int imageReplyBytes = 22;
constexpr int noImageBytes = 10; // the reply about an image that is not there
constexpr int noImagePosition = 8;
constexpr char noImage = 0x02;

// The pattern of the dictionary, or the refusal of this very command.
QString widened(const QString& responsePattern, const HxMidiData& command)
{
    return QLatin1Char('(') + responsePattern + QLatin1Char('|') + command.toString(commandBytes) +
           QStringLiteral("46F7)");
}

ReadingState stateOf(ExchangeEnd end)
{
    switch (end) {
    case ExchangeEnd::Answered:
        return ReadingState::Good;
    case ExchangeEnd::PortLost:
    case ExchangeEnd::SendFailed:
        return ReadingState::PortLost;
    case ExchangeEnd::Interrupted:
        return ReadingState::Interrupted;
    case ExchangeEnd::TimedOut:
        return ReadingState::NoAnswer;
    case ExchangeEnd::EmptyCommand:
    case ExchangeEnd::BadPattern:
        break;
    }
    return ReadingState::Unknown;
}

void refuseSize(Reading& reading, int expected)
{
    reading.state = ReadingState::Malformed;
    reading.reason = QStringLiteral("the reply %1 has %2 bytes; expected %3")
                         .arg(hexTextShort(reading.raw.bytes))
                         .arg(reading.raw.bytes.size())
                         .arg(expected);
}

// A reply that holds `valueBytes` bytes of value between its head and its F7.
bool hasValue(Reading& reading, int valueBytes)
{
    if (!reading.good())
        return false;
    const int expected = valuePosition + valueBytes + 1;
    if (reading.raw.bytes.size() == expected)
        return true;
    refuseSize(reading, expected);
    return false;
}

template <typename Kind>
Kind typed(const Reading& reading)
{
    Kind result;
    static_cast<Reading&>(result) = reading;
    return result;
}

} // namespace

QString readingStateText(ReadingState state)
{
    switch (state) {
    case ReadingState::NotRead:
        return QStringLiteral("not read");
    case ReadingState::Good:
        return QStringLiteral("good");
    case ReadingState::Refused:
        return QStringLiteral("refused");
    case ReadingState::Malformed:
        return QStringLiteral("malformed");
    case ReadingState::NoAnswer:
        return QStringLiteral("no answer");
    case ReadingState::PortLost:
        return QStringLiteral("port lost");
    case ReadingState::Interrupted:
        return QStringLiteral("interrupted");
    case ReadingState::Unknown:
        break;
    }
    return QStringLiteral("unknown command");
}

ProductReader::ProductReader(DeviceInterface& device, PortBus& bus, int attempts)
    : m_device(device), m_bus(bus), m_attempts(attempts)
{
}

unsigned ProductReader::timeoutMs() const
{
    return static_cast<unsigned>(qMax(0, m_device.lookupInt(QStringLiteral("command.timeout.ms"))));
}

Reading ProductReader::read(const QString& key, const QStringList& responseKeys)
{
    Reading reading;
    reading.key = key;
    const HxMidiData command(m_device.lookupStr(key));
    const ReplyTest fits = replyTest(widened(patterns(responseKeys), command));
    for (int attempt = 0; attempt < m_attempts; ++attempt) {
        reading.raw = m_bus.exchange(command, fits, responseKeys.first(), timeoutMs());
        reading.state = stateOf(m_bus.lastEnd());
        if (reading.state != ReadingState::NoAnswer)
            break;
    }
    reading.reason = reading.good() ? QString() : m_bus.errorText;
    if (reading.good() && isRefusal(reading.raw)) {
        reading.state = ReadingState::Refused;
        reading.reason =
            QStringLiteral("the product refused it: %1").arg(hexText(reading.raw.bytes));
    }
    return reading;
}

QString ProductReader::patterns(const QStringList& keys) const
{
    QStringList texts;
    for (const QString& key : keys)
        texts << m_device.lookupStr(key);
    return texts.join(QLatin1Char('|'));
}

// A plugin may look at the first value byte alone, which a serial number or a checksum may have
// too: only the short form, which has room for nothing else, can be a refusal.
bool ProductReader::isRefusal(const HxMidiData& reply) const
{
    return reply.bytes.size() <= refusalBytes && m_device.isNak(reply);
}

// Every maker numbers families and models for itself, so the manufacturer must be the one that the
// plugin's commands are addressed to.
bool ProductReader::isServed(const IdentityReading& identity) const
{
    const HxMidiData command(m_device.lookupStr(QStringLiteral("version.read.user")));
    return identity.good() && m_device.canSupport(identity.fidpid) &&
           command.mid(1, identity.manufacturer.size()) == identity.manufacturer;
}

// Others on the same cable may answer first, so the wait goes on for one that the plugin serves.
IdentityReading ProductReader::askIdentity()
{
    const HxMidiData command(m_device.lookupStr(QStringLiteral("identify")));
    const ReplyTest fits = replyTest(m_device.lookupStr(QStringLiteral("identify.response")));
    IdentityReading other;
    const ReplyTest isServedReply = [&](const HxMidiData& message) {
        if (!fits(message))
            return false;
        const IdentityReading identity = parseIdentity(message);
        if (!isServed(identity))
            other = identity;
        return isServed(identity);
    };
    const HxMidiData reply =
        m_bus.exchange(command, isServedReply,
                       QStringLiteral("identify.response of a served product"), timeoutMs());
    if (m_bus.lastEnd() == ExchangeEnd::Answered)
        return parseIdentity(reply);
    if (m_bus.lastEnd() == ExchangeEnd::TimedOut && other.state != ReadingState::NotRead)
        return other;
    IdentityReading none;
    none.key = QStringLiteral("identify");
    none.state = stateOf(m_bus.lastEnd());
    none.reason = m_bus.errorText;
    return none;
}

// One bit that changes on the way makes another product of this one, so another one is believed
// when it says the same twice.
IdentityReading ProductReader::identity(int attempts)
{
    IdentityReading identity = askIdentity();
    for (int i = 1; i < attempts && !isServed(identity); ++i) {
        if (identity.state == ReadingState::PortLost || identity.state == ReadingState::Interrupted)
            break;
        const IdentityReading again = askIdentity();
        if (again.state == ReadingState::NoAnswer && !identity.raw.bytes.isEmpty())
            continue;
        const bool isSame = identity.raw.bytes == again.raw.bytes && !again.raw.bytes.isEmpty();
        identity = again;
        if (isSame)
            break;
    }
    return identity;
}

GenderReading ProductReader::gender()
{
    auto gender = typed<GenderReading>(
        read(QStringLiteral("gender.read"), {QStringLiteral("gender.read.response")}));
    if (hasValue(gender, 4))
        gender.fidpid = static_cast<quint32>(gender.raw.get14bit(valuePosition, 0) << 16 |
                                             gender.raw.get14bit(valuePosition + 2, 0));
    return gender;
}

VersionReading ProductReader::version()
{
    auto version = typed<VersionReading>(
        read(QStringLiteral("version.read.user"), {QStringLiteral("version.read.user.response")}));
    if (!hasValue(version, versionBytesCount))
        return version;
    version.versionBytes = version.raw.mid(valuePosition, versionBytesCount);
    version.version = versionTextOf(version.versionBytes);
    return version;
}

ChecksumReading ProductReader::checksum(const QString& key)
{
    auto checksum = typed<ChecksumReading>(read(key, {key + QStringLiteral(".response")}));
    if (!hasValue(checksum, checksumGroups))
        return checksum;
    checksum.groups = checksum.raw.mid(valuePosition, checksumGroups);
    for (const char group : qAsConst(checksum.groups))
        checksum.value = checksum.value << 7 | static_cast<quint8>(group);
    return checksum;
}

ChecksumReading ProductReader::storedChecksum()
{
    return checksum(QStringLiteral("version.read.user.crc"));
}

ChecksumReading ProductReader::calculatedChecksum()
{
    return checksum(QStringLiteral("version.calc.user.crc"));
}

EsnReading ProductReader::esn()
{
    auto esn =
        typed<EsnReading>(read(QStringLiteral("esn.read"), {QStringLiteral("esn.read.response")}));
    if (hasValue(esn, serialNumberBytes))
        esn.number = esn.raw.mid(valuePosition, serialNumberBytes);
    return esn;
}

CodeImageReading ProductReader::codeImage(int number)
{
    const QString key = QStringLiteral("id.dsp%1").arg(number);
    const QString response = key + QStringLiteral(".response");
    auto found =
        typed<CodeImageReading>(read(key, {response, response + QStringLiteral(".invalid")}));
    const QByteArray& bytes = found.raw.bytes;
    if (!found.good() || (bytes.size() == noImageBytes && bytes.at(noImagePosition) == noImage))
        return found;
    if (bytes.size() != imageReplyBytes) {
        refuseSize(found, imageReplyBytes);
        return found;
    }
    const auto offset = [this](const char* field) {
        return m_device.lookupInt(QStringLiteral("id.dsp.offset.") + QLatin1String(field));
    };
    found.present = true;
    found.version = found.raw.get14bit(offset("code_ver"), 0);
    found.responseFlag = found.raw.get14bit(offset("response_flag"), 0);
    found.size = found.raw.getUtime(offset("code_size"), 0);
    found.bankStatus = found.raw.toInt(offset("bank_status"), 1, 0);
    return found;
}

ProductInfo readProductInfo(ProductReader& reader)
{
    ProductInfo info;
    info.identity = reader.identity();
    if (info.identity.state != ReadingState::Good)
        return info;
    info.gender = reader.gender();
    info.version = reader.version();
    info.stored = reader.storedChecksum();
    info.calculated = reader.calculatedChecksum();
    info.esn = reader.esn();
    info.dsp0 = reader.codeImage(0);
    info.dsp1 = reader.codeImage(1);
    return info;
}

PluginAnswers askPlugin(DeviceInterface& device)
{
    PluginAnswers answers;
    answers.versionNumber = device.versionNumber();
    answers.esn = device.esn();
    answers.fwuValid = device.isCodeValid(CodeType::Fwu);
    answers.fwdValid = device.isCodeValid(CodeType::Fwd);
    return answers;
}

} // namespace hx

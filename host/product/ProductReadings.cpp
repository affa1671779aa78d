#include "host/product/ProductReadings.h"

#include "host/base/HexText.h"
#include "host/product/RefusalForm.h"

namespace hx {

namespace {

QString responseKey(const QString& key)
{
    return key + QStringLiteral(".response");
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
    case ExchangeEnd::OtherProduct:
        return ReadingState::OtherProduct;
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

// 7-bit groups as one number, most significant first.
quint64 numberOf(const QByteArray& groups)
{
    quint64 number = 0;
    for (const char group : groups)
        number = number << 7 | static_cast<quint8>(group);
    return number;
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
    case ReadingState::OtherProduct:
        return QStringLiteral("other product");
    case ReadingState::PortLost:
        return QStringLiteral("port lost");
    case ReadingState::Interrupted:
        return QStringLiteral("interrupted");
    case ReadingState::Unknown:
        break;
    }
    return QStringLiteral("unknown command");
}

ProductReader::ProductReader(DeviceInterface& device, PortBus& bus)
    : m_device(device), m_bus(bus), m_product(describeProduct(device))
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
    reading.reason = missingEntry(QStringList(key) + responseKeys);
    if (!reading.reason.isEmpty()) {
        reading.state = ReadingState::Unknown;
        return reading;
    }
    const HxMidiData command(m_device.lookupStr(key));
    const ReplyTest fits = replyOrRefusal(command, responseKeys);
    for (int attempt = 0; attempt < questionAttempts; ++attempt) {
        if (attempt > 0)
            m_bus.rest();
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

// Without a command or without a pattern nothing can be asked: an empty pattern fits every message.
QString ProductReader::missingEntry(const QStringList& keys) const
{
    for (const QString& key : keys) {
        if (m_device.lookupStr(key).isEmpty())
            return QStringLiteral("the plugin's dictionary has no \"%1\"").arg(key);
    }
    return {};
}

// A negative acknowledgement of this very command ends the wait too.
ReplyTest ProductReader::replyOrRefusal(const HxMidiData& command,
                                        const QStringList& responseKeys) const
{
    QStringList patterns;
    for (const QString& key : responseKeys)
        patterns << m_device.lookupStr(key);
    const ReplyTest fits = replyTest(QStringLiteral("(%1)").arg(patterns.join(QLatin1Char('|'))));
    return [this, command, fits](const HxMidiData& message) {
        const QByteArray echo = command.bytes.left(m_product.header.size() + 1);
        return fits(message) || (message.bytes.startsWith(echo) && isRefusal(message));
    };
}

// A plugin may look at the first value byte alone, which a serial number or a checksum may have
// too: only the short form, which has room for nothing else, can be a refusal.
bool ProductReader::isRefusal(const HxMidiData& reply) const
{
    return isRefusalSize(reply.bytes.size(), m_product.header.size()) && m_device.isNak(reply);
}

ReplyLayout ProductReader::layoutOf(const QString& key) const
{
    return m_product.replies.value(key);
}

// A reply of the size that its pattern shows.
bool ProductReader::hasValue(Reading& reading, const ReplyLayout& layout) const
{
    if (!reading.good())
        return false;
    if (layout.isKnown() && reading.raw.bytes.size() == layout.replyBytes())
        return true;
    if (layout.isKnown()) {
        refuseSize(reading, layout.replyBytes());
    } else {
        reading.state = ReadingState::Malformed;
        reading.reason = QStringLiteral("the pattern \"%1\" does not show where the value is")
                             .arg(m_device.lookupStr(responseKey(reading.key)));
    }
    return false;
}

// Every maker numbers families and models for itself, so the manufacturer must be the one that the
// plugin's commands are addressed to.
bool ProductReader::isServed(const IdentityReading& identity) const
{
    return identity.good() && m_device.canSupport(identity.fidpid) &&
           identity.manufacturer == m_product.manufacturer();
}

// What is known of an answer that the plugin's own pattern does not fit.
IdentityReading ProductReader::keptOut(IdentityReading identity) const
{
    identity.state = isServed(identity) ? ReadingState::NoAnswer : ReadingState::OtherProduct;
    identity.reason = QStringLiteral("something answered, but not as this plugin's product: %1")
                          .arg(hexText(identity.raw.bytes));
    return identity;
}

// Others on the same cable may answer first, so the wait goes on for one that the plugin serves.
IdentityReading ProductReader::askIdentity()
{
    IdentityReading none;
    none.key = QStringLiteral("identify");
    none.reason = missingEntry({none.key, responseKey(none.key)});
    if (!none.reason.isEmpty()) {
        none.state = ReadingState::Unknown;
        return none;
    }
    const HxMidiData command(m_device.lookupStr(none.key));
    const ReplyTest fits = replyTest(m_device.lookupStr(QStringLiteral("identify.response")));
    IdentityReading other;
    IdentityReading unfit;
    const ReplyTest isServedReply = [&](const HxMidiData& message) {
        const IdentityReading identity = parseIdentity(message);
        const bool isFitting = fits(message);
        if (!isFitting && identity.good())
            unfit = identity;
        if (isFitting && !isServed(identity))
            other = identity;
        return isFitting && isServed(identity);
    };
    const HxMidiData reply =
        m_bus.exchange(command, isServedReply,
                       QStringLiteral("identify.response of a served product"), timeoutMs());
    if (m_bus.lastEnd() == ExchangeEnd::Answered)
        return parseIdentity(reply);
    if (m_bus.lastEnd() == ExchangeEnd::TimedOut && other.state != ReadingState::NotRead)
        return other;
    if (m_bus.lastEnd() == ExchangeEnd::TimedOut && unfit.good())
        return keptOut(unfit);
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
        if (identity.state == ReadingState::PortLost ||
            identity.state == ReadingState::Interrupted || identity.state == ReadingState::Unknown)
            break;
        m_bus.rest();
        const IdentityReading again = askIdentity();
        if (again.state == ReadingState::NoAnswer && !identity.raw.bytes.isEmpty())
            continue;
        const bool isSame = again.state != ReadingState::OtherProduct &&
                            identity.raw.bytes == again.raw.bytes && !again.raw.bytes.isEmpty();
        identity = again;
        if (isSame)
            break;
    }
    return identity;
}

GenderReading ProductReader::gender()
{
    const QString key = QStringLiteral("gender.read");
    const ReplyLayout layout = layoutOf(responseKey(key));
    auto gender = typed<GenderReading>(read(key, {responseKey(key)}));
    if (!hasValue(gender, layout))
        return gender;
    const int half = layout.count / 2; // family, then model
    gender.fidpid = static_cast<quint32>(numberOf(gender.raw.mid(layout.position, half)) << 16 |
                                         numberOf(gender.raw.mid(layout.position + half, half)));
    return gender;
}

VersionReading ProductReader::version()
{
    const QString key = QStringLiteral("version.read.user");
    const ReplyLayout layout = layoutOf(responseKey(key));
    auto version = typed<VersionReading>(read(key, {responseKey(key)}));
    if (!hasValue(version, layout))
        return version;
    version.versionBytes = version.raw.mid(layout.position, layout.count);
    version.version = versionTextOf(version.versionBytes);
    return version;
}

ChecksumReading ProductReader::checksum(const QString& key)
{
    const ReplyLayout layout = layoutOf(responseKey(key));
    auto checksum = typed<ChecksumReading>(read(key, {responseKey(key)}));
    if (!hasValue(checksum, layout))
        return checksum;
    checksum.groups = checksum.raw.mid(layout.position, layout.count);
    checksum.value = numberOf(checksum.groups);
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
    const QString key = QStringLiteral("esn.read");
    const ReplyLayout layout = layoutOf(responseKey(key));
    auto esn = typed<EsnReading>(read(key, {responseKey(key)}));
    if (hasValue(esn, layout))
        esn.number = esn.raw.mid(layout.position, layout.count);
    return esn;
}

// One pattern for both images says how long their replies are: that of "id.dsp0" leaves it open.
CodeImageReading ProductReader::codeImage(int number)
{
    const QString key = QStringLiteral("id.dsp%1").arg(number);
    const QString invalidKey = responseKey(key) + QStringLiteral(".invalid");
    auto found = typed<CodeImageReading>(read(key, {responseKey(key), invalidKey}));
    if (!found.good() || replyTest(m_device.lookupStr(invalidKey))(found.raw))
        return found;
    if (!hasValue(found, layoutOf(QStringLiteral("id.dsp*.response"))))
        return found;
    readImageFields(found);
    return found;
}

void ProductReader::readImageFields(CodeImageReading& image) const
{
    const QStringList fields = {QStringLiteral("code_ver"), QStringLiteral("response_flag"),
                                QStringLiteral("code_size"), QStringLiteral("bank_status")};
    std::vector<int> offsets;
    for (const QString& field : fields) {
        const QString key = QStringLiteral("id.dsp.offset.") + field;
        if (missingEntry({key}).isEmpty()) {
            offsets.push_back(m_device.lookupInt(key));
            continue;
        }
        image.state = ReadingState::Unknown;
        image.reason = missingEntry({key});
        return;
    }
    image.present = true;
    image.version = image.raw.get14bit(offsets[0], 0);
    image.responseFlag = image.raw.get14bit(offsets[1], 0);
    image.size = image.raw.getUtime(offsets[2], 0);
    image.bankStatus = image.raw.toInt(offsets[3], 1, 0);
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

#include "host/product/ProductDescription.h"

#include "host/base/StatusByte.h"
#include "host/product/MessageNames.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace hx {

namespace {

constexpr int longManufacturerBytes = 3; // of a maker whose first byte is 00

bool isReply(const QString& key)
{
    return key.contains(QLatin1String(".response")) || key.endsWith(QLatin1String(".filecheck"));
}

// The universal messages of MIDI belong to no product.
bool isUniversal(quint8 manufacturer)
{
    return manufacturer == 0x7E || manufacturer == 0x7F;
}

QByteArray fixedStart(const std::vector<PatternByte>& bytes)
{
    QByteArray start;
    for (const PatternByte& byte : bytes) {
        if (!byte.isFixed())
            break;
        start.append(static_cast<char>(byte.value));
    }
    return start;
}

// F0, maker, family and model of a command; empty when it is not a command of a product.
QByteArray headerOf(const QString& command)
{
    const QByteArray start = fixedStart(patternBytes(command).bytes);
    if (start.size() < 2 || static_cast<quint8>(start.at(0)) != sysExStart ||
        isUniversal(static_cast<quint8>(start.at(1))))
        return {};
    const int size = 1 + (start.at(1) == 0 ? longManufacturerBytes : 1) + 2;
    return start.size() > size ? start.left(size) : QByteArray();
}

QByteArray commonHeader(const DeviceInterface& device)
{
    QByteArray common;
    for (const QString& key : messageKeys()) {
        if (isReply(key))
            continue;
        const QByteArray header = headerOf(device.lookupStr(key));
        if (header.isEmpty())
            continue;
        if (!common.isEmpty() && header != common)
            return {};
        common = header;
    }
    return common;
}

// A file check is the header, in which the model may be left open, two fixed bytes, and fields.
std::vector<UpdateKind> updateKindsOf(const DeviceInterface& device, int headerSize)
{
    std::vector<UpdateKind> kinds;
    for (const CodeType kind : {CodeType::Fwu, CodeType::Fwd}) {
        const QString key = QStringLiteral("fwupdate.%1.filecheck").arg(codeTypeTag(kind));
        const PatternBytes pattern = patternBytes(device.lookupStr(key));
        const auto command = static_cast<size_t>(headerSize);
        if (headerSize == 0 || !pattern.isWhole || pattern.bytes.size() < command + 3)
            continue;
        const PatternByte& first = pattern.bytes[command];
        const PatternByte& second = pattern.bytes[command + 1];
        if (first.isFixed() && second.isFixed())
            kinds.push_back({kind, first.value, second.value});
    }
    return kinds;
}

QMap<QString, ReplyLayout> replyLayouts(const DeviceInterface& device)
{
    QMap<QString, ReplyLayout> layouts;
    for (const QString& key : messageKeys()) {
        if (!key.endsWith(QLatin1String(".response")))
            continue;
        const ReplyLayout layout = replyLayout(device.lookupStr(key));
        if (layout.isKnown())
            layouts.insert(key, layout);
    }
    return layouts;
}

QStringList missingProofsOf(const DeviceInterface& device)
{
    const std::pair<const char*, const char*> proofs[] = {
        {"identify", "identity request"},
        {"version.read.user", "version request"},
        {"version.read.user.crc", "stored checksum"},
        {"version.calc.user.crc", "calculated checksum"},
    };
    QStringList missing;
    for (const auto& proof : proofs) {
        const QString key = QString::fromLatin1(proof.first);
        const QString question = device.lookupStr(key);
        const QString answer = device.lookupStr(key + QStringLiteral(".response"));
        if (question.isEmpty() || answer.isEmpty())
            missing << QString::fromLatin1(proof.second);
    }
    return missing;
}

} // namespace

quint32 ProductDescription::headerIdentifier() const
{
    if (header.isEmpty())
        return unknownIdentifier;
    const auto family = static_cast<quint8>(header.at(header.size() - 2));
    return quint32(family) << 16 | static_cast<quint8>(header.back());
}

QByteArray ProductDescription::manufacturer() const
{
    return header.mid(1, header.size() - 3);
}

const UpdateKind* ProductDescription::updateKind(CodeType kind) const
{
    const auto found = std::find_if(updateKinds.begin(), updateKinds.end(),
                                    [kind](const UpdateKind& known) { return known.kind == kind; });
    return found == updateKinds.end() ? nullptr : &*found;
}

int ProductDescription::checksumGroups() const
{
    return replies.value(QStringLiteral("version.read.user.crc.response")).count;
}

QString ProductDescription::missingProofText() const
{
    if (missingProofs.isEmpty())
        return {};
    const QString list = missingProofs.join(QStringLiteral(" and no "));
    if (missingProofs.contains(QStringLiteral("identity request")))
        return QStringLiteral("this plugin names no %1: the product cannot be identified, and no "
                              "update is sent")
            .arg(list);
    return QStringLiteral("this plugin names no %1: the update can be sent, not verified")
        .arg(list);
}

ProductDescription describeProduct(DeviceInterface& device)
{
    ProductDescription product;
    const QString name = device.productName();
    product.name = QString(name.constData(), name.size()); // may lie in the plugin's library
    product.identifier = device.fidpid();
    product.header = commonHeader(device);
    product.updateKinds = updateKindsOf(device, saturated(product.header.size()));
    product.replies = replyLayouts(device);
    product.missingProofs = missingProofsOf(device);
    return product;
}

} // namespace hx

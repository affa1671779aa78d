// What the host must know to send an update image.
#include "plugin/ProductIdentity.h"
#include "plugin/ValdrinBootInterface.h"

#include <QDebug>

namespace {

constexpr int shortestMessage = 7;
constexpr int commandPosition = 6;

unsigned valueAt(const HxMidiData& message, int position)
{
    return static_cast<unsigned char>(message.bytes.at(position));
}

bool isClosingMessage(const HxMidiData& message)
{
    return message.bytes.size() == shortestMessage && message.match("F0006B2D3041F7", false);
}

CodeType kindOfImage(const HxMidiData& first, const HxMidiData& last)
{
    if (!isClosingMessage(last))
        return CodeType::Unknown;
    switch (valueAt(first, commandPosition)) {
    case 0x42:
        return CodeType::Fwd;
    case 0x43:
        return CodeType::Fwu;
    default:
        return CodeType::Unknown;
    }
}

} // namespace

FwUpdateProtocol ValdrinBootInterface::getUpdateProtocol(QString const&,
                                                         QList<HxMidiData> const& updateData)
{
    FwUpdateProtocol protocol;
    if (updateData.isEmpty()) {
        setLastError(QStringLiteral("Bad input arguments"));
        return protocol;
    }
    const HxMidiData& first = updateData.first();
    const HxMidiData& last = updateData.last();
    if (first.bytes.size() < shortestMessage || last.bytes.size() < shortestMessage) {
        setLastError(QStringLiteral("Update data mismatch"));
        return protocol;
    }
    const CodeType kind = kindOfImage(first, last);
    if (kind == CodeType::Unknown) {
        protocol.fidpid = hx::unknownIdentifier;
        qDebug() << "ERROR: CodeType is unknown.";
        return protocol;
    }
    protocol.fidpid = static_cast<int>(valueAt(last, 4) << 16 | valueAt(last, 5));
    protocol.codeType = kind;

    const auto pattern = [&](const char* key) {
        const QString name = QString::fromLatin1(key).arg(hx::codeTypeTag(kind));
        ResponceData response; // not by its constructor: the text need not be Latin-1
        response.rx = QRegExp(lookup(name).toString(), Qt::CaseSensitive, QRegExp::RegExp);
        return response;
    };
    protocol.responseAny = pattern("fwupdate.%1.response.any");
    protocol.responseBad = pattern("fwupdate.%1.response.bad");
    protocol.responseFailed = pattern("fwupdate.%1.response.failed");
    protocol.responseGood = pattern("fwupdate.%1.response.good");
    protocol.fileCheck = pattern("fwupdate.%1.filecheck");
    protocol.timeoutMs = lookup(QStringLiteral("command.timeout.ms")).toInt();
    return protocol;
}

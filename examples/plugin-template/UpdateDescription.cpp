// What a host must know to send an update image: it sends the messages itself and judges each
// answer by these patterns.
#include "BootInterface.h"

#include "Product.h"

namespace {

constexpr int commandPosition = 6;
constexpr char imageCommand = 0x43;

// The image ends with the bare header and F7; its other messages carry the image command.
bool isImage(const HxMidiData& first, const HxMidiData& last)
{
    return last.bytes == HxMidiData(PRODUCT_HEADER " F7").bytes &&
           first.bytes.startsWith(HxMidiData(PRODUCT_HEADER).bytes) &&
           first.bytes.at(commandPosition) == imageCommand;
}

} // namespace

FwUpdateProtocol ExampleBootInterface::getUpdateProtocol(QString const&,
                                                         QList<HxMidiData> const& data)
{
    FwUpdateProtocol protocol;
    if (data.isEmpty()) {
        setLastError(QStringLiteral("Bad input arguments"));
        return protocol;
    }
    if (data.first().bytes.size() <= commandPosition ||
        data.last().bytes.size() <= commandPosition) {
        setLastError(QStringLiteral("Update data mismatch"));
        return protocol;
    }
    if (!isImage(data.first(), data.last())) {
        protocol.fidpid = hx::unknownIdentifier; // the kind, and so the product, is unknown
        return protocol;
    }
    const auto pattern = [this](const char* key) {
        return ResponceData(lookupStr(QString::fromLatin1(key)).toLatin1().constData());
    };
    protocol.fidpid = static_cast<int>(product::identifier);
    protocol.codeType = CodeType::Fwu;
    protocol.responseAny = pattern("fwupdate.fwu.response.any");
    protocol.responseGood = pattern("fwupdate.fwu.response.good");
    protocol.responseBad = pattern("fwupdate.fwu.response.bad");
    protocol.responseFailed = pattern("fwupdate.fwu.response.failed");
    protocol.fileCheck = pattern("fwupdate.fwu.filecheck");
    protocol.timeoutMs = lookupInt(QStringLiteral("command.timeout.ms"));
    return protocol;
}

#include "host/image/ImageBuilder.h"

#include "host/image/ImageGrammar.h"
#include "qt/Saturated.h"

namespace hx {

namespace {

Problem refused(const QString& what, const QString& expected, const QString& next)
{
    return {ExitCode::ImageRefused, what, expected, next};
}

// Four ASCII digits; empty when `version` is something else.
QByteArray versionDigits(const QString& version)
{
    static const QRegExp form(QStringLiteral("([0-9])\\.?([0-9])\\.?([0-9])\\.?([0-9])"));
    QRegExp rx(form);
    if (!rx.exactMatch(version))
        return QByteArray();
    return (rx.cap(1) + rx.cap(2) + rx.cap(3) + rx.cap(4)).toLatin1();
}

QByteArray packed(const QByteArray& code)
{
    QByteArray result(image::packedSize(saturated(code.size())), '\0');
    HxMidiData().cvt8to7(result.data(), code.constData(), static_cast<unsigned>(code.size()));
    return result;
}

// Appends the sum and the F7 to a message that is otherwise complete.
HxMidiData closed(HxMidiData message, int sumStart)
{
    message.append(HxMidiData(message.sumOfSection(sumStart, -1)));
    return message.append(HxMidiData(0xF7));
}

HxMidiData dataMessage(const QByteArray& header, const UpdateKind& kind, const QByteArray& code,
                       int address)
{
    const QByteArray part = code.mid(address, image::codeBytesPerMessage);
    HxMidiData message(header);
    HxMidiData fields;
    fields.setData("VV VV V14 UT VV", kind.command, image::dataSubCommand,
                   static_cast<unsigned>(address / image::codeBytesPerMessage),
                   static_cast<unsigned>(address), saturated(part.size()));
    return closed(message.append(fields).append(HxMidiData(packed(part))),
                  saturated(header.size()) + image::fieldsOffset);
}

HxMidiData fileCheckMessage(const QByteArray& header, const UpdateKind& kind,
                            const QByteArray& code, const QByteArray& version)
{
    HxMidiData message(header);
    HxMidiData fields;
    fields.setData("VV VV UT UT CSTR VV", kind.command, kind.fileCheck,
                   static_cast<unsigned>(code.size()), crc32(code), version.constData(),
                   image::layoutVersion);
    return closed(message.append(fields), saturated(header.size()) + image::fieldsOffset);
}

} // namespace

bool isImageVersion(const QString& version)
{
    return !versionDigits(version).isEmpty();
}

QByteArray BuiltImage::fileContent() const
{
    QByteArray content;
    for (const HxMidiData& message : messages)
        content += message.bytes;
    return content;
}

Result<BuiltImage> buildImage(const ProductDescription& product, const QByteArray& code,
                              CodeType kind, const QString& version)
{
    const QByteArray digits = versionDigits(version);
    const UpdateKind* updateKind = product.updateKind(kind);
    if (updateKind == nullptr)
        return refused(
            QStringLiteral("the plugin names no file check of kind \"%1\"").arg(codeTypeTag(kind)),
            QStringLiteral("a kind that it names one for"), QStringLiteral("give another kind"));
    if (code.isEmpty() || code.size() > image::maxCodeBytes)
        return refused(
            code.isEmpty()
                ? QStringLiteral("the code has 0 bytes")
                : QStringLiteral("the code has more than %1 bytes").arg(image::maxCodeBytes),
            QStringLiteral("1 to %1 code bytes").arg(image::maxCodeBytes),
            QStringLiteral("give another code file"));
    if (digits.isEmpty())
        return refused(QStringLiteral("the version is \"%1\"").arg(version),
                       QStringLiteral("four digits such as 1.0.2.4"),
                       QStringLiteral("give another version"));
    BuiltImage built;
    for (int address = 0; address < code.size(); address += image::codeBytesPerMessage)
        built.messages << dataMessage(product.header, *updateKind, code, address);
    built.messages << fileCheckMessage(product.header, *updateKind, code, digits);
    built.messages << HxMidiData(image::closingMessage(product.header));
    return built;
}

} // namespace hx

#include "host/image/ImageFile.h"

#include "host/base/HexText.h"
#include "host/base/StatusByte.h"
#include "host/base/WholeFile.h"
#include "host/image/FileText.h"
#include "host/image/ForeignFile.h"
#include "host/image/ImageFileReaders.h"

#include <algorithm>

namespace hx {

namespace {

ImageFile refused(qint64 offset, const QString& text, const QString& advice)
{
    ImageFile file;
    addProblem(file.problems, {-1, offset}, text, advice);
    return file;
}

bool hasStatusByte(const QByteArray& content)
{
    return std::any_of(content.begin(), content.end(),
                       [](char byte) { return (byte & 0x80) != 0; });
}

// A text that goes wrong somewhere is refused there; anything else at its first byte.
ImageFile notSysEx(const QByteArray& content)
{
    const bool isText = FileText(content).isMarked() || !hasStatusByte(content);
    const qint64 offset = isText ? firstNonTextByte(content) : 0;
    const auto byte = static_cast<quint8>(content.at(static_cast<int>(offset)));
    return refused(offset,
                   QStringLiteral("the file is not SysEx: byte %1 belongs to no message; expected "
                                  "F0, hex text or a Standard MIDI File.")
                       .arg(hexByte(byte)),
                   QStringLiteral("Check that this is the update image and not another file."));
}

} // namespace

QString imageFormatName(ImageFormat format)
{
    switch (format) {
    case ImageFormat::RawSysEx:
        return QStringLiteral("raw SysEx");
    case ImageFormat::HexText:
        return QStringLiteral("hex text");
    case ImageFormat::MidiFile:
        return QStringLiteral("Standard MIDI File");
    case ImageFormat::WebPage:
        return QStringLiteral("web page");
    case ImageFormat::Archive:
        return QStringLiteral("archive");
    case ImageFormat::Unknown:
        break;
    }
    return QStringLiteral("unknown");
}

qint64 FileMessage::offsetOf(int position) const
{
    if (offsets.empty())
        return -1;
    const auto last = static_cast<int>(offsets.size()) - 1;
    return offsets[static_cast<size_t>(qBound(0, position, last))];
}

ImageFile parseImageFile(const QByteArray& content)
{
    ImageFile file;
    if (content.size() > maxImageFileBytes)
        return refused(
            -1,
            QStringLiteral("it is larger than %1 bytes, which no image is.").arg(maxImageFileBytes),
            QStringLiteral("Check that this is the update image and not another file."));
    if (content.isEmpty())
        file = refused(-1, QStringLiteral("the file is empty."),
                       QStringLiteral("Get the update image again from where it came from."));
    else if (isMidiFile(content))
        file = readMidiFile(content);
    else if (content.startsWith(static_cast<char>(sysExStart)))
        file = readRawSysEx(content);
    else if (firstNonTextByte(content) < 0)
        file = readHexText(content);
    else
        file = notSysEx(content);
    if (!file.problems.empty() && file.format == ImageFormat::Unknown)
        file.format = foreignFormat(content);
    file.size = content.size();
    file.content = content;
    return file;
}

ImageFile readImageFile(const QString& path)
{
    const Result<QByteArray> content = readWholeFile(path, maxImageFileBytes);
    if (!content)
        return refused(-1,
                       QStringLiteral("%1 cannot be read: %2.").arg(path, content.problem().what),
                       QStringLiteral("Check the path and the permissions."));
    return parseImageFile(*content);
}

ImageFile imageFileOf(const QList<HxMidiData>& messages)
{
    ImageFile file;
    file.format = ImageFormat::RawSysEx;
    for (const HxMidiData& data : messages) {
        FileMessage message;
        message.data = data;
        message.number = static_cast<int>(file.messages.size());
        for (int i = 0; i < data.bytes.size(); ++i)
            message.offsets.push_back(file.size++);
        file.messages.push_back(message);
    }
    return file;
}

} // namespace hx

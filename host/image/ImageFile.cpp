#include "host/image/ImageFile.h"

#include "host/base/HexText.h"
#include "host/base/StatusByte.h"
#include "host/image/ImageFileReaders.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace hx {

namespace {

ImageFile refused(qint64 offset, const QString& text, const QString& advice)
{
    ImageFile file;
    addProblem(file.problems, {-1, offset, text, advice});
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
    const qint64 offset = hasStatusByte(content) ? 0 : firstByteThatIsNoHexText(content);
    const auto byte = static_cast<quint8>(content.at(static_cast<int>(offset)));
    return refused(offset,
                   QStringLiteral("the file is no SysEx: byte %1 belongs to no message; expected "
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
    if (content.isEmpty())
        file = refused(-1, QStringLiteral("the file is empty."),
                       QStringLiteral("Get the update image again from where it came from."));
    else if (isMidiFile(content))
        file = readMidiFile(content);
    else if (content.startsWith(static_cast<char>(sysExStart)))
        file = readRawSysEx(content);
    else if (firstByteThatIsNoHexText(content) < 0)
        file = readHexText(content);
    else
        file = notSysEx(content);
    file.size = content.size();
    return file;
}

ImageFile readImageFile(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile() && !info.isDir())
        return refused(-1, QStringLiteral("%1 is no regular file.").arg(path),
                       QStringLiteral("Copy what comes from it into a file, and name that."));
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly))
        return refused(-1, QStringLiteral("%1 cannot be read: %2.").arg(path, in.errorString()),
                       QStringLiteral("Check the path and the permissions."));
    const QByteArray content = in.read(maxImageFileBytes + 1);
    if (content.size() > maxImageFileBytes)
        return refused(-1,
                       QStringLiteral("%1 is larger than %2 bytes, which no image is.")
                           .arg(path)
                           .arg(maxImageFileBytes),
                       QStringLiteral("Check that this is the update image and not another file."));
    return parseImageFile(content);
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

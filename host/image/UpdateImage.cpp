#include "host/image/UpdateImage.h"

#include "host/image/ImageChecker.h"
#include "host/image/ImageGrammar.h"

namespace hx {

QByteArray UpdateImage::expectedChecksum() const
{
    return reportedChecksum(crc32(code));
}

UpdateImage parseUpdateImage(const ImageFile& file)
{
    UpdateImage updateImage;
    updateImage.problems = file.problems;
    for (const FileMessage& message : file.messages) {
        updateImage.messages << message.data;
        updateImage.bytes += message.data.bytes.size();
    }
    const bool holdsNothing = file.messages.empty();
    if (holdsNothing && file.problems.empty())
        addProblem(updateImage.problems,
                   {-1, -1, QStringLiteral("the image is empty: it has no message."),
                    QStringLiteral("Get the update image again from where it came from.")});
    if (!holdsNothing)
        ImageChecker(file, updateImage).check();
    return updateImage;
}

UpdateImage loadUpdateImage(const QString& path)
{
    return parseUpdateImage(readImageFile(path));
}

} // namespace hx

// Image files of raw SysEx bytes, and files of no format at all.
#include "fuzz/support/FuzzTarget.h"
#include "fuzz/support/ImageChecks.h"

namespace {

using namespace hx;
using namespace hx::fuzz;

void checkRaw(const QByteArray& content, const ImageFile& file)
{
    const ScannedMessages expected = scanMessages(content);
    requireSame(messagesOf(file), expected.messages, "the messages of the file");
    requireSame(file.problems.empty(), expected.isClean, "whatever else there is, is a problem");
    qint64 last = -1;
    for (const FileMessage& message : file.messages) {
        for (int i = 0; i < message.data.bytes.size(); ++i) {
            const qint64 offset = message.offsetOf(i);
            require(offset > last, "places go up");
            requireSame(content.at(int(offset)), message.data.bytes.at(i), "a byte's place");
            last = offset;
        }
    }
}

void run(FuzzInput& input)
{
    const QByteArray content = input.rest();
    const ImageFile file = parseImageFile(content);
    checkImageFile(content, file);
    requireSame(file.format == ImageFormat::RawSysEx, content.startsWith('\xF0'), "the format");
    if (file.format == ImageFormat::RawSysEx)
        checkRaw(content, file);
    if (file.format == ImageFormat::Unknown)
        require(file.messages.empty() && !file.problems.empty(), "an unknown file is refused");
}

const Target target("image_raw", run);

} // namespace

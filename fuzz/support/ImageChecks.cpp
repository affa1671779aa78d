#include "fuzz/support/ImageChecks.h"
#include "fuzz/support/Description.h"

#include "fuzz/support/FuzzTarget.h"

#include <algorithm>

namespace hx {
namespace fuzz {

namespace {

bool isWhole(const QByteArray& message)
{
    return message.size() >= 2 && message.at(0) == '\xF0' && message.endsWith('\xF7') &&
           std::none_of(message.begin() + 1, message.end() - 1,
                        [](char byte) { return (byte & 0x80) != 0; });
}

void checkProblem(const QByteArray& content, const Problem& problem)
{
    require(problem.place.offset >= -1 && problem.place.offset <= content.size(),
            "a problem has its place");
    require(!problem.what.isEmpty() && !problem.next.isEmpty(), "a problem says what to do");
    require(!imageProblemLine(problem).contains(QLatin1Char('\n')), "a problem is one line");
}

} // namespace

void checkImageFile(const QByteArray& content, const ImageFile& file)
{
    requireSame(file.size, qint64(content.size()), "the file's size");
    require(!file.messages.empty() || !file.problems.empty(), "a file has messages or problems");
    for (const FileMessage& message : file.messages) {
        require(isWhole(message.data.bytes), "a message is whole");
        requireSame(message.offsets.size(), static_cast<size_t>(message.data.bytes.size()),
                    "every byte has a place");
    }
    for (const Problem& problem : file.problems)
        checkProblem(content, problem);

    const UpdateImage image = parseUpdateImage(file, description());
    require(image.problems.size() >= file.problems.size(), "no problem is lost");
    for (const Problem& problem : image.problems)
        checkProblem(content, problem);
    if (image.ok())
        require(image.kind != CodeType::Unknown && image.hasFileCheck &&
                    image.code.size() == image.statedLength && image.dataMessages > 0,
                "a good image is complete");
}

QList<QByteArray> messagesOf(const ImageFile& file)
{
    QList<QByteArray> messages;
    for (const FileMessage& message : file.messages)
        messages += message.data.bytes;
    return messages;
}

ScannedMessages scanMessages(const QByteArray& stream)
{
    ScannedMessages result;
    QByteArray current;
    for (const char byte : stream) {
        const bool isStart = byte == '\xF0';
        const bool isEnd = byte == '\xF7';
        const bool isStatus = (byte & 0x80) != 0;
        if (isStart == !current.isEmpty() || (isStatus && !isStart && !isEnd))
            result.isClean = false;
        if (isStart || (isStatus && !isEnd))
            current.clear();
        if (isStart || !current.isEmpty())
            current += byte;
        if (isEnd && !current.isEmpty()) {
            result.messages += current;
            current.clear();
        }
    }
    result.isClean = result.isClean && current.isEmpty();
    return result;
}

} // namespace fuzz
} // namespace hx

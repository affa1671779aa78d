// Images with messages changed, against the simulated product: an image is good exactly when the
// product takes all of it, and then the product holds what the image says.
#include "host/image/UpdateImage.h"

#include "fuzz/support/Description.h"
#include "fuzz/support/FuzzTarget.h"
#include "host/image/ImageBuilder.h"
#include "qt/Saturated.h"
#include "simulator/Crc32.h"
#include "simulator/SimulatedProduct.h"
#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

namespace {

using namespace hx;
using namespace hx::sim;
using namespace hx::fuzz;

constexpr int memorySize = 400;

QByteArray codeOf(FuzzInput& input)
{
    static const int sizes[] = {1, 7, 8, 111, 112, 113, 224, 300};
    return codeOfSize(sizes[input.choice(8)]);
}

// Makes the 7-bit sum right again.
void mend(QByteArray* message)
{
    constexpr int fieldsAt = 8;
    if (message->size() < fieldsAt + 2)
        return;
    int sum = 0;
    for (int i = fieldsAt; i < message->size() - 2; ++i)
        sum += message->at(i);
    (*message)[message->size() - 2] = static_cast<char>(sum & 0x7F);
}

void changeMessage(FuzzInput& input, QByteArray* message)
{
    const auto at = input.byte() % message->size();
    switch (input.choice(4)) {
    case 0:
        if (at > 0 && at < message->size() - 1)
            (*message)[at] = static_cast<char>(input.byte() & 0x7F);
        break;
    case 1:
        if (at > 0 && at < message->size() - 1)
            message->remove(at, 1);
        break;
    case 2:
        if (at > 0)
            message->insert(at, static_cast<char>(input.byte() & 0x7F));
        break;
    default:
        (*message)[at] = static_cast<char>(input.byte());
    }
    if (input.flag())
        mend(message);
}

void changeList(FuzzInput& input, QVector<QByteArray>* messages)
{
    const auto at = input.byte() % messages->size();
    switch (input.choice(6)) {
    case 0:
        messages->remove(at);
        break;
    case 1:
        messages->insert(at, messages->at(input.byte() % messages->size()));
        break;
    case 2:
        messages->move(at, input.byte() % messages->size());
        break;
    default:
        changeMessage(input, &(*messages)[at]);
    }
}

// An image whose data messages carry any number of bytes each.
QVector<QByteArray> imageCutAnyhow(FuzzInput& input, const QByteArray& code, quint8 kind)
{
    QVector<QByteArray> messages;
    for (int address = 0; address < code.size();) {
        const QByteArray part = code.mid(address, 1 + input.byte() % 112);
        messages +=
            dataMessage(saturated(messages.size()), static_cast<quint64>(address), part, kind);
        address += saturated(part.size());
    }
    messages += fileCheck(code, "1024", kind);
    return messages += closing();
}

ImageFile fileOf(const QVector<QByteArray>& messages)
{
    QByteArray content;
    for (const QByteArray& message : messages)
        content += message;
    return parseImageFile(content);
}

// Whether the product takes every message as good, one after the other.
bool takesAll(sim::SimulatedProduct& product, const QVector<QByteArray>& messages)
{
    for (const QByteArray& message : messages) {
        const QVector<sim::SimulatedReply> replies = product.receive(message);
        if (replies.size() != 1 || replies.at(0).bytes.size() != 10 ||
            replies.at(0).bytes.at(8) != 0)
            return false;
    }
    return !messages.isEmpty();
}

// A product takes some messages twice, and starts afresh with any message 0: an image does not.
bool isStraight(const QVector<QByteArray>& messages)
{
    for (int i = 0; i < messages.size(); ++i) {
        const bool isFirstAgain = i > 0 && messages.at(i).mid(7, 3) == bytesOf("0A0000");
        if (isFirstAgain || messages.indexOf(messages.at(i), i + 1) >= 0)
            return false;
    }
    return !messages.isEmpty() && messages.last() == closing();
}

QString dotted(const sim::VersionDigits& version)
{
    QStringList digits;
    for (const quint8 digit : version)
        digits += QString(QLatin1Char(static_cast<char>(digit)));
    return digits.join(QLatin1Char('.'));
}

void compare(const QVector<QByteArray>& messages)
{
    const UpdateImage image = parseUpdateImage(fileOf(messages), description());
    sim::SimulatedProductSettings settings;
    settings.memorySize = memorySize;
    sim::SimulatedProduct product(sim::valdrin(), settings);
    const bool isTaken = takesAll(product, messages);
    if (image.ok()) {
        require(isTaken && product.isCodeValid(), "the product takes a good image");
        requireSame(product.codeBytes(), image.code, "the product holds the image's code");
        requireSame(product.code().crc, image.statedCrc, "the product stores the image's CRC");
        requireSame(dotted(product.code().version), image.version, "the image's version");
        requireSame(product.code().kind == sim::kindFwd, image.kind == CodeType::Fwd, "the kind");
    } else {
        require(!isTaken || !isStraight(messages), "what the product takes whole is a good image");
    }
}

void run(FuzzInput& input)
{
    const QByteArray code = codeOf(input);
    const int how = input.byte();
    const quint8 kind = how & 1 ? sim::kindFwu : sim::kindFwd;
    QVector<QByteArray> messages = imageOf(code, "1024", kind);
    const Result<BuiltImage> built =
        buildImage(description(), code, kind == sim::kindFwu ? CodeType::Fwu : CodeType::Fwd,
                   QStringLiteral("1.0.2.4"));
    require(bool(built), "the host builds an image");
    requireSame(built->messages.size(), messages.size(), "the host builds the same image");
    for (int i = 0; i < messages.size(); ++i)
        requireSame(built->messages.at(i).bytes, messages.at(i),
                    "the host builds the same message");
    if (input.atEnd())
        require(parseUpdateImage(fileOf(messages), description()).ok(),
                "an image that nobody changed is good");
    if (how & 2)
        messages = imageCutAnyhow(input, code, kind);
    while (!input.atEnd() && !messages.isEmpty() && messages.size() < 16)
        changeList(input, &messages);
    compare(messages);
}

const Target target("update_image", run);

} // namespace

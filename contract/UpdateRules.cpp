// What the plugin says of an update image, and of those that are none.
#include "contract/PatternSample.h"
#include "contract/Rules.h"

#include "host/base/HexText.h"
#include "host/bus/PortBus.h"
#include "host/image/ImageBuilder.h"

namespace hx {

namespace {

QString tagText(CodeType kind)
{
    return QString(codeTypeTag(kind));
}

// The usual form: data messages, a file check, the bare header. None when the dictionary does not
// show how the product's messages begin.
QList<HxMidiData> madeUpImage(DeviceInterface& device)
{
    const ProductDescription product = describeProduct(device);
    if (product.updateKinds.empty())
        return {};
    const CodeType kind = product.updateKinds.front().kind;
    const QByteArray code(1, '\0');
    QList<HxMidiData> image = buildImage(product, code, kind, QStringLiteral("1.0.0.0"))->messages;
    const QString fileCheck =
        device.lookupStr(QStringLiteral("fwupdate.%1.filecheck").arg(codeTypeTag(kind)));
    image[image.size() - 2] = HxMidiData(sampleMessage(fileCheck, code));
    return image;
}

FwUpdateProtocol describe(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    const QList<HxMidiData> image = subject.image.isEmpty() ? madeUpImage(device) : subject.image;
    FwUpdateProtocol protocol = device.getUpdateProtocol(QStringLiteral("check"), image);
    if (protocol.codeType != CodeType::Unknown)
        return protocol;
    if (subject.image.isEmpty())
        result->skipped = QStringLiteral("the plugin does not know an image of the usual form; "
                                         "give one of its product with --image");
    else
        result->failures << QStringLiteral("the plugin does not know the kind of the image given");
    return protocol;
}

void judgeDescription(const RuleSubject& subject, RuleResult* result)
{
    const FwUpdateProtocol protocol = describe(subject, result);
    if (protocol.codeType == CodeType::Unknown)
        return;
    result->require(protocol.codeType == CodeType::Fwu || protocol.codeType == CodeType::Fwd,
                    QStringLiteral("the kind is the number %1").arg(int(protocol.codeType)));
    result->require(subject.device().canSupport(static_cast<unsigned>(protocol.fidpid)),
                    QStringLiteral("the image is for %1, which canSupport() denies")
                        .arg(identifierText(static_cast<quint32>(protocol.fidpid))));
    result->require(protocol.timeoutMs > 0,
                    QStringLiteral("the timeout is %1 ms").arg(protocol.timeoutMs));
    result->require(protocol.fileCheck.rx.isValid() && !protocol.fileCheck.rx.pattern().isEmpty(),
                    QStringLiteral("there is no pattern for the file check of kind \"%1\"")
                        .arg(tagText(protocol.codeType)));
}

struct Answer {
    const char* name;
    const ResponceData& pattern;
    HxMidiData sample;
};

// No answer may be judged in two ways, and whoever waits for any answer must see each of them.
void judgeAnswers(const RuleSubject& subject, RuleResult* result)
{
    const FwUpdateProtocol protocol = describe(subject, result);
    if (protocol.codeType == CodeType::Unknown)
        return;
    const QByteArray model = describeProduct(subject.device()).header.right(1);
    const auto answer = [&model](const char* name, const ResponceData& pattern) {
        return Answer{name, pattern, HxMidiData(sampleMessage(pattern.rx.pattern(), model))};
    };
    const std::vector<Answer> answers = {answer("good", protocol.responseGood),
                                         answer("bad", protocol.responseBad),
                                         answer("failed", protocol.responseFailed)};
    result->require(!protocol.responseAny.rx.pattern().isEmpty(),
                    QStringLiteral("the pattern for any answer is empty"));
    for (const Answer& one : answers) {
        if (one.sample.bytes.isEmpty()) {
            result->failures << QStringLiteral("no answer fits the pattern for \"%1\", \"%2\"")
                                    .arg(QLatin1String(one.name), one.pattern.rx.pattern());
            continue;
        }
        const QString shown = hexText(one.sample.bytes);
        result->require(replyTest(protocol.responseAny)(one.sample),
                        QStringLiteral("the %1 answer %2 does not fit the pattern for any answer")
                            .arg(QLatin1String(one.name), shown));
        for (const Answer& other : answers)
            result->require(&one == &other || !replyTest(other.pattern)(one.sample),
                            QStringLiteral("the %1 answer %2 fits the pattern for %3 ones as well")
                                .arg(QLatin1String(one.name), shown, QLatin1String(other.name)));
    }
}

void judgeTooShort(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    const HxMidiData shortest(QByteArray("\xF0\xF7", 2));
    const QList<QList<HxMidiData>> images = {{}, {shortest}, {HxMidiData(), HxMidiData()}};
    for (const QList<HxMidiData>& image : images) {
        device.lastError.clear();
        const FwUpdateProtocol protocol = device.getUpdateProtocol(QString(), image);
        const QString which = QStringLiteral("a list of %1 messages of %2 bytes")
                                  .arg(image.size())
                                  .arg(image.isEmpty() ? 0 : image.first().bytes.size());
        result->require(protocol.codeType == CodeType::Unknown,
                        QStringLiteral("%1 is taken for an image").arg(which));
        result->require(!device.lastError.isEmpty(),
                        QStringLiteral("%1 leaves lastError empty").arg(which));
    }
    device.lastError.clear();
}

void judgeUnknown(const RuleSubject& subject, RuleResult* result)
{
    const QByteArray foreign("\xF0\x7D\x00\x01\x02\x03\x04\x05\xF7", 9);
    const FwUpdateProtocol protocol = subject.device().getUpdateProtocol(
        QString(), {HxMidiData(foreign), HxMidiData(foreign), HxMidiData(foreign)});
    result->require(protocol.codeType == CodeType::Unknown,
                    QStringLiteral("messages of another maker are taken for an image"));
    const auto identifier = static_cast<quint32>(protocol.fidpid);
    result->require(identifier == unknownIdentifier,
                    QStringLiteral("for messages of another maker fidpid is %1; expected %2")
                        .arg(identifierText(identifier), identifierText(unknownIdentifier)));
}

void judgeRefusals(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    const QByteArray command =
        QByteArray::fromHex(device.lookupStr(QStringLiteral("version.read.user")).toLatin1());
    const HxMidiData refusal(command.left(command.size() - 1) + QByteArray("\x46\xF7", 2));
    const HxMidiData answer(sampleMessage(
        device.lookupStr(QStringLiteral("version.read.user.response")), QByteArray(1, '\x31')));
    result->require(device.isNak(HxMidiData()), QStringLiteral("isNak() of nothing is false"));
    if (command.isEmpty() || answer.bytes.isEmpty()) {
        result->skipped = QStringLiteral("there is no \"version.read.user\" to refuse");
        return;
    }
    result->require(device.isNak(refusal),
                    QStringLiteral("isNak(%1) is false").arg(hexText(refusal.bytes)));
    result->require(!device.isNak(answer),
                    QStringLiteral("isNak(%1) is true").arg(hexText(answer.bytes)));
}

} // namespace

std::vector<Rule> updateRules()
{
    return {
        {"update.described", "the description of an image names a product, a kind and a timeout",
         judgeDescription},
        {"update.answers", "good, bad and failed answers can be told apart, and each is any answer",
         judgeAnswers},
        {"update.short", "no messages, or too short ones, are not an image and leave an error text",
         judgeTooShort},
        {"update.unknown", "an unknown image gives Unknown and 0x7F007F", judgeUnknown},
        {"refusal", "isNak() is true for a refusal and for nothing, false for an answer",
         judgeRefusals},
    };
}

} // namespace hx

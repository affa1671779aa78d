#include "host/update/UpdatePlan.h"

#include "host/base/HexText.h"
#include "host/bus/PortBus.h"
#include "qt/Saturated.h"

namespace hx {

namespace {

bool isUsable(const ResponceData& pattern)
{
    return pattern.rx.isValid() && !pattern.rx.pattern().isEmpty();
}

void checkPatterns(UpdatePlan& plan)
{
    const FwUpdateProtocol& protocol = plan.protocol;
    const bool usable = isUsable(protocol.responseAny) && isUsable(protocol.responseGood) &&
                        isUsable(protocol.responseBad) && isUsable(protocol.responseFailed);
    if (!usable)
        plan.refusals << QStringLiteral(
            "The plugin's description lacks a pattern for the product's "
            "acknowledgements. Install a complete plugin.");
    if (protocol.timeoutMs <= 0)
        plan.refusals << QStringLiteral("The plugin's description has the timeout %1 ms. Install a "
                                        "complete plugin.")
                             .arg(protocol.timeoutMs);
}

void checkFileCheck(UpdatePlan& plan, const UpdateImage& image)
{
    const ReplyTest fits = replyTest(plan.protocol.fileCheck);
    if (image.messages.size() >= 2 && !fits(image.messages.at(image.messages.size() - 2)))
        plan.refusals << QStringLiteral("The last message but one is not the file check that the "
                                        "plugin expects. Get the image again.");
}

void checkProduct(DeviceInterface& device, UpdatePlan& plan, const UpdateImage& image)
{
    const FwUpdateProtocol& protocol = plan.protocol;
    if (protocol.codeType == CodeType::Unknown) {
        plan.refusals << QStringLiteral("The plugin does not know this kind of image (%1). Use the "
                                        "image that belongs to the plugin.")
                             .arg(device.lastError.isEmpty() ? QStringLiteral("kind unknown")
                                                             : device.lastError);
        return;
    }
    plan.isForOtherProduct = !device.canSupport(static_cast<unsigned>(protocol.fidpid));
    if (plan.isForOtherProduct)
        plan.refusals << QStringLiteral(
                             "The image is for the product %1, which the plugin does not "
                             "serve. Get the image for %2.")
                             .arg(identifierText(static_cast<quint32>(protocol.fidpid)),
                                  device.productName());
    if (protocol.codeType != image.kind)
        plan.refusals << QStringLiteral(
                             "The plugin takes the image for kind \"%1\", but its messages "
                             "are of kind \"%2\". Get the image again.")
                             .arg(codeTypeTag(protocol.codeType), codeTypeTag(image.kind));
    checkPatterns(plan);
    checkFileCheck(plan, image);
}

} // namespace

UpdatePlan planUpdate(DeviceInterface& device, const UpdateImage& image)
{
    UpdatePlan plan;
    plan.missingProof = describeProduct(device).missingProofText();
    plan.messages = saturated(image.messages.size());
    plan.bytes = image.bytes;
    plan.wireMicroseconds = image.wireMicroseconds();
    for (const Problem& problem : image.problems)
        plan.refusals << imageProblemLine(problem);
    plan.isForOtherProduct = image.isForOtherProduct;
    if (!image.ok())
        return plan;
    device.lastError.clear();
    plan.protocol = device.getUpdateProtocol(QString(), image.messages);
    checkProduct(device, plan, image);
    return plan;
}

} // namespace hx

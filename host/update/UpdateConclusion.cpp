#include "host/update/UpdateConclusion.h"

namespace hx {

namespace {

QString unfinished()
{
    return QStringLiteral("The update was begun and not finished. ");
}

QString unacknowledged()
{
    return QStringLiteral(
        "The product holds the code of the image, although it did not acknowledge "
        "every message. ");
}

QString runAgain()
{
    return QStringLiteral("Run the same update again: it starts afresh and recovers the product. "
                          "\"hxhost recover\" says what state the product is in.");
}

// What must be mended before anything can be run again.
QString firstOfAll(ProductCondition condition)
{
    switch (condition) {
    case ProductCondition::PortLost:
        return QStringLiteral("Connect the port again. ");
    case ProductCondition::NoAnswer:
        return QStringLiteral("Check power, cables and the choice of port (\"hxhost ports\"). ");
    case ProductCondition::OtherProduct:
        return QStringLiteral("Choose the port of the right product (\"hxhost ports\"). ");
    case ProductCondition::CodeIntact:
    case ProductCondition::NoValidCode:
    case ProductCondition::CodeDamaged:
    case ProductCondition::Unclear:
        break;
    }
    return QString();
}

// Why the product cannot be asked for its state; empty when it can.
QString unreachable(const UpdateResult& result)
{
    if (!result.otherProduct.isEmpty())
        return QStringLiteral("Another product has taken its place on the port");
    if (result.outcome != UpdateOutcome::PortLost)
        return QString();
    return result.sendEnd == SendEnd::NotTaken ? QStringLiteral("The port did not take a message")
                                               : QStringLiteral("The port is gone");
}

QString installImage()
{
    return QStringLiteral("That is not the code of the image: run \"hxhost update\" with it to "
                          "install it.");
}

QString adviceWhenUntouched(UpdateOutcome outcome)
{
    if (outcome == UpdateOutcome::NoAnswer)
        return QStringLiteral("Check power, cables and the choice of port (\"hxhost ports\"), then "
                              "run the update again.");
    if (outcome == UpdateOutcome::PortLost)
        return QStringLiteral("Connect the port again, then run the update again.");
    if (outcome == UpdateOutcome::WrongProduct)
        return QStringLiteral(
            "Choose the port of the right product (\"hxhost ports\"), then run the "
            "update again.");
    return QString();
}

} // namespace

void describeUntouched(UpdateResult& result)
{
    result.productState =
        QStringLiteral("Nothing of the image was sent: the product is as it was.");
    result.advice = adviceWhenUntouched(result.outcome);
}

void describeUnfinished(UpdateResult& result, DeviceInterface& device, PortBus& bus,
                        const QString& imageVersion)
{
    const QString why = unreachable(result);
    if (!why.isEmpty()) {
        result.productCondition = result.outcome == UpdateOutcome::PortLost
                                      ? ProductCondition::PortLost
                                      : ProductCondition::OtherProduct;
        result.advice = firstOfAll(result.productCondition) + runAgain();
        result.productState =
            unfinished() + why + QStringLiteral(": the product may hold no valid code.");
        return;
    }
    const InterruptWatch none(bus, nullptr);
    ProductReader reader(device, bus);
    ProductAssessment assessment = assessProduct(reader);
    // Power may fail between the last write of the closing message and its acknowledgement.
    const bool isCodeOfImage = assessment.condition == ProductCondition::CodeIntact &&
                               assessment.stored.groups == result.imageChecksum;
    if (isCodeOfImage && assessment.version.version != imageVersion) {
        assessment.version = reader.version(); // the first answer may have been changed on the way
        concludeAssessment(assessment, reader);
    }
    result.holdsImage = isCodeOfImage && assessment.version.version == imageVersion;
    result.productCondition = assessment.condition;
    result.advice = firstOfAll(assessment.condition) + runAgain();
    result.productState = (result.holdsImage ? unacknowledged() : unfinished()) + assessment.state;
}

void describeFinished(UpdateResult& result, const ProductReader& reader)
{
    ProductAssessment assessment;
    assessment.identity = result.identityAfter;
    assessment.version = result.versionAfter;
    assessment.stored = result.stored;
    assessment.calculated = result.calculated;
    concludeAssessment(assessment, reader);
    result.productCondition = assessment.condition;
    result.productState = assessment.state;
    if (result.succeeded())
        return;
    // Intact code is not enough for one who wanted that of the image.
    result.advice =
        assessment.condition == ProductCondition::CodeIntact ? installImage() : assessment.advice;
}

} // namespace hx

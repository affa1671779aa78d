#include "host/product/ProductState.h"

#include "host/base/HexText.h"

#include <algorithm>
#include <initializer_list>

namespace hx {

namespace {

const char updateAgain[] =
    "Run the update again: \"hxhost update IMAGE\"; it starts afresh whatever was done before.";
const char checkConnection[] =
    "Check power, cables and the choice of port (\"hxhost ports\"), switch the product off and on, "
    "and try again.";

// What the product reports as stored checksum while it holds no valid code: every bit set.
bool isNoChecksum(const QByteArray& groups)
{
    constexpr char highestGroup = 0x7F;
    return groups == QByteArray(groups.size(), highestGroup);
}

ProductCondition conditionOfCode(const ProductAssessment& a)
{
    if (!a.stored.good() || !a.calculated.good())
        return ProductCondition::Unclear;
    if (a.version.state == ReadingState::Refused && isNoChecksum(a.stored.groups))
        return ProductCondition::NoValidCode;
    if (!a.version.good())
        return ProductCondition::Unclear;
    if (a.stored.groups == a.calculated.groups)
        return ProductCondition::CodeIntact;
    return isNoChecksum(a.stored.groups) ? ProductCondition::NoValidCode
                                         : ProductCondition::CodeDamaged;
}

bool anyIs(const ProductAssessment& a, ReadingState state)
{
    const std::initializer_list<const Reading*> readings = {&a.identity, &a.version, &a.stored,
                                                            &a.calculated};
    return std::any_of(readings.begin(), readings.end(),
                       [state](const Reading* reading) { return reading->state == state; });
}

ProductCondition conditionOf(const ProductAssessment& a, const ProductReader& reader)
{
    if (anyIs(a, ReadingState::PortLost))
        return ProductCondition::PortLost;
    if (a.identity.state == ReadingState::OtherProduct)
        return ProductCondition::OtherProduct;
    if (!a.identity.good())
        return a.identity.state == ReadingState::NoAnswer ? ProductCondition::NoAnswer
                                                          : ProductCondition::Unclear;
    return reader.isServed(a.identity) ? conditionOfCode(a) : ProductCondition::OtherProduct;
}

QString firstReason(const ProductAssessment& a)
{
    const std::initializer_list<const Reading*> readings = {&a.identity, &a.version, &a.stored,
                                                            &a.calculated};
    for (const Reading* reading : readings) {
        if (!reading->good() && !reading->reason.isEmpty())
            return QStringLiteral("%1: %2").arg(reading->key, reading->reason);
    }
    return QString();
}

QString checksumsText(const ProductAssessment& a)
{
    return QStringLiteral("stored checksum %1, calculated %2")
        .arg(hexText(a.stored.groups), hexText(a.calculated.groups));
}

QString stateText(const ProductAssessment& a)
{
    switch (a.condition) {
    case ProductCondition::CodeIntact:
        return QStringLiteral("The product answers and its code is intact: version %1, %2.")
            .arg(a.version.version, checksumsText(a));
    case ProductCondition::NoValidCode:
        return QStringLiteral("The product is in its boot loader and holds no valid code: %1.")
            .arg(checksumsText(a));
    case ProductCondition::CodeDamaged:
        return QStringLiteral("The product answers, but its code is damaged: %1.")
            .arg(checksumsText(a));
    case ProductCondition::OtherProduct:
        return QStringLiteral("Another product answers: maker %1, identifier %2, version %3.")
            .arg(hexText(a.identity.manufacturer), identifierText(a.identity.fidpid),
                 a.identity.version);
    case ProductCondition::NoAnswer:
    case ProductCondition::PortLost:
    case ProductCondition::Unclear:
        break;
    }
    return QStringLiteral("The product's state is not known: %1.").arg(firstReason(a));
}

QString adviceText(const ProductAssessment& a)
{
    if (anyIs(a, ReadingState::Unknown))
        return QStringLiteral("Install a complete plugin, then ask once more.");
    switch (a.condition) {
    case ProductCondition::CodeIntact:
        return QStringLiteral("Nothing needs to be done.");
    case ProductCondition::NoValidCode:
    case ProductCondition::CodeDamaged:
        return QString::fromLatin1(updateAgain);
    case ProductCondition::OtherProduct:
        return QStringLiteral("Choose the port of the right product, or the plugin for this one.");
    case ProductCondition::PortLost:
        return QStringLiteral("Connect the port again, then ask once more.");
    case ProductCondition::NoAnswer:
        return QString::fromLatin1(checkConnection);
    case ProductCondition::Unclear:
        break;
    }
    return QStringLiteral("Ask once more; if it stays so, run the update again: it starts afresh.");
}

} // namespace

QString productConditionText(ProductCondition condition)
{
    switch (condition) {
    case ProductCondition::CodeIntact:
        return QStringLiteral("code intact");
    case ProductCondition::NoValidCode:
        return QStringLiteral("no valid code");
    case ProductCondition::CodeDamaged:
        return QStringLiteral("code damaged");
    case ProductCondition::OtherProduct:
        return QStringLiteral("other product");
    case ProductCondition::NoAnswer:
        return QStringLiteral("no answer");
    case ProductCondition::PortLost:
        return QStringLiteral("port lost");
    case ProductCondition::Unclear:
        break;
    }
    return QStringLiteral("unclear");
}

void concludeAssessment(ProductAssessment& assessment, const ProductReader& reader)
{
    assessment.condition = conditionOf(assessment, reader);
    assessment.state = stateText(assessment);
    assessment.advice = adviceText(assessment);
}

// Neither another product nor damaged code is found on the word of one answer, which may have been
// changed on the way.
ProductAssessment assessProduct(ProductReader& reader)
{
    ProductAssessment assessment;
    assessment.identity = reader.identity();
    if (reader.isServed(assessment.identity)) {
        assessment.version = reader.version();
        assessment.stored = reader.storedChecksum();
        assessment.calculated = reader.calculatedChecksum();
    }
    concludeAssessment(assessment, reader);
    if (assessment.condition == ProductCondition::CodeDamaged) {
        assessment.stored = reader.storedChecksum();
        assessment.calculated = reader.calculatedChecksum();
        concludeAssessment(assessment, reader);
    }
    return assessment;
}

} // namespace hx

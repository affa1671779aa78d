/** @file
 * What state the product is in, as far as it can be asked, and what to do about it.
 */
#pragma once

#include "host/product/ProductReadings.h"

namespace hx {

enum class ProductCondition {
    CodeIntact, /**< answers, stored and calculated checksum agree */
    /** in its boot loader: an update was begun and not finished, or none was ever made */
    NoValidCode,
    CodeDamaged,  /**< a checksum is stored, but the code does not have it */
    OtherProduct, /**< something answers that the plugin does not serve */
    NoAnswer,
    PortLost,
    Unclear, /**< it answers to some questions and not to others */
};

/** "code intact", "in its boot loader, without valid code", ... */
QString productConditionText(ProductCondition condition);

struct ProductAssessment {
    ProductCondition condition = ProductCondition::NoAnswer;
    QString state;  /**< one line: what is known */
    QString advice; /**< one line: what to do */
    IdentityReading identity;
    VersionReading version;
    ChecksumReading stored;
    ChecksumReading calculated;
};

/** Asks for identity, version and both checksums; changes nothing in the product. */
ProductAssessment assessProduct(ProductReader& reader);

/** The verdict over readings that were made before. */
void concludeAssessment(ProductAssessment& assessment, const ProductReader& reader);

} // namespace hx

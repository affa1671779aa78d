/** @file
 * How an update, or the check after one, has ended.
 */
#pragma once

#include "host/product/ProductReadings.h"
#include "host/product/ProductState.h"
#include "host/update/UpdateSender.h"

#include <vector>

namespace hx {

enum class UpdateOutcome {
    Succeeded,    /**< every message acknowledged as good, all checksums agree, identity answered */
    ImageRefused, /**< the image is damaged or not for this plugin; nothing was sent */
    NoAnswer,     /**< the product did not answer: to the identity request, or to a message */
    WrongProduct, /**< something else answers than the image is for, before or after sending it */
    Failed,       /**< the product refused a message for good */
    VerificationFailed, /**< all was sent, but what the product then reports does not agree */
    Interrupted,
    PortLost,
    NotConfirmed, /**< the question before the first message was not answered with yes */
};

/** "succeeded", "image refused", "no answer", ... */
QString updateOutcomeText(UpdateOutcome outcome);

/** One step of the run: "image", "identity", "version", "messages", "checksums", ... */
struct UpdateStep {
    QString name;
    bool good = false;
    QString text; /**< what was found */
    Microseconds duration = 0;
};

struct UpdateResult {
    UpdateOutcome outcome = UpdateOutcome::NoAnswer;
    QString reason;       /**< one line; empty after success */
    QString productState; /**< what is known of the product now, in one line */
    ProductCondition productCondition = ProductCondition::Unclear; /**< the same for programs */
    QString advice; /**< what to do next; empty after success */
    std::vector<UpdateStep> steps;

    UpdateProgress progress; /**< as it stood at the end */
    /** number of the message it ended at, from 1; 0: at none */
    int failedMessage = 0;
    int failedAttempts = 0;          /**< how often that message was sent */
    SendEnd sendEnd = SendEnd::Good; /**< how the sending ended, once it has begun */
    HxMidiData lastReply;            /**< the acknowledgement that ended it, if one did */
    Microseconds duration = 0;
    /** The product holds the code of the image, although it did not acknowledge every message. */
    bool holdsImage = false;
    /** A message of the image was sent, whole or in part: the product may hold no valid code. */
    bool touched = false;

    IdentityReading identityBefore;
    IdentityReading identityAfter;
    VersionReading versionBefore;
    EsnReading esnBefore; /**< read only where the options have a `confirm` */
    VersionReading versionAfter;
    ChecksumReading stored;
    ChecksumReading calculated;
    /** What answers since the port came back and is not the product of before; else empty. */
    QString otherProduct;
    QByteArray imageChecksum; /**< four 7-bit groups, as the product must report it */

    /**
     * Of a check against an image: the kind of the product's code, Unknown when it tells none, and
     * what that was taken from.
     */
    CodeType kindTold = CodeType::Unknown;
    CodeImageReading codeImage;

    bool succeeded() const { return outcome == UpdateOutcome::Succeeded; }
};

} // namespace hx

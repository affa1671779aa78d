/** @file
 * What an update would send and wait for; decided before anything is sent.
 */
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/image/UpdateImage.h"

#include <QStringList>

namespace hx {

struct UpdatePlan {
    FwUpdateProtocol protocol; /**< as the plugin describes the exchange */
    int messages = 0;
    qint64 bytes = 0;
    qint64 wireMicroseconds = 0;    /**< of the messages alone, on a DIN MIDI wire */
    QStringList refusals;           /**< why this image must not be sent; empty: it may be */
    bool isForOtherProduct = false; /**< one of them: the plugin does not serve its product */

    /**
     * What the plugin lacks, so that the update cannot be verified; empty when it lacks nothing.
     */
    QString missingProof;

    bool ok() const { return refusals.isEmpty(); }
};

/**
 * Checks the image, asks the plugin for its description, and compares both: kind, product
 * (`canSupport` of the identifier in the description), file check, patterns that can be used.
 * Sends nothing.
 */
UpdatePlan planUpdate(DeviceInterface& device, const UpdateImage& image);

} // namespace hx

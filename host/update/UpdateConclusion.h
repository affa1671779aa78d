// What a finished run says of the product: what it holds now, and what to do next.
#pragma once

#include "host/update/UpdateResult.h"

namespace hx {

// Nothing of the image was sent.
void describeUntouched(UpdateResult& result);

// The image was sent in part. Asks the product once more, so that what is said of it is what it
// says itself.
void describeUnfinished(UpdateResult& result, DeviceInterface& device, PortBus& bus,
                        const QString& imageVersion);

// All was sent, and the readings in `result` are those made afterwards.
void describeFinished(UpdateResult& result, const ProductReader& reader);

} // namespace hx

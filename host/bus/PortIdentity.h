/** @file
 * What tells a port from all others, whatever its place in a list is today.
 */
#pragma once

#include <QString>

namespace hx {

struct PortIdentity {
    QString backend;      /**< what it is reached by: "alsa", "jack", "core", "device", ... */
    QString stableId;     /**< of the socket it is plugged into and its maker; empty: not known */
    QString name;         /**< without the numbers that a system gives anew each time */
    QString serialNumber; /**< of the USB device that offers it; empty: not known */
};

} // namespace hx

/** @file
 * Listens on a port for traffic that would disturb an update.
 */
#pragma once

#include "host/bus/PortBus.h"

#include <QStringList>

namespace hx {

struct TrafficReport {
    int clockBytes = 0;         /**< F8 */
    int activeSensingBytes = 0; /**< FE */
    int otherRealTime = 0;      /**< F9 to FD, FF */
    int sysExMessages = 0;
    int acknowledgements = 0; /**< of an update that another host makes; counted above too */
    int shortMessages = 0;    /**< channel and system common */
    qint64 droppedBytes = 0;  /**< parts of no message */
    QString portError;        /**< the port went away; empty otherwise */

    /** Counts one event more. */
    void add(const AssembledEvent& event);
    bool quiet() const;
    /**
     * One line for each kind of traffic that disturbs, with what to do about it; empty when quiet.
     */
    QStringList warnings() const;
};

/** How long to listen before an update. */
constexpr Microseconds trafficTime = 1000 * microsecondsPerMillisecond;

/**
 * Listens for `duration` and sends nothing. `isAcknowledgement` knows the answers to the messages
 * of an update; left out, none is counted.
 */
TrafficReport listenForTraffic(PortBus& bus, Microseconds duration = trafficTime,
                               const ReplyTest& isAcknowledgement = {});

} // namespace hx

/** @file
 * What happens on a bus, as those who watch it are told: for traces, logs and progress.
 */
#pragma once

#include "host/base/Clock.h"

#include <QByteArray>
#include <QString>

namespace hx {

enum class BusEventKind {
    Sent,        /**< a message left */
    Received,    /**< a message came and was taken as the answer */
    Ignored,     /**< a message came and was not; `text` says why */
    Dropped,     /**< bytes came that form no message; `text` says why */
    RealTime,    /**< a byte F8 to FF came */
    TimedOut,    /**< nothing that fits came in time; `text` says what was waited for */
    PortLost,    /**< the port is gone; `text` is the port's own word */
    PortBack,    /**< the port was away and is there again; `text` says as which */
    SendFailed,  /**< `bytes` could not be sent; `text` is the port's own word */
    Interrupted, /**< the wait was ended from outside */
    Accepted,    /**< the message sent last was acknowledged as good; `text` says which it was */
    Decided,     /**< what the host made of it, in `text` */
    Log,         /**< a line that the plugin or a library wrote */
};

struct BusEvent {
    BusEventKind kind = BusEventKind::Log;
    Microseconds time = 0; /**< by the port's clock */
    QByteArray bytes;      /**< empty where nothing travelled */
    QString text;
};

class BusObserver {
public:
    virtual ~BusObserver() = default;
    virtual void busEvent(const BusEvent& event) = 0;
};

} // namespace hx

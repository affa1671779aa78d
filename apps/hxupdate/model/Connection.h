// What is known of the products that are connected.
#pragma once

#include "host/product/ProductState.h"

#include <QList>
#include <QStringList>

namespace hxupdate {

enum class Finding {
    Searching,       // nothing is known yet
    NoPlugin,        // no device plugin could be loaded; `detail` says why
    NoPorts,         // this machine has no MIDI ports
    NoProduct,       // there are ports, but none has the name of a product's
    Silent,          // nothing answered
    Unclear,         // something answered, but not to every question; `detail` says what
    OtherProduct,    // what answered is served by no plugin; `detail` says what it is
    PortHeld,        // the port could not be opened; `detail` says why
    SeveralProducts, // more than one product answered
    Ready,           // exactly one product answered, and its code is intact
    Recovery,        // exactly one product answered, and it holds no valid code
};

constexpr Finding lastFinding = Finding::Recovery;

struct ProductFacts {
    int plugin = 0; // number of the plugin that serves it
    QString name;
    QString port;
    QString serial;  // empty: not known
    QString version; // empty: it holds no valid code
    bool needsRecovery = false;
};

struct Connection {
    Finding finding = Finding::Searching;
    QList<ProductFacts> products; // that answered and that a plugin serves
    QStringList ports;            // all that there are
    QString detail;               // one line in the host's words; may be empty
    bool isWhole = true;          // false: the search was ended before it was done

    // The one product that an update may be made of; null when there is not exactly one.
    const ProductFacts* product() const
    {
        const bool isFound = finding == Finding::Ready || finding == Finding::Recovery;
        return isFound ? &products.first() : nullptr;
    }
};

} // namespace hxupdate

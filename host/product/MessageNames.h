/** @file
 * Names a message by the dictionary key that it fits.
 */
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/product/ProductDescription.h"

#include <QRegExp>
#include <QStringList>

#include <vector>

namespace hx {

/** The keys of the dictionary whose values are messages or patterns of messages. */
QStringList messageKeys();

/** All keys that this host knows, in alphabetical order: messages, offsets and timeouts. */
QStringList knownKeys();

class MessageNames {
public:
    /** Looks all keys up once. The plugin may be unloaded afterwards. */
    explicit MessageNames(DeviceInterface& device);

    /**
     * The key whose command or pattern fits the whole message, the most definite one when several
     * do; "nak" for a refusal that no key describes; empty when nothing fits.
     */
    QString nameOf(const QByteArray& message) const;

private:
    struct Entry {
        QString key;
        QRegExp pattern;
    };

    bool isFwd(const QByteArray& message) const;
    bool isRefusal(const QByteArray& message) const;

    std::vector<Entry> m_entries;
    ProductDescription m_product;
    QByteArray m_refusalMarks; /**< what the product may put after a command to refuse it */
};

} // namespace hx

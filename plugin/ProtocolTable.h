// The protocol dictionary of the product as data.
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace hx {

// The dictionary that lookups read: 43 keys, every text without blanks.
QMap<QString, QVariant> buildProtocolMap();

} // namespace hx

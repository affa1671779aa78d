// The messages of the product, by the keys that hosts know.
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

// Texts without blanks, and numbers.
QMap<QString, QVariant> buildProtocolTable();

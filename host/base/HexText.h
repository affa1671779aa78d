// Bytes as people read them.
#pragma once

#include <QByteArray>
#include <QString>

namespace hx {

// "F0 7E 7F": upper case, blanks between neighbours.
QString hexText(const QByteArray& bytes);

// The same, cut to the first 24 bytes with the full length behind: "F0 00 ... (146 bytes)".
QString hexTextShort(const QByteArray& bytes);

} // namespace hx

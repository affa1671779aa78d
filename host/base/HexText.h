/** @file
 * Bytes as people read them.
 */
#pragma once

#include <QByteArray>
#include <QString>

namespace hx {

/** "F0 7E 7F": upper case, blanks between neighbours. */
QString hexText(const QByteArray& bytes);

/** The same, cut to the first 24 bytes, followed by the full length: "F0 00 ... (146 bytes)". */
QString hexTextShort(const QByteArray& bytes);

/** "0A". */
QString hexByte(quint8 byte);

/** An identifier word in six digits: "0x120005" for family 12, model 05. */
QString identifierText(quint32 identifier);

} // namespace hx

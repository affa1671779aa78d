// How single values are written in a state file.
#pragma once

#include "simulator/ProductMemory.h"

#include <QByteArray>

namespace hx::sim {

inline const QByteArray noStateValue = "-"; // version and checksum of code that is not valid
constexpr int addressDigits = 6;
constexpr int crcDigits = 8;

QByteArray hexNumber(quint32 value, int digits);

// "1.0.2.3", and back; what is no such text gives digits that are written otherwise.
QByteArray versionText(const VersionDigits& version);
VersionDigits versionOf(const QByteArray& text);

// "fwu" or "fwd".
QByteArray kindText(quint8 kind);

} // namespace hx::sim

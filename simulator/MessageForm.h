// The form of every message to and from the product: where it begins and ends, and its head.
#pragma once

#include <QByteArray>

namespace hx::sim {

constexpr char sysExStart = '\xF0';
constexpr char sysExEnd = '\xF7';
constexpr quint8 firstStatus = 0x80;   // data bytes lie below
constexpr quint8 firstRealTime = 0xF8; // may stand inside a message and is no part of it

constexpr int modelAt = 5; // behind F0, manufacturer and family
constexpr int headSize = 6;
constexpr int commandAt = 6;
constexpr char refused = 0x46; // behind the command in an answer

// What identity request and reply begin with, whoever made the product.
inline const QByteArray universalHead = QByteArray::fromHex("F07E");

} // namespace hx::sim

/** @file
 * The product's memory as text; the grammar is in docs/formats/simulated-product.md.
 */
#pragma once

#include "simulator/ProductMemory.h"

#include <QString>

#include <array>
#include <optional>

namespace hx::sim {

/** Eight bytes; none where the product has the one that its family and model give it. */
using SerialNumber = std::optional<std::array<quint8, 8>>;

/** The whole text of a state file. */
QByteArray writeStateFile(const StoredCode& code, const SerialNumber& serialNumber = {});

/**
 * Reads a state file for a product with room for `memorySize` code bytes. When it is damaged or
 * does not fit, the answer is false, `error` says what is wrong in which line, and `code` and
 * `serialNumber` are unchanged.
 */
bool readStateFile(const QByteArray& text, int memorySize, StoredCode* code, QString* error,
                   SerialNumber* serialNumber = nullptr);

} // namespace hx::sim

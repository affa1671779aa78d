/** @file
 * The product's memory as text; the grammar is in docs/formats/simulated-product.md.
 */
#pragma once

#include "simulator/ProductMemory.h"

#include <QString>

namespace hx::sim {

/** The whole text of a state file. */
QByteArray writeStateFile(const StoredCode& code);

/**
 * Reads a state file for a product with room for `memorySize` code bytes. When it is damaged or
 * does not fit, the answer is false, `error` says what is wrong in which line, and `code` is
 * unchanged.
 */
bool readStateFile(const QByteArray& text, int memorySize, StoredCode* code, QString* error);

} // namespace hx::sim

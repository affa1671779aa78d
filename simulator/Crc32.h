// CRC-32 as the product calculates it.
#pragma once

#include <QByteArray>

namespace hx::sim {

// Polynomial 04C11DB7, reflected, initial value and final XOR FFFFFFFF: "123456789" gives CBF43926.
quint32 productCrc32(const QByteArray& bytes);

} // namespace hx::sim

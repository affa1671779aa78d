// What tests of simulated ports ask a product, and products with a fault.
#pragma once

#include "host/base/Clock.h"
#include "simulator/FaultyProduct.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

namespace hx {

inline const QByteArray identify = QByteArray::fromHex("F07E7F0601F7");
inline const QByteArray identityReply = QByteArray::fromHex("F07E000602006B2D3000410031303233F7");

inline sim::FaultyProduct productWith(const char* fault)
{
    QString error;
    const auto parsed = sim::parseFault(QString::fromLatin1(fault), &error);
    EXPECT_TRUE(parsed.has_value()) << error.toStdString();
    return sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()),
                              {parsed.value_or(sim::Fault())});
}

} // namespace hx

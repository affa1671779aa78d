// The real plugin, loaded from its library file, over a bus to a simulated product.
#pragma once

#include "host/bus/PortBus.h"
#include "host/product/PluginLoader.h"
#include "ports/SimulatedPort.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

class ProductSession {
public:
    // `faults` as in "bad-ack:3" or "drop-reply:2-5".
    explicit ProductSession(const QStringList& faults = {},
                            const hx::sim::SimulatedProductSettings& settings = {},
                            const hx::SimulatedPortOptions& options = {})
        : ProductSession(hx::sim::SimulatedProduct(hx::sim::valdrin(), settings), faults, options)
    {
    }

    ProductSession(const hx::sim::SimulatedProduct& product, const QStringList& faults,
                   const hx::SimulatedPortOptions& options = {})
        : port(hx::sim::FaultyProduct(product, plan(faults)), options), bus(port)
    {
        loaded = hx::loadPlugin(QStringLiteral(HX_PLUGIN_FILE));
        EXPECT_TRUE(loaded.ok()) << loaded.problem.what.toStdString();
        device().bus = &bus;
    }

    DeviceInterface& device() { return loaded.plugin->device(); }
    hx::sim::SimulatedProduct& product() { return port.product(); }

    hx::SimulatedPort port;
    hx::PortBus bus;
    hx::PluginLoadResult loaded;
    LogCapture log;

private:
    static hx::sim::FaultPlan plan(const QStringList& faults)
    {
        hx::sim::FaultPlan plan;
        for (const QString& text : faults) {
            QString error;
            const auto fault = hx::sim::parseFault(text, &error);
            EXPECT_TRUE(fault.has_value()) << error.toStdString();
            plan.append(fault.value_or(hx::sim::Fault()));
        }
        return plan;
    }
};

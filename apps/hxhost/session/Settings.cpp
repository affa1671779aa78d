#include "apps/hxhost/session/Settings.h"

#include <algorithm>

namespace hx::host {

Verbosity OutputOptions::verbosity() const
{
    if (quiet)
        return Verbosity::Quiet;
    if (verbose == 0)
        return Verbosity::Normal;
    return verbose == 1 ? Verbosity::Detail : Verbosity::Bytes;
}

sim::FaultPlan SimulationOptions::faultPlan() const
{
    sim::FaultPlan plan;
    QString error;
    for (const std::string& text : faults) {
        if (const auto fault = sim::parseFault(QString::fromStdString(text), &error))
            plan << *fault;
    }
    return plan;
}

sim::SimulatedProductSettings SimulationOptions::settings() const
{
    sim::SimulatedProductSettings settings;
    if (!serial.empty())
        std::copy_n(serial.begin(), settings.serialNumber.emplace().size(),
                    settings.serialNumber->begin());
    return settings;
}

} // namespace hx::host

#include "apps/hxhost/session/Settings.h"

namespace hx::host {

Verbosity OutputOptions::verbosity() const
{
    if (quiet)
        return Verbosity::Quiet;
    if (verbose == 0)
        return Verbosity::Normal;
    return verbose == 1 ? Verbosity::Detail : Verbosity::Bytes;
}

sim::FaultPlan faultPlan(const std::vector<std::string>& faults)
{
    sim::FaultPlan plan;
    QString error;
    for (const std::string& text : faults) {
        if (const auto fault = sim::parseFault(QString::fromStdString(text), &error))
            plan << *fault;
    }
    return plan;
}

} // namespace hx::host

// The steps of a run as they are taken: timed, told to the observers of the bus, and collected.
#pragma once

#include "host/update/UpdateResult.h"

namespace hx {

class UpdateSteps {
public:
    explicit UpdateSteps(PortBus& bus);

    // The step that took the time since the last one; `text` is what was found.
    void add(const char* name, bool good, const QString& text);

    // Both return false, so that the step that ends the run can return it.
    bool end(UpdateOutcome outcome, const QString& reason);
    // A question that the plugin's dictionary lacks leaves the update unverified.
    bool endOn(const Reading& reading, UpdateOutcome whenSilent);

    Microseconds sinceStart() const;

    UpdateResult result;

private:
    PortBus& m_bus;
    Microseconds m_start;
    Microseconds m_stepStart;
};

// "maker 00 21 7F, identifier 0x120005, version 1.0.2.3"
QString productText(const IdentityReading& identity);

} // namespace hx

// What the window works with in these measurements: the simulated product of the installed plugin.
#pragma once

#include "apps/hxupdate/model/LoginSleepGuard.h"
#include "apps/hxupdate/model/SimulatorPorts.h"
#include "apps/hxupdate/model/UpdateSession.h"

#include "host/product/PluginFolder.h"

inline hxupdate::Surroundings simulatedSurroundings()
{
    hxupdate::Surroundings surroundings;
    surroundings.pluginPlace = hx::pluginFolder();
    surroundings.ports = std::make_unique<hxupdate::SimulatorPorts>(surroundings.pluginPlace);
    surroundings.sleep = std::make_unique<hxupdate::LoginSleepGuard>();
    surroundings.pickedPort = surroundings.ports->list().first();
    return surroundings;
}

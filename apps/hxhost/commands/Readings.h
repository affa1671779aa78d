// What was read from the product, put into a report.
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "host/product/ProductReadings.h"

namespace hx::host {

// Adds state, reason and value of a reading under `name`. A reading that was not made adds nothing.
void addReading(Report& report, const QString& name, const IdentityReading& reading);
void addReading(Report& report, const QString& name, const GenderReading& reading);
void addReading(Report& report, const QString& name, const VersionReading& reading);
void addReading(Report& report, const QString& name, const ChecksumReading& reading);
void addReading(Report& report, const QString& name, const EsnReading& reading);
void addReading(Report& report, const QString& name, const CodeImageReading& reading);

// The plugin's own answers under "plugin.". Where `isCodeValid` is false although the checksums
// agree, and their replies differ, a note says what that may come from.
void addPluginAnswers(Report& report, const PluginAnswers& answers, const ChecksumReading& stored,
                      const ChecksumReading& calculated);

// Makes a reading that is not good the command's problem; true when it is good.
bool requireGood(CommandContext& context, const Reading& reading, const QString& portName);

// Makes it the command's problem that something else answered than the plugin serves.
void failWrongProduct(CommandContext& context, const IdentityReading& identity,
                      DeviceInterface& device);

} // namespace hx::host

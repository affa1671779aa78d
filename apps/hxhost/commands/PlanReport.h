// What an update with an image would send, put into a report.
#pragma once

#include "apps/hxhost/commands/ImageReport.h"
#include "apps/hxhost/session/Session.h"

#include "host/update/UpdatePlan.h"

namespace hx::host {

struct PlannedImage {
    LoadedImage loaded;
    UpdatePlan plan;
};

// Reads the image, plans the update with it, and adds both to the report. None, with the problem in
// the report, when the image must not be sent.
std::optional<PlannedImage> planImage(CommandContext& context, const Session& session,
                                      const std::string& path);

} // namespace hx::host

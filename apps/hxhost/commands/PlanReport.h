// What an update with an image would send, put into a report.
#pragma once

#include "apps/hxhost/commands/ImageOrigin.h"
#include "apps/hxhost/session/Session.h"

#include "host/update/UpdatePlan.h"

namespace hx::host {

struct PlannedImage {
    LoadedImage loaded;
    UpdatePlan plan;
};

// Reads the image, holds it against its signature where there are keys, plans the update with it, and
// adds all of it to the report. None, with the problem in the report, when the image must not be sent.
std::optional<PlannedImage> planImage(CommandContext& context, const Session& session,
                                      const std::string& path, const OriginOptions& origin);

} // namespace hx::host

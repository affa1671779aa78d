// How an update or a verification ended, put into a report.
#pragma once

#include "apps/hxhost/session/CommandContext.h"
#include "apps/hxhost/session/Session.h"

#include "host/update/UpdateRun.h"

namespace hx::host {

// Adds outcome, steps, checksums, versions, and three sentences when all is good; what went wrong
// becomes the command's problem. `image` is null where the product is held against none.
void reportUpdate(CommandContext& context, const Session& session, const UpdateImage* image,
                  const UpdateResult& result);

// Adds the sentences of a success. Each says so when no real instrument was reached.
void addSuccess(Report& report, const Session& session, const QStringList& lines);

// Adds what the plugin itself answers about the product, where a product still answers at all.
void reportPluginAnswers(CommandContext& context, const Session& session,
                         const UpdateResult& result);

} // namespace hx::host

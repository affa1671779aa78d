// How an update or a verification ended, put into a report.
#pragma once

#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/session/Session.h"

#include "host/update/UpdateRun.h"

namespace hx {

// The exit code for the end of a run.
ExitCode exitCodeOf(const UpdateResult& result);

// Adds outcome, steps, checksums, versions; what went wrong becomes the command's problem.
void reportUpdate(CommandContext& context, const UpdateResult& result);

// Adds what the plugin itself answers about the product, where a product still answers at all.
void reportPluginAnswers(CommandContext& context, const Session& session,
                         const UpdateResult& result);

} // namespace hx

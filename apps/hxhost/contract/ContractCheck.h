// Holds a loaded plugin to the contract between hosts and plugins.
#pragma once

#include "apps/hxhost/contract/Rules.h"

#include <functional>
#include <vector>

namespace hx {

// Called before each rule is run, so that a plugin that crashes can be told from one that hangs,
// and where.
using RuleStart = std::function<void(const char* rule)>;

// One result for each rule, in the order in which they were run. Afterwards the plugin's object is
// another one than before: the last rule deletes it.
std::vector<RuleResult> checkContract(const RuleSubject& subject, const RuleStart& start);

} // namespace hx

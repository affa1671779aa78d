// Holds a plugin to the contract between hosts and plugins.
#pragma once

#include "contract/Rules.h"

#include <functional>
#include <vector>

namespace hx {

// Called before each rule is run.
using RuleStart = std::function<void(const char* rule)>;

struct ContractFinding {
    QString filePath;
    QString className;
    Problem loadProblem; // why the plugin could not be loaded; without a text where it was
    QString otherHead;   // how the image given begins where it is for another product, else empty
    QString crash;       // how the plugin ended the process that examined it, else empty

    // One for each rule, in the order in which they were run. The rule in which the plugin crashed
    // has failed, and those after it were skipped. Empty when the plugin was not loaded, or the
    // image is for another product.
    std::vector<RuleResult> results;
};

// Loads the plugin at `path` and runs every rule, in a process of its own: whatever the plugin
// does, this returns.
ContractFinding checkContract(const QString& path, const QList<HxMidiData>& image,
                              const RuleStart& start);

} // namespace hx

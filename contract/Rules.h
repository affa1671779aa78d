// The rules of the contract, one function each, in families.
#pragma once

#include "contract/RuleResult.h"
#include "host/product/PluginLoader.h"
#include "mididata/HxMidiData.h"

#include <QList>

#include <vector>

namespace hx {

struct RuleSubject {
    LoadedPlugin& plugin;
    QList<HxMidiData> image; // an update image of the product; empty: one is made up

    DeviceInterface& device() const { return plugin.device(); }
};

struct Rule {
    const char* name;
    const char* demand;
    void (*judge)(const RuleSubject& subject, RuleResult* result);
};

// The order within a family is that in which the rules are run.
std::vector<Rule> metadataRules();
std::vector<Rule> identityRules();
std::vector<Rule> dictionaryRules();
std::vector<Rule> updateRules();
std::vector<Rule> replyRules();

// Deletes the plugin's object, so it comes last.
std::vector<Rule> destructionRules();

} // namespace hx

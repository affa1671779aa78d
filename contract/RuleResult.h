// What one rule of the contract found in a plugin.
#pragma once

#include <QString>
#include <QStringList>

namespace hx {

enum class RuleState { Passed, Quirk, Failed, Skipped };

// "passed", "quirk", "failed", "skipped".
QString ruleStateWord(RuleState state);

struct RuleResult {
    QString rule;   // its name, such as "maps.inverse"
    QString demand; // what it asks of a plugin, one clause
    QStringList failures;
    QStringList quirks;
    QString skipped; // why it could not be judged

    // The worst of what was found.
    RuleState state() const;

    // All of it in one line; empty when the rule has passed.
    QString finding() const;

    void require(bool holds, const QString& otherwise);
};

} // namespace hx

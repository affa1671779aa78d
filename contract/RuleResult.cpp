#include "contract/RuleResult.h"

namespace hx {

QString ruleStateWord(RuleState state)
{
    switch (state) {
    case RuleState::Passed:
        return QStringLiteral("passed");
    case RuleState::Quirk:
        return QStringLiteral("quirk");
    case RuleState::Failed:
        return QStringLiteral("failed");
    case RuleState::Skipped:
        break;
    }
    return QStringLiteral("skipped");
}

RuleState RuleResult::state() const
{
    if (!failures.isEmpty())
        return RuleState::Failed;
    if (!skipped.isEmpty())
        return RuleState::Skipped;
    return quirks.isEmpty() ? RuleState::Passed : RuleState::Quirk;
}

QString RuleResult::finding() const
{
    const QStringList skips = skipped.isEmpty() ? QStringList() : QStringList(skipped);
    return (failures + skips + quirks).join(QStringLiteral("; "));
}

void RuleResult::require(bool holds, const QString& otherwise)
{
    if (!holds)
        failures << otherwise;
}

} // namespace hx

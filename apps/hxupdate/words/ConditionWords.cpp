#include "apps/hxupdate/words/ConditionWords.h"

#include <QCoreApplication>

namespace hxupdate {

namespace {

struct ConditionWords {
    Q_DECLARE_TR_FUNCTIONS(ConditionWords)
};

} // namespace

QString conditionText(hx::ProductCondition condition)
{
    switch (condition) {
    case hx::ProductCondition::CodeIntact:
        return ConditionWords::tr("It answers, and its code is intact.");
    case hx::ProductCondition::NoValidCode:
        return ConditionWords::tr("It answers, and it holds no valid code.");
    case hx::ProductCondition::CodeDamaged:
        return ConditionWords::tr("It answers, and its code is damaged.");
    case hx::ProductCondition::OtherProduct:
        return ConditionWords::tr("Another product answers in its place.");
    case hx::ProductCondition::NoAnswer:
        return ConditionWords::tr("It does not answer.");
    case hx::ProductCondition::PortLost:
        return ConditionWords::tr("It is no longer connected.");
    case hx::ProductCondition::Unclear:
        break;
    }
    return ConditionWords::tr("It answers only in part.");
}

} // namespace hxupdate

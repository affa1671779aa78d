#include "apps/hxhost/contract/ContractCheck.h"

namespace hx {

std::vector<RuleResult> checkContract(const RuleSubject& subject, const RuleStart& start)
{
    std::vector<RuleResult> results;
    for (const auto& family : {metadataRules(), identityRules(), dictionaryRules(), updateRules(),
                               replyRules(), destructionRules()}) {
        for (const Rule& rule : family) {
            start(rule.name);
            RuleResult result;
            result.rule = QString::fromLatin1(rule.name);
            result.demand = QString::fromLatin1(rule.demand);
            rule.judge(subject, &result);
            results.push_back(result);
        }
    }
    return results;
}

} // namespace hx

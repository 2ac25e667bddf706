#include "desk/explain/finding.h"

#include <tuple>

namespace explain {

const char* nameOf(Severity severity) {
    switch (severity) {
    case Severity::kError:
        return "error";
    case Severity::kWarning:
        return "warning";
    case Severity::kProvoked:
        break;
    }
    return "provoked";
}

const std::vector<RuleText>& allRules() {
    static const std::vector<RuleText> rules = {
#define RULE(rule, name, severity, sentence, next) {name, Severity::k##severity, sentence, next},
#include "desk/explain/rules.def"
    };
    return rules;
}

const RuleText& textOf(Rule rule) {
    return allRules()[static_cast<size_t>(rule)];
}

bool FindingKey::operator<(const FindingKey& other) const {
    return std::tie(rule, subject, detail) < std::tie(other.rule, other.subject, other.detail);
}

} // namespace explain

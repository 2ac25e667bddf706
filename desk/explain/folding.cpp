#include "desk/explain/folding.h"

#include "desk/explain/java_names.h"
#include "desk/explain/order.h"

#include <algorithm>
#include <array>

namespace explain {
namespace {

/// Says why one finding follows from another; null when it does not.
using Relate = const char* (*)(const RelatedFinding& cause, const RelatedFinding& symptom);

template <class... Rules>
bool isOneOf(Rule rule, Rules... rules) {
    return ((rule == rules) || ...);
}

bool isBefore(const RelatedFinding& one, const RelatedFinding& other) {
    return one.finding.first.line < other.finding.first.line;
}

const char* byLoad(const RelatedFinding& cause, const RelatedFinding& symptom) {
    return cause.finding.key.rule == Rule::kNativeMissing &&
                   symptom.finding.key.rule == Rule::kLoadFailed
               ? "the load fails without the native methods"
               : nullptr;
}

const char* byClass(const RelatedFinding& cause, const RelatedFinding& symptom) {
    const int class_id = cause.relations.class_id;
    if (cause.finding.key.rule != Rule::kClassMissing || class_id < 0) {
        return nullptr;
    }
    if (symptom.relations.class_id == class_id &&
        isOneOf(symptom.finding.key.rule, Rule::kMethodMissing, Rule::kObjectNotMade)) {
        return "the same class";
    }
    if (symptom.finding.key.rule == Rule::kResultNotMade &&
        (symptom.relations.class_id == class_id || symptom.relations.class_id < 0)) {
        return "an object of the class";
    }
    // "ERROR find class" is about an element of an array, which no line names.
    if (symptom.finding.key.rule == Rule::kObjectNotMade && symptom.relations.class_id < 0 &&
        classNamed(class_id) == "BG_TS_DTVSVLIB_SERVICE_INFO") {
        return "an object of the class";
    }
    return nullptr;
}

const char* byMethod(const RelatedFinding& cause, const RelatedFinding& symptom) {
    if (cause.finding.key.rule != Rule::kMethodMissing) {
        return nullptr;
    }
    if (symptom.finding.key.rule == Rule::kObjectNotMade && cause.relations.method_id >= 0 &&
        symptom.relations.method_id == cause.relations.method_id) {
        return "the same constructor";
    }
    return nullptr;
}

const char* byStop(const RelatedFinding& cause, const RelatedFinding& symptom) {
    return cause.finding.key.rule == Rule::kServiceStopped &&
                   isOneOf(symptom.finding.key.rule, Rule::kNoReply, Rule::kCommandNotTaken,
                           Rule::kEmptyAnswer, Rule::kCommandFailed) &&
                   symptom.finding.first.line >= cause.finding.first.line
               ? "the service had stopped"
               : nullptr;
}

const char* byCommand(const RelatedFinding& cause, const RelatedFinding& symptom) {
    return isOneOf(cause.finding.key.rule, Rule::kCommandAfterRelease, Rule::kCommandWithoutSession,
                   Rule::kCommandOutOfPlace) &&
                   isOneOf(symptom.finding.key.rule, Rule::kCommandFailed, Rule::kNoReply,
                           Rule::kCommandNotTaken, Rule::kEmptyAnswer) &&
                   symptom.finding.key.subject == cause.finding.key.subject &&
                   symptom.relations.handle == cause.relations.handle
               ? "the same command"
               : nullptr;
}

/// A session that was never opened.
const char* byCreate(const RelatedFinding& cause, const RelatedFinding& symptom) {
    return cause.finding.key.subject == "Create" &&
                   isOneOf(cause.finding.key.rule, Rule::kArgumentRefused, Rule::kCommandFailed,
                           Rule::kNoReply, Rule::kCommandNotTaken, Rule::kServiceStopped) &&
                   isOneOf(symptom.finding.key.rule, Rule::kCommandWithoutSession,
                           Rule::kEventWithoutSession) &&
                   isBefore(cause, symptom)
               ? "no session was opened"
               : nullptr;
}

bool isTrouble(Rule rule) {
    return isOneOf(rule, Rule::kNoReply, Rule::kCommandNotTaken, Rule::kCommandFailed,
                   Rule::kEmptyAnswer, Rule::kArgumentRejected);
}

/// A command that needs another one, which failed in the same session.
const char* byNeed(const RelatedFinding& cause, const RelatedFinding& symptom) {
    const Rule rule = cause.finding.key.rule;
    const bool failed = isTrouble(rule) || isOneOf(rule, Rule::kArgumentRefused,
                                                   Rule::kSurfaceRefused, Rule::kFieldMissing);
    return failed && cause.relations.handle && isBefore(cause, symptom) &&
                   cause.relations.handle == symptom.relations.handle &&
                   symptom.relations.failed.count(cause.finding.key.subject) != 0 &&
                   (isTrouble(symptom.finding.key.rule) ||
                    symptom.finding.key.rule == Rule::kCommandOutOfPlace) &&
                   dependsOn(symptom.finding.key.subject, cause.finding.key.subject)
               ? "it needs the other command"
               : nullptr;
}

/// What lasts from the first time on, whatever the event.
const char* byLastingFault(const RelatedFinding& cause, const RelatedFinding& symptom) {
    const Rule rule = cause.finding.key.rule;
    if (rule != symptom.finding.key.rule || !isBefore(cause, symptom)) {
        return nullptr;
    }
    return rule == Rule::kThreadTableFull ? "the table is full"
           : rule == Rule::kAttachFailed  ? "no thread was attached"
                                          : nullptr;
}

/// A session whose commands stop being answered, or are answered late: they are answered in order.
const char* bySession(const RelatedFinding& cause, const RelatedFinding& symptom) {
    const bool same = cause.relations.handle && cause.relations.handle == symptom.relations.handle;
    const Rule rule = cause.finding.key.rule;
    const Rule other = symptom.finding.key.rule;
    const bool both =
        (rule == other && isOneOf(rule, Rule::kNoReply, Rule::kCommandNotTaken)) ||
        (other == Rule::kSlowReply && isOneOf(rule, Rule::kSlowReply, Rule::kNoReply));
    return same && both && isBefore(cause, symptom) ? "later in the same session" : nullptr;
}

/// The order of first causes. A reply that is missing may be a line that is missing: what is there
/// comes before it.
int rankOf(Rule rule) {
    switch (rule) {
    case Rule::kNoReply:
        return 2;
    case Rule::kSlowReply:
        return 3;
    default:
        break;
    }
    switch (textOf(rule).severity) {
    case Severity::kError:
        return 0;
    case Severity::kWarning:
        return 1;
    case Severity::kProvoked:
        break;
    }
    return 4;
}

/// In this order: what names the same thing before what is only in the same session.
constexpr std::array<Relate, 9> kRelations = {
    byLoad, byClass, byMethod, byStop, byCommand, byCreate, byNeed, byLastingFault, bySession};

/// The index of the finding that one follows from, or its own.
size_t causeOf(const std::vector<RelatedFinding>& found, size_t symptom, std::string& why) {
    for (const Relate relate : kRelations) {
        for (size_t cause = 0; cause < found.size(); ++cause) {
            const char* const reason =
                cause != symptom ? relate(found[cause], found[symptom]) : nullptr;
            if (reason != nullptr) {
                why = reason;
                return cause;
            }
        }
    }
    return symptom;
}

} // namespace

std::vector<Finding> withFirstCauses(std::vector<RelatedFinding> found) {
    std::stable_sort(found.begin(), found.end(), isBefore);
    std::vector<size_t> causes(found.size());
    for (size_t i = 0; i < found.size(); ++i) {
        causes[i] = causeOf(found, i, found[i].finding.relation);
    }
    // To the first of a chain. A ring, which would have no first, is cut at its earliest.
    for (size_t i = 0; i < found.size(); ++i) {
        size_t first = i;
        for (size_t steps = 0; causes[first] != first && steps < found.size(); ++steps) {
            first = causes[first];
        }
        causes[i] = causes[first] == first ? first : i;
    }
    std::vector<size_t> order(found.size());
    for (size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::stable_sort(order.begin(), order.end(), [&](size_t one, size_t other) {
        const bool one_follows = causes[one] != one;
        const bool other_follows = causes[other] != other;
        if (one_follows != other_follows) {
            return !one_follows;
        }
        return !one_follows &&
               rankOf(found[one].finding.key.rule) < rankOf(found[other].finding.key.rule);
    });
    std::vector<int> ids(found.size());
    for (size_t place = 0; place < order.size(); ++place) {
        ids[order[place]] = static_cast<int>(place) + 1;
    }
    std::vector<Finding> findings;
    for (const size_t index : order) {
        Finding finding = found[index].finding;
        finding.id = ids[index];
        finding.caused_by = causes[index] != index ? ids[causes[index]] : 0;
        const Severity of_cause = textOf(found[causes[index]].finding.key.rule).severity;
        finding.severity =
            of_cause == Severity::kProvoked ? of_cause : textOf(finding.key.rule).severity;
        findings.push_back(std::move(finding));
    }
    return findings;
}

} // namespace explain

// What is found in a log or a capture.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace explain {

/// From the worst.
enum class Severity : uint8_t {
    kError,
    kWarning,
    kProvoked, ///< what the Java side asked for is not allowed, and was refused as it has to be
};
const char* nameOf(Severity severity);

enum class Rule : uint8_t {
#define RULE(rule, name, severity, sentence, next) k##rule,
#include "desk/explain/rules.def"
};

struct RuleText {
    const char* name;
    Severity severity;
    const char* sentence;
    const char* next;
};
const RuleText& textOf(Rule rule);
const std::vector<RuleText>& allRules();

/// Where something is in the log, or in a capture.
struct Place {
    /// Line of the log, or number of the message in the capture.
    uint64_t line = 0;
    std::string function; ///< of the bridge; empty: none is known
    int source_line = 0;
    std::string text; ///< of the line; for a message of a capture its values
};

/// What the same thing that was found several times is recognised by.
struct FindingKey {
    Rule rule = Rule::kLoadFailed;
    std::string subject; ///< the message, or the Java class or method; may be empty
    std::string detail;  ///< what tells it from others of the subject

    bool operator<(const FindingKey& other) const;
};

struct Finding {
    int id = 0; ///< from 1, in the order in which findings are shown
    FindingKey key;
    /// That of the rule; of what follows from something provoked: provoked as well.
    Severity severity = Severity::kError;
    uint64_t count = 0;
    Place first;
    uint64_t last_line = 0;
    std::vector<uint64_t> lines; ///< the first ones, kMostLines at most
    std::optional<int> handle;   ///< of the session; of the first
    std::string thread;          ///< of the first
    int caused_by = 0;           ///< id of the finding that it follows from; 0: none
    std::string relation;        ///< why it is said to follow from that

    static constexpr size_t kMostLines = 20;
};

} // namespace explain

// What is made to fail in a round, and what came of it.
#pragma once

#include "harness/harness.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace torture {

using harness::FailJni;
using harness::FailNth;
using Leaves = FailJni::Leaves;

/// What a service answers to a command that waits.
struct Reply {
    std::vector<uint8_t> bytes;
    std::optional<int> size; ///< nothing: the reply size is not written
};

/// What fails.
struct Plan {
    std::vector<FailNth::Call> calls;
    bool calls_on = false;
    int allocation = -1; ///< the number of the bridge's allocation that fails; -1: none
    bool allocations_on = false;
    bool no_service = false;
    int send_result = 0;
    std::optional<Reply> reply;
    bool callback_throws = false;
    bool refuse_registration = false; ///< of the natives, by the VM
};

/// One call of the bridge that could fail.
struct CallSeen {
    std::string what;        ///< "GetFieldID physical_channel"
    size_t lines_before = 0; ///< trace lines that were written before it

    std::string function() const { return what.substr(0, what.find(' ')); }
};

/// Everything that is seen of one run of an operation, or expected of it.
struct Outcome {
    /// "N D dtvSvLibCreate|text": the module (N or L), the level (S, E, I, D or R for ERROR), the
    /// function and its message.
    std::vector<std::string> lines;
    std::vector<CallSeen> calls;
    std::vector<std::string> messages; ///< sent to the service
    std::vector<std::string> callbacks;
    std::string answer;
    size_t lines_before_send = 0;
    int allocations = 0;
};

/// One thing that is done again and again.
class Operation {
public:
    virtual ~Operation() = default;
    virtual std::string name() const = 0;
    /// Does it while this fails.
    virtual Outcome run(const Plan& plan) = 0;
    /// What is promised of that. Only after the baseline.
    virtual Outcome expect(const Plan& plan) const = 0;
    /// The most local references that may live at once.
    virtual int mostLocals() const = 0;
    virtual bool sends() const { return false; }
    virtual bool waits() const { return false; }
    virtual bool callsBack() const { return false; }
    /// The greatest distance of two calls that fail in one round, in calls.
    virtual size_t pairsApart() const { return ~size_t{0}; }
    /// What it holds that is lost when the number after a round is another.
    virtual std::string held() const { return ""; }

    Outcome baseline;
};

/// What was seen and is not what was expected; empty when it is.
std::string difference(const Outcome& seen, const Outcome& expected);

} // namespace torture

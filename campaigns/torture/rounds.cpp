#include "rounds.h"

#include "memory.h"
#include "witness.h"

#include <climits>

#include <algorithm>

namespace torture {
namespace {

using harness::StrictJni;
using harness::waysToFail;

const char* wayText(Leaves leaves) {
    switch (leaves) {
    case Leaves::exception:
        return "throws";
    case Leaves::nothing:
        return "null";
    default:
        return "spoiled";
    }
}

std::string callText(const FailNth::Call& call) {
    return std::to_string(call.number) + "-" + wayText(call.leaves);
}

/// Everything that a run may have lost.
struct Held {
    int locals = StrictJni::liveLocals();
    int globals = StrictJni::globalsMade() - StrictJni::globalsDeleted();
    int unreleased = StrictJni::unreleased();
    long memory = Memory::held();
    std::string other;

    explicit Held(const Operation& operation) : other(operation.held()) {}

    std::string lostSince(const Held& before) const {
        std::string text;
        const auto compare = [&text](const char* what, long then, long now) {
            if (then != now) {
                text += std::string(what) + " " + std::to_string(now) + ", before " +
                        std::to_string(then) + "\n";
            }
        };
        compare("local references", before.locals, locals);
        compare("global references", before.globals, globals);
        compare("texts and arrays not released", before.unreleased, unreleased);
        compare("blocks of memory", before.memory, memory);
        if (other != before.other) {
            text += other + ", before " + before.other + "\n";
        }
        return text;
    }
};

/// Runs and compares. What is wrong, or nothing.
std::string runAndCompare(Operation& operation, const Plan& plan, const Outcome& expected) {
    const Held before(operation);
    StrictJni::resetPeakLocals();
    const Outcome seen = operation.run(plan);
    std::string wrong = difference(seen, expected);
    if (StrictJni::peakLocals() > before.locals + operation.mostLocals()) {
        wrong += std::to_string(StrictJni::peakLocals()) + " local references at once\n";
    }
    wrong += Held(operation).lostSince(before);
    return wrong + Witness::instance().takeFaults();
}

struct SendCase {
    std::string name;
    Kind kind;
    Plan plan;
};

std::vector<SendCase> sendCases(const Operation& operation) {
    std::vector<SendCase> all;
    if (!operation.sends()) {
        return all;
    }
    for (int result : {1, -1, 5, INT_MIN, INT_MAX}) {
        Plan plan;
        plan.send_result = result;
        all.push_back({"send/" + std::to_string(result), Kind::send, plan});
    }
    Plan none;
    none.no_service = true;
    all.push_back({"send/none", Kind::send, none});
    if (operation.waits()) {
        const std::vector<uint8_t> zero(12, 0);
        const std::vector<uint8_t> usual{3, 0, 0, 0, 5, 6, 7, 8, 9, 10, 11, 12};
        const std::vector<uint8_t> other{0xff, 0xff, 1,    2,    0,    0,
                                         0x80, 0xff, 0xff, 0xff, 0xfe, 0xff};
        const auto add = [&all](const std::string& name, const std::vector<uint8_t>& bytes,
                                std::optional<int> size) {
            Plan plan;
            plan.reply = Reply{bytes, size};
            all.push_back({"reply/" + name, Kind::reply, plan});
        };
        add("empty", zero, 0);
        add("empty-without-size", zero, std::nullopt);
        add("zero", zero, 8);
        add("without-size", usual, std::nullopt);
        add("size-0", usual, 0);
        add("other-size-0", other, 0);
        add("other", other, 8);
        for (int size : {1, -1, 4096, INT_MAX, INT_MIN}) {
            add("size" + std::to_string(size), usual, size);
        }
    }
    return all;
}

/// The plan with one more call that fails.
Plan withCall(Plan plan, const FailNth::Call& call, bool on = false) {
    plan.calls.push_back(call);
    plan.calls_on = on;
    return plan;
}

/// Adds a round for each way in which each call can fail beside what fails in `plan`, from the call
/// `first` on.
void addCalls(std::vector<Round>& rounds, Operation& operation, const Plan& plan, size_t first,
              const std::string& name, Kind kind, bool on_as_well, size_t most = ~size_t{0}) {
    const std::vector<CallSeen> calls = operation.expect(plan).calls;
    const size_t end =
        calls.size() - std::min(calls.size(), first) > most ? first + most : calls.size();
    for (size_t i = first; i < end; ++i) {
        for (Leaves leaves : waysToFail(calls[i].function())) {
            const FailNth::Call call{static_cast<int>(i), leaves};
            const std::string whole = operation.name() + "/" + name + callText(call);
            rounds.push_back({whole + "/once", kind, &operation, withCall(plan, call)});
            if (on_as_well) {
                rounds.push_back({whole + "/on", kind == Kind::call ? Kind::callsOn : kind,
                                  &operation, withCall(plan, call, true)});
            }
        }
    }
}

size_t firstAfterSend(const Operation& operation) {
    const std::vector<CallSeen>& calls = operation.baseline.calls;
    size_t first = 0;
    while (first < calls.size() &&
           calls[first].lines_before < operation.baseline.lines_before_send) {
        ++first;
    }
    return first;
}

} // namespace

const char* describe(Kind kind) {
    static const char* const texts[] = {
        "one call fails",
        "a call and all after it fail",
        "two calls fail",
        "the service refuses or is not there, and a call fails",
        "the service answers badly, and a call fails",
        "the callback throws, and a call fails",
        "memory is refused",
        "Java's load is refused",
    };
    return texts[static_cast<size_t>(kind)];
}

std::string takeBaseline(Operation& operation) {
    // The first run of a class initialises it.
    operation.run({});
    operation.baseline = operation.run({});
    Witness::instance().takeFaults();
    return runAndCompare(operation, {}, operation.baseline) +
           difference(operation.expect({}), operation.baseline);
}

std::vector<Round> singleRounds(Operation& operation) {
    std::vector<Round> rounds;
    addCalls(rounds, operation, {}, 0, "jni/", Kind::call, true);
    for (const SendCase& each : sendCases(operation)) {
        rounds.push_back(
            {operation.name() + "/" + each.name + "/once", each.kind, &operation, each.plan});
    }
    if (operation.callsBack()) {
        Plan plan;
        plan.callback_throws = true;
        rounds.push_back(
            {operation.name() + "/callback/throws/once", Kind::callback, &operation, plan});
    }
    for (int i = 0; i < operation.baseline.allocations; ++i) {
        for (bool on : {false, true}) {
            Plan plan;
            plan.allocation = i;
            plan.allocations_on = on;
            rounds.push_back(
                {operation.name() + "/alloc/" + std::to_string(i) + (on ? "/on" : "/once"),
                 Kind::allocation, &operation, plan});
        }
    }
    return rounds;
}

std::vector<Round> compoundRounds(Operation& operation) {
    std::vector<Round> rounds;
    const std::vector<CallSeen>& calls = operation.baseline.calls;
    for (size_t i = 0; i < calls.size(); ++i) {
        for (Leaves leaves : waysToFail(calls[i].function())) {
            const FailNth::Call call{static_cast<int>(i), leaves};
            addCalls(rounds, operation, withCall({}, call), i + 1, "jni/" + callText(call) + "+",
                     Kind::pair, false, operation.pairsApart());
        }
    }
    for (const SendCase& each : sendCases(operation)) {
        const size_t slash = each.name.find('/');
        addCalls(rounds, operation, each.plan, firstAfterSend(operation),
                 each.name.substr(0, slash) + "+jni" + each.name.substr(slash) + "+", each.kind,
                 true);
    }
    if (operation.callsBack()) {
        Plan plan;
        plan.callback_throws = true;
        addCalls(rounds, operation, plan, 0, "callback+jni/", Kind::callback, true);
    }
    return rounds;
}

std::string play(const Round& round) {
    Operation& operation = *round.operation;
    std::string wrong = runAndCompare(operation, round.plan, operation.expect(round.plan));
    const std::string after = runAndCompare(operation, {}, operation.baseline);
    if (!after.empty()) {
        wrong += "the same without failures afterwards:\n" + after;
    }
    return wrong;
}

} // namespace torture

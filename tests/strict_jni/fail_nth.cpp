// Calls that fail by their number, whatever their function: how each function fails, and which call
// is next.
#include "strict_jni/state.h"
#include "strict_jni/strict_jni.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace strict_jni {
namespace {

using Leaves = FailJni::Leaves;
using Ways = std::vector<Leaves>;

struct Plan {
    std::vector<FailNth::Call> calls;
    FailNth::Span span = FailNth::Span::once;
    int counted = 0;
    int failed = 0;
};

std::mutex mutex;
Plan* plan = nullptr; ///< guarded by the mutex
std::atomic<bool> planned{false};

/// The ways by what a function does.
struct Family {
    std::vector<const char*> names;
    Ways ways;
};

const std::vector<Family>& families() {
    static const auto& all = *new std::vector<Family>{
        // A look-up leaves an exception. A VM that is short of memory may leave none.
        {{"FindClass", "GetMethodID", "GetStaticMethodID", "GetFieldID", "GetStaticFieldID"},
         {Leaves::exception, Leaves::nothing}},
        // Some VMs return the object of a constructor that threw.
        {{"NewObjectV", "NewObjectA"}, {Leaves::exception, Leaves::nothing, Leaves::result}},
        {{"AllocObject", "NewString", "NewStringUTF", "NewObjectArray", "NewGlobalRef",
          "NewWeakGlobalRef", "NewLocalRef", "PushLocalFrame", "EnsureLocalCapacity",
          "UnregisterNatives"},
         {Leaves::exception, Leaves::nothing}},
        // Null is what the field holds, or what a VM without a class for the object answers.
        {{"GetObjectClass", "GetObjectField", "GetStaticObjectField", "GetObjectArrayElement"},
         {Leaves::nothing}},
        // Several VMs answer null without an exception when there is no memory for a copy.
        {{"GetStringChars", "GetStringUTFChars"}, {Leaves::exception, Leaves::nothing}},
        {{"GetEnv", "AttachCurrentThread", "AttachCurrentThreadAsDaemon", "Throw", "ThrowNew"},
         {Leaves::nothing}},
    };
    return all;
}

/// Functions of one kind for each type: "Call...MethodV", "New...Array", "Get...ArrayElements".
Ways waysByKind(const std::string& name) {
    const auto begins = [&](const char* with) { return name.rfind(with, 0) == 0; };
    const auto ends = [&](const std::string& with) {
        return name.size() >= with.size() &&
               name.compare(name.size() - with.size(), with.size(), with) == 0;
    };
    if (begins("Call") && (ends("MethodV") || ends("MethodA"))) {
        // The Java code throws, at its begin or at its end.
        return {Leaves::exception, Leaves::result};
    }
    if ((begins("New") && ends("Array")) || (begins("Get") && ends("ArrayElements"))) {
        return {Leaves::exception, Leaves::nothing};
    }
    return {};
}

/// How a call fails by the plan, or nothing.
const FailNth::Call* failureOf(const Plan& of, int number) {
    for (const FailNth::Call& call : of.calls) {
        if (call.number == number) {
            return &call;
        }
    }
    const bool after = !of.calls.empty() && number > of.calls.back().number;
    return after && of.span == FailNth::Span::fromThereOn ? &of.calls.back() : nullptr;
}

} // namespace

const std::vector<FailJni::Leaves>& waysToFail(const std::string& function) {
    static auto& known = *new std::map<std::string, Ways>;
    static auto& known_mutex = *new std::mutex;
    const std::lock_guard lock(known_mutex);
    auto found = known.find(function);
    if (found == known.end()) {
        Ways ways = waysByKind(function);
        for (const Family& family : families()) {
            if (std::find(family.names.begin(), family.names.end(), function) !=
                family.names.end()) {
                ways = family.ways;
            }
        }
        found = known.emplace(function, std::move(ways)).first;
    }
    return found->second;
}

Turn nextCounted(const Row& row) {
    if (!planned.load(std::memory_order_relaxed)) {
        return Turn::made;
    }
    const std::lock_guard lock(mutex);
    if (plan == nullptr) {
        return Turn::made;
    }
    const FailNth::Call* const failure = failureOf(*plan, plan->counted++);
    if (failure == nullptr) {
        return Turn::made;
    }
    ++plan->failed;
    const bool has_way =
        std::find(row.ways->begin(), row.ways->end(), failure->leaves) != row.ways->end();
    return turnOf(has_way ? failure->leaves : row.ways->front());
}

FailNth::FailNth(std::vector<Call> calls, Span span) {
    const std::lock_guard lock(mutex);
    if (plan != nullptr) {
        report("two FailNth at a time");
    }
    plan = new Plan{std::move(calls), span};
    planned = true;
}

FailNth::~FailNth() {
    const std::lock_guard lock(mutex);
    planned = false;
    delete plan;
    plan = nullptr;
}

int FailNth::counted() const {
    const std::lock_guard lock(mutex);
    return plan->counted;
}

int FailNth::failed() const {
    const std::lock_guard lock(mutex);
    return plan->failed;
}

} // namespace strict_jni

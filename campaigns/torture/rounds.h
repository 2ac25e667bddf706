// The rounds of an operation: what fails in each, and how it is played.
#pragma once

#include "plan.h"

#include <string>
#include <vector>

namespace torture {

/// What the rounds are counted by.
enum class Kind {
    call,       ///< one call fails
    callsOn,    ///< a call and all after it fail
    pair,       ///< two calls fail
    send,       ///< the service refuses or is not there, with or without a call that fails
    reply,      ///< the service answers badly, with or without a call that fails
    callback,   ///< the callback throws, with or without a call that fails
    allocation, ///< memory is refused
    systemLoad, ///< Java's load is refused
    count
};
const char* describe(Kind kind);

struct Round {
    std::string name; ///< "SelectChannel/jni/17-null/once"
    Kind kind;
    Operation* operation;
    Plan plan;
};

/// Has the operation run without failures, which is its baseline. What is wrong with it, or
/// nothing.
std::string takeBaseline(Operation& operation);

/// The rounds of one thing that fails, and those of several.
std::vector<Round> singleRounds(Operation& operation);
std::vector<Round> compoundRounds(Operation& operation);

/// Plays a round, and has the operation run without failures after it. What is wrong, or nothing.
std::string play(const Round& round);

} // namespace torture

// A divergence in words and fields, before it is printed.
#pragma once

#include "replay/divergence.h"
#include "replay/fields.h"
#include "replay/recording.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace replay {

/// How many messages before a divergence are shown.
constexpr size_t kMessagesBefore = 5;

/// What the divergences of a kind are called: "with other bytes", as after a number.
std::string nameOf(Difference difference);
/// The name of a kind in JSON: "other_bytes".
std::string keyOf(Difference difference);

struct Finding {
    uint64_t number; ///< of the message in the file that it is about, or that was next
    std::string what;
    std::vector<FieldDifference> fields;
};

Finding findingOf(const Recording& recording, const Divergence& divergence);

/// The name of a message, or its number.
std::string messageName(int id);

} // namespace replay

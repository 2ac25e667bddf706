// Random arguments and records that the bridge mostly takes.
#pragma once

#include "harness/harness.h"

#include "records/catalogue.h"

#include <cstdint>
#include <random>
#include <vector>

namespace trace_test {

using Random = std::mt19937;

/// Sets the whole numbers and the texts of a Java object, and of the objects in it, to random ones.
/// Those of Android's classes stay.
void randomize(jobject object, Random& random);

/// A record whose fields have random values: numbers that count something are small, texts end in
/// their field and are zero after their end, reserved bytes are zero.
std::vector<uint8_t> randomRecord(const catalogue::Record& layout, Random& random);

} // namespace trace_test

// Which bytes of a record are known, as the comment of a packet says it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sessions {

/// The key of the line in a packet's comment; its value is what unknownText() gives.
constexpr char kIncompleteNote[] = "incomplete";

/// The bytes that are not known, by their numbers from 0: "2-3,8,12-15". Empty when all are known.
std::string unknownText(const std::vector<bool>& known);

/// What is known of the bytes of a part of a record.
enum class Known {
    kAll,
    kSome,
    kNone
};

/// Of the bytes from `begin` on. An empty list says that all are known.
Known knownOf(const std::vector<bool>& known, size_t begin, size_t size);

/// For each of `size` bytes whether it is known; none of them when the text is not such a list.
/// What it says of bytes that there are not does not count.
std::vector<bool> knownBytes(std::string_view unknown, size_t size);

} // namespace sessions

#include "arguments/sent_limits.h"

#include <cstdint>
#include <string>
#include <vector>

namespace hostile {
namespace {

/// A limit that a value keeps on its way: a negative number that is cut to its field may be any.
enum Limit {
    kNone,
    kChannel,  ///< a channel up to 62 and a service up to 2
    kLna,      ///< 0, 16 or 17
    kTunerLog, ///< 1 or 2
    kTitle,    ///< up to 196 bytes, as many as its size says
};

struct Range {
    size_t first;
    size_t last;
};

struct MessageLimits {
    int id;
    size_t size;
    int surfaces;
    std::vector<Range> zero; ///< bytes that no value goes to
    Limit limit;
};

// clang-format off
const MessageLimits kMessages[] = {
    {0x10000000, 4, 0, {{1, 1}}, kNone},
    {0x10000001, 2, 0, {}, kNone},
    {0x10000002, 2, 0, {}, kNone},
    {0x10000003, 2, 0, {}, kNone},
    {0x10000004, 12, 0, {{2, 3}, {10, 11}}, kChannel},
    {0x10000005, 2, 0, {}, kNone},
    {0x10000006, 12, 0, {{2, 3}, {10, 11}}, kChannel},
    {0x10000007, 16, 0, {{2, 3}, {10, 11}, {13, 15}}, kChannel},
    {0x10000009, 2, 0, {}, kNone},
    {0x1000000a, 36, 3, {{7, 7}, {19, 19}, {35, 35}}, kNone},
    {0x1000000b, 30, 3, {{13, 13}, {29, 29}}, kNone},
    {0x1000000c, 8, 1, {}, kNone},
    {0x1000000d, 18, 1, {{7, 7}}, kNone},
    {0x1000000e, 8, 1, {{7, 7}}, kNone},
    {0x1000000f, 4, 0, {{3, 3}}, kNone},
    {0x10000010, 4, 0, {}, kNone},
    {0x10000011, 4, 0, {{3, 3}}, kNone},
    {0x10000012, 4, 0, {{3, 3}}, kNone},
    {0x10000013, 4, 0, {{3, 3}}, kNone},
    {0x10000014, 4, 0, {{3, 3}}, kNone},
    {0x10000015, 6, 0, {}, kNone},
    {0x10000016, 4, 0, {{3, 3}}, kNone},
    {0x10000017, 20, 1, {{9, 9}}, kNone},
    {0x10000018, 10, 1, {{3, 3}, {9, 9}}, kNone},
    {0x10000019, 4, 0, {{3, 3}}, kNone},
    {0x1000001a, 4, 0, {{3, 3}}, kLna},
    {0x1000001b, 4, 0, {{3, 3}}, kTunerLog},
    {0x1000001c, 2, 0, {}, kNone},
    {0x1000001d, 280, 1, {{3, 3}, {279, 279}}, kNone},
    {0x1000001e, 2, 0, {}, kNone},
    {0x1000001f, 8, 0, {}, kNone},
    {0x10000020, 12, 0, {{2, 3}, {5, 7}}, kNone},
    {0x10000021, 404, 0, {{2, 3}, {397, 399}}, kNone},
    {0x10000022, 4, 0, {{3, 3}}, kNone},
    {0x10000023, 112, 0, {{111, 111}}, kNone},
    {0x10000024, 1936, 0, {{2, 3}, {5, 7}}, kNone},
    {0x10000025, 4, 0, {{3, 3}}, kNone},
    {0x10000026, 4, 0, {{3, 3}}, kNone},
    {0x10000027, 4, 0, {{3, 3}}, kNone},
    {0x10000028, 4, 0, {{3, 3}}, kNone},
    {0x10000029, 4, 0, {{3, 3}}, kNone},
    {0x1000002a, 786, 0, {{5, 5}, {785, 785}}, kNone},
    {0x1000002b, 4, 0, {{3, 3}}, kNone},
    {0x1000002c, 4, 0, {{3, 3}}, kNone},
    {0x1000002d, 2, 0, {}, kNone},
    {0x1000002e, 4, 0, {{3, 3}}, kNone},
    {0x1000002f, 202, 0, {{3, 3}}, kTitle},
    {0x10000030, 12, 0, {{3, 3}, {7, 7}, {11, 11}}, kNone},
    {0x10000031, 8, 0, {{3, 3}}, kNone},
    {0x10000032, 2, 0, {}, kNone},
    {0x10000033, 2, 0, {}, kNone},
    {0x10000034, 12, 0, {{2, 3}, {5, 7}}, kNone},
    {0x10000035, 4, 0, {{3, 3}}, kNone},
    {0x10000036, 2, 0, {}, kNone},
    {0x10000037, 4, 0, {{3, 3}}, kNone},
    {0x10000038, 2, 0, {}, kNone},
    {0x10000039, 2, 0, {}, kNone},
    {0x1000003a, 2, 0, {}, kNone},
    {0x1000003b, 4, 0, {{3, 3}}, kNone},
    {0x1000003c, 4, 0, {{3, 3}}, kNone},
    {0x1000003d, 20, 1, {{9, 9}}, kNone},
    {0x1000003e, 10, 1, {{3, 3}, {9, 9}}, kNone},
    {0x1000003f, 2, 0, {}, kNone},
    {0x10000040, 202, 0, {{3, 3}}, kTitle},
    {0x10000041, 2, 0, {}, kNone},
};
// clang-format on

constexpr int kFirstSynchronous = 0x10000038;

const MessageLimits* find(int id) {
    for (const MessageLimits& message : kMessages) {
        if (message.id == id) {
            return &message;
        }
    }
    return nullptr;
}

std::string outsideLimit(Limit limit, const std::vector<uint8_t>& bytes) {
    const auto u16 = [&bytes](size_t at) { return bytes[at] | bytes[at + 1] << 8; };
    switch (limit) {
    case kNone:
        return "";
    case kChannel: {
        const auto channel =
            static_cast<int>(static_cast<uint32_t>(u16(4)) | static_cast<uint32_t>(u16(6)) << 16);
        return channel <= 62 ? "" : "channel " + std::to_string(channel);
    }
    case kLna:
        return bytes[2] == 0 || bytes[2] == 16 || bytes[2] == 17
                   ? ""
                   : "LNA mode " + std::to_string(bytes[2]);
    case kTunerLog:
        return bytes[2] == 1 || bytes[2] == 2 ? "" : "tuner log " + std::to_string(bytes[2]);
    case kTitle:
        if (u16(4) > 196) {
            return "a title of " + std::to_string(u16(4)) + " bytes";
        }
        for (size_t i = static_cast<size_t>(u16(4)); i < 196; ++i) {
            if (bytes[6 + i] != 0) {
                return "a title that is longer than its size";
            }
        }
        return "";
    }
    return "";
}

} // namespace

std::string outsideLimits(const harness::Message& message) {
    const MessageLimits* const limits = find(message.message_id);
    if (limits == nullptr) {
        return "there is no message " + std::to_string(message.message_id);
    }
    if (message.bytes.size() != limits->size) {
        return std::to_string(message.bytes.size()) + " bytes instead of " +
               std::to_string(limits->size);
    }
    if (message.had_references != (limits->surfaces != 0) ||
        message.surface_count != limits->surfaces || message.object_count != 0) {
        return std::to_string(message.surface_count) + " surfaces instead of " +
               std::to_string(limits->surfaces);
    }
    const bool synchronous = limits->id >= kFirstSynchronous;
    if (message.sync != synchronous) {
        return synchronous ? "it did not wait" : "it waited";
    }
    for (const Range& range : limits->zero) {
        for (size_t i = range.first; i <= range.last; ++i) {
            if (message.bytes[i] != 0) {
                return "the byte at " + std::to_string(i) + " is not zero";
            }
        }
    }
    return outsideLimit(limits->limit, message.bytes);
}

} // namespace hostile

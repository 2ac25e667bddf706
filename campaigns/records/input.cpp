#include "records/input.h"

#include "records/limits.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>

namespace hostile {
namespace {

constexpr uint8_t kTraced = 1;
constexpr uint8_t kBeginsAtPage = 2;
constexpr uint8_t kNull = 4;

int32_t littleEndian(const uint8_t* at) {
    uint32_t value = 0;
    for (int i = 3; i >= 0; --i) {
        value = value << 8 | at[i];
    }
    return static_cast<int32_t>(value);
}

void putLittleEndian(uint8_t* at, int32_t number) {
    auto value = static_cast<uint32_t>(number);
    for (int i = 0; i < 4; ++i, value >>= 8) {
        at[i] = static_cast<uint8_t>(value);
    }
}

} // namespace

Input readInput(const uint8_t* data, size_t size) {
    uint8_t head[kHead] = {};
    if (size != 0) {
        std::memcpy(head, data, std::min(size, kHead));
    }
    Input input;
    input.id = littleEndian(head);
    input.traced = (head[4] & kTraced) != 0;
    input.begins_at_page = (head[4] & kBeginsAtPage) != 0;
    input.null = (head[4] & kNull) != 0;
    input.size = littleEndian(head + 5);
    if (size > kHead) {
        input.bytes.assign(data + kHead, data + std::min(size, kLongestInput));
    }
    return input;
}

std::vector<uint8_t> written(const Input& input) {
    std::vector<uint8_t> data(kHead + input.bytes.size());
    putLittleEndian(data.data(), input.id);
    data[4] =
        static_cast<uint8_t>((input.traced ? kTraced : 0) |
                             (input.begins_at_page ? kBeginsAtPage : 0) | (input.null ? kNull : 0));
    putLittleEndian(data.data() + 5, input.size);
    std::copy(input.bytes.begin(), input.bytes.end(), data.begin() + kHead);
    return data;
}

std::string described(const Input& input) {
    char id[16];
    std::snprintf(id, sizeof id, "0x%08x ", static_cast<unsigned>(input.id));
    const EventLimits* const limits = findLimits(input.id);
    std::string text = id;
    text += limits != nullptr ? limits->callback : "(no event)";
    text += ", size " + std::to_string(input.size);
    if (limits != nullptr && limits->size != kAnySize) {
        text += " of " + std::to_string(limits->size);
    }
    if (input.null) {
        text += ", null";
    } else {
        text +=
            input.begins_at_page ? ", after an inaccessible page" : ", before an inaccessible page";
    }
    return text + (input.traced ? ", traced" : "");
}

std::string asHex(const uint8_t* data, size_t size) {
    std::string text;
    for (size_t i = 0; i < size; ++i) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", data[i]);
        text += digits;
    }
    return text;
}

bool fromHex(const std::string& text, std::vector<uint8_t>& bytes) {
    if (text.empty() || text.size() % 2 != 0 ||
        text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
        return false;
    }
    bytes.clear();
    for (size_t at = 0; at < text.size(); at += 2) {
        bytes.push_back(static_cast<uint8_t>(std::stoi(text.substr(at, 2), nullptr, 16)));
    }
    return true;
}

bool readCorpus(const std::string& file, std::vector<std::vector<uint8_t>>& inputs) {
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        if (!fromHex(line, inputs.emplace_back())) {
            return false;
        }
    }
    return !inputs.empty();
}

} // namespace hostile

#include "script/patch_reader.h"

#include "script/field_path.h"
#include "script/json_check.h"

#include <cstdint>
#include <utility>

namespace simulator {
namespace {

constexpr size_t kLargestRecord = 65536; ///< bytes

} // namespace

std::optional<size_t> PatchReader::size(const Json::Value& owner, const char* name) {
    const std::optional<int64_t> value =
        json_.number(owner, name, 0, static_cast<int64_t>(kLargestRecord));
    return value ? std::optional(static_cast<size_t>(*value)) : std::nullopt;
}

std::vector<Patch> PatchReader::patches(const Json::Value& owner, const catalogue::Record* record) {
    std::vector<Patch> patches;
    if (owner.isMember("fields")) {
        const Json::Value& fields = owner["fields"];
        if (record == nullptr) {
            json_.fail(fields, "an event that is not known has no fields");
        } else if (!fields.isObject()) {
            json_.fail(fields, "\"fields\" has to be an object");
        } else {
            for (const std::string& path : fields.getMemberNames()) {
                patches.push_back(fieldPatch(*record, path, fields[path]));
            }
        }
    }
    if (owner.isMember("bytes")) {
        patches.push_back(bytesPatch(owner["bytes"]));
    }
    return patches;
}

Patch PatchReader::fieldPatch(const catalogue::Record& record, const std::string& path,
                              const Json::Value& value) {
    std::string reason;
    const std::optional<Place> place = locate(record, path, reason);
    std::vector<uint8_t> bytes;
    if (!place) {
        json_.fail(value, reason);
        return {0, {}};
    }
    if (value.isInt64()) {
        bytes = numberBytes(*place, value.asInt64(), reason);
    } else if (!value.isString()) {
        reason = "a whole number or a text is wanted here";
    } else if (firstInvalidUtf8(value.asString()) != std::string::npos) {
        reason = "the text has half of a character";
    } else {
        bytes = textBytes(*place, value.asString(), reason);
    }
    if (!reason.empty()) {
        json_.fail(value, path + ": " + reason);
    }
    return {place->offset, std::move(bytes)};
}

Patch PatchReader::bytesPatch(const Json::Value& value) {
    Patch patch{0, {}};
    if (!json_.object(value, {"offset", "hex"})) {
        return patch;
    }
    patch.offset = size(value, "offset").value_or(0);
    if (!value.isMember("hex")) {
        json_.failWhole(value, "\"hex\" is missing");
        return patch;
    }
    const Json::Value& hex = value["hex"];
    const std::optional<std::vector<uint8_t>> given =
        hex.isString() ? hexBytes(hex.asString()) : std::nullopt;
    if (!given || given->empty()) {
        json_.fail(hex, "\"hex\" has to be hexadecimal digits, two for each byte");
        return patch;
    }
    patch.bytes = *given;
    if (patch.offset + patch.bytes.size() > kLargestRecord) {
        json_.fail(hex, "a record has at most " + std::to_string(kLargestRecord) + " bytes");
    }
    return patch;
}

} // namespace simulator

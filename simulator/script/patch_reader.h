// Reads the parts of a script that set the contents of a record: "fields", "bytes" and "size".
#pragma once

#include "records/catalogue.h"
#include "script/json_reader.h"
#include "script/patch.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// Reports each mistake to the JsonReader. Its results are complete only when there is none.
class PatchReader {
public:
    explicit PatchReader(JsonReader& json) : json_(json) {}

    /// The length of a record, in bytes; empty when the member is missing.
    std::optional<size_t> size(const Json::Value& owner, const char* name);
    /// The bytes that "fields" and "bytes" give for a record; a null record has no fields.
    std::vector<Patch> patches(const Json::Value& owner, const catalogue::Record* record);

private:
    Patch fieldPatch(const catalogue::Record& record, const std::string& path,
                     const Json::Value& value);
    Patch bytesPatch(const Json::Value& value);

    JsonReader& json_;
};

} // namespace simulator

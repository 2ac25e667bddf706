// A field of a record by its path, and bytes for a value in it.
#pragma once

#include "records/catalogue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// The place of a field in a record.
struct Place {
    size_t offset; ///< bytes from the start of the outermost record
    size_t size;   ///< bytes
    catalogue::Kind kind;
};

/// Finds "handle", "network.ts_name", "service[2].name_size": a field of numbers, bytes or text. On
/// failure empty, and `error` says what is wrong.
std::optional<Place> locate(const catalogue::Record& record, std::string_view path,
                            std::string& error);

/// The bytes of a number in a field, little-endian. Empty when the field holds no number or the
/// number does not fit in it; `error` says so.
std::vector<uint8_t> numberBytes(const Place& place, int64_t value, std::string& error);

/// The bytes of a UTF-8 text in a field, filled up with zeros; for a field of bytes the text is
/// their hexadecimal digits. Empty when it does not fit or is not well formed; `error` says so.
std::vector<uint8_t> textBytes(const Place& place, std::string_view text, std::string& error);

/// Bytes from hexadecimal digits, with or without blanks between them; no value when they are none.
std::optional<std::vector<uint8_t>> hexBytes(std::string_view digits);

} // namespace simulator

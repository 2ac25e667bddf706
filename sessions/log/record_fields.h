// Which fields of a message's record the lines of the trace show.
#pragma once

#include "sessions/log/trace_lines.h"

#include "records/catalogue.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace sessions {

/// A field of a record that a line shows.
struct ShownField {
    std::string path;  ///< as "screen.surface_width"; empty: the value is in no field
    size_t offset = 0; ///< bytes from the record's start
    size_t size = 0;   ///< bytes
    catalogue::Kind kind = catalogue::Kind::kUnsigned;
};

/// The fields that the values of a line show, as many as it has values. `layout` is the record of
/// the message that the line is written for.
const std::vector<ShownField>& fieldsShown(const KnownLine& line, const catalogue::Record& layout);

/// The command whose native method writes lines in the name of that function, or null.
const catalogue::Message* commandOf(std::string_view function);
/// The event that a handler of that name handles, or null; null as well for the one of the replies.
const catalogue::Message* eventOf(std::string_view function);
/// Whether it is the handler of all replies of a handle and a result.
bool handlesReplies(std::string_view function);

/// The record of a message, as far as lines of the trace show it.
class RecordInLines {
public:
    RecordInLines() = default;
    /// `size` bytes, none of them known. Where the layout ends before, nothing can be known.
    RecordInLines(const catalogue::Record& layout, size_t size);

    /// Takes what a line shows.
    void take(const TraceLine& line);
    const std::vector<uint8_t>& bytes() const { return bytes_; }
    /// For each byte whether it is known.
    const std::vector<bool>& known() const { return known_; }

private:
    void put(const ShownField& field, const ShownValue& value);

    const catalogue::Record* layout_ = nullptr;
    std::vector<uint8_t> bytes_;
    std::vector<bool> known_;
};

} // namespace sessions

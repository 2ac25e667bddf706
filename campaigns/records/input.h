// One hostile record: what the service could send, and how it lies in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace hostile {

/// A whole input, as it is kept in the corpus: 9 bytes of head, then the record's bytes.
///
///     0  int32  the event's id
///     4  uint8  1: the trace is on; 2: the record begins after the inaccessible page, instead of
///               ending before it; 4: the record is null
///     5  int32  the size that the bridge is given
///     9  the record; bytes that are missing are zero, bytes beyond the size are not used
struct Input {
    int32_t id = 0;
    bool traced = false;
    bool begins_at_page = false;
    bool null = false;
    int32_t size = 0;
    std::vector<uint8_t> bytes;
};

constexpr size_t kHead = 9;
/// The longest record that lies in memory: more than twice the longest that the bridge knows. A
/// size above it is given to the bridge with a record of this length.
constexpr size_t kLongestRecord = 16384;
constexpr size_t kLongestInput = kHead + kLongestRecord;

/// Of any bytes: a head that is cut is filled with zeros.
Input readInput(const uint8_t* data, size_t size);
std::vector<uint8_t> written(const Input& input);

/// "0x10000054 SelectChannelReply, size 16 of 16 bytes, traced"
std::string described(const Input& input);

std::string asHex(const uint8_t* data, size_t size);
/// False when the text is none.
bool fromHex(const std::string& text, std::vector<uint8_t>& bytes);

/// The inputs of a file that has one a line, in hexadecimal. False when it cannot be read, or is
/// empty or other than that.
bool readCorpus(const std::string& file, std::vector<std::vector<uint8_t>>& inputs);

} // namespace hostile

// Captures for tests, byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace replay {

/// What is written of a message: docs/capture.md has the fields.
struct WrittenMessage {
    int kind;
    uint32_t thread_id;
    std::string thread;
    int id;
    std::vector<uint8_t> record;
    int value = 0;
    int size = -1; ///< -1: that of the record
    int surfaces = 0;
    uint64_t time = 0;     ///< nanoseconds since 1970
    std::string comment{}; ///< of the packet; empty: none
    uint32_t left_out = 0; ///< bytes that the packet lacks
};

/// Writes one section with one interface.
class CaptureWriter {
public:
    /// `comment` of the section; empty: none.
    explicit CaptureWriter(const std::string& comment = "");

    void add(const WrittenMessage& message);
    /// The file so far.
    const std::string& bytes() const { return bytes_; }

private:
    void put(uint64_t value, size_t size);
    void putBytes(const void* bytes, size_t size);
    void putOption(unsigned code, const std::string& value);

    std::string bytes_;
};

} // namespace replay

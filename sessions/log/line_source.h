// The lines of a text file, one after the other.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct gzFile_s;

namespace sessions {

/// Reads the lines of a plain or gzip-compressed file. Lines end with LF or CR LF; what comes after
/// the 65536th byte of a line is skipped. Any bytes may be read.
class LineSource {
public:
    static constexpr size_t kLongestLine = 65536; ///< bytes

    /// Opens a file; "-" is standard input. Whether that worked is said by error().
    explicit LineSource(const std::string& path);
    ~LineSource();
    LineSource(const LineSource&) = delete;
    LineSource& operator=(const LineSource&) = delete;

    /// The next line without its end; false when there is none. The line is valid until the next
    /// call.
    bool next(std::string_view& line);

    /// Whether the last line that next() gave had no end: the file ends in it.
    bool isUnended() const { return unended_; }
    /// How many bytes of the last line were skipped.
    uint64_t skipped() const { return skipped_; }
    /// Bytes of text so far, and bytes of the file so far, which are fewer when it is compressed.
    uint64_t textBytes() const { return text_bytes_; }
    uint64_t fileBytes() const;

    /// What is wrong with the file; empty when it was read to its end.
    const std::string& error() const { return error_; }

private:
    bool fill();

    gzFile_s* file_ = nullptr;
    std::vector<char> buffer_;
    size_t begin_ = 0; ///< of what was not given yet
    size_t end_ = 0;
    bool at_end_ = false;
    bool unended_ = false;
    uint64_t skipped_ = 0;
    uint64_t text_bytes_ = 0;
    std::string line_; ///< one that does not lie in the buffer in one piece
    std::string error_;
};

} // namespace sessions

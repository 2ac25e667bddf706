// The bytes of a stream from some place on, to be looked at before they are taken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <vector>

namespace sessions {

/// Holds what has been read and not been skipped. Never waits for more bytes than were asked for,
/// so that what a slow pipe has delivered can be used at once.
class InputWindow {
public:
    /// `stream` must outlive the window. It need not be seekable.
    explicit InputWindow(std::istream& stream) : stream_(stream) {}

    /// Reads until there are `count` bytes; false when the stream ends before.
    bool has(size_t count);

    /// The bytes, valid until the next call of has() or skip().
    const uint8_t* data() const { return bytes_.data() + begin_; }
    size_t size() const { return bytes_.size() - begin_; }

    /// Drops bytes at the beginning; at most size().
    void skip(size_t count);

    /// Where data() is in the stream, in bytes from its beginning.
    uint64_t offset() const { return offset_; }

    /// Whether the stream could not be read; false at its end.
    bool failed() const { return stream_.bad(); }

private:
    std::istream& stream_;
    std::vector<uint8_t> bytes_;
    size_t begin_ = 0; ///< how many of `bytes_` have been skipped
    uint64_t offset_ = 0;
};

} // namespace sessions

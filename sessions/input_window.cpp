#include "sessions/input_window.h"

#include <algorithm>

namespace sessions {
namespace {

/// Bytes read beyond what was asked for, when the stream has them already.
constexpr std::streamsize kAhead = 4096;
/// Skipped bytes that are kept until it is worth to move the others.
constexpr size_t kMostSkipped = 65536;

} // namespace

bool InputWindow::has(size_t count) {
    if (size() >= count) {
        return true;
    }
    const size_t before = bytes_.size();
    const auto missing = static_cast<std::streamsize>(count - size());
    const std::streamsize ready = stream_.rdbuf()->in_avail();
    const std::streamsize wanted = std::max(missing, std::min(ready, kAhead));
    bytes_.resize(before + static_cast<size_t>(wanted));
    stream_.read(reinterpret_cast<char*>(bytes_.data() + before), wanted);
    bytes_.resize(before + static_cast<size_t>(stream_.gcount()));
    return size() >= count;
}

void InputWindow::skip(size_t count) {
    begin_ += count;
    offset_ += count;
    if (begin_ == bytes_.size()) {
        bytes_.clear();
        begin_ = 0;
    } else if (begin_ > kMostSkipped) {
        bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(begin_));
        begin_ = 0;
    }
}

} // namespace sessions

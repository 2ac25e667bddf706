#include "sessions/log/line_source.h"

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <cerrno>
#include <cstring>

namespace sessions {
namespace {

constexpr size_t kBufferSize = 256 * 1024; ///< bytes

int openInput(const std::string& path) {
    return path == "-" ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

void removeReturn(std::string_view& line) {
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
}

} // namespace

LineSource::LineSource(const std::string& path) : buffer_(kBufferSize) {
    const int descriptor = openInput(path);
    if (descriptor < 0) {
        error_ = std::strerror(errno);
        at_end_ = true;
        return;
    }
    // Passes a file through that is not compressed.
    file_ = gzdopen(descriptor, "rb");
    if (file_ == nullptr) {
        close(descriptor);
        error_ = "not enough memory";
        at_end_ = true;
        return;
    }
    gzbuffer(file_, kBufferSize);
}

LineSource::~LineSource() {
    if (file_ != nullptr) {
        gzclose(file_);
    }
}

uint64_t LineSource::fileBytes() const {
    const auto offset = file_ != nullptr ? gzoffset(file_) : 0;
    return offset > 0 ? static_cast<uint64_t>(offset) : text_bytes_;
}

/// Reads more into the buffer, all of which has been given.
bool LineSource::fill() {
    if (at_end_) {
        return false;
    }
    begin_ = 0;
    end_ = 0;
    errno = 0;
    const int read = gzread(file_, buffer_.data(), static_cast<unsigned>(buffer_.size()));
    int code = Z_OK;
    const char* const reason = gzerror(file_, &code);
    if (code == Z_ERRNO) {
        error_ = std::strerror(errno);
    } else if (code == Z_BUF_ERROR) {
        error_ = "the compressed data is cut";
    } else if (code != Z_OK && code != Z_STREAM_END) {
        error_ = std::string("the compressed data is damaged: ") + reason;
    }
    at_end_ = read <= 0 || !error_.empty();
    end_ = read > 0 ? static_cast<size_t>(read) : 0;
    text_bytes_ += end_;
    return end_ > 0;
}

bool LineSource::next(std::string_view& line) {
    line_.clear();
    unended_ = false;
    skipped_ = 0;
    bool begun = false;
    while (begin_ < end_ || fill()) {
        begun = true;
        const char* const start = buffer_.data() + begin_;
        const size_t there = end_ - begin_;
        const auto* const newline = static_cast<const char*>(std::memchr(start, '\n', there));
        const size_t length = newline != nullptr ? static_cast<size_t>(newline - start) : there;
        begin_ += newline != nullptr ? length + 1 : length;
        const size_t taken = std::min(length, kLongestLine - std::min(kLongestLine, line_.size()));
        skipped_ += length - taken;
        if (newline != nullptr && line_.empty()) {
            line = {start, taken};
        } else {
            line_.append(start, taken);
            line = line_;
        }
        if (newline != nullptr) {
            removeReturn(line);
            return true;
        }
    }
    if (!begun) {
        return false;
    }
    removeReturn(line);
    unended_ = true;
    return true;
}

} // namespace sessions

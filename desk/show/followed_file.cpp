// Files beyond 2 GiB, also where a file offset is 32 bits wide by default.
#define _FILE_OFFSET_BITS 64

#include "desk/show/followed_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace show {
namespace {

constexpr size_t kBufferSize = 65536;
constexpr timespec kPause = {0, 50000000}; ///< between two looks at the end of the file

} // namespace

FollowedFile::FollowedFile(const volatile std::sig_atomic_t& stop)
    : stop_(stop), buffer_(kBufferSize) {}

FollowedFile::~FollowedFile() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

std::string FollowedFile::open(const std::string& path) {
    // Opening a pipe without a writer would wait.
    descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor_ < 0) {
        return "cannot open " + path + ": " + std::strerror(errno);
    }
    struct stat status = {};
    if (fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) {
        return path + " is no regular file: --follow waits at the end of one";
    }
    return {};
}

FollowedFile::int_type FollowedFile::underflow() {
    while (stop_ == 0 && failure_.empty()) {
        const ssize_t count = read(descriptor_, buffer_.data(), buffer_.size());
        if (count > 0) {
            read_ += static_cast<uint64_t>(count);
            setg(buffer_.data(), buffer_.data(), buffer_.data() + count);
            return traits_type::to_int_type(*gptr());
        }
        if (count < 0 && errno != EINTR) {
            failure_ = std::string("it cannot be read: ") + std::strerror(errno);
        } else if (count == 0 && becameShorter()) {
            failure_ = "it became shorter while it was followed: another capture has begun";
        } else {
            nanosleep(&kPause, nullptr);
        }
    }
    return traits_type::eof();
}

bool FollowedFile::becameShorter() {
    struct stat status = {};
    return fstat(descriptor_, &status) == 0 && static_cast<uint64_t>(status.st_size) < read_;
}

} // namespace show

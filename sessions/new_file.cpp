#include "sessions/new_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>

namespace sessions {
namespace {

constexpr size_t kBuffered = 65536;
constexpr int kMostNames = 100;

/// What a signal's handler removes; empty when there is nothing.
char temporary_name[PATH_MAX];
volatile std::sig_atomic_t has_temporary = 0;

} // namespace

NewFile::~NewFile() {
    remove();
}

bool NewFile::open(const std::string& path, std::string& error) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        error = path + " is there already, and is no regular file";
        return false;
    }
    const std::filesystem::path target(path);
    if (target.filename().empty()) {
        error = path + " is no name of a file";
        return false;
    }
    path_ = path;
    for (int i = 0; i < kMostNames; ++i) {
        const std::string name =
            ".unfinished-" + std::to_string(getpid()) + '-' + std::to_string(i) + ".tmp";
        temporary_ = (target.parent_path() / name).string();
        if (temporary_.size() >= sizeof temporary_name) {
            error = "cannot write " + path + ": " + std::strerror(ENAMETOOLONG);
            return false;
        }
        std::strcpy(temporary_name, temporary_.c_str());
        descriptor_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor_ >= 0) {
            has_temporary = 1;
            return true;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    error = "cannot write " + path + ": " + std::strerror(errno);
    return false;
}

void NewFile::write(const std::string& bytes) {
    buffer_ += bytes;
    if (buffer_.size() >= kBuffered) {
        flush();
    }
}

void NewFile::flush() {
    const char* bytes = buffer_.data();
    size_t left = buffer_.size();
    while (left > 0 && failure_.empty()) {
        const ssize_t written = ::write(descriptor_, bytes, left);
        if (written >= 0) {
            bytes += written;
            left -= static_cast<size_t>(written);
        } else if (errno != EINTR) {
            failure_ = std::strerror(errno);
        }
    }
    buffer_.clear();
}

bool NewFile::keep(std::string& error) {
    flush();
    // Some file systems find out only now that the disk is full.
    if (failure_.empty() && fsync(descriptor_) != 0 && errno != EINVAL) {
        failure_ = std::strerror(errno);
    }
    if (descriptor_ >= 0 && close(descriptor_) != 0 && failure_.empty()) {
        failure_ = std::strerror(errno);
    }
    descriptor_ = -1;
    if (failure_.empty() && rename(temporary_.c_str(), path_.c_str()) != 0) {
        failure_ = std::strerror(errno);
    }
    if (!failure_.empty()) {
        error = "cannot write " + path_ + ": " + failure_;
        remove();
        return false;
    }
    has_temporary = 0;
    temporary_.clear();
    return true;
}

void NewFile::remove() {
    if (descriptor_ >= 0) {
        close(descriptor_);
        descriptor_ = -1;
    }
    if (!temporary_.empty()) {
        removeTemporary();
        temporary_.clear();
    }
}

void NewFile::removeTemporary() {
    if (has_temporary != 0) {
        unlink(temporary_name);
        has_temporary = 0;
    }
}

} // namespace sessions

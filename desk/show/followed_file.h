// A file that another process writes, read beyond its end as it grows.
#pragma once

#include <csignal>
#include <streambuf>
#include <string>
#include <vector>

namespace show {

/// The bytes of a regular file. At its end it waits until there are more, or until `stop` is not 0:
/// that is the end then. It ends as well when the file becomes shorter than what was read of it.
class FollowedFile : public std::streambuf {
public:
    /// `stop` must outlive the object. A signal's handler may set it.
    explicit FollowedFile(const volatile std::sig_atomic_t& stop);
    ~FollowedFile() override;
    FollowedFile(const FollowedFile&) = delete;
    FollowedFile& operator=(const FollowedFile&) = delete;

    /// Why the file cannot be followed; empty when it can.
    std::string open(const std::string& path);

    /// Why the reading ended before it was stopped; empty when it did not.
    const std::string& failure() const { return failure_; }

protected:
    int_type underflow() override;

private:
    bool becameShorter();

    const volatile std::sig_atomic_t& stop_;
    int descriptor_ = -1;
    uint64_t read_ = 0; ///< bytes
    std::vector<char> buffer_;
    std::string failure_;
};

} // namespace show

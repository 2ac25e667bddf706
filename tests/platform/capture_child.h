// A test's capture, and the process that it is taken of. The first message of a process opens the
// file, so what is captured happens in a child that is forked before this process sends anything.
#pragma once

#include "platform/listener_double.h"

#include "harness/harness.h"

#include <pthread.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace platform {

class CaptureTest : public testing::Test {
protected:
    CaptureTest() {
        if (mkdtemp(folder_.data()) == nullptr) {
            throw std::runtime_error("no folder for the test's capture");
        }
        path = folder_ + "/capture.pcapng";
    }
    ~CaptureTest() override {
        std::remove(path.c_str());
        std::remove(folder_.c_str());
    }

    /// Runs `body` on the thread "evening" of a process that captures to `path`. No expectation of
    /// `body` may fail, and what it writes to standard error must match.
    void inChild(const std::function<void()>& body, const std::string& said = "^$") const {
        EXPECT_EXIT(
            {
                setenv("DTV_CAPTURE_FILE", path.c_str(), 1);
                pthread_setname_np(pthread_self(), "evening");
                body();
                dtv::stopDelivery();
                std::fflush(stdout);
                _exit(testing::Test::HasFailure() ? 1 : 0);
            },
            testing::ExitedWithCode(0), said);
    }

    std::vector<uint8_t> file() const {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string path;

private:
    std::string folder_ = testing::TempDir() + "/capture_XXXXXX";
};

/// The little-endian number of `size` bytes at `offset`.
inline uint64_t numberAt(const std::vector<uint8_t>& bytes, size_t offset, size_t size) {
    uint64_t number = 0;
    for (size_t i = size; i-- > 0;) {
        number = number << 8 | bytes.at(offset + i);
    }
    return number;
}

} // namespace platform

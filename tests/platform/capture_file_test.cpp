// The file of a capture: when it is written, by whom, and when there is none.
#include "platform/capture_child.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <thread>

namespace {

using android::sp;
using platform::ListenerDouble;
using platform::numberAt;

using CaptureFile = platform::CaptureTest;

/// Notes whether the file already had a message when an event was delivered.
class Watcher : public dtv::ServiceEndpoint {
public:
    explicit Watcher(std::string path) : path_(std::move(path)) {}
    int onCommand(const dtv::Command&) override { return sizeOfFile(); }
    int onSynchronousCommand(const dtv::Command&, const dtv::Reply&) override {
        return sizeOfFile();
    }

    int sizeOfFile() const {
        struct stat status = {};
        EXPECT_EQ(stat(path_.c_str(), &status), 0);
        return static_cast<int>(status.st_size);
    }

private:
    std::string path_;
};

TEST_F(CaptureFile, HasAMessageBeforeItIsDelivered) {
    inChild([&] {
        sp<ListenerDouble> listener = new ListenerDouble;
        const auto watcher = std::make_shared<Watcher>(path);
        dtv::setServiceEndpoint(watcher);
        char record[8] = {3, 0, 7, 0};
        int size = 0;
        EXPECT_EQ(listener->sendEventToServer(0x10000006, record, 4, nullptr, nullptr), 172);
        EXPECT_EQ(watcher->sizeOfFile(), 252);
        EXPECT_EQ(listener->sendEventToServer(0x10000038, record, 4, record, &size), 336);
        EXPECT_EQ(watcher->sizeOfFile(), 416);
        int seen = 0;
        listener->before = [&] { seen = watcher->sizeOfFile(); };
        EXPECT_EQ(dtv::deliverEvent(0x1000004f, record, 8), 0);
        EXPECT_EQ(seen, 504);
        EXPECT_EQ(watcher->sizeOfFile(), 504) << "an event that was taken has no verdict";
    });
}

TEST_F(CaptureFile, KeepsTheBlocksOfSeveralThreadsApart) {
    inChild([&] {
        const sp<ListenerDouble> listener = new ListenerDouble;
        auto service = harness::ServiceDouble::serve();
        std::vector<std::thread> threads;
        for (int number = 0; number < 8; ++number) {
            threads.emplace_back([&listener, number] {
                std::vector<char> record(static_cast<size_t>(500 * number + 3), 'x');
                for (int i = 0; i < 100; ++i) {
                    listener->sendEventToServer(number, record.data(),
                                                static_cast<int>(record.size()), nullptr, nullptr);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    const std::vector<uint8_t> bytes = file();
    std::vector<int> counts(8, 0);
    for (size_t begin = 88; begin < bytes.size();) {
        ASSERT_EQ(numberAt(bytes, begin, 4), 6u);
        const auto size = static_cast<size_t>(numberAt(bytes, begin + 4, 4));
        const auto number = static_cast<size_t>(numberAt(bytes, begin + 36, 4));
        ASSERT_LT(number, 8u);
        ASSERT_EQ(size, 84 + 500 * number) << "3 bytes more, and one of padding";
        ASSERT_EQ(numberAt(bytes, begin + size - 4, 4), size);
        ++counts[number];
        begin += size;
    }
    EXPECT_EQ(counts, std::vector<int>(8, 100));
}

TEST_F(CaptureFile, CutsAVeryLongRecord) {
    inChild([&] {
        const sp<ListenerDouble> listener = new ListenerDouble;
        auto service = harness::ServiceDouble::serve();
        std::vector<char> record(70000, 'x');
        listener->sendEventToServer(1, record.data(), 70000, nullptr, nullptr);
        listener->sendEventToServer(2, record.data(), 65500, nullptr, nullptr);
    });
    const std::vector<uint8_t> bytes = file();
    ASSERT_EQ(bytes.size(), 88u + 2 * (28 + 65536 + 16));
    EXPECT_EQ(numberAt(bytes, 88 + 20, 4), 65536u) << "bytes in the file";
    EXPECT_EQ(numberAt(bytes, 88 + 24, 4), 70036u) << "bytes of the message";
    EXPECT_EQ(numberAt(bytes, 88 + 28 + 16, 4), 70000u) << "the size that was given";
    EXPECT_EQ(numberAt(bytes, 88 + 65580 + 20, 4), 65536u);
    EXPECT_EQ(numberAt(bytes, 88 + 65580 + 24, 4), 65536u);
}

TEST_F(CaptureFile, IsNotWrittenWithoutTheVariable) {
    for (const char* value : {static_cast<const char*>(nullptr), ""}) {
        inChild([&] {
            if (value == nullptr) {
                unsetenv("DTV_CAPTURE_FILE");
            } else {
                setenv("DTV_CAPTURE_FILE", value, 1);
            }
            const sp<ListenerDouble> listener = new ListenerDouble;
            auto service = harness::ServiceDouble::serve();
            setenv("DTV_CAPTURE_FILE", path.c_str(), 1); // too late
            char record[2] = {3, 0};
            EXPECT_EQ(listener->sendEventToServer(1, record, 2, nullptr, nullptr), 0);
            EXPECT_EQ(service->takeTexts(), std::vector<std::string>{"00000001: 03 00"});
        });
        EXPECT_NE(access(path.c_str(), F_OK), 0);
    }
}

/// In the child: a message passes, and nothing was captured.
void passWithoutACapture() {
    const sp<ListenerDouble> listener = new ListenerDouble;
    auto service = harness::ServiceDouble::serve();
    char record[8] = {3, 0};
    errno = 12345;
    EXPECT_EQ(listener->sendEventToServer(1, record, 2, nullptr, nullptr), 0);
    EXPECT_EQ(errno, 12345);
    EXPECT_EQ(dtv::deliverEvent(5, record, 8), 0);
    EXPECT_EQ(service->takeTexts(), std::vector<std::string>{"00000001: 03 00"});
}

TEST_F(CaptureFile, ReportsAFileThatCannotBeOpened) {
    path += ".d/capture";
    inChild([&] { passWithoutACapture(); },
            "^libDtv: cannot open the capture file .*/capture.pcapng.d/capture: No such file or "
            "directory\n$");
}

TEST_F(CaptureFile, WritesToRegularFilesOnly) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    inChild([&] { passWithoutACapture(); },
            "^libDtv: the capture file .*/capture.pcapng is not a regular file\n$");
    close(reader);
    // No process reads from the pipe.
    inChild([&] { passWithoutACapture(); },
            "^libDtv: cannot open the capture file .*: No such device or address\n$");
}

/// In the child: no file grows beyond `size` bytes. That of standard error is one of them.
void limitFiles(rlim_t size) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {size, size};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST_F(CaptureFile, EndsWithAFullDisk) {
    inChild(
        [&] {
            limitFiles(1000);
            const sp<ListenerDouble> listener = new ListenerDouble;
            auto service = harness::ServiceDouble::serve();
            char record[1000] = {3, 0, 7, 0};
            const auto send = [&](int message_id, int size) {
                errno = 12345;
                EXPECT_EQ(listener->sendEventToServer(message_id, record, size, nullptr, nullptr),
                          0);
                EXPECT_EQ(errno, 12345);
            };
            send(1, 4);
            send(2, 1000);
            send(3, 4);
            EXPECT_EQ(service->take().size(), 3u);
        },
        "^libDtv: the capture ends, for .*/capture.pcapng cannot be written: no room for a whole "
        "message\n$");
    const std::vector<uint8_t> bytes = file();
    EXPECT_EQ(bytes.size(), 1000u);
    EXPECT_EQ(numberAt(bytes, 88 + 36, 4), 1u);
    EXPECT_EQ(numberAt(bytes, 172 + 36, 4), 2u);
}

TEST_F(CaptureFile, EndsWithADiskThatIsFullFromTheStart) {
    inChild(
        [&] {
            limitFiles(60);
            passWithoutACapture();
        },
        "^libDtv: the capture ends, for ");
    EXPECT_EQ(file().size(), 60u);
}

} // namespace

// A replay without a VM: the test is the Java side.
#pragma once

#include "replay/report.h"
#include "replay/service.h"
#include "replay/tests/capture_writer.h"

#include "platform/listener_double.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pthread.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace replay {

// Kinds of messages.
constexpr int kCommand = 1;
constexpr int kAnswer = 2;
constexpr int kEvent = 3;
constexpr int kRefusal = 4;

// Messages whose records the tests write.
constexpr int kStartScan = 0x10000002;     ///< handle
constexpr int kCancelScan = 0x10000003;    ///< handle
constexpr int kSelectChannel = 0x10000006; ///< handle, 2, channel 4, service 2, 2
constexpr int kReleaseSync = 0x10000038;   ///< handle
constexpr int kScanReply = 0x1000004f;     ///< CreateReply: handle 2, 2, result 4

class ReplayTest : public testing::Test {
protected:
    ~ReplayTest() override { stop(); }

    void add(int kind, uint32_t thread_id, const std::string& thread, int id,
             const std::vector<uint8_t>& record, int value = 0) {
        WrittenMessage message{kind, thread_id, thread, id, record};
        message.value = value;
        message.time = time += 1000000;
        writer.add(message);
    }

    /// Begins the replay of what was written.
    void start() {
        std::istringstream file(writer.bytes());
        std::string error;
        std::optional<Recording> recording = readRecording(file, error);
        ASSERT_TRUE(recording.has_value()) << error;
        service = std::make_shared<Service>(std::move(*recording), settings);
        dtv::setServiceEndpoint(service);
    }

    void stop() {
        if (service != nullptr) {
            dtv::setServiceEndpoint(nullptr);
            service->end();
        }
    }

    /// Sends a command; what was returned.
    int send(int id, std::vector<uint8_t> record) {
        return listener->sendEventToServer(id, record.data(), static_cast<int>(record.size()),
                                           nullptr, nullptr);
    }

    /// A thread of that name.
    static std::thread thread(const std::string& name, const std::function<void()>& body) {
        return std::thread([name, body] {
            pthread_setname_np(pthread_self(), name.c_str());
            body();
        });
    }

    /// Runs it on a thread of that name to its end.
    static void on(const std::string& name, const std::function<void()>& body) {
        thread(name, body).join();
    }

    /// The numbers of the events that the listener has had.
    std::vector<int> delivered() {
        const std::lock_guard<std::mutex> lock(listener->mutex);
        std::vector<int> ids;
        for (const platform::Event& event : listener->events) {
            ids.push_back(event.id);
        }
        return ids;
    }

    Outcome finish() { return service->finish(); }

    std::vector<std::string> report() {
        const Outcome outcome = finish();
        const std::vector<std::string> lines =
            reportLines("a.pcapng", service->recording(), outcome);
        EXPECT_LE(lines.size(), 20u);
        for (const std::string& line : lines) {
            EXPECT_LE(line.size(), 80u) << line;
        }
        return lines;
    }

    CaptureWriter writer;
    uint64_t time = 0;
    Settings settings{{0, std::chrono::seconds(10)}, false, nullptr};
    android::sp<platform::ListenerDouble> listener = new platform::ListenerDouble;
    std::shared_ptr<Service> service;
};

} // namespace replay

// A client of the simulator: sends commands through libDtv and keeps the events that come back.
#pragma once

#include "dtv/exchange.h"
#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/reply_records.h"
#include "service/request.h"
#include "simulator.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// An event as it was delivered.
struct Event {
    int id;
    std::vector<uint8_t> bytes;

    /// The record, which must have exactly this size.
    template <class Record>
    Record as() const {
        Record record{};
        EXPECT_EQ(sizeof record, bytes.size()) << "event " << std::hex << id;
        std::memcpy(&record, bytes.data(), std::min(bytes.size(), sizeof record));
        return record;
    }
};

/// The one listener of the process: libDtv has no second one.
class DeskListener : public DtvSvLibListener {
public:
    static DeskListener& instance();

    int recvEventFromServer(int event_id, void* data, int size) override;
    /// Drops all events, and the callback.
    void forget();
    /// Calls `callback` with each event, on the thread that delivers it.
    void setCallback(std::function<void(const Event&)> callback);
    /// Takes the next event; nothing when none comes.
    std::optional<Event> next(std::chrono::milliseconds limit);

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Event> events_;
    std::function<void(const Event&)> callback_;
};

/// A simulator with stations on channels 20, 30 and 40, a hundred times as fast as in reality.
class SimulatorTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    static simulator::Options options();
    /// Connects another simulator to libDtv.
    static void start(simulator::Options options);

    /// Sends a command; what sendEventToServer returned.
    template <class Record>
    int send(int command_id, Record record, TS_DTVSV_SP* references = nullptr) {
        return references == nullptr
                   ? listener().sendEventToServer(command_id, &record, sizeof record, nullptr,
                                                  nullptr)
                   : listener().sendEventToServer(command_id, &record, sizeof record, references,
                                                  nullptr, nullptr);
    }
    int send(int command_id, int handle);
    int send(int command_id, int handle, int value);

    /// Sends a synchronous command; its answer.
    template <class Reply = TS_COMMON_SYNC_REPLY, class Record>
    Reply exchange(int command_id, Record record) {
        Reply reply{};
        int size = 0;
        EXPECT_EQ(0,
                  listener().sendEventToServer(command_id, &record, sizeof record, &reply, &size));
        EXPECT_EQ(static_cast<int>(sizeof reply), size);
        return reply;
    }
    TS_COMMON_SYNC_REPLY exchange(int command_id, int handle);

    /// The next event, which must be this one; others before it are a failure.
    Event expectNext(int event_id);
    /// The next event of this kind; others before it are dropped.
    Event expectLater(int event_id);
    /// The result of the next event of this kind, which must begin as a reply does.
    int resultOf(int event_id, int handle);
    /// Nothing comes for a while (long enough for what takes seconds in reality).
    void expectNothing();

    /// A new session.
    int create();
    /// A new session that receives channel 20, service 0, after its first notifications.
    int createReceiving();

    static DeskListener& listener() { return DeskListener::instance(); }
};

TS_BROADCAST_INFO_REQ serviceOf(int handle, int channel, int service_no = 0);

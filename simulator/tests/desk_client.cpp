#include "desk_client.h"

#include <algorithm>
#include <cinttypes>

namespace {

constexpr std::chrono::milliseconds kLimit{5000};
constexpr std::chrono::milliseconds kSilence{60};

} // namespace

DeskListener& DeskListener::instance() {
    // Never released: delivery may continue until the process ends.
    static DeskListener* const listener = [] {
        auto* made = new DeskListener;
        made->incStrong(made);
        return made;
    }();
    return *listener;
}

int DeskListener::recvEventFromServer(int event_id, void* data, int size) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    const Event event{event_id, {bytes, bytes + size}};
    std::function<void(const Event&)> callback;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        events_.push_back(event);
        arrived_.notify_all();
        callback = callback_;
    }
    if (callback) {
        callback(event);
    }
    return 0;
}

void DeskListener::setCallback(std::function<void(const Event&)> callback) {
    const std::lock_guard<std::mutex> lock(mutex_);
    callback_ = std::move(callback);
}

void DeskListener::forget() {
    const std::lock_guard<std::mutex> lock(mutex_);
    events_.clear();
    callback_ = nullptr;
}

std::optional<Event> DeskListener::next(std::chrono::milliseconds limit) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (!arrived_.wait_for(lock, limit, [this] { return !events_.empty(); })) {
        return std::nullopt;
    }
    Event event = std::move(events_.front());
    events_.pop_front();
    return event;
}

simulator::Options SimulatorTest::options() {
    simulator::Options options;
    options.plan.stations = {{20, 0, 509142857, "Um, Dois"},
                             {20, 1, 509142857, "Outro"},
                             {30, 0, 569142857, "Três"},
                             {40, 0, 629142857, ""}};
    options.time_scale = 0.01;
    return options;
}

void SimulatorTest::start(simulator::Options options) {
    dtv::setServiceEndpoint(std::make_shared<simulator::Simulator>(std::move(options)));
}

void SimulatorTest::SetUp() {
    listener();
    start(options());
}

void SimulatorTest::TearDown() {
    dtv::setServiceEndpoint(nullptr);
    EXPECT_TRUE(dtv::waitUntilDelivered(kLimit));
    listener().forget();
}

int SimulatorTest::send(int command_id, int handle) {
    return send(command_id, TS_HANDLE_REQ{static_cast<uint16_t>(handle)});
}

int SimulatorTest::send(int command_id, int handle, int value) {
    TS_ONE_VALUE_REQ record{};
    record.handle = static_cast<uint16_t>(handle);
    record.value = static_cast<uint8_t>(value);
    return send(command_id, record);
}

TS_COMMON_SYNC_REPLY SimulatorTest::exchange(int command_id, int handle) {
    return exchange(command_id, TS_HANDLE_REQ{static_cast<uint16_t>(handle)});
}

Event SimulatorTest::expectNext(int event_id) {
    const std::optional<Event> event = listener().next(kLimit);
    if (!event) {
        ADD_FAILURE() << "no event came, expected " << std::hex << event_id;
        return {event_id, {}};
    }
    EXPECT_EQ(event_id, event->id) << std::hex << "expected " << event_id << ", got " << event->id;
    return *event;
}

Event SimulatorTest::expectLater(int event_id) {
    const auto end = std::chrono::steady_clock::now() + kLimit;
    while (std::chrono::steady_clock::now() < end) {
        const std::optional<Event> event = listener().next(kLimit);
        if (!event) {
            break;
        }
        if (event->id == event_id) {
            return *event;
        }
    }
    ADD_FAILURE() << "event " << std::hex << event_id << " did not come";
    return {event_id, {}};
}

int SimulatorTest::resultOf(int event_id, int handle) {
    const Event event = expectLater(event_id);
    TS_COMMON_REPLY reply{};
    EXPECT_LE(sizeof reply, event.bytes.size());
    std::memcpy(&reply, event.bytes.data(), std::min(event.bytes.size(), sizeof reply));
    EXPECT_EQ(handle, reply.handle);
    return reply.result;
}

void SimulatorTest::expectNothing() {
    const std::optional<Event> event = listener().next(kSilence);
    EXPECT_FALSE(event.has_value()) << "event " << std::hex << event->id;
}

int SimulatorTest::create() {
    TS_CREATE_REQ wanted{};
    wanted.max_delay_time = 100;
    EXPECT_EQ(0, send(command_id::kCreate, wanted));
    const auto reply = expectLater(event_id::kCreateReply).as<TS_COMMON_REPLY>();
    EXPECT_EQ(0, reply.result);
    return reply.handle;
}

int SimulatorTest::createReceiving() {
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
    EXPECT_EQ(0, resultOf(event_id::kSelectChannelReply, handle));
    return handle;
}

TS_BROADCAST_INFO_REQ serviceOf(int handle, int channel, int service_no) {
    TS_BROADCAST_INFO_REQ record{};
    record.handle = static_cast<uint16_t>(handle);
    record.physical_channel = channel;
    record.service_no = static_cast<uint16_t>(service_no);
    return record;
}

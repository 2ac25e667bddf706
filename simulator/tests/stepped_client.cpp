#include "stepped_client.h"

#include "script/script_text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int64_t kLongest = 7200000; ///< milliseconds: two hours
constexpr std::chrono::milliseconds kAtOnce{0};

} // namespace

void SteppedTest::SetUp() {
    listener();
    follow(R"({"version": 1})");
}

void SteppedTest::TearDown() {
    service_.reset();
    SimulatorTest::TearDown();
}

void SteppedTest::follow(const std::string& script, uint32_t seed) {
    simulator::Options modified = options();
    modified.seed = seed;
    modified.script = scriptOf(script);
    follow(std::move(modified));
}

void SteppedTest::follow(simulator::Options options) {
    options.time_scale = 1;
    options.pace = simulator::Pace::kStepped;
    service_ = std::make_shared<simulator::Simulator>(std::move(options));
    dtv::setServiceEndpoint(service_);
    arrived_.clear();
    listener().forget();
}

void SteppedTest::collect(std::vector<TimedEvent>& events) {
    while (std::optional<Event> event = listener().next(kAtOnce)) {
        events.push_back({now(), std::move(*event)});
    }
}

TimedEvent SteppedTest::await(int event_id) {
    const int64_t limit = now() + kLongest;
    do {
        collect(arrived_);
        const auto found =
            std::find_if(arrived_.begin(), arrived_.end(), [event_id](const TimedEvent& arrived) {
                return arrived.event.id == event_id;
            });
        if (found != arrived_.end()) {
            TimedEvent wanted = std::move(*found);
            arrived_.erase(arrived_.begin(), found + 1);
            return wanted;
        }
        arrived_.clear();
    } while (now() < limit && service_->advance());
    ADD_FAILURE() << "event " << std::hex << event_id << " did not come";
    return {-1, {event_id, {}}};
}

int SteppedTest::awaitResult(int event_id) {
    const Event event = await(event_id).event;
    TS_COMMON_REPLY reply{};
    EXPECT_LE(sizeof reply, event.bytes.size());
    std::memcpy(&reply, event.bytes.data(), std::min(event.bytes.size(), sizeof reply));
    return reply.result;
}

std::vector<TimedEvent> SteppedTest::until(int64_t moment) {
    std::vector<TimedEvent> events;
    std::swap(events, arrived_);
    do {
        collect(events);
    } while (now() < moment && service_->advance());
    collect(events);
    return events;
}

int SteppedTest::exchangeResult(int command_id, int handle) {
    TS_COMMON_SYNC_REPLY reply{};
    EXPECT_EQ(0, exchangeInto(reply, command_id, TS_HANDLE_REQ{static_cast<uint16_t>(handle)}));
    return reply.return_value;
}

int SteppedTest::openSession() {
    EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
    const auto reply = await(event_id::kCreateReply).event.as<TS_COMMON_REPLY>();
    EXPECT_EQ(0, reply.result);
    return reply.handle;
}

int SteppedTest::openReceiving() {
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
    EXPECT_EQ(0, awaitResult(event_id::kSelectChannelReply));
    return handle;
}

size_t countOf(const std::vector<TimedEvent>& events, int event_id) {
    return static_cast<size_t>(
        std::count_if(events.begin(), events.end(), [event_id](const TimedEvent& arrived) {
            return arrived.event.id == event_id;
        }));
}

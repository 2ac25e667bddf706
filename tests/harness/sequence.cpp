#include "harness/sequence.h"

#include "harness/read_back.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace harness {

struct Sequence::Shared {
    std::mutex mutex;
    std::vector<std::string> steps;
    std::function<void(const dtv::Command&)> on_send;
    std::vector<uint8_t> reply;

    void add(const std::string& step) {
        std::lock_guard lock(mutex);
        steps.push_back(step);
    }
};

namespace {

class Log : public dtv::LogSink {
public:
    explicit Log(std::shared_ptr<Sequence::Shared> to) : shared(std::move(to)) {}
    void write(const dtv::LogLine& line) override {
        checkReadBack(line);
        const TraceLine parts = parseTrace(line);
        const std::string level = parts.level.substr(0, parts.level.find(' '));
        shared->add(level + " " + parts.function + "|" + parts.message);
    }

private:
    std::shared_ptr<Sequence::Shared> shared;
};

class Service : public dtv::ServiceEndpoint {
public:
    explicit Service(std::shared_ptr<Sequence::Shared> to) : shared(std::move(to)) {}
    int onCommand(const dtv::Command& command) override {
        char step[32];
        std::snprintf(step, sizeof step, "send %x", static_cast<unsigned>(command.message_id));
        shared->add(step);
        if (shared->on_send) {
            shared->on_send(command);
        }
        return 0;
    }
    int onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) override {
        const size_t room = static_cast<size_t>(reply.capacity);
        const size_t bytes = std::min(shared->reply.size(), room);
        if (bytes != 0) {
            std::memcpy(reply.data, shared->reply.data(), bytes);
            *reply.size = static_cast<int>(bytes);
        }
        return onCommand(command);
    }

private:
    std::shared_ptr<Sequence::Shared> shared;
};

} // namespace

Sequence::Sequence() : shared(std::make_shared<Shared>()) {
    dtv::setLogSink(std::make_shared<Log>(shared));
    dtv::setLogLevelMask(0xffff);
    dtv::setServiceEndpoint(std::make_shared<Service>(shared));
    observed = std::make_unique<ObservedJni>(
        [to = shared](const JniCall& call) { to->add(std::string("JNI ") + call.function); });
}

Sequence::~Sequence() {
    observed.reset();
    dtv::setServiceEndpoint(nullptr);
    dtv::setLogSink(nullptr);
    dtv::setLogLevelMask(2);
}

void Sequence::add(const std::string& step) {
    shared->add(step);
}

std::vector<std::string> Sequence::take() {
    std::lock_guard lock(shared->mutex);
    return std::exchange(shared->steps, {});
}

void Sequence::onSend(std::function<void(const dtv::Command&)> work) {
    shared->on_send = std::move(work);
}

void Sequence::setReply(std::vector<uint8_t> bytes) {
    shared->reply = std::move(bytes);
}

size_t placeOf(const std::vector<std::string>& steps, const std::string& text, size_t from) {
    for (size_t place = from; place < steps.size(); ++place) {
        if (steps[place].compare(0, text.size(), text) == 0) {
            return place;
        }
    }
    ADD_FAILURE() << "no step \"" << text << "\" from " << from << " on";
    return steps.size();
}

} // namespace harness

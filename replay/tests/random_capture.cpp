#include "replay/tests/random_capture.h"

#include "replay/tests/capture_writer.h"
#include "replay/tests/random_messages.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace replay {
namespace {

constexpr int kCommand = 1;
constexpr int kAnswer = 2;
constexpr int kEvent = 3;
constexpr int kRefusal = 4;

/// A thread of the Java side, or one that delivers events, and where it is.
struct Actor {
    uint32_t id;
    std::string name;
    bool delivers;
    std::optional<WrittenMessage> answer{};  ///< of the command that it has sent
    std::optional<WrittenMessage> refusal{}; ///< of the event that it has delivered
    bool in_callback = false;
};

class Session {
public:
    Session(uint64_t seed, size_t messages)
        : random_(seed), commands_(random_), messages_(messages),
          writer_("city=random\nseed=" + std::to_string(seed)) {
        constexpr const char* kNames[] = {"desk", "ui", "pool-1-thread-1", "pool-1-thread-2"};
        const uint32_t senders = 1 + random_.below(4);
        for (uint32_t i = 0; i < senders; ++i) {
            actors_.push_back({100 + i, kNames[random_.once(3) ? 0 : i], false});
        }
        const uint32_t deliverers = 1 + random_.below(3);
        for (uint32_t i = 0; i < deliverers; ++i) {
            actors_.push_back({200 + i, "DtvEvent-" + std::to_string(i + 1), true});
        }
    }

    std::string write() {
        send(actors_.front(), commands_.makeCreate());
        while (written_ < messages_) {
            act(actors_[random_.below(static_cast<uint32_t>(actors_.size()))]);
        }
        for (Actor& actor : actors_) {
            complete(actor);
        }
        return writer_.bytes();
    }

private:
    void act(Actor& actor) {
        if (actor.answer || actor.refusal) {
            complete(actor);
        } else if (!actor.delivers || (actor.in_callback && random_.once(2))) {
            send(actor, commands_.make());
        } else {
            deliver(actor);
        }
    }

    /// Writes what a thread waits for.
    void complete(Actor& actor) {
        for (std::optional<WrittenMessage>* message : {&actor.answer, &actor.refusal}) {
            if (*message) {
                write(**message);
                message->reset();
            }
        }
    }

    void send(Actor& actor, const RandomCommand& command) {
        WrittenMessage message{kCommand, actor.id, actor.name, command.id, command.record};
        message.surfaces = command.surfaces;
        write(message);
        const bool waits = command.reply_capacity > 0;
        if (!waits && !random_.once(6)) {
            return;
        }
        WrittenMessage answer{kAnswer, actor.id, actor.name, command.id, {}};
        if (!waits || random_.once(6)) {
            // The answer of a command that was taken is captured only when its sender waits for it.
            answer.value = random_.once(2) ? 1 : -1 - static_cast<int>(random_.below(1000));
        }
        answer.size = 0;
        if (waits) {
            const int capacity = command.reply_capacity;
            // More than there is room for, less than nothing, or what fits.
            answer.size = random_.once(3) ? capacity : static_cast<int>(random_.below(30)) - 8;
            if (answer.size == -1) {
                answer.size = -2; // the writer puts the record's size in place of -1
            }
            answer.record =
                random_.bytes(static_cast<size_t>(std::clamp(answer.size, 0, capacity)));
        }
        actor.answer = answer;
    }

    void deliver(Actor& actor) {
        const RandomEvent event = makeEvent(random_);
        WrittenMessage message{kEvent, actor.id, actor.name, event.id, event.record};
        message.size = event.size != -1 ? event.size : -2;
        write(message);
        actor.in_callback = event.has_callback;
        if (event.refused) {
            actor.refusal = WrittenMessage{kRefusal, actor.id, actor.name, event.id, {}};
            actor.refusal->size = 0;
            actor.refusal->value = 1;
        }
    }

    void write(WrittenMessage message) {
        message.time = ++written_ * 1000;
        writer_.add(message);
    }

    Random random_;
    RandomCommands commands_;
    const size_t messages_;
    CaptureWriter writer_;
    std::vector<Actor> actors_;
    size_t written_ = 0;
};

} // namespace

std::string randomCapture(uint64_t seed, size_t messages) {
    return Session(seed, messages).write();
}

} // namespace replay

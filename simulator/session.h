// What the service remembers of one session.
#pragma once

#include "simulator/channel_plan.h"

#include <gui/Surface.h>
#include <utils/StrongPointer.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace simulator {

/// What replies and notifications carry as their result; 0 is the only good one.
enum Result : int32_t {
    kDone = 0,
    kNotNow = 1,         ///< makes no sense in the state of the session
    kNoSuchThing = 5,    ///< names a channel, a recording or a value that does not exist
    kUnknownHandle = -1, ///< there is no such session
};

/// What a session does. One thing at a time: it has one tuner and one decoder.
enum class Activity {
    kIdle,
    kScanning,
    kSearching,
    kReceiving,
    kPlaying,
};

/// The planes of the picture, in the order of a command's surfaces; the numbers are those by which
/// a command releases one.
enum Plane : size_t {
    kVideo = 0,
    kCaptions = 1,
    kBml = 2,
    kPlanes = 3,
};

/// Whether captions or a browser run.
enum class Running : uint8_t {
    kOff = 0,
    kOn = 1,
    kSuspended = 2,
};

/// A recording while it is made.
struct RecordingUnderWay {
    uint8_t medium;
    std::chrono::milliseconds begun; ///< on the service's clock
    uint64_t number;                 ///< the recordings of a session are counted
    /// How far it was when the signal first turned bad: there it is damaged.
    std::optional<std::chrono::milliseconds> damaged_at{};
};

/// The playback of a recording.
struct Playback {
    uint8_t medium = 0;
    uint16_t program_no = 0;
    std::chrono::milliseconds length{0};
    std::optional<std::chrono::milliseconds> damaged_at{};
    std::chrono::milliseconds position{0}; ///< at `since`
    std::chrono::milliseconds since{0};    ///< on the service's clock
    double speed = 0;                      ///< backwards when negative; 0 when paused
    uint64_t change = 0;                   ///< what it was told is counted
    std::chrono::seconds status_period{1};
};

/// The browser of data broadcasting.
struct Browser {
    Running running = Running::kOff;
    bool tv_link = false; ///< shows a bookmarked page instead of the station's document
    size_t next_request = 0;
    bool awaits_answer = false; ///< to the request before next_request
    uint64_t document = 0;      ///< the documents shown are counted
};

/// How the streams are presented when reception begins, and whether so at all.
struct FirstComponent {
    bool captions = false;
    bool bml = false;
};

struct Session {
    uint16_t handle = 0;
    uint16_t max_delay_time = 0;

    Activity activity = Activity::kIdle;
    /// Grows whenever the session takes up something else. Steps of what it did before compare it
    /// and fall silent.
    uint64_t work = 0;
    /// What is received. Set while the session receives.
    const Station* station = nullptr;
    std::optional<RecordingUnderWay> recording;
    uint64_t recordings = 0;
    /// Set while the session plays.
    Playback playback;

    /// The service's own references: a surface is drawn on until its plane is released.
    std::array<android::sp<android::Surface>, kPlanes> surfaces;
    FirstComponent first_component;
    Running captions = Running::kOff;
    Browser browser;

    uint8_t lna_mode = 0;
    bool tuner_log = false;

    /// Replies leave in the order of their commands: none before this moment.
    std::chrono::steady_clock::time_point last_reply{};

    /// Whether there is a programme to present, from the air or from a recording.
    bool presents() const {
        return activity == Activity::kReceiving || activity == Activity::kPlaying;
    }
};

/// What became of a command: its result, and what its reply carries besides.
struct Answer {
    int32_t result = kDone;
    uint32_t first = 0;  ///< channel, number of channels, programme number, destination, status
    uint16_t second = 0; ///< service number, object number
    /// How long the service takes for it, beyond its handling of messages.
    std::chrono::milliseconds work{0};
    /// What goes on when the reply has left, if the session still exists then.
    std::function<void(Session&)> then{};
};

/// An answer that carries nothing but a result.
inline Answer answerWith(Result result) {
    Answer answer;
    answer.result = result;
    return answer;
}

} // namespace simulator

// The state of one session.
#pragma once

#include "on_air/channel_plan.h"
#include "service/running.h"

#include <gui/Surface.h>
#include <utils/StrongPointer.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace simulator {

/// The activity of a session. One at a time: it has one tuner and one decoder.
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

/// A recording while it is made.
struct RecordingUnderWay {
    uint8_t medium;
    std::chrono::milliseconds begun; ///< on the service's clock
    uint64_t number;                 ///< counts the recordings of the session
    /// Its length when the signal first turned bad: there it is damaged.
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
    uint64_t changes = 0;                  ///< of position or speed by a command or at an end
    std::chrono::seconds status_period{1};
};

/// The browser of data broadcasting.
struct Browser {
    Running running = Running::kOff;
    bool tv_link = false; ///< shows a bookmarked page instead of the station's document
    size_t next_request = 0;
    bool awaits_answer = false; ///< to the request before next_request
    uint64_t document = 0;      ///< counts the documents shown and ended
};

/// Which streams are presented when reception begins.
struct FirstComponent {
    bool captions = false;
    bool bml = false;
};

struct Session {
    uint16_t handle = 0;
    uint16_t max_delay_time = 0;

    Activity activity = Activity::kIdle;
    /// Generation counter, incremented on every change of activity. A scheduled step does nothing
    /// if it has changed since.
    uint64_t generation = 0;
    /// The station that is received. Set while the session receives.
    const Station* station = nullptr;
    std::optional<RecordingUnderWay> recording;
    uint64_t recordings = 0; ///< counts those begun
    /// Set while the session plays.
    Playback playback;

    /// The service's own references: a surface is in use until its plane is released.
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

} // namespace simulator

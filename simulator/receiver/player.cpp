#include "receiver/player.h"

#include "receiver/activity.h"
#include "receiver/captions.h"
#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/status_records.h"
#include "service/service.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace simulator {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kOpening{150};
constexpr milliseconds kPicture{67}; ///< one of fifteen in a second
constexpr milliseconds kPauseStep{1000};

/// The values of a playback's status.
enum PlayStatus : uint8_t {
    kPlaying = 1,
    kPaused = 2,
    kFast = 3,
};

/// The values of play_event.
enum PlayEvent : int32_t {
    kEndReached = 1,
    kBeginningReached = 2,
};

/// The value of play_error.
constexpr uint32_t kDamaged = 1;

enum PlayDirection : uint8_t {
    kForward = 0,
    kBackward = 1,
};

milliseconds lengthOf(const Session& session) {
    return session.playback.length;
}

/// The position of the playback now, between the ends of the recording.
milliseconds positionNow(const Service& service, const Session& session) {
    const Playback& playback = session.playback;
    const std::chrono::duration<double, std::milli> moved =
        (service.now() - playback.since) * playback.speed;
    const milliseconds position =
        playback.position + std::chrono::duration_cast<milliseconds>(moved);
    return std::clamp(position, milliseconds{0}, lengthOf(session));
}

/// Plays from a position at a speed; 0 pauses.
void playFrom(Service& service, Session& session, milliseconds position, double speed) {
    Playback& playback = session.playback;
    playback.position = std::clamp(position, milliseconds{0}, lengthOf(session));
    playback.since = service.now();
    playback.speed = speed;
    ++playback.changes;
}

bool isPaused(const Session& session) {
    return session.playback.speed == 0;
}

PLAY_STATUS_INFO statusNow(const Service& service, const Session& session) {
    const milliseconds position = positionNow(service, session);
    PLAY_STATUS_INFO info{};
    info.status = isPaused(session) ? kPaused : session.playback.speed == 1 ? kPlaying : kFast;
    info.current_time =
        static_cast<uint32_t>(std::chrono::duration_cast<seconds>(position).count());
    info.eof_flag = position == lengthOf(session) ? 1 : 0;
    return info;
}

void notifyStatus(Service& service, const Session& session) {
    TS_PLAY_STATUS_NOTIFY notify{};
    notify.handle = session.handle;
    notify.play_status = statusNow(service, session);
    service.send(event_id::kPlayStatusNotify, notify);
}

void notifyEvent(Service& service, const Session& session, PlayEvent event) {
    TS_PLAY_EVENT_NOTIFY notify{};
    notify.handle = session.handle;
    notify.play_status = statusNow(service, session);
    notify.play_event = event;
    service.send(event_id::kPlayEventNotify, notify);
}

/// At the end the playback pauses; at the beginning it plays forward again.
void stopAtEnd(Service& service, Session& session) {
    const bool forward = session.playback.speed > 0;
    playFrom(service, session, positionNow(service, session), forward ? 0 : 1);
    notifyStatus(service, session);
    notifyEvent(service, session, forward ? kEndReached : kBeginningReached);
}

void notifyDamage(Service& service, const Session& session) {
    TS_PLAY_ERROR_NOTIFY notify{};
    notify.handle = session.handle;
    notify.play_error = kDamaged;
    service.send(event_id::kPlayErrorNotify, notify);
}

/// The time that the playback takes for a part of the recording.
milliseconds timeFor(const Playback& playback, milliseconds part) {
    return milliseconds(static_cast<int64_t>(
        std::ceil(static_cast<double>(part.count()) / std::abs(playback.speed))));
}

/// Schedules the notifications of the damage and of the end that the playback will reach.
void scheduleEnds(Service& service, Session& session) {
    const Playback& playback = session.playback;
    const auto unchanged = [generation = session.generation,
                            changes = playback.changes](const Session& now) {
        return now.generation == generation && now.playback.changes == changes;
    };
    if (!isPaused(session)) {
        const milliseconds position = positionNow(service, session);
        const milliseconds to_go = playback.speed > 0 ? lengthOf(session) - position : position;
        if (playback.speed > 0 && playback.damaged_at && position < *playback.damaged_at) {
            service.later(session, timeFor(playback, *playback.damaged_at - position),
                          [&service, unchanged](Session& now) {
                              if (unchanged(now)) {
                                  notifyDamage(service, now);
                              }
                          });
        }
        service.later(session, timeFor(playback, to_go), [&service, unchanged](Session& now) {
            if (unchanged(now)) {
                stopAtEnd(service, now);
                scheduleEnds(service, now);
            }
        });
    }
}

void notifyRegularly(Service& service, Session& session, uint64_t generation) {
    if (session.generation != generation) {
        return;
    }
    notifyStatus(service, session);
    service.later(session, session.playback.status_period, [&service, generation](Session& now) {
        notifyRegularly(service, now, generation);
    });
}

/// Changes the playback, and notifies its status.
Answer change(Service& service, Session& session, milliseconds position, double speed) {
    playFrom(service, session, position, speed);
    scheduleEnds(service, session);
    Answer answer;
    answer.then = [&service, generation = session.generation](Session& now) {
        if (now.generation == generation) {
            notifyStatus(service, now);
        }
    };
    return answer;
}

/// One step of a paused playback.
Answer step(Service& service, Session& session, uint8_t direction, milliseconds size) {
    if (direction > kBackward) {
        return answerWith(kNoSuchThing);
    }
    if (session.activity != Activity::kPlaying || !isPaused(session)) {
        return answerWith(kNotNow);
    }
    const milliseconds move = direction == kForward ? size : -size;
    return change(service, session, session.playback.position + move, 0);
}

} // namespace

Answer startPlay(Service& service, Session& session, const Request& request) {
    const auto& wanted = request.as<TS_START_PLAY_REQ>();
    const Recording* recording = service.recordings().find(wanted.medium, wanted.program_number);
    if (recording == nullptr) {
        return answerWith(kNoSuchThing);
    }
    if (session.activity != Activity::kIdle) {
        return answerWith(kNotNow);
    }
    const uint64_t generation = startActivity(service, session, Activity::kPlaying);
    Playback& playback = session.playback;
    playback = {};
    playback.medium = wanted.medium;
    playback.program_no = wanted.program_number;
    playback.length = recording->length;
    playback.damaged_at = recording->damaged_at;
    playback.status_period = seconds{wanted.interval != 0 ? wanted.interval : 1};
    playFrom(service, session, wanted.resume != 0 ? recording->left_at : milliseconds{0}, 0);

    Answer answer;
    answer.duration = kOpening;
    answer.then = [&service, generation, paused = wanted.pause != 0](Session& now) {
        if (now.generation != generation) {
            return;
        }
        if (!paused) {
            playFrom(service, now, now.playback.position, 1);
        }
        beginCaptions(service, now);
        notifyRegularly(service, now, generation);
        scheduleEnds(service, now);
    };
    return answer;
}

Answer changePlaySpeed(Service& service, Session& session, const Request& request) {
    const auto& wanted = request.as<TS_SPECIAL_PLAY_REQ>();
    if (wanted.direction > kBackward || wanted.numerator == 0 || wanted.denominator == 0) {
        return answerWith(kNoSuchThing);
    }
    if (session.activity != Activity::kPlaying || isPaused(session)) {
        return answerWith(kNotNow);
    }
    const double speed = static_cast<double>(wanted.numerator) / wanted.denominator;
    return change(service, session, positionNow(service, session),
                  wanted.direction == kForward ? speed : -speed);
}

Answer pausePlay(Service& service, Session& session, const Request&) {
    if (session.activity != Activity::kPlaying || isPaused(session)) {
        return answerWith(kNotNow);
    }
    return change(service, session, positionNow(service, session), 0);
}

Answer restartPlay(Service& service, Session& session, const Request&) {
    if (session.activity != Activity::kPlaying || session.playback.speed == 1) {
        return answerWith(kNotNow);
    }
    return change(service, session, positionNow(service, session), 1);
}

Answer skipPlay(Service& service, Session& session, const Request& request) {
    const auto& wanted = request.as<TS_SKIP_PLAY_REQ>();
    if (wanted.direction > kBackward || wanted.skipsec < 0) {
        return answerWith(kNoSuchThing);
    }
    if (session.activity != Activity::kPlaying) {
        return answerWith(kNotNow);
    }
    const milliseconds size = seconds{wanted.skipsec};
    const milliseconds move = wanted.direction == kForward ? size : -size;
    return change(service, session, positionNow(service, session) + move, session.playback.speed);
}

Answer frameSlidePlay(Service& service, Session& session, const Request& request) {
    return step(service, session, request.as<TS_ONE_VALUE_REQ>().value, kPicture);
}

Answer movePausePosition(Service& service, Session& session, const Request& request) {
    return step(service, session, request.as<TS_ONE_VALUE_REQ>().value, kPauseStep);
}

Answer terminatePlay(Service& service, Session& session, const Request&) {
    if (session.activity != Activity::kPlaying) {
        return answerWith(kNotNow);
    }
    const Playback& playback = session.playback;
    if (Recording* recording = service.recordings().find(playback.medium, playback.program_no)) {
        recording->left_at = positionNow(service, session);
    }
    startActivity(service, session, Activity::kIdle);
    return {};
}

} // namespace simulator

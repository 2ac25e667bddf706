#include "receiver/tuner.h"

#include "receiver/activity.h"
#include "receiver/announcement.h"
#include "receiver/station_records.h"
#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/programme_records.h"
#include "service/service.h"

#include <chrono>

namespace simulator {
namespace {

using std::chrono::milliseconds;

constexpr int kChannels = kLastChannel - kFirstChannel + 1;
constexpr milliseconds kTryChannel{8}; ///< the time of a scan or search for one channel
constexpr milliseconds kLock{120};     ///< from a selection to a picture
constexpr milliseconds kUnlock{20};    ///< from the end of reception to a free tuner

/// The direction of a search.
enum Operation : uint8_t {
    kUp = 0,
    kDown = 1,
};

void scanChannel(Service& service, Session& session, uint64_t generation, int channel, int found) {
    if (session.generation != generation) {
        return;
    }
    if (channel > kLastChannel) {
        startActivity(service, session, Activity::kIdle);
        TS_TERMINATE_SCAN_NOTIFY end{};
        end.handle = session.handle;
        end.result = kDone;
        service.send(event_id::kTerminateScanNotify, end);
        return;
    }
    const Station* station = service.plan().find(channel, 0);
    found += station != nullptr ? 1 : 0;
    service.send(event_id::kScanNotify, scanNotify(session.handle, channel, station, found));
    if (station != nullptr) {
        service.send(event_id::kServiceInfoNotify, serviceInfo(session.handle, *station));
    }
    service.later(session, kTryChannel, [&service, generation, channel, found](Session& now) {
        scanChannel(service, now, generation, channel + 1, found);
    });
}

void searchChannel(Service& service, Session& session, uint64_t generation, int channel, int step,
                   int looked_at) {
    if (session.generation != generation) {
        return;
    }
    TS_TERMINATE_SEARCH_CHANNEL_NOTIFY end{};
    end.handle = session.handle;
    if (looked_at == kChannels) {
        startActivity(service, session, Activity::kIdle);
        end.result = kNoSuchThing;
        service.send(event_id::kTerminateSearchChannelNotify, end);
        return;
    }
    channel = kFirstChannel + (channel - kFirstChannel + step + kChannels) % kChannels;
    TS_START_SEARCH_CHANNEL_NOTIFY looking{};
    looking.handle = session.handle;
    looking.physical_channel = static_cast<uint32_t>(channel);
    service.send(event_id::kStartSearchChannelNotify, looking);

    const Station* station = service.plan().find(channel, 0);
    service.later(session, kTryChannel,
                  [&service, generation, channel, step, looked_at, station](Session& now) {
                      if (station == nullptr || now.generation != generation) {
                          searchChannel(service, now, generation, channel, step, looked_at + 1);
                          return;
                      }
                      startActivity(service, now, Activity::kReceiving);
                      now.station = station;
                      TS_TERMINATE_SEARCH_CHANNEL_NOTIFY end{};
                      end.handle = now.handle;
                      end.physical_channel = static_cast<uint32_t>(station->physical_channel);
                      end.service_no = static_cast<uint16_t>(station->service_no);
                      service.send(event_id::kTerminateSearchChannelNotify, end);
                      announceBroadcast(service, now);
                  });
}

Answer receive(Service& service, Session& session, const TS_BROADCAST_INFO_REQ& wanted) {
    Answer answer;
    answer.reply.physical_channel = static_cast<uint32_t>(wanted.physical_channel);
    answer.reply.service_no = wanted.service_no;
    answer.duration = kLock;
    const Station* station = service.plan().find(wanted.physical_channel, wanted.service_no);
    if (station == nullptr) {
        // The reception so far continues.
        answer.reply.result = kNoSuchThing;
        return answer;
    }
    const uint64_t generation = startActivity(service, session, Activity::kReceiving);
    session.station = station;
    answer.then = [&service, generation](Session& now) {
        if (now.generation == generation) {
            announceBroadcast(service, now);
        }
    };
    return answer;
}

/// A result, with the service that the command named.
Answer refuse(const TS_BROADCAST_INFO_REQ& wanted, Result result) {
    Answer answer = answerWith(result);
    answer.reply.physical_channel = static_cast<uint32_t>(wanted.physical_channel);
    answer.reply.service_no = wanted.service_no;
    return answer;
}

} // namespace

Answer release(Service&, Session&, const Request&) {
    return {};
}

Answer startScan(Service& service, Session& session, const Request&) {
    if (session.activity != Activity::kIdle) {
        return answerWith(kNotNow);
    }
    const uint64_t generation = startActivity(service, session, Activity::kScanning);
    Answer answer;
    answer.reply.channel_count = kChannels;
    answer.then = [&service, generation](Session& now) {
        scanChannel(service, now, generation, kFirstChannel, 0);
    };
    return answer;
}

Answer cancelScan(Service& service, Session& session, const Request&) {
    if (session.activity != Activity::kScanning) {
        return answerWith(kNotNow);
    }
    startActivity(service, session, Activity::kIdle);
    return {};
}

Answer startReceiving(Service& service, Session& session, const Request& request) {
    const auto& wanted = request.as<TS_BROADCAST_INFO_REQ>();
    return session.activity == Activity::kIdle ? receive(service, session, wanted)
                                               : refuse(wanted, kNotNow);
}

Answer terminateReceiving(Service& service, Session& session, const Request&) {
    if (session.activity != Activity::kReceiving || session.recording) {
        return answerWith(kNotNow);
    }
    startActivity(service, session, Activity::kIdle);
    Answer answer;
    answer.duration = kUnlock;
    return answer;
}

Answer selectChannel(Service& service, Session& session, const Request& request) {
    const auto& wanted = request.as<TS_BROADCAST_INFO_REQ>();
    return canTune(session) ? receive(service, session, wanted) : refuse(wanted, kNotNow);
}

Answer startSearch(Service& service, Session& session, const Request& request) {
    const auto& from = request.as<TS_SEARCH_CHANNEL_REQ>();
    if (!canTune(session)) {
        return answerWith(kNotNow);
    }
    if (from.channel_operation > kDown || from.physical_channel < kFirstChannel ||
        from.physical_channel > kLastChannel) {
        return answerWith(kNoSuchThing);
    }
    const uint64_t generation = startActivity(service, session, Activity::kSearching);
    const int step = from.channel_operation == kUp ? 1 : -1;
    const int channel = from.physical_channel;
    Answer answer;
    answer.then = [&service, generation, channel, step](Session& now) {
        searchChannel(service, now, generation, channel, step, 0);
    };
    return answer;
}

Answer cancelSearch(Service& service, Session& session, const Request&) {
    if (session.activity != Activity::kSearching) {
        return answerWith(kNotNow);
    }
    startActivity(service, session, Activity::kIdle);
    return {};
}

} // namespace simulator

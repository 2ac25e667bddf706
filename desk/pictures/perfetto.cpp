#include "desk/pictures/perfetto.h"

#include "desk/pictures/protobuf.h"
#include "desk/show/names.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace pictures {
namespace {

// The public field numbers of the trace format, of the messages that are written here.
namespace trace {
constexpr unsigned kPacket = 1;
}
namespace packet {
constexpr unsigned kClockSnapshot = 6;
constexpr unsigned kTimestamp = 8;
constexpr unsigned kSequence = 10;
constexpr unsigned kTrackEvent = 11;
constexpr unsigned kSequenceFlags = 13;
constexpr unsigned kAndroidLog = 39;
constexpr unsigned kTrackDescriptor = 60;
} // namespace packet
namespace clock_snapshot {
constexpr unsigned kClock = 1;
constexpr unsigned kClockId = 1;
constexpr unsigned kTime = 2;
constexpr uint64_t kRealTime = 1;
constexpr uint64_t kBootTime = 6;
} // namespace clock_snapshot
namespace track {
constexpr unsigned kUuid = 1;
constexpr unsigned kName = 2;
constexpr unsigned kProcess = 3;
constexpr unsigned kThread = 4;
constexpr unsigned kParent = 5;
constexpr unsigned kCounter = 8;
constexpr unsigned kProcessPid = 1;
constexpr unsigned kProcessName = 6;
constexpr unsigned kThreadPid = 1;
constexpr unsigned kThreadTid = 2;
constexpr unsigned kThreadName = 5;
constexpr unsigned kCounterUnitName = 6;
} // namespace track
namespace event {
constexpr unsigned kAnnotation = 4;
constexpr unsigned kType = 9;
constexpr unsigned kTrack = 11;
constexpr unsigned kCategory = 22;
constexpr unsigned kName = 23;
constexpr unsigned kCounterValue = 30;
constexpr unsigned kFlow = 47;
constexpr unsigned kLastFlow = 48;
constexpr uint64_t kBegin = 1;
constexpr uint64_t kEnd = 2;
constexpr uint64_t kCounter = 4;
constexpr unsigned kAnnotationInteger = 4;
constexpr unsigned kAnnotationText = 6;
constexpr unsigned kAnnotationName = 10;
} // namespace event
namespace android_log {
constexpr unsigned kEvent = 1;
constexpr unsigned kPid = 2;
constexpr unsigned kTid = 3;
constexpr unsigned kTime = 5;
constexpr unsigned kTag = 6;
constexpr unsigned kPriority = 7;
constexpr unsigned kText = 8;
} // namespace android_log

/// All packets are of one sequence; the first one clears what a reader knew before.
constexpr uint64_t kSequence = 1;
constexpr uint64_t kCleared = 1;

// Tracks by number.
constexpr uint64_t kProcessTrack = 1; ///< and one for each further run of the process
constexpr uint64_t kFirstThreadTrack = 1000000;
constexpr uint64_t kFirstCounterTrack = 2000000;

/// What a counter shows, and from which field of which event.
struct Counter {
    const char* name;
    const char* unit;
    const char* message;
    const char* field;
};
constexpr Counter kCounters[] = {
    {"C/N", "0.01 dB", "ReceiveSensitivityNotify", "cn"},
    {"bit error rate", "", "ReceiveSensitivityNotify", "ber"},
    {"C/N of the tuner", "0.01 dB", "TunerSensitivityDataNotify", "cn_value"},
    {"IF gain", "", "TunerSensitivityDataNotify", "ifagc"},
    {"RF gain", "", "TunerSensitivityDataNotify", "rfagc"},
    {"LNA gain", "", "TunerSensitivityDataNotify", "lnag"},
};
constexpr uint64_t kWaitingTrack = kFirstCounterTrack;

uint64_t logPriority(sessions::TraceLevel level) {
    constexpr uint64_t kDebug = 3;
    constexpr uint64_t kInfo = 4;
    constexpr uint64_t kError = 6;
    switch (level) {
    case sessions::TraceLevel::kError:
        return kError;
    case sessions::TraceLevel::kInfo:
        return kInfo;
    default:
        return kDebug;
    }
}

Protobuf annotation(std::string_view name, int64_t value) {
    return Protobuf().integer(event::kAnnotationInteger, value).text(event::kAnnotationName, name);
}

Protobuf annotation(std::string_view name, std::string_view value) {
    return Protobuf()
        .text(event::kAnnotationText, show::shownText(value))
        .text(event::kAnnotationName, name);
}

class Writer {
public:
    Writer(const Timeline& timeline, const TakeBytes& take) : timeline_(timeline), take_(take) {
        for (const Entry& entry : timeline.entries) {
            entries_[entry.link.number] = &entry;
        }
    }

    void write() {
        putClock();
        putTracks();
        putFlowsAndSpans();
        putCounters();
        putLines();
    }

private:
    void put(Protobuf packet) {
        packet.number(packet::kSequence, kSequence);
        if (first_) {
            packet.number(packet::kSequenceFlags, kCleared);
            first_ = false;
        }
        take_(Protobuf().message(trace::kPacket, packet).bytes());
    }

    void put(int64_t time, const Protobuf& track_event) {
        put(Protobuf().integer(packet::kTimestamp, time).message(packet::kTrackEvent, track_event));
    }

    /// The lines of the log are in the time of day, the slices in the time of the trace: both are
    /// the same here.
    void putClock() {
        int64_t begin = 0;
        for (const auto& first : {firstTime(timeline_.spans), firstTime(timeline_.lines)}) {
            begin = begin == 0 || (first != 0 && first < begin) ? first : begin;
        }
        Protobuf snapshot;
        for (const uint64_t clock : {clock_snapshot::kRealTime, clock_snapshot::kBootTime}) {
            snapshot.message(clock_snapshot::kClock, Protobuf()
                                                         .number(clock_snapshot::kClockId, clock)
                                                         .integer(clock_snapshot::kTime, begin));
        }
        put(Protobuf()
                .integer(packet::kTimestamp, begin)
                .message(packet::kClockSnapshot, snapshot));
    }
    static int64_t firstTime(const std::vector<Span>& spans) {
        return spans.empty() ? 0 : spans.front().begin;
    }
    static int64_t firstTime(const std::vector<Line>& lines) {
        return lines.empty() ? 0 : lines.front().time;
    }

    void putTrack(const Protobuf& descriptor) {
        put(Protobuf().message(packet::kTrackDescriptor, descriptor));
    }

    /// The process of a run: the log's number where it has one.
    int64_t pidOf(uint32_t run) const {
        return !timeline_.lines.empty() && timeline_.lines.front().pid != 0 && run <= 1
                   ? timeline_.lines.front().pid
                   : run;
    }

    void putTracks() {
        std::set<uint32_t> runs;
        for (size_t i = 0; i < timeline_.threads.size(); ++i) {
            const Thread& thread = timeline_.threads[i];
            const int64_t pid = pidOf(thread.run);
            if (runs.insert(thread.run).second) {
                const std::string name =
                    thread.run > 1 ? "receiver, run " + std::to_string(thread.run) : "receiver";
                putTrack(Protobuf()
                             .number(track::kUuid, kProcessTrack + thread.run)
                             .message(track::kProcess, Protobuf()
                                                           .integer(track::kProcessPid, pid)
                                                           .text(track::kProcessName, name)));
            }
            putTrack(Protobuf()
                         .number(track::kUuid, kFirstThreadTrack + i)
                         .number(track::kParent, kProcessTrack + thread.run)
                         .message(track::kThread,
                                  Protobuf()
                                      .integer(track::kThreadPid, pid)
                                      .integer(track::kThreadTid, thread.id)
                                      .text(track::kThreadName, show::shownText(thread.name))));
        }
    }

    /// A slice ends no later than the one that it is in, as the tracks of a trace want it.
    void putFlowsAndSpans() {
        std::map<size_t, std::vector<const Span*>> open; // by thread, the innermost last
        for (const Span& span : timeline_.spans) {
            auto& around = open[span.thread];
            closeBefore(around, span.begin);
            putBegin(span);
            around.push_back(&span);
        }
        for (auto& [thread, around] : open) {
            closeBefore(around, INT64_MAX);
        }
    }

    void closeBefore(std::vector<const Span*>& around, int64_t time) {
        while (!around.empty() && endOf(around, around.size() - 1) <= time) {
            const Span& span = *around.back();
            put(endOf(around, around.size() - 1),
                Protobuf()
                    .number(event::kType, event::kEnd)
                    .number(event::kTrack, kFirstThreadTrack + span.thread));
            around.pop_back();
        }
    }

    static int64_t endOf(const std::vector<const Span*>& around, size_t index) {
        int64_t end = around[index]->end;
        for (size_t i = 0; i < index; ++i) {
            end = std::min(end, std::max(around[i]->end, around[index]->begin));
        }
        return end;
    }

    void putBegin(const Span& span) {
        Protobuf slice;
        slice.number(event::kType, event::kBegin)
            .number(event::kTrack, kFirstThreadTrack + span.thread)
            .text(event::kCategory, categoryOf(span))
            .text(event::kName, show::shownText(span.name));
        annotate(slice, span);
        const auto found = entries_.find(span.number);
        if (found != entries_.end()) {
            const sessions::Link& link = found->second->link;
            if (span.kind == Span::Kind::kNative) {
                slice.fixed(event::kFlow, link.number);
            } else if (link.partner != 0 && entries_.count(link.partner) != 0) {
                slice.fixed(event::kLastFlow, link.partner);
            }
        }
        put(span.begin, slice);
    }

    static const char* categoryOf(const Span& span) {
        if (!span.failure.empty()) {
            return "failed";
        }
        return span.kind == Span::Kind::kNative  ? "native"
               : span.kind == Span::Kind::kEvent ? "event"
                                                 : "load";
    }

    void annotate(Protobuf& slice, const Span& span) const {
        const auto found = entries_.find(span.number);
        if (found != entries_.end()) {
            const Entry& entry = *found->second;
            slice.message(event::kAnnotation,
                          annotation("message", static_cast<int64_t>(span.number)));
            slice.message(event::kAnnotation, annotation("id", show::idText(entry.message.id)));
            if (entry.link.session) {
                slice.message(event::kAnnotation, annotation("handle", *entry.link.session));
            }
            if (entry.link.latency) {
                slice.message(event::kAnnotation, annotation("latency_ns", *entry.link.latency));
            }
            slice.message(event::kAnnotation, annotation("size", entry.message.size));
        }
        if (!span.failure.empty()) {
            slice.message(event::kAnnotation, annotation("failure", span.failure));
        }
        if (span.source_line != 0) {
            slice.message(
                event::kAnnotation,
                annotation("source", span.function + ":" + std::to_string(span.source_line)));
        }
    }

    void putCounterTrack(uint64_t uuid, const char* name, const char* unit) {
        Protobuf counter;
        if (*unit != 0) {
            counter.text(track::kCounterUnitName, unit);
        }
        putTrack(Protobuf()
                     .number(track::kUuid, uuid)
                     .text(track::kName, name)
                     .message(track::kCounter, counter));
    }

    void putValue(int64_t time, uint64_t uuid, int64_t value) {
        put(time, Protobuf()
                      .number(event::kType, event::kCounter)
                      .number(event::kTrack, uuid)
                      .integer(event::kCounterValue, value));
    }

    void putCounters() {
        putWaiting();
        uint64_t uuid = kWaitingTrack;
        for (const Counter& counter : kCounters) {
            ++uuid;
            const catalogue::Message* const known = catalogue::find(counter.message);
            bool has_track = false;
            for (const Entry& entry : timeline_.entries) {
                if (entry.message.id != known->id ||
                    !entry.message.is(sessions::Message::Kind::kEvent)) {
                    continue;
                }
                const auto value = sessions::numberIn(*known->record, entry.message, counter.field);
                if (value) {
                    if (!has_track) {
                        putCounterTrack(uuid, counter.name, counter.unit);
                        has_track = true;
                    }
                    putValue(nanoseconds(entry.message.time), uuid, *value);
                }
            }
        }
    }

    /// How many commands wait for the event that answers them, or for their answer.
    void putWaiting() {
        std::set<uint64_t> waiting;
        bool has_track = false;
        uint32_t run = 0;
        for (const Entry& entry : timeline_.entries) {
            const size_t before = waiting.size();
            if (timeline_.threads[entry.thread].run != run) {
                run = timeline_.threads[entry.thread].run;
                waiting.clear();
            }
            const catalogue::Message* const known = catalogue::find(entry.message.id);
            if (entry.message.is(sessions::Message::Kind::kCommand)) {
                if (known != nullptr && (known->reply != nullptr || known->reply_event != 0) &&
                    entry.message.value == 0) {
                    waiting.insert(entry.link.number);
                }
            } else {
                waiting.erase(entry.link.partner);
            }
            if (waiting.size() != before) {
                if (!has_track) {
                    putCounterTrack(kWaitingTrack, "commands that wait", "");
                    has_track = true;
                }
                putValue(nanoseconds(entry.message.time), kWaitingTrack,
                         static_cast<int64_t>(waiting.size()));
            }
        }
    }

    void putLines() {
        std::unordered_map<std::string, uint32_t> ids;
        for (const Thread& thread : timeline_.threads) {
            ids.try_emplace(thread.name, thread.id);
        }
        for (const Line& line : timeline_.lines) {
            const auto named = ids.find(line.task);
            const uint32_t tid = line.tid != 0 ? line.tid : named != ids.end() ? named->second : 0;
            put(Protobuf()
                    .integer(packet::kTimestamp, line.time)
                    .message(packet::kAndroidLog,
                             Protobuf().message(
                                 android_log::kEvent,
                                 Protobuf()
                                     .integer(android_log::kPid, line.pid != 0 ? line.pid : 1)
                                     .integer(android_log::kTid, tid)
                                     .integer(android_log::kTime, line.time)
                                     .text(android_log::kTag, "Dtv_jni")
                                     .number(android_log::kPriority, logPriority(line.level))
                                     .text(android_log::kText, show::shownText(line.text)))));
        }
    }

    const Timeline& timeline_;
    const TakeBytes& take_;
    std::unordered_map<uint64_t, const Entry*> entries_; ///< by number
    bool first_ = true;
};

} // namespace

void writePerfetto(const Timeline& timeline, const TakeBytes& take) {
    Writer(timeline, take).write();
}

} // namespace pictures

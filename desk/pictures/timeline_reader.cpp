#include "desk/pictures/timeline_reader.h"

#include "desk/pictures/timeline_builder.h"

#include "sessions/capture_reader.h"
#include "sessions/log/activity.h"
#include "sessions/log/log_messages.h"
#include "sessions/log/log_reader.h"

#include <fstream>

namespace pictures {
namespace {

/// The lines of a log and what they show.
class LogTimeline {
public:
    LogTimeline(Builder& builder, const show::Filter& filter)
        : builder_(builder), filter_(filter) {}

    void read(sessions::LineSource& source) {
        sessions::LogReader reader(source);
        sessions::Activity activity([this](const sessions::Step& step) { take(step); },
                                    [](const sessions::UnmatchedLine&) {});
        sessions::LogLine line;
        while (reader.next(line)) {
            takeLine(line);
            activity.add(line);
        }
        activity.end();
        if (reader.counts().of_bridge == 0) {
            builder_.damage("no line of it is the bridge's");
        }
    }

private:
    void take(const sessions::Step& step) {
        if (step.kind == sessions::Step::Kind::kLoad) {
            builder_.beginRun();
            return;
        }
        if (step.kind == sessions::Step::Kind::kCallEnd) {
            builder_.endCall(step.call);
            return;
        }
        if (const auto message = sessions::messageOf(step)) {
            builder_.addOfCall(*message, step.call);
        }
    }

    void takeLine(const sessions::LogLine& line) {
        using Kind = sessions::LogLineKind;
        if (line.kind == Kind::kForeign || line.kind == Kind::kSection ||
            line.kind == Kind::kCopy) {
            return;
        }
        if (line.kind == Kind::kDropped) {
            builder_.damage("line " + std::to_string(line.first) +
                            " says that lines were thrown away");
            return;
        }
        const show::TimeRange& times = filter_.times;
        const bool any_time = !times.first && !times.last;
        if (any_time || (line.header.time && times.contains(momentOf(*line.header.time)))) {
            builder_.addLine(line);
        }
    }

    static sessions::Moment momentOf(const sessions::LogTime& time) {
        sessions::Moment moment;
        moment.seconds = time.nanoseconds / 1000000000;
        moment.nanoseconds = static_cast<uint32_t>(time.nanoseconds % 1000000000);
        return moment;
    }

    Builder& builder_;
    const show::Filter& filter_;
};

void readCapture(std::istream& file, Builder& builder) {
    sessions::CaptureReader reader(file);
    uint32_t section = 0;
    for (;;) {
        while (const auto packet = reader.next()) {
            std::string error;
            if (packet->section != section) {
                section = packet->section;
                builder.beginRun();
            }
            if (const auto message = sessions::readMessage(*packet, error)) {
                builder.add(*message);
            } else {
                builder.pass();
                builder.damage(error);
            }
        }
        if (reader.error().empty()) {
            return;
        }
        builder.damage(reader.error());
        if (!reader.resume()) {
            return;
        }
    }
}

} // namespace

bool readTimeline(const std::string& path, const show::Filter& filter, Timeline& timeline,
                  std::string& error) {
    Builder builder(filter, timeline);
    if (sessions::isCapture(path)) {
        std::ifstream file(path, std::ios::binary);
        timeline.is_capture = true;
        readCapture(file, builder);
    } else {
        sessions::LineSource source(path);
        if (!source.error().empty()) {
            error = source.error();
            return false;
        }
        LogTimeline(builder, filter).read(source);
        if (!source.error().empty()) {
            builder.damage(source.error());
        }
    }
    builder.end();
    if (timeline.messages == 0 && timeline.spans.empty()) {
        error = timeline.damages.empty() ? path + ": it has no message"
                                         : path + ": " + timeline.damages.front();
        return false;
    }
    return true;
}

} // namespace pictures

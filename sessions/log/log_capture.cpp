#include "sessions/log/log_capture.h"

#include "sessions/capture_writer.h"
#include "sessions/log/activity.h"
#include "sessions/log/log_messages.h"
#include "sessions/new_file.h"

#include <algorithm>

namespace sessions {
namespace {

/// Writes the messages of steps, one section for each process.
class Writer {
public:
    Writer(NewFile& target, LogCapture& result) : target_(target), result_(result) {}

    void take(const Step& step) {
        if (step.kind == Step::Kind::kLoad) {
            begun_ = false;
        }
        if (const std::optional<Message> message = messageOf(step)) {
            begin(step.call.begun);
            target_.write(capture_.packet(*message));
            ++result_.messages;
            result_.incomplete += std::find(message->known.begin(), message->known.end(), false) !=
                                  message->known.end();
        }
    }

    /// Has at least one section written.
    void finish() {
        if (written_ == 0) {
            begin(std::nullopt);
        }
    }

private:
    void begin(const std::optional<LogTime>& time) {
        if (begun_) {
            return;
        }
        begun_ = true;
        ++written_;
        const char* const times = !time ? "none" : time->has_year ? "local" : "local-without-year";
        target_.write(capture_.section("dtv-explain", {{"source", "log"}, {"times", times}}));
    }

    NewFile& target_;
    LogCapture& result_;
    CaptureWriter capture_;
    bool begun_ = false;
    int written_ = 0;
};

} // namespace

LogCapture captureLog(LineSource& log, const std::string& path) {
    LogCapture result;
    NewFile target;
    if (!target.open(path, result.error)) {
        return result;
    }
    Writer writer(target, result);
    LogReader reader(log);
    Activity activity([&writer](const Step& step) { writer.take(step); },
                      [](const UnmatchedLine&) {});
    for (LogLine line; !target.failed() && reader.next(line);) {
        activity.add(line);
    }
    activity.end();
    writer.finish();
    target.keep(result.error);
    result.counts = reader.counts();
    return result;
}

} // namespace sessions

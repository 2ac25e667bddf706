// Logs of any bytes: nothing is read beyond its end, nothing is counted twice, and what is kept
// does not grow with the log.
#include "sessions/log/log_messages.h"
#include "sessions/tests/log/activity_steps.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>

namespace {

using sessions::KnownLine;
using sessions::LogLine;
using sessions::LogLineKind;
using sessions::Step;

using Random = std::mt19937;

size_t below(Random& random, size_t limit) {
    return random() % limit;
}

/// A line of the bridge with values of its kinds.
std::string writtenLine(const KnownLine& known, Random& random) {
    static const std::string kTexts[] = {"",        "a", "|", "|, pass = |", "x\ny", "\xe8\xa6\x96",
                                         ",TENRIK,"};
    std::string message(known.literals[0]);
    for (size_t i = 0; i < known.values.size(); ++i) {
        const auto number = static_cast<int32_t>(random() >> below(random, 32));
        char text[32];
        switch (known.values[i].conversion) {
        case 's':
            message += kTexts[below(random, std::size(kTexts))];
            break;
        case 'd':
            message += std::to_string(number);
            break;
        case 'p':
            std::snprintf(text, sizeof text, "%p", reinterpret_cast<void*>(uintptr_t{random()}));
            message += text;
            break;
        default:
            std::snprintf(text, sizeof text, "%x", static_cast<unsigned>(number));
            message += text;
        }
        message += known.literals[i + 1];
    }
    static const std::string kTasks[] = {"desk    ", "DtvEvent-1", "a,b     "};
    std::string level = nameOf(known.level);
    level.resize(9, ' ');
    const std::string function =
        known.function.empty() ? "dtvSvLibSelectChannel" : std::string(known.function);
    return ",TENRIK," + kTasks[below(random, 3)] + "," + level + "," + function + "(),  12," +
           message;
}

/// The lines of a few calls, and some of all that the bridge can write, in one of the forms.
std::string someLog(Random& random) {
    static const std::string kCalls = traceOf(R"(
        desk START dtvSvLibCreate|
        desk DEBUG dtvSvLibCreate|SEND, start_type = 0 max_delay_time = 100
        desk START getRetCode|(param)ret = 0
        desk END getRetCode|
        desk END dtvSvLibCreate|ret = 0
        Event START recvEventFromServer|pid = 3109, threadid = a17ff6c0, event_id = 1000004f, recv_size = 8
        Event START getJNIEnv|
        Event START DoListenerEvent|
        Event START dtvsv_msgid_lib_common_reply|
        Event DEBUG dtvsv_msgid_lib_common_reply|dtvsv_handle = 1, result = 0
        Event DEBUG CallMethod|CallMethod, CallStaticMethod, type_id = 0
        Event END dtvsv_msgid_lib_common_reply|ret = 0
        Event END DoListenerEvent|
        Event END recvEventFromServer|)");
    static const std::string kHeaders[] = {"", "I/Dtv_jni ( 1234): ", "I( 1234: 1250) ",
                                           "11-21 22:13:37.124  1234  1250 I Dtv_jni : ",
                                           "[ 11-21 22:13:37.124  1234: 1250 I/Dtv_jni  ]\n"};
    const std::string& header = kHeaders[below(random, std::size(kHeaders))];
    std::istringstream calls(kCalls);
    std::string log;
    const auto& known = sessions::knownLines();
    for (std::string line; std::getline(calls, line);) {
        log += header + line + "\n";
        if (below(random, 3) == 0) {
            log += header + writtenLine(known[below(random, known.size())], random) + "\n";
        }
        if (below(random, 5) == 0) {
            log += header + "another's, of (),text\n";
        }
    }
    return log;
}

void damage(std::string& log, Random& random) {
    for (size_t times = below(random, 8); times-- > 0 && !log.empty();) {
        const size_t at = below(random, log.size());
        const size_t length = 1 + below(random, below(random, 4) == 0 ? log.size() : 20);
        switch (below(random, 6)) {
        case 0:
            log[at] = static_cast<char>(random());
            break;
        case 1:
            log.erase(at, length);
            break;
        case 2:
            log.insert(at, log.substr(below(random, log.size()), length));
            break;
        case 3:
            log.resize(at);
            break;
        case 4:
            log.insert(at, 1, "\n\r\0|,( "[below(random, 7)]);
            break;
        default:
            std::reverse(log.begin() + static_cast<ptrdiff_t>(at),
                         log.begin() + static_cast<ptrdiff_t>(std::min(log.size(), at + length)));
        }
    }
}

/// Reads a log and checks what must be true of each.
class Checked {
public:
    explicit Checked(const std::string& bytes)
        : file_(bytes), source_(file_.path()), reader_(source_) {}

    void read() {
        sessions::Activity activity([this](const Step& step) { take(step); },
                                    [](const sessions::UnmatchedLine&) {});
        for (LogLine line; reader_.next(line);) {
            take(line);
            activity.add(line);
        }
        activity.end();
        checkCounts();
        checkEnds();
    }

private:
    struct Steps {
        int first = 0;
        int ends = 0;
    };

    void take(const LogLine& line) {
        EXPECT_EQ(line.first, lines_ + 1);
        EXPECT_GE(line.last, line.first);
        lines_ = line.last;
        of_bridge_ += line.kind <= LogLineKind::kCopy;
    }

    void checkCounts() const {
        const sessions::LogCounts& counts = reader_.counts();
        EXPECT_EQ(counts.lines, lines_);
        EXPECT_EQ(counts.of_bridge, of_bridge_);
        EXPECT_LE(counts.understood + counts.shortened, counts.of_bridge);
    }

    void checkEnds() const {
        for (const auto& [number, steps] : steps_) {
            EXPECT_LE(steps.first, 1) << "a call has one command or one event";
            EXPECT_EQ(steps.ends, 1) << "a call ends once";
        }
    }

    void take(const Step& step) {
        Steps& steps = steps_[step.call.number];
        EXPECT_EQ(steps.ends, 0) << "nothing comes after a call's end";
        steps.first += step.kind == Step::Kind::kCommand || step.kind == Step::Kind::kEvent;
        steps.ends += step.kind == Step::Kind::kCallEnd;
        if (const auto message = messageOf(step)) {
            EXPECT_EQ(message->known.size(), message->record.size());
        }
    }

    const TextFile file_;
    sessions::LineSource source_;
    sessions::LogReader reader_;
    std::map<uint64_t, Steps> steps_;
    uint64_t lines_ = 0;
    uint64_t of_bridge_ = 0;
};

/// How many logs are damaged: DTV_DAMAGED_LOGS, or few.
unsigned long damagedLogs() {
    const char* const text = std::getenv("DTV_DAMAGED_LOGS");
    return text != nullptr ? std::strtoul(text, nullptr, 10) : 1000;
}

TEST(DamagedLog, IsReadToItsEnd) {
    for (unsigned long seed = 1; seed <= damagedLogs() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(static_cast<unsigned>(seed));
        std::string log = someLog(random);
        damage(log, random);
        Checked(log).read();
    }
}

/// What the address sanitizer counts, which takes the place of malloc().
extern "C" size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

size_t allocatedBytes() {
    return __sanitizer_get_current_allocated_bytes != nullptr
               ? __sanitizer_get_current_allocated_bytes()
               : mallinfo2().uordblks;
}

/// Bytes that are allocated while the last line of a log is read.
size_t keptAtTheEnd(const std::string& part, int times) {
    TextFile file("");
    for (int i = 0; i < times; ++i) {
        // Another thread each time.
        std::string lines = part;
        for (size_t at = lines.find("THREAD"); at != std::string::npos; at = lines.find("THREAD")) {
            lines.replace(at, 6, std::to_string(100000 + i));
        }
        file.write(lines);
    }
    sessions::LineSource source(file.path());
    sessions::LogReader reader(source);
    sessions::Activity activity([](const Step&) {}, [](const sessions::UnmatchedLine&) {});
    for (LogLine line; reader.next(line);) {
        activity.add(line);
    }
    return allocatedBytes();
}

TEST(DamagedLog, KeepsNoMoreOfALongerOne) {
    static const std::string kParts[] = {
        // Each loses an end, on one thread.
        traceOf("Event START recvEventFromServer|pid = 1, threadid = 1, event_id = 10000054, "
                "recv_size = 8\n"
                "Event DEBUG CallMethod|CallMethod, CallStaticMethod, type_id = 0\n"
                "Event END getRetCode|\n"),
        traceOf("desk START getRetCode|(param)ret = 0\ndesk START dtvSvLibStartScan|hdl = 1\n"
                "desk START getRetCode|(param)ret = 0\n"),
        // A thread that comes once, with an end and without.
        traceOf("THREAD START dtvSvLibStartScan|hdl = 1\nTHREAD END dtvSvLibStartScan|ret = 0\n"),
        traceOf("THREAD START dtvSvLibStartScan|hdl = 1\n"),
        // One call of ever more lines.
        traceOf(
            "Event START DoListenerEvent|\nEvent DEBUG CallMethod|CallMethod, NewObject error!\n"),
    };
    for (const std::string& part : kParts) {
        keptAtTheEnd(part, 10); // what is made once
        const size_t few = keptAtTheEnd(part, 2000);
        const size_t many = keptAtTheEnd(part, 20000);
        EXPECT_LT(many, few + 600000) << part;
    }
}

} // namespace

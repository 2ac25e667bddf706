#include "sessions/log/line_header.h"

#include "sessions/log/text.h"

#include <algorithm>
#include <cstring>

namespace sessions {
namespace {

/// Reads a line from the left. After the first thing that is not there nothing more is read.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    bool failed() const { return failed_; }
    std::string_view rest() const { return text_.substr(at_); }
    char front() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    void blanks() {
        while (!failed_ && front() == ' ') {
            ++at_;
        }
    }
    bool takeIf(char wanted) {
        if (failed_ || at_ >= text_.size() || text_[at_] != wanted) {
            return false;
        }
        ++at_;
        return true;
    }
    void take(char wanted) { failed_ = !takeIf(wanted); }
    void take(std::string_view wanted) {
        if (failed_ || text_.substr(at_, wanted.size()) != wanted) {
            failed_ = true;
            return;
        }
        at_ += wanted.size();
    }

    /// A decimal number of at most `most` digits.
    int64_t number(size_t most = 10) {
        size_t digits = 0;
        int64_t value = 0;
        while (!failed_ && digits < most && front() >= '0' && front() <= '9') {
            value = value * 10 + (front() - '0');
            ++at_;
            ++digits;
        }
        failed_ = failed_ || digits == 0;
        return value;
    }

    /// A number that identifies a process or a thread: some systems write it as "0x4e2".
    int identifier() {
        if (rest().substr(0, 2) != "0x") {
            return static_cast<int>(number(9));
        }
        at_ += 2;
        const size_t begin = at_;
        uint32_t value = 0;
        for (; hexDigit(front()) >= 0 && at_ - begin < 8; ++at_) {
            value = value << 4 | static_cast<uint32_t>(hexDigit(front()));
        }
        failed_ = failed_ || begin == at_ || value > INT32_MAX;
        return failed_ ? -1 : static_cast<int>(value);
    }

    /// The digits after a decimal point, as nanoseconds.
    int64_t fraction() {
        int64_t value = 0;
        int64_t unit = 1000000000;
        const size_t begin = at_;
        while (!failed_ && front() >= '0' && front() <= '9') {
            unit /= 10;
            value += unit * (front() - '0');
            ++at_;
        }
        failed_ = failed_ || begin == at_;
        return value;
    }

    char priority() {
        const char letter = front();
        if (failed_ || letter == '\0' || std::strchr("VDIWEFSA", letter) == nullptr) {
            failed_ = true;
            return 0;
        }
        ++at_;
        return letter;
    }

    /// What comes before `end`, which is skipped.
    std::string_view until(std::string_view end) {
        const size_t found = failed_ ? std::string_view::npos : text_.find(end, at_);
        if (found == std::string_view::npos) {
            failed_ = true;
            return {};
        }
        const std::string_view before = text_.substr(at_, found - at_);
        at_ = found + end.size();
        return before;
    }

private:
    std::string_view text_;
    size_t at_ = 0;
    bool failed_ = false;
};

/// Days from 1970-01-01 to a date of the Gregorian calendar.
int64_t daysUntil(int64_t year, int64_t month, int64_t day) {
    year -= month <= 2 ? 1 : 0;
    const int64_t era = year / 400;
    const int64_t year_of_era = year - era * 400;
    const int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year -
           719468;
}

constexpr int64_t kSecond = 1000000000; ///< nanoseconds
constexpr int64_t kYearOfNone = 2000;   ///< has a 29th of February
// What 64 bits hold in nanoseconds.
constexpr int64_t kFirstYear = 1700;
constexpr int64_t kLastYear = 2250;
constexpr int64_t kLastSecond = 9000000000;

/// "11-21 22:13:37.123", with a year before or a zone after it, or "1795300417.123".
std::optional<LogTime> readTime(Scanner& line) {
    LogTime time;
    line.blanks();
    const int64_t first = line.number();
    if (line.takeIf('.')) {
        time.nanoseconds = std::min(first, kLastSecond) * kSecond + line.fraction();
        time.has_year = true;
        return line.failed() || first > kLastSecond ? std::nullopt : std::optional(time);
    }
    line.take('-');
    const int64_t second = line.number(2);
    int64_t year = kYearOfNone;
    int64_t month = first;
    int64_t day = second;
    if (line.takeIf('-')) {
        time.has_year = true;
        year = first;
        month = second;
        day = line.number(2);
    }
    line.take(' ');
    const int64_t hours = line.number(2);
    line.take(':');
    const int64_t minutes = line.number(2);
    line.take(':');
    const int64_t seconds = line.number(2);
    line.take('.');
    const int64_t fraction = line.fraction();
    if (line.failed() || month < 1 || month > 12 || day < 1 || day > 31 || hours > 23 ||
        minutes > 59 || seconds > 60 || year < kFirstYear || year > kLastYear) {
        return std::nullopt;
    }
    const int64_t days = daysUntil(year, month, day);
    time.nanoseconds = (((days * 24 + hours) * 60 + minutes) * 60 + seconds) * kSecond + fraction;
    Scanner zone = line;
    zone.blanks();
    if (zone.front() == '+' || zone.front() == '-') {
        zone.take(zone.front());
        zone.number(4);
        if (!zone.failed()) {
            line = zone;
        }
    }
    return time;
}

/// The numbers of a process and a thread, the last -1 when there is one number alone.
struct Identifiers {
    int pid = -1;
    int tid = -1;
};

/// "1234", "1234: 1250", "10045: 1234: 1250" or "u0_a45: 1234: 1250": at most `wanted` numbers of
/// those that come last, and before them perhaps a user.
Identifiers readIdentifiers(Scanner& line, size_t wanted) {
    int read[3] = {-1, -1, -1};
    size_t count = 0;
    line.blanks();
    if (line.front() >= 'a' && line.front() <= 'z') {
        line.until(":");
        line.blanks();
    }
    do {
        line.blanks();
        read[count++] = line.identifier();
    } while (count <= wanted && line.takeIf(':'));
    return wanted == 1 || count == 1 ? Identifiers{read[count - 1], -1}
                                     : Identifiers{read[count - 2], read[count - 1]};
}

/// "I/tag( pid): text" or "I/tag: text".
bool readTagged(Scanner line, LineHeader& header, LogForm with_pid, LogForm without) {
    header.priority = line.priority();
    line.take('/');
    Scanner wide = line;
    std::string_view tag = wide.until("(");
    const int pid = readIdentifiers(wide, 1).pid;
    wide.take("): ");
    // A tag has no blank that is followed by text, but blanks at its end.
    if (!wide.failed() && tag.find(": ") == std::string_view::npos) {
        header.form = with_pid;
        header.pid = pid;
        header.tag = withoutBlanksAtEnd(tag);
        header.text = wide.rest();
        return true;
    }
    if (without == LogForm::kRaw) {
        return false;
    }
    tag = line.until(": ");
    if (line.failed() || tag.empty()) {
        return false;
    }
    header.form = without;
    header.tag = withoutBlanksAtEnd(tag);
    header.text = line.rest();
    return true;
}

/// "I( pid) text  (tag)" or "I( pid: tid) text".
bool readProcess(Scanner line, LineHeader& header) {
    header.priority = line.priority();
    line.take('(');
    const Identifiers ids = readIdentifiers(line, 2);
    header.pid = ids.pid;
    header.tid = ids.tid;
    line.take(") ");
    if (ids.tid >= 0) {
        header.form = LogForm::kThread;
        header.text = line.rest();
        return !line.failed();
    }
    header.form = LogForm::kProcess;
    std::string_view text = line.rest();
    if (!text.empty() && text.back() == ')') {
        const size_t tag = text.rfind("  (");
        if (tag != std::string_view::npos) {
            header.tag = withoutBlanksAtEnd(text.substr(tag + 3, text.size() - tag - 4));
            text = text.substr(0, tag);
        }
    }
    header.text = text;
    return !line.failed();
}

/// "pid tid I tag: text", perhaps with the number or the name of a user before.
bool readThreadTime(Scanner line, LineHeader& header) {
    line.blanks();
    Scanner user = line;
    int64_t pid = line.number();
    line.blanks();
    int64_t tid = line.number();
    line.blanks();
    if (line.front() >= '0' && line.front() <= '9') {
        pid = tid;
        tid = line.number();
        line.blanks();
    } else if (line.failed() && user.front() >= 'a' && user.front() <= 'z') {
        user.until(" ");
        user.blanks();
        pid = user.number();
        user.blanks();
        tid = user.number();
        user.blanks();
        line = user;
    }
    header.priority = line.priority();
    line.take(' ');
    const std::string_view tag = line.until(": ");
    if (line.failed()) {
        return false;
    }
    header.form = LogForm::kThreadTime;
    header.pid = static_cast<int>(pid);
    header.tid = static_cast<int>(tid);
    header.tag = withoutBlanksAtEnd(tag);
    header.text = line.rest();
    return true;
}

bool readTimed(Scanner line, LineHeader& header) {
    header.time = readTime(line);
    if (!header.time) {
        return false;
    }
    line.blanks();
    if (std::strchr("VDIWEFSA", line.front()) != nullptr && line.front() != '\0') {
        return readTagged(line, header, LogForm::kTime, LogForm::kTime);
    }
    return readThreadTime(line, header);
}

/// "[ 11-21 22:13:37.123 pid: tid I/tag ]".
bool readLong(Scanner line, LineHeader& header) {
    line.take("[ ");
    header.time = readTime(line);
    const Identifiers ids = readIdentifiers(line, 2);
    header.pid = ids.pid;
    header.tid = ids.tid;
    line.blanks();
    header.priority = line.priority();
    line.take('/');
    header.tag = withoutBlanksAtEnd(line.until(" ]"));
    header.form = LogForm::kLong;
    return header.time && header.tid >= 0 && !line.failed() && line.rest().empty();
}

} // namespace

const char* nameOf(LogForm form) {
    static constexpr const char* kNames[] = {"raw",  "brief",      "tag",  "process", "thread",
                                             "time", "threadtime", "long", "other"};
    return kNames[static_cast<size_t>(form)];
}

LineHeader readHeader(std::string_view line) {
    LineHeader header;
    bool read = false;
    const char first = line.empty() ? '\0' : line.front();
    if (first == '[') {
        read = readLong(Scanner(line), header);
    } else if ((first >= '0' && first <= '9') || first == ' ') {
        read = readTimed(Scanner(line), header);
    } else if (line.size() > 2 && line[1] == '/') {
        read = readTagged(Scanner(line), header, LogForm::kBrief, LogForm::kTag);
    } else if (line.size() > 2 && line[1] == '(') {
        read = readProcess(Scanner(line), header);
    }
    if (!read) {
        header = LineHeader{};
        header.text = line;
    }
    return header;
}

} // namespace sessions

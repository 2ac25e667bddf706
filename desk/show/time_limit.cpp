#include "desk/show/time_limit.h"

#include <ctime>
#include <limits>

namespace show {
namespace {

using sessions::Moment;

constexpr int64_t kSecond = 1000000000; ///< nanoseconds
constexpr int64_t kMinute = 60 * kSecond;
constexpr int64_t kDay = 24 * 60 * kMinute;

/// Takes parts of a text from its beginning.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }

    bool take(char wanted) {
        if (rest_.empty() || rest_.front() != wanted) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    /// A number of exactly `digits` digits, at most `largest`.
    bool take(size_t digits, int largest, int& number) {
        if (rest_.size() < digits) {
            return false;
        }
        number = 0;
        for (size_t i = 0; i < digits; ++i) {
            if (!isDigit(rest_[i])) {
                return false;
            }
            number = number * 10 + (rest_[i] - '0');
        }
        rest_.remove_prefix(digits);
        return number <= largest;
    }

    /// One digit to nine as the fraction of a second, in nanoseconds; `unit` is that of the last.
    bool takeFraction(int64_t& nanoseconds, int64_t& unit) {
        nanoseconds = 0;
        unit = kSecond;
        while (!rest_.empty() && isDigit(rest_.front()) && unit > 1) {
            unit /= 10;
            nanoseconds += (rest_.front() - '0') * unit;
            rest_.remove_prefix(1);
        }
        return unit < kSecond;
    }

    /// Whether the text has a digit and then a minus sign at its fifth place: a date.
    bool hasDate() const { return rest_.size() > 4 && rest_[4] == '-'; }

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    std::string_view rest_;
};

bool takeTimeOfDay(Scanner& scanner, TimeLimit& limit) {
    int hour = 0;
    int minute = 0;
    if (!scanner.take(2, 23, hour) || !scanner.take(':') || !scanner.take(2, 59, minute)) {
        return false;
    }
    limit.nanosecond = (int64_t{hour} * 60 + minute) * kMinute;
    limit.unit = kMinute;
    if (!scanner.take(':')) {
        return true;
    }
    int second = 0;
    if (!scanner.take(2, 59, second)) {
        return false;
    }
    limit.nanosecond += second * kSecond;
    limit.unit = kSecond;
    if (!scanner.take('.')) {
        return true;
    }
    int64_t fraction = 0;
    if (!scanner.takeFraction(fraction, limit.unit)) {
        return false;
    }
    limit.nanosecond += fraction;
    return true;
}

/// Turns the fields of a date and a time into a moment; false when there is no such date.
bool setMoment(std::tm fields, bool utc, TimeLimit& limit) {
    const std::tm wanted = fields;
    fields.tm_isdst = -1;
    // Set by whoever finds the moment: it may be beyond what the machine can count.
    fields.tm_wday = -1;
    const time_t seconds = utc ? timegm(&fields) : mktime(&fields);
    if (fields.tm_wday < 0 || fields.tm_year != wanted.tm_year || fields.tm_mon != wanted.tm_mon ||
        fields.tm_mday != wanted.tm_mday) {
        return false;
    }
    limit.moment = {seconds, 0};
    return true;
}

} // namespace

std::optional<TimeLimit> timeLimitOf(std::string_view text) {
    Scanner scanner(text);
    TimeLimit limit;
    if (!scanner.hasDate()) {
        limit.of_day = true;
        return takeTimeOfDay(scanner, limit) && scanner.atEnd() ? std::optional<TimeLimit>(limit)
                                                                : std::nullopt;
    }
    int year = 0;
    int month = 0;
    int day = 0;
    if (!scanner.take(4, 9999, year) || !scanner.take('-') || !scanner.take(2, 12, month) ||
        !scanner.take('-') || !scanner.take(2, 31, day) || month == 0 || day == 0) {
        return std::nullopt;
    }
    limit.unit = kDay;
    if ((scanner.take('T') || scanner.take(' ')) && !takeTimeOfDay(scanner, limit)) {
        return std::nullopt;
    }
    const bool utc = scanner.take('Z');
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = static_cast<int>(limit.nanosecond / kMinute / 60);
    fields.tm_min = static_cast<int>(limit.nanosecond / kMinute % 60);
    fields.tm_sec = static_cast<int>(limit.nanosecond / kSecond % 60);
    limit.nanosecond %= kSecond;
    if (!scanner.atEnd() || !setMoment(fields, utc, limit)) {
        return std::nullopt;
    }
    return limit;
}

std::optional<int64_t> nanosecondOfDay(const Moment& moment) {
    std::tm fields{};
    if (moment.seconds > std::numeric_limits<time_t>::max() ||
        moment.seconds < std::numeric_limits<time_t>::min()) {
        return std::nullopt;
    }
    const auto seconds = static_cast<time_t>(moment.seconds);
    if (localtime_r(&seconds, &fields) == nullptr) {
        return std::nullopt;
    }
    return (int64_t{fields.tm_hour} * 60 + fields.tm_min) * kMinute + fields.tm_sec * kSecond +
           moment.nanoseconds;
}

namespace {

/// A nanosecond of the day that is not known: it is neither before a limit nor after it.
constexpr int64_t kUnknown = -1;

/// Whether a moment is not before a limit. `day` is its nanosecond of the day, or unknown.
bool isFrom(const Moment& moment, int64_t day, const TimeLimit& limit) {
    if (limit.of_day) {
        return day != kUnknown && day >= limit.nanosecond;
    }
    return moment.seconds > limit.moment.seconds ||
           (moment.seconds == limit.moment.seconds && moment.nanoseconds >= limit.nanosecond);
}

/// Whether a moment is in the unit of a limit or before it.
bool isTo(const Moment& moment, int64_t day, const TimeLimit& limit) {
    if (limit.of_day) {
        return day != kUnknown && day < limit.nanosecond + limit.unit;
    }
    const int64_t end = limit.nanosecond + limit.unit;
    const int64_t seconds = limit.moment.seconds + end / kSecond;
    return moment.seconds < seconds ||
           (moment.seconds == seconds && moment.nanoseconds < end % kSecond);
}

bool passesMidnight(const TimeLimit& first, const TimeLimit& last) {
    return first.of_day && last.of_day && last.nanosecond + last.unit <= first.nanosecond;
}

} // namespace

bool TimeRange::contains(const Moment& moment) const {
    const bool uses_day = (first && first->of_day) || (last && last->of_day);
    const int64_t day = uses_day ? nanosecondOfDay(moment).value_or(kUnknown) : kUnknown;
    const bool from = !first || isFrom(moment, day, *first);
    const bool to = !last || isTo(moment, day, *last);
    return first && last && passesMidnight(*first, *last) ? from || to : from && to;
}

bool TimeRange::isEmpty() const {
    if (!first || !last || first->of_day || last->of_day) {
        return false;
    }
    const Moment begin{first->moment.seconds, static_cast<uint32_t>(first->nanosecond)};
    return !isTo(begin, kUnknown, *last);
}

} // namespace show

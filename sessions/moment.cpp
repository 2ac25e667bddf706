#include "sessions/moment.h"

#include <cstdio>

namespace sessions {
namespace {

constexpr uint64_t powerOfTen(unsigned exponent) {
    uint64_t power = 1;
    for (unsigned i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}
constexpr unsigned kLargestPower = 19; ///< of 10 that 64 bits hold

constexpr int64_t kSecondsPerDay = 86400;
/// The first and the last second of the years that are written with four digits.
constexpr int64_t kFirstSecond = -62167219200;
constexpr int64_t kLastSecond = 253402300799;

struct Date {
    int64_t year;
    unsigned month; ///< from 1
    unsigned day;   ///< from 1
};

/// The date that is `days` after the beginning of 1970; not before the year 0. gmtime() cannot be
/// used, for time_t has 32 bits on some machines.
Date dateOf(int64_t days) {
    // Years that begin in March end with the day that only some have.
    const int64_t since = days + 719468; // days since the first of March of the year 0
    const int64_t moved = since < 0 ? since + 146097 : since;
    const int64_t era = moved / 146097; // 400 years
    const int64_t day_of_era = moved % 146097;
    const int64_t year_of_era =
        (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
    const int64_t day_of_year =
        day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
    const int64_t month_from_march = (5 * day_of_year + 2) / 153;
    const int64_t month = month_from_march < 10 ? month_from_march + 3 : month_from_march - 9;
    const int64_t year = year_of_era + era * 400 + (month <= 2 ? 1 : 0) - (since < 0 ? 400 : 0);
    return {year, static_cast<unsigned>(month),
            static_cast<unsigned>(day_of_year - (153 * month_from_march + 2) / 5 + 1)};
}

} // namespace

std::string utcText(const Moment& moment) {
    if (moment.seconds < kFirstSecond || moment.seconds > kLastSecond) {
        return {};
    }
    int64_t days = moment.seconds / kSecondsPerDay;
    int64_t second = moment.seconds % kSecondsPerDay;
    if (second < 0) {
        second += kSecondsPerDay;
        --days;
    }
    const Date date = dateOf(days);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%09uZ",
                  static_cast<int>(date.year), date.month, date.day,
                  static_cast<int>(second / 3600), static_cast<int>(second / 60 % 60),
                  static_cast<int>(second % 60), moment.nanoseconds);
    return text;
}

Moment momentOf(uint64_t stamp, uint8_t resolution, int64_t offset) {
    const unsigned power = resolution & 0x7f;
    uint64_t seconds = 0;
    uint64_t nanoseconds = 0;
    if ((resolution & 0x80) != 0) {
        const uint64_t fraction = power < 64 ? stamp & ((uint64_t{1} << power) - 1) : stamp;
        seconds = power < 64 ? stamp >> power : 0;
        // 30 bits of the fraction are fine enough, and leave room to multiply.
        uint64_t thirty = 0;
        if (power <= 30) {
            thirty = fraction << (30 - power);
        } else if (power - 30 < 64) {
            thirty = fraction >> (power - 30);
        }
        nanoseconds = (thirty * 1000000000) >> 30;
    } else {
        uint64_t fraction = stamp;
        if (power <= kLargestPower) {
            seconds = stamp / powerOfTen(power);
            fraction = stamp % powerOfTen(power);
        }
        if (power <= 9) {
            nanoseconds = fraction * powerOfTen(9 - power);
        } else if (power - 9 <= kLargestPower) {
            nanoseconds = fraction / powerOfTen(power - 9);
        }
    }
    // The sum wraps around instead of overflowing: such stamps mean nothing.
    return {static_cast<int64_t>(seconds + static_cast<uint64_t>(offset)),
            static_cast<uint32_t>(nanoseconds)};
}

} // namespace sessions

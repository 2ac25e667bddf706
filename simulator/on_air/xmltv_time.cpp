#include "on_air/xmltv_time.h"

#include <cctype>

namespace simulator {
namespace {

/// Takes `count` digits from the front; empty when there are fewer.
std::optional<int> takeDigits(std::string_view& text, size_t count) {
    if (text.size() < count) {
        return std::nullopt;
    }
    int value = 0;
    for (const char digit : text.substr(0, count)) {
        if (std::isdigit(static_cast<unsigned char>(digit)) == 0) {
            return std::nullopt;
        }
        value = value * 10 + (digit - '0');
    }
    text.remove_prefix(count);
    return value;
}

bool startsWithDigit(std::string_view text) {
    return !text.empty() && std::isdigit(static_cast<unsigned char>(text.front())) != 0;
}

std::optional<int> parseOffset(std::string_view text) {
    if (text.empty() || text == "Z" || text == "UTC") {
        return 0;
    }
    const char sign = text.front();
    text.remove_prefix(1);
    const std::optional<int> hours = takeDigits(text, 2);
    const std::optional<int> minutes = takeDigits(text, 2);
    if ((sign != '+' && sign != '-') || !hours || !minutes || *minutes > 59 || !text.empty()) {
        return std::nullopt;
    }
    const int seconds = (*hours * 60 + *minutes) * 60;
    return sign == '+' ? seconds : -seconds;
}

/// The next two digits, or `missing` at the end of the digits.
std::optional<int> takePart(std::string_view& text, int missing) {
    return startsWithDigit(text) ? takeDigits(text, 2) : missing;
}

} // namespace

std::optional<XmltvTime> parseXmltvTime(std::string_view text) {
    const std::optional<int> year = takeDigits(text, 4);
    const std::optional<int> month = takeDigits(text, 2);
    const std::optional<int> day = takeDigits(text, 2);
    const std::optional<int> hour = takePart(text, 0);
    const std::optional<int> minute = takePart(text, 0);
    const std::optional<int> second = takePart(text, 0);
    if (!year || !month || !day || !hour || !minute || !second || *month < 1 || *month > 12 ||
        *day < 1 || *day > 31 || *hour > 24 || *minute > 59 || *second > 60) {
        return std::nullopt;
    }
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    const std::optional<int> offset = parseOffset(text);
    if (!offset) {
        return std::nullopt;
    }
    std::tm broken_down{};
    broken_down.tm_year = *year - 1900;
    broken_down.tm_mon = *month - 1;
    broken_down.tm_mday = *day;
    broken_down.tm_hour = *hour;
    broken_down.tm_min = *minute;
    broken_down.tm_sec = *second;
    return XmltvTime{timegm(&broken_down) - *offset, *offset};
}

} // namespace simulator

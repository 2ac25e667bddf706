#include "sessions/known_bytes.h"

#include <algorithm>

namespace sessions {
namespace {

/// A number at the start of a text, which is taken away. False when there is none.
bool takeNumber(std::string_view& text, size_t& number) {
    size_t digits = 0;
    number = 0;
    while (digits < text.size() && digits < 9 && text[digits] >= '0' && text[digits] <= '9') {
        number = number * 10 + static_cast<size_t>(text[digits++] - '0');
    }
    text.remove_prefix(digits);
    return digits > 0;
}

} // namespace

std::string unknownText(const std::vector<bool>& known) {
    std::string text;
    auto begin = std::find(known.begin(), known.end(), false);
    while (begin != known.end()) {
        const auto end = std::find(begin, known.end(), true);
        text += (text.empty() ? "" : ",") + std::to_string(begin - known.begin());
        if (end - begin > 1) {
            text += '-' + std::to_string(end - known.begin() - 1);
        }
        begin = std::find(end, known.end(), false);
    }
    return text;
}

Known knownOf(const std::vector<bool>& known, size_t begin, size_t size) {
    const size_t end = std::min(begin + size, known.size());
    if (begin >= end) {
        return Known::kAll;
    }
    const auto first = known.begin() + static_cast<ptrdiff_t>(begin);
    const auto last = known.begin() + static_cast<ptrdiff_t>(end);
    if (std::find(first, last, false) == last) {
        return Known::kAll;
    }
    return std::find(first, last, true) == last ? Known::kNone : Known::kSome;
}

std::vector<bool> knownBytes(std::string_view unknown, size_t size) {
    std::vector<bool> known(size, true);
    for (bool more = true; more;) {
        size_t first = 0;
        bool valid = takeNumber(unknown, first);
        size_t last = first;
        if (valid && !unknown.empty() && unknown.front() == '-') {
            unknown.remove_prefix(1);
            valid = takeNumber(unknown, last);
        }
        more = !unknown.empty() && unknown.front() == ',';
        if (!valid || last < first || (!more && !unknown.empty())) {
            return std::vector<bool>(size);
        }
        for (size_t at = first; at <= last && at < size; ++at) {
            known[at] = false;
        }
        unknown.remove_prefix(more ? 1 : 0);
    }
    return known;
}

} // namespace sessions

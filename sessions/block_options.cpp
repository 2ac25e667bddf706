#include "sessions/block_options.h"

#include <algorithm>
#include <iterator>

namespace sessions {
namespace {

constexpr std::string_view kKnownKeys[] = {"city", "seed", "clock", "version", "incomplete"};

/// The notes of a comment. False when it has lines that are none.
bool addNotes(Bytes comment, Notes& notes) {
    const std::string text(comment.data, comment.data + comment.size);
    bool all = true;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        const size_t sign = line.find('=');
        if (sign != std::string::npos && sign > 0) {
            notes.emplace_back(line.substr(0, sign), line.substr(sign + 1));
        } else {
            all = false;
        }
        begin = end + 1;
    }
    return all;
}

} // namespace

std::optional<Option> BlockOptions::next() {
    if (rest_.size < 4 || number16(rest_.data) == 0) {
        return std::nullopt;
    }
    Option option{number16(rest_.data), number16(rest_.data + 2), std::nullopt};
    const Bytes value = rest_.from(4);
    const size_t padded = (size_t{option.length} + 3) / 4 * 4;
    if (padded <= value.size) {
        option.value = value.first(option.length);
        rest_ = value.from(padded);
    } else {
        rest_ = {};
    }
    return option;
}

unsigned BlockOptions::number16(const uint8_t* bytes) const {
    const unsigned first = bytes[big_endian_ ? 1 : 0];
    const unsigned second = bytes[big_endian_ ? 0 : 1];
    return first | second << 8;
}

Notes readNotes(BlockOptions options) {
    Notes notes;
    while (const std::optional<Option> option = options.next()) {
        if (option->code == Option::kComment && option->value) {
            addNotes(*option->value, notes);
        }
    }
    return notes;
}

bool hasKnownNotesOnly(Bytes comment) {
    Notes notes;
    return addNotes(comment, notes) &&
           std::all_of(notes.begin(), notes.end(), [](const auto& note) {
               return std::find(std::begin(kKnownKeys), std::end(kKnownKeys), note.first) !=
                      std::end(kKnownKeys);
           });
}

const std::string* valueOf(const Notes& notes, std::string_view key) {
    const auto found = std::find_if(notes.begin(), notes.end(),
                                    [key](const auto& note) { return note.first == key; });
    return found != notes.end() ? &found->second : nullptr;
}

} // namespace sessions

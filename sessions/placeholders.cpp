#include "sessions/placeholders.h"

#include <algorithm>
#include <string_view>

namespace sessions {
namespace {

/// Longer ones never come out the same by chance.
constexpr size_t kLongestKept = 11;
constexpr size_t kMostKept = 100000;

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

/// The characters of a placeholder: the letters, or all bytes from 1 to 255.
struct Alphabet {
    bool letters;

    size_t size() const { return letters ? kLetters.size() : 255; }
    char at(size_t index) const { return letters ? kLetters[index] : static_cast<char>(index + 1); }
    size_t indexOf(char c) const {
        return letters ? kLetters.find(c) : size_t{static_cast<unsigned char>(c)} - 1;
    }
};

Bytes bytesOf(const std::string& text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

/// How many placeholders of that length there are, or a number above what is ever kept.
size_t capacity(const Alphabet& alphabet, size_t count) {
    size_t number = 1;
    for (size_t i = 0; i < count && number <= kMostKept; ++i) {
        number *= alphabet.size();
    }
    return number;
}

} // namespace

std::string Placeholders::letters(Bytes text) {
    return make(Form::kLetters, text, text.size);
}

std::string Placeholders::wideLetters(Bytes text) {
    std::string narrow;
    bool ascii = true;
    for (size_t i = 0; i + 1 < text.size; i += 2) {
        narrow += static_cast<char>(text.data[i]);
        ascii = ascii && text.data[i] < 0x80 && text.data[i + 1] == 0;
    }
    const std::string made = ascii ? make(Form::kLetters, bytesOf(narrow), narrow.size())
                                   : make(Form::kWideLetters, text, narrow.size());
    std::string wide;
    for (const char letter : made) {
        wide += letter;
        wide += '\0';
    }
    return wide;
}

std::string Placeholders::bytes(Bytes value) {
    return make(Form::kBytes, value, value.size);
}

std::string Placeholders::make(Form form, Bytes value, size_t count) {
    if (count == 0) {
        return {};
    }
    std::string name(1, static_cast<char>(form));
    name.append(reinterpret_cast<const char*>(value.data), value.size);
    if (count > kLongestKept) {
        return fresh(form, name, count);
    }
    const auto known = given_.find(name);
    if (known != given_.end()) {
        return known->second;
    }
    std::string placeholder = fresh(form, name, count);
    if (given_.size() < kMostKept) {
        placeholder = unused(form, std::move(placeholder));
        given_.emplace(std::move(name), placeholder);
    }
    return placeholder;
}

/// What the key makes of a value.
std::string Placeholders::fresh(Form form, const std::string& form_and_value, size_t count) const {
    const Alphabet alphabet{form != Form::kBytes};
    const HashKey other{~key_.low, ~key_.high};
    const HashKey own{keyedHash(key_, bytesOf(form_and_value)),
                      keyedHash(other, bytesOf(form_and_value))};
    // Bytes above the last multiple would make some characters likelier than others.
    const size_t last = 256 / alphabet.size() * alphabet.size();
    std::string placeholder;
    for (uint32_t block = 0; placeholder.size() < count; ++block) {
        const uint8_t number[4] = {static_cast<uint8_t>(block), static_cast<uint8_t>(block >> 8),
                                   static_cast<uint8_t>(block >> 16),
                                   static_cast<uint8_t>(block >> 24)};
        uint64_t random = keyedHash(own, {number, sizeof number});
        for (int i = 0; i < 8 && placeholder.size() < count; ++i, random >>= 8) {
            const auto drawn = static_cast<size_t>(random & 0xff);
            if (drawn < last) {
                placeholder += alphabet.at(drawn % alphabet.size());
            }
        }
    }
    return placeholder;
}

/// The first placeholder from `first` on that no other value has; `first` when there is none left.
std::string Placeholders::unused(Form form, std::string first) {
    const Alphabet alphabet{form != Form::kBytes};
    size_t& used = used_of_length_[{form, first.size()}];
    if (used >= capacity(alphabet, first.size())) {
        return first;
    }
    std::string placeholder = std::move(first);
    while (!used_.insert(static_cast<char>(form) + placeholder).second) {
        // The next one in the order of the alphabet; after the last comes the first.
        for (char& c : placeholder) {
            const size_t next = (alphabet.indexOf(c) + 1) % alphabet.size();
            c = alphabet.at(next);
            if (next != 0) {
                break;
            }
        }
    }
    ++used;
    return placeholder;
}

} // namespace sessions

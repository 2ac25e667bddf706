// The texts of a table, without an address for each of them.
//
// The load looks up hundreds of Java names by text. In a table of pointers the loader would have to
// adjust each one, and each name would repeat the package that it is in. So the texts of a table
// are packed while compiling: one after the other, each found by its offset, and with one byte in
// the place of a word that many of them have.
//
//     struct ClassNames {
//         static constexpr int kCount = kClassCount;
//         static constexpr const char* at(int id) { return kClassTable[id].name; }
//     };
//     constexpr PackedTexts<ClassNames> kClassNames;
//     ...
//     char name[kClassNames.kLongest + 1];
//     kClassNames.read(id, name);
#pragma once

#include "binding/java_names.h"

#include <cstddef>
#include <cstdint>
#include <limits>

namespace packed_text {

/// A word that one byte takes the place of.
struct Word {
    char text[56];
};

/// Byte N takes the place of kWords[N - 1]. The first word that a text has at a place is taken, so
/// a word comes after those that begin with it.
inline constexpr Word kWords[] = {
    {VALUE_PACKAGE "/BG_TS_DTVSVLIB_"},
    {VALUE_PACKAGE "/"},
    {EVENT_PACKAGE("notify") "/BG_EV_DTVSV_"},
    {EVENT_PACKAGE("request") "/BG_EV_DTVSV_"},
    {EVENT_PACKAGE("response") "/BG_EV_DTVSV_"},
    {SERVICE_PACKAGE "/"},
    {"onEvDtvsv"},
    {"DtvSvLib_"},
    {"<init>"},
};
constexpr int kWordCount = sizeof(kWords) / sizeof(kWords[0]);
static_assert(kWordCount < ' ', "the bytes of the words are none of a text's own");

/// How many characters of `text` are the word at its beginning; 0 when it begins otherwise. Plain
/// loops, here and below: a compiler counts each step that it takes.
constexpr size_t match(const char* text, const Word& word) {
    size_t length = 0;
    while (word.text[length] != '\0') {
        if (text[length] != word.text[length]) {
            return 0;
        }
        ++length;
    }
    return length;
}

constexpr size_t length(const char* text) {
    size_t length = 0;
    while (text[length] != '\0') {
        ++length;
    }
    return length;
}

/// What comes first in a text: the byte that is packed for it, and how many characters that is.
struct Step {
    char byte;
    size_t taken;
};

constexpr Step firstOf(const char* text) {
    for (int number = 0; number < kWordCount; ++number) {
        if (*text == kWords[number].text[0]) {
            if (const size_t taken = match(text, kWords[number]); taken != 0) {
                return {static_cast<char>(number + 1), taken};
            }
        }
    }
    return {*text, 1};
}

/// How many bytes a text takes when it is packed, with its end.
constexpr size_t packedLength(const char* text) {
    size_t bytes = 1;
    while (*text != '\0') {
        text += firstOf(text).taken;
        ++bytes;
    }
    return bytes;
}

/// Unpacks a text and its end into `out`. Returns where the next byte would go.
char* unpack(const char* packed, char* out);

template <class Table>
constexpr size_t packedBytes() {
    size_t bytes = 0;
    for (int i = 0; i < Table::kCount; ++i) {
        bytes += packedLength(Table::at(i));
    }
    return bytes;
}

template <class Table>
constexpr size_t longest() {
    size_t most = 0;
    for (int i = 0; i < Table::kCount; ++i) {
        const size_t characters = length(Table::at(i));
        most = characters > most ? characters : most;
    }
    return most;
}

/// The bytes of all texts of a table with their ends, unpacked.
template <class Table>
constexpr size_t unpackedBytes() {
    size_t bytes = 0;
    for (int i = 0; i < Table::kCount; ++i) {
        bytes += length(Table::at(i)) + 1;
    }
    return bytes;
}

} // namespace packed_text

/// The texts of a Table, which has their number as kCount and each of them as at(index).
template <class Table>
class PackedTexts {
public:
    /// Characters of the longest text, without its end.
    static constexpr size_t kLongest = packed_text::longest<Table>();

    constexpr PackedTexts() {
        size_t end = 0;
        for (int i = 0; i < Table::kCount; ++i) {
            begin_[i] = static_cast<uint16_t>(end);
            for (const char* text = Table::at(i); *text != '\0';) {
                const packed_text::Step step = packed_text::firstOf(text);
                bytes_[end++] = step.byte;
                text += step.taken;
            }
            bytes_[end++] = '\0';
        }
    }

    /// Writes text `index` and its end. Returns where the next byte would go.
    char* read(int index, char* out) const {
        return packed_text::unpack(bytes_ + begin_[index], out);
    }

private:
    static constexpr size_t kBytes = packed_text::packedBytes<Table>();
    static_assert(kBytes <= std::numeric_limits<uint16_t>::max());

    uint16_t begin_[Table::kCount] = {};
    char bytes_[kBytes] = {};
};

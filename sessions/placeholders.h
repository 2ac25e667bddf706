// What a redacted message has in place of a text or of bytes.
#pragma once

#include "sessions/bytes.h"
#include "sessions/keyed_hash.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace sessions {

/// Makes placeholders as long as the values they replace: the same one for equal values, another
/// one for each other value as long as there are any of its length. Without the key nobody can find
/// out a value by trying. Of short values, where chance would soon give two of them one
/// placeholder, the first 100,000 are kept in memory; after these, that may happen.
///
/// For one thread at a time.
class Placeholders {
public:
    explicit Placeholders(const HashKey& key) : key_(key) {}

    /// For a text: an ASCII letter for each byte.
    std::string letters(Bytes text);

    /// For a text of 16-bit units, little-endian: an ASCII letter for each unit, each followed by a
    /// zero byte. An ASCII text has the letters that it has in UTF-8. `text` has whole units.
    std::string wideLetters(Bytes text);

    /// For other bytes: as many, none of them zero.
    std::string bytes(Bytes value);

private:
    enum class Form : char {
        kLetters = 'a',
        kWideLetters = 'w',
        kBytes = 'b'
    };

    std::string make(Form form, Bytes value, size_t count);
    std::string fresh(Form form, const std::string& form_and_value, size_t count) const;
    std::string unused(Form form, std::string first);

    const HashKey key_;
    std::map<std::string, std::string> given_; ///< by form and value
    std::set<std::string> used_;               ///< form and placeholder
    std::map<std::pair<Form, size_t>, size_t> used_of_length_;
};

} // namespace sessions

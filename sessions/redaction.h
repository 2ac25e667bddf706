// Messages without the contents of their texts and bytes, so that they can be given to others.
#pragma once

#include "sessions/message.h"
#include "sessions/placeholders.h"

#include "records/catalogue.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sessions {

/// A text or byte field that keeps its content.
struct PublicField {
    std::string_view message;
    std::string_view field;   ///< as in the record: network.ts_name; answer.<field> in an answer
    std::string_view what_is; ///< in a word: "station"
};

/// In the order of the messages.
const std::vector<PublicField>& publicFields();

bool isPublic(std::string_view message, std::string_view field);

/// Of the notes of a section or of a packet those that say nothing of anybody, in their order: with
/// a key of docs/capture.md, and a value as that key has it. `dropped` is increased by the number
/// of those whose value alone is another.
Notes publicNotes(const Notes& notes, uint64_t& dropped);

/// Replaces the contents of texts and bytes by placeholders of the same length. One object is for
/// all that is given to others at a time: it gives equal values equal placeholders, and no other
/// object gives the same. For one thread at a time.
///
/// Numbers stay, and the public fields. All other bytes of a record are replaced, whatever they
/// are: those of a text after its end, reserved ones, those after the layout, a record without a
/// layout. Zero bytes at the end of bytes stay, and so do those from the end of a text to what
/// follows.
class Redaction {
public:
    explicit Redaction(const HashKey& key) : placeholders_(key) {}

    /// Replaces what is in the record. Byte 3 of the header becomes zero, for nobody knows what it
    /// means.
    void redact(Message& message);

    /// A text of that field of a message as it is elsewhere than in its record; as long in bytes,
    /// and the same that redact() puts into the record. `field` is as in PublicField.
    std::string redactedText(std::string_view message, std::string_view field,
                             std::string_view text);

    /// How many values were replaced.
    uint64_t count() const { return count_; }

private:
    /// Bytes of a record that are no number.
    struct Part {
        size_t offset;
        size_t size;
        catalogue::Kind kind; ///< kBytes, kText or kUtf16Text
        bool is_public;
    };

    const std::vector<Part>& partsOf(const catalogue::Message& known, bool answer);
    static void addParts(std::string_view message, const std::string& path,
                         const catalogue::Record& layout, size_t start, std::vector<Part>& parts);
    void redactText(uint8_t* bytes, size_t size, bool is_public);
    void redactWideText(uint8_t* bytes, size_t size, bool is_public);
    void redactBytes(uint8_t* bytes, size_t size);
    void put(const std::string& placeholder, uint8_t* bytes);

    Placeholders placeholders_;
    std::map<std::pair<int, bool>, std::vector<Part>> parts_; ///< by id, and whether of the answer
    uint64_t count_ = 0;
};

} // namespace sessions

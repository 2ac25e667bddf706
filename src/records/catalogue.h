// What is known of the messages by name: their numbers, their records, the fields of those. For
// what shows messages to people and takes them from people.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

struct Record;

/// What the bytes of a field mean.
enum class Kind {
    kUnsigned, ///< little-endian
    kSigned,   ///< little-endian
    kBytes,
    kText,      ///< UTF-8 that ends at its first zero byte or with the field
    kUtf16Text, ///< UTF-16LE that ends at its first zero unit or with the field
    kRecord,    ///< described by `record`
};

struct Field {
    std::string name;
    size_t offset; ///< bytes from the record's start
    size_t size;   ///< bytes of one element; of the whole field for bytes and texts
    size_t count;  ///< elements: 1, or the length of an array
    Kind kind;
    const Record* record; ///< of an element, or null
};

struct Record {
    std::string name;
    size_t size = 0; ///< bytes
    /// In the order of their offsets; reserved bytes have none.
    std::vector<Field> fields;
};

struct Message {
    int id;
    std::string_view name;
    const Record* record;
    const Record* reply; ///< of a synchronous command; null for others
    int reply_event;     ///< id of the event that reports a command's outcome; 0: there is none
};

/// In the order of their ids.
const std::vector<Message>& commands();
const std::vector<Message>& events();

/// The message with that number, or null.
const Message* find(int id);
/// The message with that name, as "SelectChannel" or "ScanNotify", or null.
const Message* find(std::string_view name);

} // namespace catalogue

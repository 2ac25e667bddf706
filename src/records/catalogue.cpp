#include "records/catalogue.h"

#include <algorithm>
#include <type_traits>

namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;

/// The description of a record; there from the first mention, filled while the program starts.
template <class Type>
Record& recordOf() {
    static Record& record = *new Record;
    return record;
}

template <class Type>
bool describeRecord(const char* name) {
    recordOf<Type>().name = name;
    recordOf<Type>().size = sizeof(Type);
    return true;
}

template <class Element>
constexpr Kind kindOf(bool is_array) {
    if (std::is_class_v<Element>) {
        return Kind::kRecord;
    }
    if (std::is_same_v<Element, char>) {
        return Kind::kText;
    }
    if (is_array && sizeof(Element) == 1) {
        return Kind::kBytes;
    }
    return std::is_signed_v<Element> ? Kind::kSigned : Kind::kUnsigned;
}

template <class Owner, class Type>
bool describeField(const char* name, size_t offset) {
    using Element = std::remove_extent_t<Type>;
    constexpr Kind kind = kindOf<Element>(std::is_array_v<Type>);
    constexpr bool whole = kind == Kind::kBytes || kind == Kind::kText;
    Field field{name,
                offset,
                whole ? sizeof(Type) : sizeof(Element),
                whole || !std::is_array_v<Type> ? 1 : std::extent_v<Type>,
                kind,
                nullptr};
    if constexpr (std::is_class_v<Element>) {
        field.record = &recordOf<Element>();
    }
    recordOf<Owner>().fields.push_back(std::move(field));
    return true;
}

} // namespace

#define DTV_DESCRIBE_RECORD(record)                                                                \
    [[maybe_unused]] static const bool described_##record = describeRecord<record>(#record);
#define DTV_DESCRIBE_FIELD(record, field)                                                          \
    [[maybe_unused]] static const bool described_##record##_##field =                              \
        describeField<record, decltype(record::field)>(#field, offsetof(record, field));

#include "records/messages.h"

namespace catalogue {
namespace {

/// The texts of the guide are not bytes as all others are.
[[maybe_unused]] const bool guide_texts = [] {
    for (Field& field : recordOf<PRG_INFO>().fields) {
        if (field.kind == Kind::kText) {
            field.kind = Kind::kUtf16Text;
        }
    }
    return true;
}();

const std::vector<Message> kCommands{
#define COMMAND(id, name, record, reply_event)                                                     \
    {id, #name, &recordOf<record>(), nullptr, event_id::k##reply_event},
#define EXCHANGE(id, name, record, reply, java_class)                                              \
    {id, #name, &recordOf<record>(), &recordOf<reply>(), event_id::kNO_REPLY},
#include "records/message_table.def"
};

const std::vector<Message> kEvents{
#define REPLY(id, name, record, java_class) {id, #name, &recordOf<record>(), nullptr, 0},
#define EVENT(id, name, record, handler, java_class) REPLY(id, name, record, java_class)
#include "records/message_table.def"
};

template <class Wanted>
const Message* findWhere(Wanted wanted) {
    for (const std::vector<Message>* messages : {&kCommands, &kEvents}) {
        const auto found = std::find_if(messages->begin(), messages->end(), wanted);
        if (found != messages->end()) {
            return &*found;
        }
    }
    return nullptr;
}

} // namespace

const std::vector<Message>& commands() {
    return kCommands;
}

const std::vector<Message>& events() {
    return kEvents;
}

const Message* find(int id) {
    return findWhere([id](const Message& message) { return message.id == id; });
}

const Message* find(std::string_view name) {
    return findWhere([name](const Message& message) { return message.name == name; });
}

} // namespace catalogue

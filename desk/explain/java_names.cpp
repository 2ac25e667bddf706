#include "desk/explain/java_names.h"

#include "records/message_ids.h"

namespace explain {
namespace {

struct ClassRow {
    int id;
    std::string_view name;
    std::string_view callback; ///< empty: the class is not that of an event
};

constexpr ClassRow kClasses[] = {
#define CLASS(id, package, name) {id, #name, ""},
#define VALUE(id, name, constructor_id, constructor) {id, #name, ""},
#define EVENT(id, kind, name, constructor_id, constructor, callback_id, callback)                  \
    {id, #name, #callback},
#include "binding/class_table.def"
};

struct EventRow {
    std::string_view java_class;
    std::string_view name;
};

constexpr EventRow kEvents[] = {
#define REPLY(id, name, record, java_class) {#java_class, #name},
#define EVENT(id, name, record, handler, java_class) {#java_class, #name},
#include "records/message_table.def"
};

} // namespace

std::string_view classNamed(int class_id) {
    for (const ClassRow& row : kClasses) {
        if (row.id == class_id) {
            return row.name;
        }
    }
    return {};
}

int classIdOf(std::string_view name) {
    name = name.substr(name.find_last_of("/.") + 1);
    for (const ClassRow& row : kClasses) {
        if (row.name == name) {
            return row.id;
        }
    }
    return -1;
}

std::string_view eventOfCallback(std::string_view method) {
    for (const ClassRow& row : kClasses) {
        if (row.callback.empty() || row.callback != method) {
            continue;
        }
        for (const EventRow& event : kEvents) {
            if (event.java_class == row.name) {
                return event.name;
            }
        }
    }
    return {};
}

} // namespace explain

// The Java classes that the bridge addresses, by number.
#pragma once

#include "binding/java_names.h"

/// Class ids: the index of a class in the class registry. class_id::kBGCallBack is 0.
namespace class_id {
enum : int {
#define CLASS(id, package, name) k##name = (id),
#define VALUE(id, name, constructor_id, constructor) k##name = (id),
#define EVENT(id, kind, name, constructor_id, constructor, callback_id, callback) k##name = (id),
#include "binding/class_table.def"
};
} // namespace class_id

/// One row of the class table.
struct ClassRow {
    int id;
    const char* name; ///< the class's binary name, with slashes
};

/// Row N describes class id N.
inline constexpr ClassRow kClassTable[] = {
#define CLASS(id, package, name) {id, package "/" #name},
#define VALUE(id, name, constructor_id, constructor) {id, VALUE_PACKAGE "/" #name},
#define EVENT(id, kind, name, constructor_id, constructor, callback_id, callback)                  \
    {id, EVENT_PACKAGE(kind) "/" #name},
#include "binding/class_table.def"
};
constexpr int kClassCount = sizeof(kClassTable) / sizeof(kClassTable[0]);

/// The class that the native methods are registered on. The registry does not hold it.
constexpr const char* kNativeClassName = SERVICE_PACKAGE "/DtvServerProxy";

namespace class_table {
constexpr bool isInOrder() {
    for (int id = 0; id < kClassCount; ++id) {
        if (kClassTable[id].id != id) {
            return false;
        }
    }
    return true;
}
static_assert(isInOrder(), "the rows of class_table.def are in the order of their class ids");
} // namespace class_table

// The Java methods that the bridge calls, by number: constructors of events and values, and the
// callbacks that take the events. They are stated in the rows of the classes.
#pragma once

#include "binding/class_table.h"

/// Method ids: the index of a method in the method registry and in the table below. A constructor
/// is named kNew_ and its class; the callback that takes an event kCall_ and the event's class.
enum TE_DTVSV_METHODID : int {
#define VALUE(id, name, constructor_id, constructor) kNew_##name = (constructor_id),
#define EVENT(id, kind, name, constructor_id, constructor, callback_id, callback)                  \
    kNew_##name = (constructor_id), kCall_##name = (callback_id),
#include "binding/class_table.def"
};

/// attr_id: how a method is looked up and called. No other value is used.
constexpr int kInstanceMethod = 0;
constexpr int kStaticMethod = 1;

/// type_id: what a method returns. No method of the table returns anything.
constexpr int kReturnsVoid = 0;

/// One row of the method table.
struct MethodRow {
    int class_id;
    int attr_id;
    int type_id;
    const char* name;
    const char* signature;
};

namespace method_table {

constexpr int kCount = 0
#define VALUE(id, name, constructor_id, constructor) +1
#define EVENT(id, kind, name, constructor_id, constructor, callback_id, callback) +2
#include "binding/class_table.def"
    ;

struct Table {
    MethodRow rows[kCount] = {};
    bool is_complete = true;

    constexpr Table();

private:
    constexpr void put(int id, const MethodRow& row) {
        if (id < 0 || id >= kCount || rows[id].name != nullptr) {
            is_complete = false;
        } else {
            rows[id] = row;
        }
    }
    constexpr void putConstructor(int id, int class_id, const char* signature) {
        put(id, {class_id, kInstanceMethod, kReturnsVoid, "<init>", signature});
    }
    constexpr void putCallback(int id, const char* name, const char* signature) {
        put(id, {class_id::kBGCallBack, kStaticMethod, kReturnsVoid, name, signature});
    }
};

constexpr Table::Table() {
#define VALUE(id, name, constructor_id, constructor)                                               \
    putConstructor(constructor_id, id, constructor);
#define EVENT(id, kind, name, constructor_id, constructor, callback_id, callback)                  \
    putConstructor(constructor_id, id, constructor);                                               \
    putCallback(callback_id, #callback, "(L" EVENT_PACKAGE(kind) "/" #name ";)V");
#include "binding/class_table.def"
}

inline constexpr Table kTable;
static_assert(kTable.is_complete, "the method ids of class_table.def are 0, 1, 2 ... each once");

} // namespace method_table

constexpr int kMethodCount = method_table::kCount;

/// Row N describes method id N.
inline constexpr const MethodRow (&kMethodTable)[kMethodCount] = method_table::kTable.rows;

namespace method_table {
constexpr int findConstructor(int class_id) {
    for (int id = 0; id < kMethodCount; ++id) {
        if (kMethodTable[id].class_id == class_id && kMethodTable[id].attr_id == kInstanceMethod) {
            return id;
        }
    }
    return kMethodCount;
}
} // namespace method_table

/// The constructor of a class of the class table. A class without one does not compile.
template <int ClassId>
constexpr TE_DTVSV_METHODID kConstructorOf = [] {
    constexpr int kId = method_table::findConstructor(ClassId);
    static_assert(kId < kMethodCount, "the class's row states a constructor");
    return static_cast<TE_DTVSV_METHODID>(kId);
}();

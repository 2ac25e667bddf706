// The Java methods that the bridge calls, by number: constructors of events and values, and the
// callbacks that take the events.
#pragma once

#include "binding/class_table.h"

/// Method ids: the index of a method in the method registry and in the table below. A callback is
/// named kCall_ and its Java name, a constructor kNew_ and its class.
enum TE_DTVSV_METHODID : int {
#define CALLBACK(id, name, signature) kCall_##name,
#define CONSTRUCTOR(id, name, signature) kNew_##name,
#include "binding/method_table.def"
#undef CALLBACK
#undef CONSTRUCTOR
    kMethodCount
};
static_assert(kMethodCount == 219, "ids 0 to 218");
#define CALLBACK(id, name, signature) static_assert(kCall_##name == (id), "rows stand in order");
#define CONSTRUCTOR(id, name, signature) static_assert(kNew_##name == (id), "rows stand in order");
#include "binding/method_table.def"
#undef CALLBACK
#undef CONSTRUCTOR

/// attr_id: how a method is looked up and called. Any other value is that of an instance method.
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

/// Row N describes method id N.
constexpr MethodRow kMethodTable[kMethodCount] = {
#define CALLBACK(id, name, signature)                                                              \
    {class_id::kBGCallBack, kStaticMethod, kReturnsVoid, #name, signature},
#define CONSTRUCTOR(id, name, signature)                                                           \
    {class_id::k##name, kInstanceMethod, kReturnsVoid, "<init>", signature},
#include "binding/method_table.def"
#undef CALLBACK
#undef CONSTRUCTOR
};

/// The Java name of the class that a method belongs to.
constexpr const char* classNameOf(TE_DTVSV_METHODID method) {
    return kClassNames[kMethodTable[method].class_id + 1];
}

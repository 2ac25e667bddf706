// The Java classes that the bridge addresses, by number.
#pragma once

/// Class ids: the index of a class in the class registry. class_id::kBGCallBack is 0.
namespace class_id {
enum : int {
#define CLASS(id, name, java_name) k##name,
#include "binding/class_table.def"
#undef CLASS
    kCount
};
#define CLASS(id, name, java_name) static_assert(k##name == (id), "class rows stand in order");
#include "binding/class_table.def"
#undef CLASS
} // namespace class_id

constexpr int kClassCount = class_id::kCount;
static_assert(kClassCount == 139, "ids 0 to 138");

/// The class that declares the native methods, then the classes of the registry: class id N is
/// entry N + 1.
constexpr const char* kClassNames[kClassCount + 1] = {
    "tenrik/service/dtvserver/DtvServerProxy",
#define CLASS(id, name, java_name) java_name,
#include "binding/class_table.def"
#undef CLASS
};

/// The class that the native methods are registered on. The registry does not hold it.
constexpr const char* kNativeClassName = kClassNames[0];

// The Java classes and methods that the bridge uses, by their numbers in its tables.
#pragma once

#include <string>
#include <string_view>

namespace explain {

/// The class with that number, without its package; empty when there is none.
std::string_view classNamed(int class_id);
/// The number of the class with that name, which may have its package before it; -1: there is none.
int classIdOf(std::string_view name);

/// The name of the event whose callback that method of BGCallBack is; empty when there is none.
std::string_view eventOfCallback(std::string_view method);

} // namespace explain

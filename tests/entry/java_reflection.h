// What a Java class declares, found out by reflection.
#pragma once

#include <jni.h>

#include <string>
#include <vector>

namespace harness {

/// "name descriptor" of every method that the class declares and whose modifiers hold all of
/// `modifiers` (java.lang.reflect.Modifier's bits), sorted.
std::vector<std::string> declaredMethods(const std::string& class_name, int modifiers);

constexpr int staticModifier = 0x8;
constexpr int nativeModifier = 0x100;

} // namespace harness

// What the Java side of the system offers to the bridge, as literals.
#pragma once

#include <jni.h>

#include <string>
#include <vector>

namespace expected {

/// How many there are of each. Tables.AreWhole compares the tables with these numbers; the other
/// tests take them from here.
constexpr int classCount = 139;
constexpr int methodCount = 219;
constexpr int callbackCount = 83; ///< methods that are static
constexpr int constructorCount = methodCount - callbackCount;
constexpr int nativeCount = 65;
constexpr int eventCount = 83;

/// Names with slashes; the index is the class id.
extern const std::vector<std::string> classes;

struct Method {
    int method_id;
    int class_id;
    int attr_id; ///< 1: static
    std::string name;
    std::string signature;
};
/// In the order of their ids.
extern const std::vector<Method> methods;

struct Native {
    std::string name;
    std::string signature;
};
/// In the order of their registration.
extern const std::vector<Native> natives;

} // namespace expected

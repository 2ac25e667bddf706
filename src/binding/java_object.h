// References to Java objects whose class is known when compiling.
#pragma once

#include <jni.h>

/// A local reference to an object of a class of the class table, or null.
template <int ClassId>
struct Object {
    jobject reference;
};

/// A local reference to an array of such objects, or null.
template <int ClassId>
struct ObjectArray {
    jobjectArray reference;
};

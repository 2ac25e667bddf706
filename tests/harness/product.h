// The built bridge, loaded as the Java service loads it.
#pragma once

#include <jni.h>

#include <string>
#include <vector>

namespace harness {

/// libDtv_jni.so in this process. It is loaded once, and stays.
class Product {
public:
    /// Loads it from a class of the application's class loader. Empty when the VM took it (now or
    /// before), otherwise what the VM threw. The file is the built one, or DTV_JNI_LIBRARY's.
    static std::string load();

    /// The same from a class loader of its own that lacks some classes, given by their names with
    /// dots. Everything the harness looks up afterwards comes from that loader. Only for a process
    /// that has not loaded the bridge yet.
    static std::string loadWithout(const std::vector<std::string>& hidden_classes);

    static std::string file();

    /// A class by its name with slashes, through the loader that the bridge was loaded with. A Java
    /// exception is pending when the answer is null.
    static jclass findClass(const std::string& name);
};

} // namespace harness

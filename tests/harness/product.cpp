#include "harness/product.h"

#include "harness/java_objects.h"
#include "harness/virtual_machine.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>

namespace harness {
namespace {

jobject loader = nullptr; ///< a global reference; null: the application's class loader
bool loaded = false;

std::string loadThrough(jclass loading) {
    LocalFrame frame;
    if (loading == nullptr) {
        return "no class to load with: " + takeException();
    }
    JNIEnv* jni = env();
    jmethodID id =
        jni->GetStaticMethodID(loading, "load", "(Ljava/lang/String;)Ljava/lang/String;");
    if (id == nullptr) {
        return takeException();
    }
#ifdef DTV_SANITIZED
    // This VM reads a refused library's name after it has unloaded it, which the address sanitizer
    // reports. So the library is never unloaded.
    static void* const kept = dlopen(Product::file().c_str(), RTLD_LAZY);
    (void)kept;
#endif
    StrictJni::watch(Product::file());
    jstring path = jni->NewStringUTF(Product::file().c_str());
    auto refusal = static_cast<jstring>(jni->CallStaticObjectMethod(loading, id, path));
    StrictJni::forgetLocals();
    std::string thrown = takeException();
    if (thrown.empty() && refusal == nullptr) {
        loaded = true;
    }
    return !thrown.empty() ? thrown : toText(refusal);
}

} // namespace

std::string Product::file() {
    const char* other = std::getenv("DTV_JNI_LIBRARY");
    return other != nullptr ? other : DTV_JNI_LIBRARY_FILE;
}

std::string Product::load() {
    return loaded ? "" : loadThrough(findClass("harness/Loading"));
}

std::string Product::loadWithout(const std::vector<std::string>& hidden_classes) {
    if (loaded) {
        return "the bridge is loaded already";
    }
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass of = findClass("harness/HidingClassLoader");
    jclass text = jni->FindClass("java/lang/String");
    jobjectArray hidden =
        jni->NewObjectArray(static_cast<jsize>(hidden_classes.size()), text, nullptr);
    if (of == nullptr || hidden == nullptr) {
        return takeException();
    }
    for (size_t i = 0; i < hidden_classes.size(); ++i) {
        jstring name = jni->NewStringUTF(hidden_classes[i].c_str());
        jni->SetObjectArrayElement(hidden, static_cast<jsize>(i), name);
        if (jni->ExceptionCheck()) {
            return takeException();
        }
        jni->DeleteLocalRef(name);
    }
    jmethodID constructor = jni->GetMethodID(of, "<init>", "([Ljava/lang/String;)V");
    if (constructor == nullptr) {
        return takeException();
    }
    jobject made = jni->NewObject(of, constructor, hidden);
    if (made == nullptr) {
        return takeException();
    }
    loader = jni->NewGlobalRef(made);
    return loadThrough(findClass("harness/Loading"));
}

jclass Product::findClass(const std::string& name) {
    JNIEnv* jni = env();
    if (loader == nullptr) {
        return jni->FindClass(name.c_str());
    }
    jclass of = jni->FindClass("java/lang/Class");
    jmethodID for_name = jni->GetStaticMethodID(
        of, "forName", "(Ljava/lang/String;ZLjava/lang/ClassLoader;)Ljava/lang/Class;");
    if (for_name == nullptr) {
        return nullptr;
    }
    std::string dotted = name;
    std::replace(dotted.begin(), dotted.end(), '/', '.');
    jstring text = jni->NewStringUTF(dotted.c_str());
    jobject found = jni->CallStaticObjectMethod(of, for_name, text, JNI_TRUE, loader);
    return jni->ExceptionCheck() ? nullptr : static_cast<jclass>(found);
}

} // namespace harness

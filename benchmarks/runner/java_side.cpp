#include "runner/java_side.h"

#include "runner/virtual_machine.h"

#include <gui/Surface.h>

#include <cstdint>

namespace bench {
namespace {

/// The surface of all planes; never given back.
jint surfaceAddress() {
    static android::Surface* const surface = [] {
        auto* const made = new android::Surface;
        made->incStrong(made);
        return made;
    }();
    return static_cast<jint>(reinterpret_cast<uintptr_t>(surface));
}

jclass countingClass() {
    static const jclass counting = findClass("tenrik/bench/CountingListener");
    return counting;
}

} // namespace

jclass variantsClass() {
    static const jclass variants = findClass("tenrik/bench/Variants");
    return variants;
}

std::string vmName() {
    const jmethodID name = findStaticMethod(variantsClass(), "vm", "()Ljava/lang/String;");
    const auto text = static_cast<jstring>(env()->CallStaticObjectMethod(variantsClass(), name));
    requireNoException("vm");
    return textOf(text);
}

void loadBridge(const std::string& file) {
    const jmethodID load = findStaticMethod(variantsClass(), "load", "(Ljava/lang/String;)V");
    env()->CallStaticVoidMethod(variantsClass(), load, env()->NewStringUTF(file.c_str()));
    requireNoException(file.c_str());
}

void installCounting() {
    env()->CallStaticVoidMethod(countingClass(),
                                findStaticMethod(countingClass(), "install", "()V"));
    requireNoException("install");
}

Arrived arrivedEvents() {
    static const jmethodID count = findStaticMethod(countingClass(), "count", "()J");
    static const jmethodID sum = findStaticMethod(countingClass(), "sum", "()J");
    return {env()->CallStaticLongMethod(countingClass(), count),
            env()->CallStaticLongMethod(countingClass(), sum)};
}

std::string describeEvent(const std::function<void()>& work) {
    static const jmethodID describe = findStaticMethod(countingClass(), "describe", "(Z)V");
    static const jmethodID description =
        findStaticMethod(countingClass(), "description", "()Ljava/lang/String;");
    env()->CallStaticVoidMethod(countingClass(), describe, JNI_TRUE);
    work();
    const auto text =
        static_cast<jstring>(env()->CallStaticObjectMethod(countingClass(), description));
    requireNoException("description");
    std::string described = textOf(text);
    env()->DeleteLocalRef(text);
    env()->CallStaticVoidMethod(countingClass(), describe, JNI_FALSE);
    return described;
}

jobject makeProxy(const char* method) {
    const jmethodID make = findStaticMethod(variantsClass(), method, "()Ljava/lang/Object;");
    const jobject proxy = env()->CallStaticObjectMethod(variantsClass(), make);
    requireNoException(method);
    return proxy;
}

jobject makeCommandLoop(jobject proxy) {
    const jmethodID make =
        findStaticMethod(variantsClass(), "commandLoop", "(Ljava/lang/Object;I)Ljava/lang/Object;");
    const jobject loop =
        env()->CallStaticObjectMethod(variantsClass(), make, proxy, surfaceAddress());
    requireNoException("commandLoop");
    return env()->NewGlobalRef(loop);
}

Variant loopVariant(const std::string& name, jobject loop, const char* method_name) {
    const jmethodID method = findMethod(env()->GetObjectClass(loop), method_name, "(I)I");
    return {name, [name, loop, method_name, method](int count) {
                const jint went_well = env()->CallIntMethod(loop, method, count);
                requireNoException(method_name);
                if (went_well != count) {
                    giveUp(name + ": " + method_name + " was not answered as it should be");
                }
            }};
}

} // namespace bench

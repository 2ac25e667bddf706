#include "soak/machine.h"

#include "strict_jni/strict_jni.h"

#include <gui/Surface.h>

#include <cstdio>
#include <cstdlib>

namespace soak {
namespace {

[[noreturn]] void giveUp(const std::string& why) {
    std::fprintf(stderr, "soak: %s\n", why.c_str());
    std::exit(2);
}

void report(const std::string& text) {
    std::fprintf(stderr, "soak: the JNI table says: %s\n", text.c_str());
    std::abort();
}

} // namespace

Machine::Machine() {
    // The heap has its full size from the beginning, and compiler threads neither come nor go, so
    // that the process's memory and threads change with what the soak does alone.
    std::string texts[] = {"-Djava.class.path=" SOAK_CLASS_PATH,
                           "-Xms64m",
                           "-Xmx64m",
                           "-XX:+AlwaysPreTouch",
                           "-XX:+UseSerialGC",
                           "-XX:TieredStopAtLevel=1",
                           "-XX:-UseDynamicNumberOfCompilerThreads",
                           "-XX:-UsePerfData",
                           "-XX:+ErrorFileToStderr",
                           "-XX:-CreateCoredumpOnCrash"};
    std::vector<JavaVMOption> options;
    for (std::string& text : texts) {
        options.push_back({text.data(), nullptr});
    }
    JavaVMInitArgs arguments = {JNI_VERSION_1_8, static_cast<jint>(options.size()), options.data(),
                                JNI_FALSE};
    JavaVM* vm = nullptr;
    void* env = nullptr;
    if (JNI_CreateJavaVM(&vm, &env, &arguments) != JNI_OK) {
        giveUp("the Java VM cannot be made");
    }
    env_ = static_cast<JNIEnv*>(env);
    strict_jni::StrictJni::reportTo(&report);
    strict_jni::StrictJni::install(vm, false);
    strict_jni::StrictJni::watch(SOAK_BRIDGE);
    soak_ = env_->FindClass("soak/Soak");
    check("soak.Soak");
    soak_ = static_cast<jclass>(env_->NewGlobalRef(soak_));
    const jmethodID load = method("load", "(Ljava/lang/String;)V");
    env_->CallStaticVoidMethod(soak_, load, env_->NewStringUTF(SOAK_BRIDGE));
    check("load");
    strict_jni::StrictJni::forgetLocals(); // the VM drops those of JNI_OnLoad
    auto* surface = new android::Surface;
    surface->incStrong(surface);
    surface_ = surface;
}

void Machine::check(const char* doing) {
    if (env_->ExceptionCheck()) {
        env_->ExceptionDescribe();
        giveUp(std::string(doing) + " failed");
    }
}

jmethodID Machine::method(const char* name, const char* signature) {
    const jmethodID found = env_->GetStaticMethodID(soak_, name, signature);
    check(name);
    return found;
}

std::string Machine::text(jobject result) {
    check("the soak");
    auto* java_text = static_cast<jstring>(result);
    const char* characters = env_->GetStringUTFChars(java_text, nullptr);
    std::string text = characters;
    env_->ReleaseStringUTFChars(java_text, characters);
    env_->DeleteLocalRef(result);
    return text;
}

jintArray Machine::array(const std::vector<int>& values) {
    const auto length = static_cast<jsize>(values.size());
    const jintArray made = env_->NewIntArray(length);
    check("an array");
    env_->SetIntArrayRegion(made, 0, length, values.data());
    return made;
}

std::string Machine::open(int threads, const std::vector<int>& empty,
                          const std::vector<int>& occupied) {
    const auto surface = static_cast<jint>(reinterpret_cast<intptr_t>(surface_));
    return text(env_->CallStaticObjectMethod(soak_, method("open", "(II[I[I)Ljava/lang/String;"),
                                             threads, surface, array(empty), array(occupied)));
}

std::string Machine::stage(uint64_t seed, uint64_t commands_per_thread, double seconds) {
    return text(env_->CallStaticObjectMethod(soak_, method("stage", "(JJD)Ljava/lang/String;"),
                                             static_cast<jlong>(seed),
                                             static_cast<jlong>(commands_per_thread), seconds));
}

int64_t Machine::number(const char* name) {
    const jlong value = env_->CallStaticLongMethod(soak_, method(name, "()J"));
    check(name);
    return value;
}

void Machine::call(const char* name) {
    env_->CallStaticVoidMethod(soak_, method(name, "()V"));
    check(name);
}

int Machine::surfaceReferences() const {
    return static_cast<android::Surface*>(surface_)->getStrongCount();
}

} // namespace soak

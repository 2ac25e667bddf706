#include "runner/virtual_machine.h"

#include <cstdio>
#include <cstdlib>

namespace bench {
namespace {

JavaVM* java_vm = nullptr;

} // namespace

void giveUp(const std::string& why) {
    std::fprintf(stderr, "bench: %s\n", why.c_str());
    std::fflush(nullptr);
    std::_Exit(2);
}

void startVm(const std::vector<std::string>& further_options) {
    // One collector thread and a heap of fixed size that is all there from the start: what the
    // process takes afterwards is not the heap's.
    std::vector<std::string> texts = {"-Xms96m",          "-Xmx96m",
                                      "-XX:+UseSerialGC", "-XX:+AlwaysPreTouch",
                                      "-XX:-UsePerfData", "-XX:-CreateCoredumpOnCrash"};
    texts.insert(texts.end(), further_options.begin(), further_options.end());
    std::vector<JavaVMOption> options;
    options.reserve(texts.size());
    for (std::string& text : texts) {
        options.push_back({text.data(), nullptr});
    }
    JavaVMInitArgs arguments = {JNI_VERSION_1_8, static_cast<jint>(options.size()), options.data(),
                                JNI_FALSE};
    void* first_env = nullptr;
    if (JNI_CreateJavaVM(&java_vm, &first_env, &arguments) != JNI_OK) {
        giveUp("the Java VM cannot be started");
    }
}

JavaVM* vm() {
    return java_vm;
}

JNIEnv* env() {
    void* own = nullptr;
    if (java_vm->GetEnv(&own, JNI_VERSION_1_8) != JNI_OK) {
        giveUp("a thread that the VM does not know asks for its environment");
    }
    return static_cast<JNIEnv*>(own);
}

jclass findClass(const char* name) {
    const jclass local = env()->FindClass(name);
    requireNoException(name);
    const auto global = static_cast<jclass>(env()->NewGlobalRef(local));
    env()->DeleteLocalRef(local);
    return global;
}

jmethodID findMethod(jclass clazz, const char* name, const char* signature) {
    const jmethodID method = env()->GetMethodID(clazz, name, signature);
    requireNoException(name);
    return method;
}

jmethodID findStaticMethod(jclass clazz, const char* name, const char* signature) {
    const jmethodID method = env()->GetStaticMethodID(clazz, name, signature);
    requireNoException(name);
    return method;
}

std::string textOf(jstring string) {
    const char* const characters = env()->GetStringUTFChars(string, nullptr);
    std::string text = characters;
    env()->ReleaseStringUTFChars(string, characters);
    return text;
}

void requireNoException(const char* what) {
    if (env()->ExceptionCheck()) {
        env()->ExceptionDescribe();
        giveUp(std::string("a Java exception: ") + what);
    }
}

} // namespace bench

#include "harness/callback_recorder.h"

#include "harness/java_objects.h"
#include "harness/virtual_machine.h"

#include <gtest/gtest.h>

namespace harness {

CallbackRecorder::CallbackRecorder() {
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass of = findClass("harness/EventRecorder");
    jmethodID install = jni->GetStaticMethodID(of, "install", "()Lharness/EventRecorder;");
    jobject made = install != nullptr ? jni->CallStaticObjectMethod(of, install) : nullptr;
    check("installing a recorder of callbacks");
    recorder = jni->NewGlobalRef(made);
}

CallbackRecorder::~CallbackRecorder() {
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass of = findClass("harness/EventRecorder");
    jmethodID uninstall = jni->GetStaticMethodID(of, "uninstall", "()V");
    if (uninstall != nullptr) {
        jni->CallStaticVoidMethod(of, uninstall);
    }
    check("taking the listener away");
    jni->DeleteGlobalRef(recorder);
}

std::vector<std::string> CallbackRecorder::take() {
    std::vector<std::string> texts;
    for (Callback& callback : takeAll()) {
        texts.push_back(std::move(callback.text));
    }
    return texts;
}

std::vector<Callback> CallbackRecorder::takeAll() {
    JNIEnv* jni = env();
    LocalFrame frame;
    auto taken = static_cast<jobjectArray>(
        jni->CallObjectMethod(recorder, method("take", "()[Ljava/lang/String;")));
    check("taking callbacks");
    std::vector<Callback> callbacks;
    jsize count = taken != nullptr ? jni->GetArrayLength(taken) : 0;
    auto text = [&](jsize index) {
        auto element = static_cast<jstring>(jni->GetObjectArrayElement(taken, index));
        check("taking callbacks");
        std::string copy = toText(element);
        jni->DeleteLocalRef(element);
        return copy;
    };
    for (jsize i = 0; i + 1 < count; i += 2) {
        std::string line = text(i);
        callbacks.push_back({std::move(line), text(i + 1)});
    }
    return callbacks;
}

bool CallbackRecorder::waitFor(int count, std::chrono::milliseconds limit) {
    jboolean there = env()->CallBooleanMethod(recorder, method("await", "(IJ)Z"), count,
                                              static_cast<jlong>(limit.count()));
    check("waiting for callbacks");
    return there == JNI_TRUE;
}

void CallbackRecorder::throwNext(const std::string& exception_class, const std::string& message) {
    LocalFrame frame;
    jobject exception = newObject(exception_class, "(Ljava/lang/String;)V", {message.c_str()});
    env()->CallVoidMethod(recorder, method("throwNext", "(Ljava/lang/Throwable;)V"), exception);
    check("telling the recorder to throw");
}

jmethodID CallbackRecorder::method(const char* name, const char* signature) {
    JNIEnv* jni = env();
    jclass of = jni->GetObjectClass(recorder);
    jmethodID id = jni->GetMethodID(of, name, signature);
    jni->DeleteLocalRef(of);
    return id;
}

void CallbackRecorder::check(const std::string& doing) {
    std::string thrown = takeException();
    if (!thrown.empty()) {
        ADD_FAILURE() << doing << ": " << thrown;
    }
}

} // namespace harness

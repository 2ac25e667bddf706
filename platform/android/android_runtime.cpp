// The Android runtime for the desk: the registration of native methods, and the thread shell that
// makes every thread of the platform a thread of the Java VM.
#pragma GCC visibility push(default)
#include <android_runtime/AndroidRuntime.h>
#pragma GCC visibility pop

#include <utils/AndroidThreads.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>

namespace android {
namespace {

/// The VM of the process. There is one at most, and no second one after it.
std::atomic<JavaVM*> java_vm{nullptr};

/// The function of a new thread, for its shell.
struct ThreadStart {
    android_thread_func_t function;
    void* user_data;
    std::string name;
};

/// Attaches the thread for as long as its function runs. As a daemon, so that the VM does not wait
/// for it at its end.
int runAttached(void* argument) {
    const std::unique_ptr<ThreadStart> start(static_cast<ThreadStart*>(argument));
    androidSetThreadName(start->name.c_str());

    JavaVM* vm = java_vm.load(std::memory_order_acquire);
    JNIEnv* env = nullptr;
    JavaVMAttachArgs attach_args = {JNI_VERSION_1_4, start->name.data(), nullptr};
    const jint attached =
        vm->AttachCurrentThreadAsDaemon(reinterpret_cast<void**>(&env), &attach_args);
    if (attached != JNI_OK) {
        // Whoever made the thread counts on its function being run.
        std::fprintf(stderr, "libandroid_runtime: thread %s runs without the Java VM (%d)\n",
                     start->name.c_str(), static_cast<int>(attached));
    }
    const int result = start->function(start->user_data);
    if (attached == JNI_OK) {
        vm->DetachCurrentThread();
    }
    return result;
}

/// Replaces androidCreateRawThreadEtc within androidCreateThreadEtc. Non-zero when the
/// thread was made.
int createAttachedThread(android_thread_func_t function, void* user_data, const char* name,
                         int32_t priority, size_t stack_size, android_thread_id_t* id) {
    auto start = std::make_unique<ThreadStart>(
        ThreadStart{function, user_data, name == nullptr ? "unnamed thread" : name});
    const int made = androidCreateRawThreadEtc(runAttached, start.get(), start->name.c_str(),
                                               priority, stack_size, id);
    if (made != 0) {
        static_cast<void>(start.release()); // the thread's now
    }
    return made;
}

/// From the first call on, the threads that the platform makes are attached to the VM of `env`.
void installThreadShell(JNIEnv* env) {
    static std::once_flag installed;
    std::call_once(installed, [env] {
        JavaVM* vm = nullptr;
        if (env->GetJavaVM(&vm) == JNI_OK) {
            java_vm.store(vm, std::memory_order_release);
            androidSetCreateThreadFunc(createAttachedThread);
        }
    });
}

} // namespace

int AndroidRuntime::registerNativeMethods(JNIEnv* env, const char* class_name,
                                          const JNINativeMethod* methods, int count) {
    installThreadShell(env);
    jclass clazz = env->FindClass(class_name);
    if (clazz == nullptr) {
        return JNI_ERR;
    }
    const jint result = env->RegisterNatives(clazz, methods, count);
    env->DeleteLocalRef(clazz); // allowed with an exception pending
    return result < 0 ? JNI_ERR : JNI_OK;
}

} // namespace android

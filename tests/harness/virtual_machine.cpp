#include "harness/virtual_machine.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <sstream>
#include <thread>
#include <vector>

namespace harness {
namespace {

bool made = false;

[[noreturn]] void give_up(const std::string& why) {
    std::fprintf(stderr, "harness: %s\n", why.c_str());
    std::fflush(nullptr);
    std::_Exit(71);
}

/// A broken rule fails the running test. Outside a test a failure would not be reported, so the
/// process ends as it does in the strictest VM.
void failTest(const std::string& text) {
    if (testing::UnitTest::GetInstance()->current_test_info() != nullptr) {
        ADD_FAILURE() << text;
        return;
    }
    std::fprintf(stderr, "%s (outside a test)\n", text.c_str());
    std::fflush(nullptr);
    std::_Exit(70);
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

Mode mode() {
    static const Mode chosen = [] {
        std::string name = environment("DTV_TEST_MODE");
        if (name.empty() || name == "strict") {
            return Mode::strict;
        }
        if (name == "checkjni") {
            return Mode::checkJni;
        }
        if (name == "plain") {
            return Mode::plain;
        }
        give_up("DTV_TEST_MODE is neither strict, checkjni nor plain: " + name);
    }();
    return chosen;
}

VirtualMachine& VirtualMachine::instance() {
    // Never destroyed: exit handlers may use it.
    static VirtualMachine& only = *new VirtualMachine;
    return only;
}

bool VirtualMachine::exists() {
    return made;
}

VirtualMachine::VirtualMachine() {
    std::vector<std::string> texts = {"-Djava.class.path=" DTV_TEST_CLASS_PATH, "-Xmx256m",
                                      "-XX:+UseSerialGC", "-Xshare:auto",
                                      // The process ends before a second compiler is of use.
                                      "-XX:TieredStopAtLevel=1", "-XX:CICompilerCount=1",
                                      "-XX:-UsePerfData", "-XX:-CreateCoredumpOnCrash"};
    if (mode() == Mode::checkJni) {
        texts.emplace_back("-Xcheck:jni");
    }
    std::istringstream more(environment("DTV_TEST_VM_OPTIONS"));
    for (std::string option; more >> option;) {
        texts.push_back(option);
    }
    std::vector<JavaVMOption> options;
    for (std::string& text : texts) {
        options.push_back({text.data(), nullptr});
    }
    JavaVMInitArgs arguments = {JNI_VERSION_1_8, static_cast<jint>(options.size()), options.data(),
                                JNI_FALSE};
    void* first_env = nullptr;
    if (JNI_CreateJavaVM(&java_vm, &first_env, &arguments) != JNI_OK) {
        give_up("the Java VM cannot be made");
    }
    made = true;
    StrictJni::reportTo(&failTest);
    StrictJni::install(java_vm, mode() == Mode::strict);
    // The main thread never returns to Java; -Xcheck:jni must be given the number of references
    // that it may hold.
    env()->EnsureLocalCapacity(512);
}

JNIEnv* VirtualMachine::env() const {
    void* own = nullptr;
    if (java_vm->GetEnv(&own, JNI_VERSION_1_8) != JNI_OK) {
        give_up("a thread that is not attached asks for its environment");
    }
    return static_cast<JNIEnv*>(own);
}

void VirtualMachine::destroy() {
    java_vm->DestroyJavaVM();
    made = false;
}

JNIEnv* env() {
    return VirtualMachine::instance().env();
}

std::string takeException() {
    JNIEnv* jni = env();
    jthrowable thrown = jni->ExceptionOccurred();
    if (thrown == nullptr) {
        return "";
    }
    jni->ExceptionClear();
    std::string text = "an exception that has no text";
    jclass of = jni->FindClass("java/lang/Object");
    jmethodID to_string =
        of != nullptr ? jni->GetMethodID(of, "toString", "()Ljava/lang/String;") : nullptr;
    if (to_string != nullptr) {
        auto made_text = static_cast<jstring>(jni->CallObjectMethod(thrown, to_string));
        if (!jni->ExceptionCheck() && made_text != nullptr) {
            const char* characters = jni->GetStringUTFChars(made_text, nullptr);
            text = characters;
            jni->ReleaseStringUTFChars(made_text, characters);
            jni->DeleteLocalRef(made_text);
        }
    }
    jni->ExceptionClear();
    jni->DeleteLocalRef(of);
    jni->DeleteLocalRef(thrown);
    return text;
}

LocalFrame::LocalFrame() : open(env()->PushLocalFrame(32) == JNI_OK) {}

LocalFrame::~LocalFrame() {
    end(nullptr);
}

jobject LocalFrame::end(jobject result) {
    jobject kept = open ? env()->PopLocalFrame(result) : result;
    open = false;
    return kept;
}

struct EventThread::Body {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> work;
    bool busy = false;
    bool ending = false;
    std::thread thread;

    void live() {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return ending || !work.empty(); });
            if (work.empty()) {
                break;
            }
            std::function<void()> next = std::move(work.front());
            work.pop_front();
            busy = true;
            lock.unlock();
            next();
            lock.lock();
            busy = false;
            changed.notify_all();
        }
        lock.unlock();
        // The creator of a thread detaches it before it ends: a VM does not work correctly
        // otherwise.
        void* own = nullptr;
        if (VirtualMachine::exists()) {
            JavaVM* vm = VirtualMachine::instance().vm();
            if (vm->GetEnv(&own, JNI_VERSION_1_8) == JNI_OK) {
                vm->DetachCurrentThread();
            }
        }
    }
};

namespace {
std::vector<std::shared_ptr<EventThread::Body>>& bodies() {
    static auto& all = *new std::vector<std::shared_ptr<EventThread::Body>>;
    return all;
}
} // namespace

EventThread::EventThread() : body(std::make_shared<Body>()) {
    body->thread = std::thread([shared = body.get()] { shared->live(); });
    bodies().push_back(body);
}

void EventThread::run(const std::function<void()>& work) {
    start(work);
    wait();
}

void EventThread::start(std::function<void()> work) {
    std::lock_guard lock(body->mutex);
    body->work.push_back(std::move(work));
    body->changed.notify_all();
}

void EventThread::wait() {
    std::unique_lock lock(body->mutex);
    body->changed.wait(lock, [this] { return body->work.empty() && !body->busy; });
}

void endEventThreads() {
    for (auto& body : bodies()) {
        {
            std::lock_guard lock(body->mutex);
            body->ending = true;
            body->changed.notify_all();
        }
        body->thread.join();
    }
    bodies().clear();
}

} // namespace harness

#include "records/target.h"

#include "records/limits.h"

#include "harness/harness.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace hostile {
namespace {

using harness::StrictJni;

/// The first rule that the bridge broke since it was taken last. Only this thread calls the bridge.
std::string* broken_rule = nullptr;

void keepBrokenRule(const std::string& text) {
    if (broken_rule != nullptr && broken_rule->empty()) {
        *broken_rule = text;
    }
}

/// Reads each line to its end, as a sink that writes it would.
class ReadingSink : public dtv::LogSink {
public:
    void write(const dtv::LogLine& line) override {
        read.fetch_add(std::strlen(line.text), std::memory_order_relaxed);
    }

private:
    std::atomic<size_t> read{0};
};

// ---- A signal for memory that cannot be touched.

const PlacedRecord* watched_place = nullptr;
Target::OnFault on_fault = nullptr;
struct sigaction handler_of_vm;

/// The VM handles this signal as well: it touches such memory on purpose.
void onSignal(int number, siginfo_t* info, void* context) {
    char where[80];
    if (watched_place->faultAt(info->si_addr, where) != nullptr) {
        char text[120];
        std::snprintf(text, sizeof text, "it touched memory %s", where);
        on_fault(text);
        _exit(70);
    }
    handler_of_vm.sa_sigaction(number, info, context);
}

void watchPages(const PlacedRecord& place, Target::OnFault report) {
    watched_place = &place;
    on_fault = report;
    struct sigaction own = {};
    own.sa_sigaction = &onSignal;
    own.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigaction(SIGSEGV, nullptr, &handler_of_vm);
    own.sa_mask = handler_of_vm.sa_mask;
    sigaction(SIGSEGV, &own, nullptr);
}

[[noreturn]] void giveUp(const std::string& why) {
    std::fprintf(stderr, "hostile records: %s\n", why.c_str());
    std::exit(71);
}

/// Has the Java side number the callbacks by their events' places in the table.
void installCounter(JNIEnv* env, jclass counter) {
    harness::LocalFrame frame;
    const auto count = static_cast<jsize>(kEventCount);
    jobjectArray names = env->NewObjectArray(count, env->FindClass("java/lang/String"), nullptr);
    for (jsize i = 0; names != nullptr && i < count; ++i) {
        jstring name = env->NewStringUTF(kEvents[i].callback);
        env->SetObjectArrayElement(names, i, name);
        env->DeleteLocalRef(name);
    }
    jmethodID install = env->GetStaticMethodID(counter, "install", "([Ljava/lang/String;)V");
    if (install != nullptr) {
        env->CallStaticVoidMethod(counter, install, names);
    }
    const std::string thrown = harness::takeException();
    if (!thrown.empty()) {
        giveUp("the counter of events: " + thrown);
    }
}

std::string nameOf(int place) {
    return place >= 0 && place < static_cast<int>(kEventCount) ? kEvents[place].callback
                                                               : "another callback";
}

/// Frames that the bridge has pushed and not popped, since the process began.
int openFrames() {
    static const std::string pushed = "PushLocalFrame";
    static const std::string popped = "PopLocalFrame";
    return StrictJni::calls(pushed) - StrictJni::calls(popped);
}

} // namespace

Target::Target(OnFault report) : env_(harness::env()) {
    const std::string refusal = harness::Product::load();
    if (!refusal.empty()) {
        giveUp("the bridge is not loaded: " + refusal);
    }
    harness::LocalFrame frame;
    counter_ = static_cast<jclass>(env_->NewGlobalRef(harness::findClass("harness/EventCounter")));
    if (counter_ == nullptr) {
        giveUp("no counter of events");
    }
    installCounter(env_, counter_);
    count_field_ = env_->GetStaticFieldID(counter_, "count", "I");
    callback_field_ = env_->GetStaticFieldID(counter_, "lastCallback", "I");
    handle_field_ = env_->GetStaticFieldID(counter_, "lastHandle", "I");
    dtv::setLogSink(std::make_shared<ReadingSink>());
    dtv::setLogLevelMask(0);
    broken_rule = new std::string;
    StrictJni::reportTo(&keepBrokenRule);
    watchPages(place_, report);
    // The first event of a thread takes its place in the bridge's table: not part of any record.
    dtv::deliverEvent(0x10000041, nullptr, 0);
    open_frames_before_ = openFrames();
    live_before_ = StrictJni::liveLocals();
    unreleased_before_ = StrictJni::unreleased();
}

Target::~Target() {
    sigaction(SIGSEGV, &handler_of_vm, nullptr);
    env_->DeleteGlobalRef(counter_);
}

std::string Target::play(const Input& input) {
    if (input.traced != traced_) {
        dtv::setLogLevelMask(input.traced ? ~0UL : 0);
        traced_ = input.traced;
    }
    uint8_t* const record = place_.lay(input);
    const Outcome outcome = expected(input.id, record, input.size);
    const int result = dtv::deliverEvent(input.id, record, input.size);
    delivered_ = outcome.callback != nullptr;

    std::vector<std::string> wrong = leftBehind();
    if (result != outcome.result) {
        wrong.push_back("it answered " + std::to_string(result) + " instead of " +
                        std::to_string(outcome.result));
    }
    const std::string called = wrongCallback(outcome);
    if (!called.empty()) {
        wrong.push_back(called);
    }
    std::string text;
    for (const std::string& one : wrong) {
        text += (text.empty() ? "" : "; ") + one;
    }
    return text;
}

/// What should not be there after an event. It is cleared away, so that the next event does not
/// show it as well.
std::vector<std::string> Target::leftBehind() {
    std::vector<std::string> wrong;
    if (!broken_rule->empty()) {
        wrong.push_back(std::exchange(*broken_rule, ""));
    }
    if (const int open = openFrames(); open != open_frames_before_) {
        wrong.push_back("a frame of references is left open");
        open_frames_before_ = open;
    }
    if (env_->ExceptionCheck()) {
        wrong.push_back("left pending: " + harness::takeException());
    }
    if (const int live = StrictJni::liveLocals(); live != live_before_) {
        wrong.push_back(std::to_string(live - live_before_) + " local references are left");
        live_before_ = live;
    }
    if (const int unreleased = StrictJni::unreleased(); unreleased != unreleased_before_) {
        wrong.push_back("characters or elements are not released");
        unreleased_before_ = unreleased;
    }
    return wrong;
}

std::string Target::wrongCallback(const Outcome& outcome) {
    const int count = env_->GetStaticIntField(counter_, count_field_);
    const auto calls =
        static_cast<int>(static_cast<unsigned>(count) - static_cast<unsigned>(count_before_));
    count_before_ = count;
    const int wanted = outcome.callback != nullptr ? 1 : 0;
    const std::string called =
        calls > 0 ? nameOf(env_->GetStaticIntField(counter_, callback_field_)) : "";
    if (calls != wanted) {
        return std::to_string(calls) + " callbacks instead of " + std::to_string(wanted) +
               (called.empty() ? "" : ": " + called);
    }
    if (calls == 0) {
        return "";
    }
    if (called != outcome.callback) {
        return called + " was called instead of " + outcome.callback;
    }
    const int handle = env_->GetStaticIntField(counter_, handle_field_);
    return handle == outcome.handle ? ""
                                    : "the event has session " + std::to_string(handle) +
                                          " instead of " + std::to_string(outcome.handle);
}

} // namespace hostile

#include "load.h"

#include "entry/vm_probes.h"
#include "event_model.h"
#include "load_model.h"
#include "memory.h"
#include "witness.h"

#include <dlfcn.h>

#include <cstdlib>
#include <optional>
#include <thread>

namespace torture {
namespace {

using namespace harness;

/// The library, loaded as the VM loads it, without the VM's own part: so a load can be repeated
/// whatever it left, as the VM unloads a library that it took only with its class loader.
class Library {
public:
    Library() {
        StrictJni::watch(Product::file());
        loaded_ = dlopen(Product::file().c_str(), RTLD_NOW | RTLD_LOCAL);
        if (loaded_ == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            std::abort();
        }
    }
    ~Library() {
        dlclose(loaded_);
        if (void* still = dlopen(Product::file().c_str(), RTLD_LAZY | RTLD_NOLOAD)) {
            std::fprintf(stderr, "the library was not unloaded\n");
            dlclose(still);
            std::abort();
        }
        // A listener that attached a thread detaches the one that destroys it.
        void* own = nullptr;
        VirtualMachine::instance().vm()->AttachCurrentThread(&own, nullptr);
        LocalFrame frame;
        env()->UnregisterNatives(findClass("DtvServerProxy"));
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// What JNI_OnLoad returns, and what it left pending.
    std::string onLoad() {
        using OnLoad = jint(JavaVM*, void*);
        auto* const on_load = reinterpret_cast<OnLoad*>(dlsym(loaded_, "JNI_OnLoad"));
        const int result = on_load(VirtualMachine::instance().vm(), nullptr);
        const std::string thrown = takeException();
        return std::to_string(result) + (thrown.empty() ? "" : " " + thrown);
    }

private:
    void* loaded_;
};

int deliverReply() {
    return deliver(0x1000004f, std::vector<uint8_t>{3, 0, 0, 0, 0, 0, 0, 0});
}

/// What a native answers without a service.
std::string answerOfNative() {
    LocalFrame frame;
    jobject answer = callNative("DtvSvLib_Release", {3});
    if (lastThrown().find("UnsatisfiedLinkError") != std::string::npos) {
        return "unbound";
    }
    return lastThrown().empty() ? tree(answer) : lastThrown();
}

void dropAddresses(Outcome& outcome) {
    for (std::string& line : outcome.lines) {
        line = withoutAddresses(line);
    }
}

class Load : public Operation {
public:
    explicit Load(bool refused) : refused_(refused) {}

    std::string name() const override { return refused_ ? "load:refused" : "load"; }

    Outcome run(const Plan& given) override {
        Plan plan = given;
        plan.refuse_registration = refused_;
        LocalFrame frame;
        Outcome outcome;
        Library library;
        std::string returned;
        {
            std::optional<RegistrationRecorder> refusing;
            if (plan.refuse_registration) {
                refusing.emplace(true);
            }
            FailNth fail(plan.calls,
                         plan.calls_on ? FailNth::Span::fromThereOn : FailNth::Span::once);
            Memory::begin(plan.allocation, plan.allocations_on);
            Witness::instance().begin();
            returned = library.onLoad();
            Witness::instance().end(outcome);
            outcome.allocations = Memory::end();
        }
        // The frame of the Java method that loads ends.
        StrictJni::forgetLocals();
        const std::string native = answerOfNative();
        outcome.answer = loadAnswer(returned, native, std::to_string(deliverReply()));
        dropAddresses(outcome);
        return outcome;
    }

    Outcome expect(const Plan& given) const override {
        Plan plan = given;
        plan.refuse_registration = refused_;
        return LoadModel(plan, baseline).load();
    }

    int mostLocals() const override { return 256; }
    size_t pairsApart() const override { return 2; }

private:
    const bool refused_;
};

/// The first event after a load, on the thread that loaded or on one that the VM does not know.
class FirstEvent : public Operation {
public:
    explicit FirstEvent(bool other_thread) : other_thread_(other_thread) {}

    std::string name() const override {
        return other_thread_ ? "first-event@unknown" : "first-event";
    }

    Outcome run(const Plan& plan) override {
        Outcome outcome;
        Library library;
        library.onLoad();
        StrictJni::forgetLocals();
        if (other_thread_) {
            // The first thread that asks takes the first place, which is filled otherwise.
            deliverReply();
            std::thread([&] { deliverUnder(plan, outcome); }).join();
        } else {
            deliverUnder(plan, outcome);
        }
        dropAddresses(outcome);
        return outcome;
    }

    Outcome expect(const Plan& plan) const override {
        const EventModel::Thread thread =
            other_thread_ ? EventModel::Thread::unknown : EventModel::Thread::first;
        EventModel model(plan, baseline, "dtvsv_msgid_lib_common_reply", 'D', false, thread);
        model.construct();
        model.callback();
        return model.end();
    }

    int mostLocals() const override { return 256; }

private:
    static void deliverUnder(const Plan& plan, Outcome& outcome) {
        FailNth fail(plan.calls, plan.calls_on ? FailNth::Span::fromThereOn : FailNth::Span::once);
        Memory::begin(plan.allocation, plan.allocations_on);
        Witness::instance().begin();
        outcome.answer = std::to_string(deliverReply());
        Witness::instance().end(outcome);
        outcome.allocations = Memory::end();
        // Whoever made the thread detaches it before it ends.
        JavaVM* const vm = VirtualMachine::instance().vm();
        void* own = nullptr;
        if (vm->GetEnv(&own, JNI_VERSION_1_4) == JNI_OK) {
            if (static_cast<JNIEnv*>(own)->ExceptionCheck()) {
                outcome.answer += " and an exception pending";
                takeException();
            }
            static thread_local const bool main_thread = gettid() == getpid();
            if (!main_thread) {
                vm->DetachCurrentThread();
            }
        }
    }

    const bool other_thread_;
};

} // namespace

std::vector<std::unique_ptr<Operation>> loadOperations() {
    dtv::setServiceEndpoint(nullptr);
    std::vector<std::unique_ptr<Operation>> all;
    // The one with most rounds last.
    all.push_back(std::make_unique<FirstEvent>(false));
    all.push_back(std::make_unique<FirstEvent>(true));
    all.push_back(std::make_unique<Load>(true));
    all.push_back(std::make_unique<Load>(false));
    return all;
}

std::vector<std::pair<std::string, std::string>>
playRefusedLoads(const std::function<void(const std::string&)>& begins) {
    struct Refused {
        const char* name;
        std::vector<FailNth::Call> calls;
        bool on;
        bool registration;
        int allocation;
        const char* thrown; ///< what Java sees begins with it
        /// The natives cannot be unregistered: they stay bound to a library that is unloaded.
        bool stays_bound = false;
    };
    const char* const link_error = "java.lang.UnsatisfiedLinkError";
    const char* const method_error = "java.lang.NoSuchMethodError: refused by the test";
    const auto null = Leaves::nothing;
    const auto throws = Leaves::exception;
    const std::vector<Refused> all{
        {"system-load/jni/0-null/once", {{0, null}}, false, false, -1, link_error},
        {"system-load/jni/0-null/on", {{0, null}}, true, false, -1, link_error},
        {"system-load/registration/once", {}, false, true, -1, method_error},
        {"system-load/registration+jni/1-throws/once",
         {{1, throws}},
         false,
         true,
         -1,
         method_error},
        {"system-load/registration+jni/1-null/once", {{1, null}}, false, true, -1, method_error},
        {"system-load/registration+jni/2-throws/once",
         {{2, throws}},
         false,
         true,
         -1,
         method_error},
        {"system-load/registration+jni/3-null/once", {{3, null}}, false, true, -1, link_error},
        {"system-load/registration+jni/1-throws/on", {{1, throws}}, true, true, -1, link_error},
        {"system-load/alloc/0/once", {}, false, false, 0, link_error},
        {"system-load/alloc/0/on", {}, false, false, 0, link_error},
        {"system-load/alloc+jni/0+1-throws/once", {{1, throws}}, false, false, 0, link_error, true},
        {"system-load/alloc+jni/0+2-throws/once", {{2, throws}}, false, false, 0, link_error, true},
    };
    std::vector<std::pair<std::string, std::string>> played;
    for (const Refused& each : all) {
        const int globals = StrictJni::globalsMade() - StrictJni::globalsDeleted();
        std::string refusal;
        begins(each.name);
        {
            std::optional<RegistrationRecorder> refusing;
            if (each.registration) {
                refusing.emplace(true);
            }
            FailNth fail(each.calls, each.on ? FailNth::Span::fromThereOn : FailNth::Span::once);
            Memory::begin(each.allocation, each.on);
            refusal = Product::load();
            Memory::end();
        }
        std::string wrong = refusal.rfind(each.thrown, 0) == 0
                                ? ""
                                : "Java saw \"" + refusal + "\", expected " + each.thrown + "\n";
        if (StrictJni::globalsMade() - StrictJni::globalsDeleted() != globals ||
            Memory::held() != 0 || StrictJni::liveLocals() != 0) {
            wrong += "references or memory are lost\n";
        }
        if (each.stays_bound) {
            LocalFrame frame;
            env()->UnregisterNatives(findClass("DtvServerProxy"));
        }
        if (answerOfNative() != "unbound" || deliverReply() != dtv::noListener) {
            wrong += "a native stayed bound, or there is a listener\n";
        }
        wrong += Witness::instance().takeFaults();
        played.emplace_back(each.name, wrong);
    }
    // Then Java loads it.
    begins("system-load/taken/once");
    std::string wrong = Product::load();
    if (deliverReply() != 0) {
        wrong += "the event after the load was not delivered\n";
    }
    played.emplace_back("system-load/taken/once", wrong + Witness::instance().takeFaults());
    return played;
}

} // namespace torture

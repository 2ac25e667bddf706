// The table of JNI environments, one for each native thread that delivers events.
//
// It is read and written without a lock. Two new threads that arrive at the same moment may take
// the same slot, so libDtv delivers the first event of each thread while no other event is
// delivered.
#include "binding/JNIDtvSvLibListener.h"

#include "entry/trace.h"

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;
using trace::kInfo;

namespace {

/// What the lines about a freed slot print after "index=": one fixed value, not the slot's number.
constexpr int kPrintedIndex = 0;

jint attachThread(JavaVM* vm, JNIEnv** env) {
    // Android declares the first argument as JNIEnv**, the JDK as void**.
    struct AnyPointer {
        JNIEnv** env;
        operator JNIEnv**() const { return env; }
        operator void**() const { return reinterpret_cast<void**>(env); }
    };
    return vm == nullptr ? JNI_ERR : vm->AttachCurrentThread(AnyPointer{env}, nullptr);
}

jint findEnvironment(JavaVM* vm, JNIEnv** env) {
    return vm == nullptr ? JNI_EDETACHED
                         : vm->GetEnv(reinterpret_cast<void**>(env), JNI_VERSION_1_4);
}

} // namespace

void JNIDtvSvLibListener::setVM(JavaVM* vm) {
    vm_ = vm;
}

JNIEnv* JNIDtvSvLibListener::getJNIEnv() {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const pthread_t self = pthread_self();

    TS_DTVSV_ENVINFO& first = env_info_[0];
    if (first.env == nullptr) {
        JNIEnv* env = nullptr;
        if (findEnvironment(vm_, &env) < 0) {
            if (attachThread(vm_, &env) != JNI_OK) {
                TRACE_LISTENER_ERROR(__func__, "AttachCurrentThread error!");
                return nullptr;
            }
            first.env = env;
            first.attach = 1;
            TRACE_LISTENER(kInfo, __func__, "GetEnv Failed but JNIEnv Attached!");
        } else {
            first.env = env;
            TRACE_LISTENER(kInfo, __func__, "Got JNIEnv! threadid=%x env=%p", trace::threadId(self),
                           static_cast<void*>(env));
        }
        first.tid = self;
        return first.env;
    }

    for (int index = 0; index < kEnvironmentCount; ++index) {
        const TS_DTVSV_ENVINFO& slot = env_info_[index];
        if (slot.env != nullptr && pthread_equal(slot.tid, self) != 0) {
            TRACE_LISTENER(kInfo, __func__, "JNIEnv already got! index=%d threadid=%x env=%p ",
                           index, trace::threadId(slot.tid), static_cast<void*>(slot.env));
            return slot.env;
        }
    }

    for (int index = 0; index < kEnvironmentCount; ++index) {
        TS_DTVSV_ENVINFO& slot = env_info_[index];
        if (slot.env != nullptr) {
            continue;
        }
        JNIEnv* env = nullptr;
        if (attachThread(vm_, &env) != JNI_OK) {
            TRACE_LISTENER_ERROR_VALUE(__func__, "AttachCurrentThread() error! index=%d", index);
            return nullptr;
        }
        slot.env = env;
        slot.attach = 1;
        slot.tid = self;
        TRACE_LISTENER(kInfo, __func__, "JNIEnv Attached! index=%d threadid=%x env=%p", index,
                       trace::threadId(slot.tid), static_cast<void*>(slot.env));
        return slot.env;
    }

    TRACE_LISTENER(kFuncEnd, __func__, "");
    return nullptr;
}

void JNIDtvSvLibListener::freeJNIEnv() {
    // At the end of a process this may run on a thread of the VM's own that is no Java thread.
    // Detaching such a thread would bring the VM down; it has no slot and the VM disowns it.
    emptyEnvironments(threadHasSlot() || vmServesThread());
}

void JNIDtvSvLibListener::emptyEnvironments(bool may_detach) {
    constexpr const char* kFunction = "freeJNIEnv";
    TRACE_LISTENER(kFuncStart, kFunction, "");
    for (TS_DTVSV_ENVINFO& slot : env_info_) {
        if (slot.env == nullptr) {
            continue;
        }
        TRACE_LISTENER(kDebug, kFunction, "free env=%p index=%d tid=%x attach=%d",
                       static_cast<void*>(slot.env), kPrintedIndex, trace::threadId(slot.tid),
                       slot.attach);
        slot.env = nullptr;
        slot.tid = pthread_t{};
        if (slot.attach != 0) {
            if (may_detach && vm_ != nullptr) {
                vm_->DetachCurrentThread();
            }
            slot.attach = 0;
        }
    }
    TRACE_LISTENER(kFuncEnd, kFunction, "");
}

void JNIDtvSvLibListener::detachJNIEnv(JNIEnv* env) {
    TRACE_LISTENER(kFuncStart, __func__, "env=%p", static_cast<void*>(env));
    for (TS_DTVSV_ENVINFO& slot : env_info_) {
        if (slot.attach == 0 || slot.env != env) {
            continue;
        }
        TRACE_LISTENER(kDebug, __func__, "detach env=%p index=%d tid=%x",
                       static_cast<void*>(slot.env), kPrintedIndex, trace::threadId(slot.tid));
        if (vm_ != nullptr) {
            vm_->DetachCurrentThread();
        }
        slot = {};
        break;
    }
    TRACE_LISTENER(kFuncEnd, __func__, "");
}

bool JNIDtvSvLibListener::threadHasSlot() const {
    const pthread_t self = pthread_self();
    for (const TS_DTVSV_ENVINFO& slot : env_info_) {
        if (slot.env != nullptr && pthread_equal(slot.tid, self) != 0) {
            return true;
        }
    }
    return false;
}

bool JNIDtvSvLibListener::vmServesThread() const {
    JNIEnv* env = nullptr;
    return findEnvironment(vm_, &env) == JNI_OK;
}

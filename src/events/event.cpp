#include "events/event.h"

using trace::kDebug;
using trace::kFuncEnd;

void traceFailedString(const char* handler) {
    TRACE_LISTENER_ERROR(handler, "ERROR NewStringUTF");
}

bool EventBuilder::isSound() {
    if (!size_checked_) {
        size_checked_ = true;
        if (!size_fits_) {
            traceWrongSize();
            failed_ = true;
        }
    }
    return !failed_;
}

void EventBuilder::openFrame() {
    if (!isSound()) {
        return;
    }
    framed_ = env_->PushLocalFrame(kMostReferences) == JNI_OK;
    if (!framed_) {
        env_->ExceptionClear();
    }
}

void EventBuilder::traceWrongSize() const {
    if (reports_ == Reports::kDebug) {
        TRACE_LISTENER(kDebug, handler_, "recv_size err!, recv_size = %d", size_);
    } else {
        TRACE_LISTENER_ERROR_VALUE(handler_, "recv_size err!, recv_size = %d", size_);
    }
}

bool EventBuilder::succeeded(int ret) {
    if (ret == 0) {
        return true;
    }
    failed_ = true;
    if (reports_ == Reports::kFailedAsError) {
        TRACE_LISTENER_ERROR_VALUE(handler_, "CallMethod NG, ret = %d", ret);
    } else {
        TRACE_LISTENER(kDebug, handler_, "CallMethod NG, ret = %d", ret);
    }
    return false;
}

jstring EventBuilder::text(const char* text, TraceFailure trace_failure) {
    if (!isSound()) {
        return nullptr;
    }
    const auto string = static_cast<jstring>(keep(listener_.OrgNewStringUTF(env_, text)));
    if (string == nullptr && trace_failure != nullptr) {
        trace_failure(handler_);
    }
    return string;
}

jstring EventBuilder::utf16(const char* text, int units) {
    return isSound() ? static_cast<jstring>(keep(listener_.OrgNewString(env_, text, units)))
                     : nullptr;
}

jbyteArray EventBuilder::bytes(const uint8_t* bytes, jsize length, TraceFailure trace_failure) {
    if (!isSound()) {
        return nullptr;
    }
    const auto array = static_cast<jbyteArray>(keep(env_->NewByteArray(length)));
    if (array != nullptr) {
        env_->SetByteArrayRegion(array, 0, length, reinterpret_cast<const jbyte*>(bytes));
    } else if (trace_failure != nullptr) {
        trace_failure(handler_);
    }
    return array;
}

jintArray EventBuilder::ints(const jint* values, jsize count) {
    if (!isSound()) {
        return nullptr;
    }
    const auto array = static_cast<jintArray>(keep(env_->NewIntArray(count)));
    if (array != nullptr) {
        env_->SetIntArrayRegion(array, 0, count, values);
    }
    return array;
}

jobjectArray EventBuilder::objectArray(int class_id, jsize count) {
    if (!isSound()) {
        return nullptr;
    }
    const jclass clazz = listener_.getJavaClass(class_id);
    return static_cast<jobjectArray>(
        keep(clazz != nullptr ? env_->NewObjectArray(count, clazz, nullptr) : nullptr));
}

jint EventBuilder::lengthOf(jstring string) const {
    return failed_ ? 0 : env_->GetStringUTFLength(string);
}

int EventBuilder::endUndelivered() {
    if (!isSound()) {
        return 1;
    }
    TRACE_LISTENER(kFuncEnd, handler_, "");
    return 0;
}

int EventBuilder::call(TE_DTVSV_METHODID callback, jobject event, TraceFailure trace_failure) {
    const int ret = listener_.CallMethod(env_, callback, nullptr, event);
    if (ret != 0 && trace_failure != nullptr) {
        trace_failure(handler_);
        return 1;
    }
    if (!succeeded(ret)) {
        return 1;
    }
    dropReferences();
    TRACE_LISTENER(kFuncEnd, handler_, "ret = %d", 0);
    return 0;
}

/// Holds a local reference until the event has been delivered. A null one is a failure.
jobject EventBuilder::keep(jobject object) {
    if (object == nullptr) {
        failed_ = true;
    } else if (!framed_ && reference_count_ < kMostReferences) {
        references_[reference_count_++] = object;
    }
    return object;
}

void EventBuilder::dropReferences() {
    closeFrame();
    while (reference_count_ > 0) {
        env_->DeleteLocalRef(references_[--reference_count_]);
    }
}

void EventBuilder::closeFrame() {
    if (framed_) {
        env_->PopLocalFrame(nullptr);
        framed_ = false;
    }
}

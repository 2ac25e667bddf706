#include "events/event.h"

using trace::kDebug;
using trace::kFuncEnd;

bool EventBuilder::hasSize(int size, int required) const {
    if (size == required) {
        return true;
    }
    if (reports_ == Reports::kDebug) {
        TRACE_LISTENER(kDebug, handler_, "recv_size err!, recv_size = %d", size);
    } else {
        TRACE_LISTENER_ERROR_VALUE(handler_, "recv_size err!, recv_size = %d", size);
    }
    return false;
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

jbyteArray EventBuilder::bytes(const uint8_t* bytes, jsize length) {
    if (failed_) {
        return nullptr;
    }
    const auto array = static_cast<jbyteArray>(keep(env_->NewByteArray(length)));
    if (array != nullptr) {
        env_->SetByteArrayRegion(array, 0, length, reinterpret_cast<const jbyte*>(bytes));
    }
    return array;
}

jobject EventBuilder::keep(jobject object) {
    if (object == nullptr) {
        failed_ = true;
    } else if (reference_count_ < kMostReferences) {
        references_[reference_count_++] = object;
    }
    return object;
}

int EventBuilder::finish() {
    while (reference_count_ > 0) {
        env_->DeleteLocalRef(references_[--reference_count_]);
    }
    TRACE_LISTENER(kFuncEnd, handler_, "ret = %d", 0);
    return 0;
}

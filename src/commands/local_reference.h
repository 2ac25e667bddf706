#pragma once

#include <jni.h>

/// Deletes a local reference when it goes out of scope; null is left alone. Deleting is legal while
/// an exception is pending.
class LocalReference {
public:
    LocalReference(JNIEnv* env, jobject object) : env_(env), object_(object) {}
    ~LocalReference() {
        if (object_ != nullptr) {
            env_->DeleteLocalRef(object_);
        }
    }
    LocalReference(const LocalReference&) = delete;
    LocalReference& operator=(const LocalReference&) = delete;

private:
    JNIEnv* env_;
    jobject object_;
};

// Making Java objects of a record. After the first thing that cannot be made nothing more
// is made.
#pragma once

#include "binding/modified_utf8.h"
#include "hand/ids.h"
#include "hand/policy.h"

#include <jni.h>

#include <cstdint>
#include <cstring>

namespace hand {

/// A text of a record: in place when it ends within its field, else a copy with a zero byte.
template <size_t Size>
class Text {
public:
    explicit Text(const char (&field)[Size]) : text_(field) {
        if (std::memchr(field, '\0', Size) == nullptr) {
            std::memcpy(copy_, field, Size);
            copy_[Size] = '\0';
            text_ = copy_;
        }
    }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    const char* get() const { return text_; }

private:
    const char* text_;
    char copy_[Size + 1]; ///< of a text that fills its field; else not used
};

/// Whether a text is modified UTF-8 already. Most bytes are ASCII, so eight are taken at once.
inline bool isWellFormed(const char* text) {
    constexpr uint64_t kHighBits = 0x8080808080808080;
    const char* const end = text + std::strlen(text);
    while (text < end) {
        uint64_t eight = kHighBits;
        if (end - text >= 8) {
            std::memcpy(&eight, text, sizeof(eight));
        }
        const size_t length =
            (eight & kHighBits) == 0
                ? sizeof(eight)
                : modified_utf8::sequenceLength(reinterpret_cast<const unsigned char*>(text));
        if (length == 0) {
            return false;
        }
        text += length;
    }
    return true;
}

template <class Policy>
class Builder {
public:
    explicit Builder(JNIEnv* env) : env_(env) {}

    template <typename... Arguments>
    jobject make(TE_DTVSV_METHODID constructor, Arguments... arguments) {
        if (failed_) {
            return nullptr;
        }
        const int class_id = kMethodTable[constructor].class_id;
        LISTENER_LINE(trace::kDebug, "CallMethod",
                      "CallMethod, method_id = %d, class_id = %d, attr_id = %d",
                      static_cast<int>(constructor), class_id, kInstanceMethod);
        LISTENER_LINE(trace::kInfo, "CallMethod", "CallMethod, NewObject");
        const jvalue values[] = {asValue(arguments)...};
        const jobject object =
            checked(env_->NewObjectA(java.classes[class_id], java.methods[constructor], values));
        LISTENER_LINE(trace::kInfo, "setJavaMethod", "setJavaMethod");
        return object;
    }

    /// A text goes to the VM as it is when it is modified UTF-8 already.
    jstring text(const char* text) {
        if (failed_) {
            return nullptr;
        }
        if (isWellFormed(text)) {
            return checked(env_->NewStringUTF(text));
        }
        char converted[4096 * modified_utf8::kGrowth];
        modified_utf8::convert(text, converted);
        return checked(env_->NewStringUTF(converted));
    }

    /// UTF-16 units of a record, where nothing is aligned.
    template <size_t Size>
    jstring units(const char (&field)[Size], uint32_t count) {
        if (failed_) {
            return nullptr;
        }
        jchar aligned[Size / sizeof(jchar)];
        const size_t used = count < Size / sizeof(jchar) ? count : Size / sizeof(jchar);
        std::memcpy(aligned, field, used * sizeof(jchar));
        return checked(env_->NewString(aligned, static_cast<jsize>(used)));
    }

    jint lengthOf(jstring string) const { return failed_ ? 0 : env_->GetStringUTFLength(string); }

    jbyteArray bytes(const uint8_t* bytes, jsize count) {
        const jbyteArray array = failed_ ? nullptr : checked(env_->NewByteArray(count));
        if (array != nullptr) {
            env_->SetByteArrayRegion(array, 0, count, reinterpret_cast<const jbyte*>(bytes));
        }
        return array;
    }

    jintArray ints(const jint* values, jsize count) {
        const jintArray array = failed_ ? nullptr : checked(env_->NewIntArray(count));
        if (array != nullptr) {
            env_->SetIntArrayRegion(array, 0, count, values);
        }
        return array;
    }

    jobjectArray array(int class_id, jsize count) {
        return failed_ ? nullptr
                       : checked(env_->NewObjectArray(count, java.classes[class_id], nullptr));
    }

    void put(jobjectArray array, jsize index, jobject object) {
        if (!failed_) {
            env_->SetObjectArrayElement(array, index, object);
        }
    }

    /// Calls a callback of BGCallBack with an event. 0, or 1 when the event could not be made.
    int deliver(const char* handler, TE_DTVSV_METHODID callback, jobject event) {
        if (failed_) {
            return 1;
        }
        LISTENER_LINE(
            trace::kDebug, "CallMethod", "CallMethod, method_id = %d, class_id = %d, attr_id = %d",
            static_cast<int>(callback), static_cast<int>(class_id::kBGCallBack), kStaticMethod);
        LISTENER_LINE(trace::kDebug, "CallMethod", "CallMethod, CallStaticMethod, type_id = %d",
                      kReturnsVoid);
        const jvalue value = asValue(event);
        env_->CallStaticVoidMethodA(java.classes[class_id::kBGCallBack], java.methods[callback],
                                    &value);
        LISTENER_LINE(trace::kFuncEnd, handler, "ret = %d", 0);
        return 0;
    }

private:
    static jvalue asValue(jint value) {
        jvalue result;
        result.i = value;
        return result;
    }
    static jvalue asValue(jlong value) {
        jvalue result;
        result.j = value;
        return result;
    }
    static jvalue asValue(jobject value) {
        jvalue result;
        result.l = value;
        return result;
    }

    template <typename Reference>
    Reference checked(Reference made) {
        failed_ = made == nullptr;
        return made;
    }

    JNIEnv* const env_;
    bool failed_ = false;
};

} // namespace hand

// Text between the fields of records and Java strings.
#include "binding/JNIDtvSvLibListener.h"

#include "binding/modified_utf8.h"
#include "entry/trace.h"

#include <cstdlib>
#include <cstring>

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

/// A text is in a record, where nothing is aligned: the VM gets a copy that is. Those of a guide
/// are no longer than the copy on the stack.
jstring newStringOfUnaligned(JNIEnv* env, const char* text, int length) {
    constexpr size_t kUsual = 256;
    const size_t units = static_cast<size_t>(length);
    jchar usual[kUsual];
    jchar* copy = usual;
    if (units > kUsual) {
        copy = static_cast<jchar*>(std::malloc(units * sizeof(jchar)));
        if (copy == nullptr) {
            return nullptr;
        }
    }
    std::memcpy(copy, text, units * sizeof(jchar));
    const jstring string = env->NewString(copy, length);
    if (copy != usual) {
        std::free(copy);
    }
    return string;
}

} // namespace

jstring JNIDtvSvLibListener::OrgNewString(JNIEnv* env, const char* text, int length) {
    jstring string = nullptr;
    if (text == nullptr || length == 0) {
        const jchar none = 0;
        string = env->NewString(&none, 0);
    } else if (length > 0) {
        string = newStringOfUnaligned(env, text, length);
    }
    if (string == nullptr) {
        TRACE_LISTENER(kDebug, __func__, "Failure, ret is NULL");
    }
    return string;
}

jstring JNIDtvSvLibListener::OrgNewStringUTF(JNIEnv* env, const char* text) {
    jstring string = nullptr;
    if (text == nullptr) {
        string = env->NewStringUTF("");
    } else if (modified_utf8::isWellFormed(text)) {
        string = env->NewStringUTF(text);
    } else {
        const size_t room = std::strlen(text) * modified_utf8::kGrowth + 1;
        if (auto* const copy = static_cast<char*>(std::malloc(room))) {
            modified_utf8::convert(text, copy);
            string = env->NewStringUTF(copy);
            std::free(copy);
        }
    }
    if (string == nullptr) {
        TRACE_LISTENER(kDebug, __func__, "Failure, ret is NULL");
    }
    return string;
}

void JNIDtvSvLibListener::convJStringToChar(JNIEnv* env, jstring string, char* buffer, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    if (size > 0) {
        std::memset(buffer, 0, static_cast<size_t>(size));
        if (string != nullptr) {
            const jsize length = env->GetStringUTFLength(string);
            if (const char* const text = env->GetStringUTFChars(string, nullptr)) {
                const jsize copied = size > length ? length : size;
                std::memcpy(buffer, text, static_cast<size_t>(copied));
                env->ReleaseStringUTFChars(string, text);
            }
        }
    }
    TRACE_LISTENER(kFuncEnd, __func__, "");
}

void JNIDtvSvLibListener::convJStringToUTF16(JNIEnv* env, jstring string, char* buffer, int size) {
    if (size <= 0) {
        return;
    }
    const size_t room = static_cast<size_t>(size);
    std::memset(buffer, 0, room);
    if (string == nullptr) {
        return;
    }
    const size_t length = static_cast<size_t>(env->GetStringLength(string)) * sizeof(jchar);
    if (const jchar* const text = env->GetStringChars(string, nullptr)) {
        std::memcpy(buffer, text, length < room ? length : room);
        env->ReleaseStringChars(string, text);
    }
}

// Construction of Java objects and invocation of Java methods through rows of the method registry.
#include "binding/JNIDtvSvLibListener.h"

#include "entry/trace.h"

#include <cstdarg>

using trace::kDebug;
using trace::kInfo;

namespace {

/// Constructs an object: null when that failed. Some VMs answer the object of a constructor that
/// threw; it is dropped, and the exception stays pending.
jobject construct(JNIEnv* env, jclass clazz, jmethodID constructor, va_list arguments) {
    if (clazz == nullptr || constructor == nullptr) {
        return nullptr;
    }
    const jobject object = env->NewObjectV(clazz, constructor, arguments);
    if (object != nullptr && env->ExceptionCheck()) {
        env->DeleteLocalRef(object);
        return nullptr;
    }
    return object;
}

/// Deletes what a called method returned.
void discard(JNIEnv* env, jobject returned) {
    if (returned != nullptr) {
        env->DeleteLocalRef(returned);
    }
}

/// Calls a static method whose return type is `type_id` and discards what it returns.
void callStatic(JNIEnv* env, jclass clazz, jmethodID method, int type_id, va_list arguments) {
    switch (type_id) {
    case 0:
        env->CallStaticVoidMethodV(clazz, method, arguments);
        break;
    case 1:
        discard(env, env->CallStaticObjectMethodV(clazz, method, arguments));
        break;
    case 2:
        env->CallStaticBooleanMethodV(clazz, method, arguments);
        break;
    case 3:
        env->CallStaticByteMethodV(clazz, method, arguments);
        break;
    case 4:
        env->CallStaticCharMethodV(clazz, method, arguments);
        break;
    case 5:
        env->CallStaticShortMethodV(clazz, method, arguments);
        break;
    case 6:
        env->CallStaticIntMethodV(clazz, method, arguments);
        break;
    case 7:
        env->CallStaticLongMethodV(clazz, method, arguments);
        break;
    case 8:
        env->CallStaticFloatMethodV(clazz, method, arguments);
        break;
    case 9:
        env->CallStaticDoubleMethodV(clazz, method, arguments);
        break;
    default:
        break;
    }
}

/// The same for an instance method of `object`.
void callInstance(JNIEnv* env, jobject object, jmethodID method, int type_id, va_list arguments) {
    switch (type_id) {
    case 0:
        env->CallVoidMethodV(object, method, arguments);
        break;
    case 1:
        discard(env, env->CallObjectMethodV(object, method, arguments));
        break;
    case 2:
        env->CallBooleanMethodV(object, method, arguments);
        break;
    case 3:
        env->CallByteMethodV(object, method, arguments);
        break;
    case 4:
        env->CallCharMethodV(object, method, arguments);
        break;
    case 5:
        env->CallShortMethodV(object, method, arguments);
        break;
    case 6:
        env->CallIntMethodV(object, method, arguments);
        break;
    case 7:
        env->CallLongMethodV(object, method, arguments);
        break;
    case 8:
        env->CallFloatMethodV(object, method, arguments);
        break;
    case 9:
        env->CallDoubleMethodV(object, method, arguments);
        break;
    default:
        break;
    }
}

} // namespace

int JNIDtvSvLibListener::CallMethod(JNIEnv* env, int method_id, jobject* out, ...) {
    MethodEntry& entry = method_info_[method_id];
    TRACE_LISTENER(kDebug, __func__, "CallMethod, method_id = %d, class_id = %d, attr_id = %d",
                   method_id, entry.class_id, entry.attr_id);

    // A row that was never resolved is all zero: it reads as a constructor without a method, and
    // fails as one. Nothing null goes to the VM.
    va_list arguments;
    va_start(arguments, out);
    int ret = 0;
    if (entry.attr_id != kInstanceMethod) {
        TRACE_LISTENER(kDebug, __func__, "CallMethod, CallStaticMethod, type_id = %d",
                       entry.type_id);
        if (entry.cls != nullptr && entry.method != nullptr) {
            callStatic(env, entry.cls, entry.method, entry.type_id, arguments);
        }
    } else if (out != nullptr || !threadConstructed(entry)) {
        TRACE_LISTENER(kInfo, __func__, "CallMethod, NewObject");
        const jobject object =
            construct(env, class_info_[entry.class_id].cls, entry.method, arguments);
        if (object == nullptr) {
            TRACE_LISTENER(kDebug, __func__, "CallMethod, NewObject error!");
            ret = 1;
        } else {
            storeConstructed(entry, object);
            if (out != nullptr) {
                *out = object;
            }
        }
    } else {
        TRACE_LISTENER(kDebug, __func__, "CallMethod, CallMethod type_id = %d", entry.type_id);
        const jobject object = entry.cached_object.load(std::memory_order_relaxed);
        if (entry.method != nullptr) {
            callInstance(env, object, entry.method, entry.type_id, arguments);
        }
    }
    va_end(arguments);
    return ret;
}

/// Whether the calling thread was the last to construct through a row.
bool JNIDtvSvLibListener::threadConstructed(const MethodEntry& entry) {
    return entry.cached_object.load(std::memory_order_relaxed) != nullptr &&
           pthread_equal(entry.tid.load(std::memory_order_relaxed), pthread_self()) != 0;
}

int JNIDtvSvLibListener::NewFieldObject(JNIEnv* env, int field_id, jobject& object,
                                        jfieldID& field) {
    const TS_DTVSV_FIELDINFO info = getJavaFieldInfo(field_id);
    const jobject allocated = info.cls != nullptr ? env->AllocObject(info.cls) : nullptr;
    if (allocated == nullptr) {
        TRACE_LISTENER(kDebug, __func__, "NewFieldObject, AllocObject error!, field_id = %d",
                       field_id);
        return 1;
    }
    object = allocated;
    field = info.field;
    return 0;
}

int JNIDtvSvLibListener::SetObjectField(JNIEnv* env, int field_id, jobject& object, jobject value) {
    jfieldID field = nullptr;
    if (NewFieldObject(env, field_id, object, field) != 0) {
        TRACE_LISTENER(kDebug, __func__, "SetObjectField, NewFieldObject error!, field_id = %d",
                       field_id);
        return 1;
    }
    if (field != nullptr) {
        env->SetObjectField(object, field, value);
    }
    return 0;
}

int JNIDtvSvLibListener::SetIntField(JNIEnv* env, int field_id, jobject& object, int value) {
    jfieldID field = nullptr;
    if (NewFieldObject(env, field_id, object, field) != 0) {
        TRACE_LISTENER(kDebug, __func__, "SetIntField, NewFieldObject error!, field_id = %d",
                       field_id);
        return 1;
    }
    if (field != nullptr) {
        env->SetIntField(object, field, value);
    }
    return 0;
}

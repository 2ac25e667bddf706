// The registries of Java classes and methods, and the listener's life.
#include "binding/JNIDtvSvLibListener.h"

#include "entry/trace.h"

using trace::kDebug;
using trace::kInfo;

JNIDtvSvLibListener::JNIDtvSvLibListener()
    : vm_(nullptr), env_info_{}, class_info_{}, method_info_{}, field_info_{} {}

JNIDtvSvLibListener::~JNIDtvSvLibListener() {
    // This runs while the process ends. The VM may be gone and the table may still hold the
    // environment that this thread once had: the VM itself is asked before anything is released. Or
    // a Java thread ends the process, with Java frames below: a thread that the VM knew without the
    // bridge is not the bridge's to detach.
    const bool is_vms_own = !threadHasSlot() && vmServesThread();
    JNIEnv* const env = getJNIEnv();
    if (env != nullptr && vmServesThread()) {
        releaseJavaClasses(env);
    }
    if (is_vms_own) {
        emptyEnvironments(false);
    } else {
        freeJNIEnv();
    }
}

void JNIDtvSvLibListener::releaseJavaClasses(JNIEnv* env) {
    for (TS_DTVSV_CLASSINFO& info : class_info_) {
        if (info.cls != nullptr) {
            env->DeleteGlobalRef(info.cls);
            info.cls = nullptr;
        }
    }
}

int JNIDtvSvLibListener::setJavaClass(JNIEnv* env, int class_id, const char* class_name) {
    TRACE_LISTENER(kDebug, __func__, "setJavaClass, threadid = %x, class_id = %d, class_name = %s",
                   trace::threadId(), class_id, class_name);
    const jclass clazz = env->FindClass(class_name);
    if (clazz == nullptr) {
        TRACE_LISTENER(kDebug, __func__, "setJavaClass, Can't find class : %s", class_name);
        return 1;
    }
    const auto reference = static_cast<jclass>(env->NewGlobalRef(clazz));
    if (reference == nullptr) {
        TRACE_LISTENER(kDebug, __func__, "setJavaClass, NewGlobalRef error! : class_id = %d",
                       class_id);
        return 1;
    }
    TS_DTVSV_CLASSINFO& info = class_info_[class_id];
    info.cls = reference;
    info.tid = pthread_self();
    TRACE_LISTENER(kDebug, __func__, "setJavaClass, clazz = %p, m_class_info[class_id].cls = %p",
                   static_cast<void*>(clazz), static_cast<void*>(info.cls));
    return 0;
}

int JNIDtvSvLibListener::setJavaClass(JNIEnv* env, int class_id, jobject object) {
    TRACE_LISTENER(kDebug, __func__, "setJavaClass, class_id = %d", class_id);
    TS_DTVSV_CLASSINFO& info = class_info_[class_id];
    info.object = nullptr;
    info.cls = nullptr;
    if (object != nullptr) {
        const jclass clazz = env->GetObjectClass(object);
        info.object = env->NewGlobalRef(object);
        info.cls = static_cast<jclass>(env->NewGlobalRef(clazz));
        env->DeleteLocalRef(clazz);
    }
    return 0;
}

int JNIDtvSvLibListener::setJavaMethod(JNIEnv* env, int class_id, int method_id, int attr_id,
                                       int type_id, const char* name, const char* signature) {
    TRACE_LISTENER(kDebug, __func__,
                   "setJavaMethod, class_id = %d, method_id = %d, attr_id = %d, type_id = %d, "
                   "method_name = %s, signature = %s",
                   class_id, method_id, attr_id, type_id, name, signature);
    const jclass clazz = class_info_[class_id].cls;
    jmethodID method = nullptr;
    if (clazz != nullptr) {
        method = attr_id == kStaticMethod ? env->GetStaticMethodID(clazz, name, signature)
                                          : env->GetMethodID(clazz, name, signature);
        if (method == nullptr) {
            env->ExceptionClear();
        }
    }
    if (method == nullptr) {
        TRACE_LISTENER(kDebug, __func__,
                       "setJavaMethod, GetMethodID error!, class_id = %d, method_id = %d, "
                       "attr_id = %d, type_id = %d, method_name = %s, signature = %s",
                       class_id, method_id, attr_id, type_id, name, signature);
        return 1;
    }
    MethodEntry& entry = method_info_[method_id];
    entry.class_id = class_id;
    entry.cls = clazz;
    entry.tid.store(pthread_self(), std::memory_order_relaxed);
    entry.method = method;
    entry.attr_id = attr_id;
    entry.type_id = type_id;
    return 0;
}

void JNIDtvSvLibListener::setJavaMethod(int method_id, TS_DTVSV_METHODINFO& info) {
    TRACE_LISTENER(kInfo, __func__, "setJavaMethod");
    method_info_[method_id].store(info);
}

void JNIDtvSvLibListener::storeConstructed(MethodEntry& entry, jobject object) {
    // Only two words change, but the log line is that of storing a whole entry.
    TRACE_LISTENER(kInfo, "setJavaMethod", "setJavaMethod");
    entry.cached_object.store(object, std::memory_order_relaxed);
    entry.tid.store(pthread_self(), std::memory_order_relaxed);
}

TS_DTVSV_METHODINFO JNIDtvSvLibListener::MethodEntry::load() const {
    return {class_id,
            cls,
            tid.load(std::memory_order_relaxed),
            method,
            cached_object.load(std::memory_order_relaxed),
            attr_id,
            type_id};
}

void JNIDtvSvLibListener::MethodEntry::store(const TS_DTVSV_METHODINFO& info) {
    class_id = info.class_id;
    cls = info.cls;
    tid.store(info.tid, std::memory_order_relaxed);
    method = info.method;
    cached_object.store(info.cached_object, std::memory_order_relaxed);
    attr_id = info.attr_id;
    type_id = info.type_id;
}

jclass JNIDtvSvLibListener::getJavaClass(int class_id) const {
    return class_info_[class_id].cls;
}

jobject JNIDtvSvLibListener::getJavaClassObject(int class_id) const {
    return class_info_[class_id].object;
}

TS_DTVSV_CLASSINFO JNIDtvSvLibListener::getJavaClassInfo(int class_id) const {
    return class_info_[class_id];
}

jmethodID JNIDtvSvLibListener::getJavaMethodID(int method_id) const {
    return method_info_[method_id].method;
}

jclass JNIDtvSvLibListener::getJavaClassForMethodid(int method_id) const {
    return method_info_[method_id].cls;
}

TS_DTVSV_METHODINFO JNIDtvSvLibListener::getJavaMethodInfo(int method_id) const {
    return method_info_[method_id].load();
}

TS_DTVSV_FIELDINFO JNIDtvSvLibListener::getJavaFieldInfo(int field_id) const {
    return field_info_[field_id];
}

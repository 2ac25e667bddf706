// The listener: the one object through which commands leave, events arrive, and Java is addressed.
#pragma once

#include "binding/method_table.h"

#include <DtvSvLibListener.h>
#include <jni.h>
#include <pthread.h>
#include <utils/StrongPointer.h>

#include <atomic>
#include <cstdint>

/// An entry of the class registry. All zero until the class has been resolved.
struct TS_DTVSV_CLASSINFO {
    jclass cls;     ///< global reference
    jobject object; ///< global reference, set by the by-object form alone
    pthread_t tid;  ///< the thread that resolved the class by name
};

/// An entry of the method registry. All zero until the method has been resolved.
struct TS_DTVSV_METHODINFO {
    int class_id;
    jclass cls;    ///< the class registry's reference when the method was resolved
    pthread_t tid; ///< the thread that resolved it, later the one that last constructed
    jmethodID method;
    jobject cached_object; ///< what was last constructed: a local reference of that call
    int attr_id;
    int type_id;
};

/// An entry of the field registry. Nothing fills it.
struct TS_DTVSV_FIELDINFO {
    intptr_t reserved_0;
    jclass cls; ///< the class to allocate
    jfieldID field;
    intptr_t reserved_3;
    intptr_t reserved_4;
};

/// A slot of the environment table.
struct TS_DTVSV_ENVINFO {
    JNIEnv* env;    ///< null: the slot is free
    uint8_t attach; ///< 1: the bridge attached the thread and owes a detach
    pthread_t tid;
};

/// Unless said otherwise, operations that answer int answer 0 for success and 1 for failure, take
/// the calling thread's environment, and clear the exception of a look-up that failed. What a
/// constructor or a callback throws stays pending, and so does the VM's exception when it has no
/// memory for an object, a string or its characters. None of them checks an id: ids come from the
/// class and method tables.
class JNIDtvSvLibListener : public DtvSvLibListener {
public:
    JNIDtvSvLibListener();
    ~JNIDtvSvLibListener() override;

    // ---- Registries: filled while the library is loaded, read only afterwards. (registry.cpp)

    /// Resolves a class by its name with slashes. When there is none, the VM's exception stays
    /// pending.
    int setJavaClass(JNIEnv* env, int class_id, const char* class_name);
    /// Takes a class from an object, and global references to both. Always 0.
    int setJavaClass(JNIEnv* env, int class_id, jobject object);
    /// Resolves a method or constructor of a class that has been resolved.
    int setJavaMethod(JNIEnv* env, int class_id, int method_id, int attr_id, int type_id,
                      const char* name, const char* signature);
    /// Overwrites a whole entry.
    void setJavaMethod(int method_id, TS_DTVSV_METHODINFO& info);

    /// The references that the getters answer are the registry's own.
    jclass getJavaClass(int class_id) const;
    jobject getJavaClassObject(int class_id) const;
    TS_DTVSV_CLASSINFO getJavaClassInfo(int class_id) const;
    jmethodID getJavaMethodID(int method_id) const;
    jclass getJavaClassForMethodid(int method_id) const;
    TS_DTVSV_METHODINFO getJavaMethodInfo(int method_id) const;
    TS_DTVSV_FIELDINFO getJavaFieldInfo(int field_id) const;

    // ---- Environments: one per native thread, at most 20. (environment.cpp)

    /// The VM that threads are attached to. Called once, while the library is loaded.
    void setVM(JavaVM* vm);
    /// The calling thread's environment; the thread is attached to the VM when need be. Null when
    /// the VM refuses or the table is full.
    JNIEnv* getJNIEnv();
    /// Empties the table, and detaches the calling thread for what the bridge attached.
    void freeJNIEnv();
    /// Empties the slot that holds `env`, if the bridge attached it, and detaches the calling
    /// thread.
    void detachJNIEnv(JNIEnv* env);

    // ---- Invocation. (invocation.cpp)

    /// Constructs an object through a constructor row (`out` not null: a local reference of the
    /// caller's goes there), or calls a callback row. The arguments follow in the order of the
    /// row's signature: int, jlong and object. A callback that throws counts as called; the
    /// exception is then pending.
    int CallMethod(JNIEnv* env, int method_id, jobject* out, ...);

    /// Allocate an object of a field entry's class, and set its field.
    int NewFieldObject(JNIEnv* env, int field_id, jobject& object, jfieldID& field);
    int SetObjectField(JNIEnv* env, int field_id, jobject& object, jobject value);
    int SetIntField(JNIEnv* env, int field_id, jobject& object, int value);

    // ---- Text. (strings.cpp)

    /// A Java string of `length` UTF-16 units at `text`, in the machine's byte order and as they
    /// are; empty when `text` is null. Null when it cannot be made.
    jstring OrgNewString(JNIEnv* env, const char* text, int length);
    /// A Java string of a zero-terminated text in UTF-8, modified or standard; a byte that is
    /// neither becomes U+FFFD. Empty when `text` is null. Null when it cannot be made.
    jstring OrgNewStringUTF(JNIEnv* env, const char* text);
    /// Copies a string's modified UTF-8 into a field of `size` bytes: zero-filled after a shorter
    /// text, cut without terminator when the text fills the field. All zero for a null string.
    void convJStringToChar(JNIEnv* env, jstring string, char* buffer, int size);
    /// Copies a string's UTF-16 units into a field of `size` bytes, zero-filled after a shorter
    /// one.
    void convJStringToUTF16(JNIEnv* env, jstring string, char* buffer, int size);

    // ---- Events. (events/)

    /// Takes one event on the calling thread. 0 when it was delivered to Java, 1 when it was not,
    /// -1 when the thread has no environment. No local reference and no exception outlives the
    /// call.
    int recvEventFromServer(int event_id, void* data, int size) override;
    /// Hands an event to the handler of its id. 1 for an id without handler.
    int DoListenerEvent(JNIEnv* env, int event_id, void* data, int size);

    // Each handler takes a record of `size` bytes, builds its Java event and calls its callback.

    int dtvsv_msgid_lib_common_reply(JNIEnv* env, int handle, int result,
                                     TE_DTVSV_METHODID constructor, TE_DTVSV_METHODID callback);
#define EVENT(id, name, record, handler, java_class)                                               \
    int dtvsv_msgid_lib_##handler(JNIEnv* env, void* data, int size);
#include "records/message_table.def"

private:
    void releaseJavaClasses(JNIEnv* env);
    /// freeJNIEnv, which may or may not detach the calling thread.
    void emptyEnvironments(bool may_detach);
    /// Whether the calling thread has a slot of the environment table.
    bool threadHasSlot() const;
    /// Whether the VM is there and knows the calling thread.
    bool vmServesThread() const;

    /// A method entry as it is stored. Event threads and Java threads construct through one row at
    /// the same time, and each stores the object that it made and its own id. These two words are
    /// atomic, without any ordering and without a lock.
    struct MethodEntry {
        int class_id = 0;
        jclass cls = nullptr;
        std::atomic<pthread_t> tid{};
        jmethodID method = nullptr;
        std::atomic<jobject> cached_object{};
        int attr_id = 0;
        int type_id = 0;

        static_assert(std::atomic<pthread_t>::is_always_lock_free &&
                      std::atomic<jobject>::is_always_lock_free);

        TS_DTVSV_METHODINFO load() const;
        void store(const TS_DTVSV_METHODINFO& info);
    };

    /// Stores what was constructed last through a row, and the thread that did it.
    static void storeConstructed(MethodEntry& entry, jobject object);
    /// Whether the calling thread was the last to construct through a row.
    static bool threadConstructed(const MethodEntry& entry);

    static constexpr int kEnvironmentCount = 20;

    JavaVM* vm_;
    TS_DTVSV_ENVINFO env_info_[kEnvironmentCount];
    TS_DTVSV_CLASSINFO class_info_[kClassCount];
    MethodEntry method_info_[kMethodCount];
    TS_DTVSV_FIELDINFO field_info_[1];
};

/// The one listener. Null until the library has been loaded; set once, never reset while the
/// process runs.
extern android::sp<JNIDtvSvLibListener> g_listener;

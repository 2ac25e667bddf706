// Access to the listener's operations for tests. It is in a library of its own together with the
// bridge's objects, so that the strict JNI table can distinguish the bridge's calls from the
// test's.
#pragma once

#include "binding/JNIDtvSvLibListener.h"

/// The listener's operations, which are hidden outside their library: each as a function that takes
/// the listener first.
struct BindingProbe {
    using Self = JNIDtvSvLibListener*;

    android::sp<JNIDtvSvLibListener> (*make)();
    Self (*loaded)(); ///< what g_listener holds
    /// The same object by a reference that counts as the bridge's own: it ends with the caller's
    /// frame.
    jobject (*adopt)(JNIEnv*, jobject);

    int (*setJavaClass)(Self, JNIEnv*, int, const char*);
    int (*setJavaClassOf)(Self, JNIEnv*, int, jobject);
    int (*setJavaMethod)(Self, JNIEnv*, int, int, int, int, const char*, const char*);
    void (*storeJavaMethod)(Self, int, TS_DTVSV_METHODINFO&);
    /// Overwrites the entry of the field registry, which the listener itself never does.
    void (*storeJavaField)(Self, int, const TS_DTVSV_FIELDINFO&);
    /// A field's id as one that the bridge has looked up.
    jfieldID (*findField)(JNIEnv*, jclass, const char*, const char*);
    jclass (*getJavaClass)(Self, int);
    jobject (*getJavaClassObject)(Self, int);
    TS_DTVSV_CLASSINFO (*getJavaClassInfo)(Self, int);
    jmethodID (*getJavaMethodID)(Self, int);
    jclass (*getJavaClassForMethodid)(Self, int);
    TS_DTVSV_METHODINFO (*getJavaMethodInfo)(Self, int);
    TS_DTVSV_FIELDINFO (*getJavaFieldInfo)(Self, int);

    void (*setVM)(Self, JavaVM*);
    JNIEnv* (*getJNIEnv)(Self);
    void (*freeJNIEnv)(Self);
    void (*detachJNIEnv)(Self, JNIEnv*);

    int (JNIDtvSvLibListener::*CallMethod)(JNIEnv*, int, jobject*, ...);
    int (*NewFieldObject)(Self, JNIEnv*, int, jobject&, jfieldID&);
    int (*SetObjectField)(Self, JNIEnv*, int, jobject&, jobject);
    int (*SetIntField)(Self, JNIEnv*, int, jobject&, int);

    jstring (*OrgNewString)(Self, JNIEnv*, const char*, int);
    jstring (*OrgNewStringUTF)(Self, JNIEnv*, const char*);
    void (*convJStringToChar)(Self, JNIEnv*, jstring, char*, int);
    void (*convJStringToUTF16)(Self, JNIEnv*, jstring, char*, int);

    /// With a builder of an event whose record has the wrong size: how many of its operations have
    /// made something.
    int (*madeOfWrongSize)(Self, JNIEnv*);
    /// With a builder: whether it makes an array of a class that the listener has not.
    bool (*makesArrayOfMissingClass)(Self, JNIEnv*);
    /// With a builder that has no frame: makes that number of strings, and leaves them to the
    /// caller.
    bool (*makeStrings)(Self, JNIEnv*, int);
};

__attribute__((visibility("default"))) const BindingProbe& bindingProbe();

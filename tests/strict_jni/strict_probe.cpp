// A library that breaks the rules of JNI, one function a rule.
#include <jni.h>

#define PROBE extern "C" __attribute__((visibility("default")))

namespace {
const char* const probe_class = "harness/StrictProbe";

jobject makeProbe(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    jmethodID constructor = env->GetMethodID(of, "<init>", "()V");
    jobject made = env->NewObject(of, constructor);
    env->DeleteLocalRef(of);
    return made;
}

void throwSomething(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    env->CallStaticVoidMethod(of, env->GetStaticMethodID(of, "fail", "()V"));
    env->DeleteLocalRef(of);
}
} // namespace

// This one breaks no rule: it uses what the bridge uses.
PROBE bool lawful(JNIEnv* env) {
    if (env->PushLocalFrame(16) != JNI_OK) {
        return false;
    }
    jobject object = makeProbe(env);
    jclass of = env->GetObjectClass(object);
    jclass global = static_cast<jclass>(env->NewGlobalRef(of));
    jfieldID number = env->GetFieldID(of, "number", "I");
    jint read = env->GetIntField(object, number);
    jfieldID text_id = env->GetFieldID(of, "text", "Ljava/lang/String;");
    jstring text = static_cast<jstring>(env->GetObjectField(object, text_id));
    const char* characters = env->GetStringUTFChars(text, nullptr);
    bool same = characters[0] == 't' && env->GetStringUTFLength(text) == 4;
    env->ReleaseStringUTFChars(text, characters);
    jint one = env->CallIntMethod(object, env->GetMethodID(of, "one", "()I"));
    jint two = env->CallStaticIntMethod(global, env->GetStaticMethodID(global, "two", "()I"));
    jmethodID take = env->GetStaticMethodID(of, "take", "(Ljava/lang/Object;)V");
    env->CallStaticVoidMethod(of, take, static_cast<jobject>(nullptr));
    env->CallStaticVoidMethod(of, take, object);
    jbyteArray bytes = env->NewByteArray(3);
    const jbyte content[] = {1, 2, 3};
    env->SetByteArrayRegion(bytes, 0, 3, content);
    jbyte* elements = env->GetByteArrayElements(bytes, nullptr);
    same = same && elements[2] == 3 && env->GetArrayLength(bytes) == 3;
    env->ReleaseByteArrayElements(bytes, elements, JNI_ABORT);
    throwSomething(env);
    same = same && env->ExceptionCheck() == JNI_TRUE;
    env->DeleteLocalRef(bytes);
    env->ExceptionClear();
    env->NewStringUTF("\xC0\x80\xC2\x80\xE0\xA0\x80\xED\xA0\x81\xED\xB0\x80");
    env->DeleteLocalRef(nullptr);
    env->DeleteGlobalRef(global);
    env->PopLocalFrame(nullptr);
    return same && read == 7 && one == 7 && two == 9;
}

PROBE void pendingException(JNIEnv* env) {
    throwSomething(env);
    env->FindClass("java/lang/String");
    env->ExceptionClear();
}
PROBE void nullClass(JNIEnv* env) {
    env->GetMethodID(nullptr, "toString", "()V");
}
PROBE void nullString(JNIEnv* env) {
    env->GetStringUTFLength(nullptr);
}
PROBE void nullArray(JNIEnv* env) {
    env->GetArrayLength(nullptr);
}
PROBE void nullObjectClass(JNIEnv* env) {
    env->GetObjectClass(nullptr);
}
PROBE void nullMethod(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    env->CallStaticVoidMethod(of, nullptr);
    env->DeleteLocalRef(of);
}
PROBE void nullField(JNIEnv* env) {
    jobject object = makeProbe(env);
    env->GetIntField(object, nullptr);
    env->DeleteLocalRef(object);
}
PROBE void nullFieldObject(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    env->GetIntField(nullptr, env->GetFieldID(of, "number", "I"));
    env->DeleteLocalRef(of);
}
PROBE void dottedName(JNIEnv* env) {
    env->FindClass("java.lang.String");
}
PROBE void descriptorName(JNIEnv* env) {
    env->FindClass("Ljava/lang/String;");
}
PROBE void text(JNIEnv* env, const char* bytes) {
    jstring made = env->NewStringUTF(bytes);
    env->DeleteLocalRef(made);
}
PROBE void version(JNIEnv* env) {
    env->GetVersion();
}
PROBE void deleteTwice(JNIEnv* env) {
    jclass of = env->FindClass("java/lang/String");
    env->DeleteLocalRef(of);
    env->DeleteLocalRef(of);
}
PROBE void useDeleted(JNIEnv* env) {
    jclass of = env->FindClass("java/lang/String");
    env->DeleteLocalRef(of);
    env->GetSuperclass(of);
}
PROBE void passDeleted(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    jmethodID take = env->GetStaticMethodID(of, "take", "(Ljava/lang/Object;)V");
    jobject object = makeProbe(env);
    env->DeleteLocalRef(object);
    env->CallStaticVoidMethod(of, take, object);
    env->DeleteLocalRef(of);
}
PROBE void deleteOuter(JNIEnv* env) {
    jclass of = env->FindClass("java/lang/String");
    env->PushLocalFrame(4);
    env->DeleteLocalRef(of);
    env->PopLocalFrame(nullptr);
    env->DeleteLocalRef(of);
}
PROBE void deleteForeign(JNIEnv* env, jobject foreign) {
    env->DeleteLocalRef(foreign);
}
PROBE void globalAsLocal(JNIEnv* env) {
    jclass of = env->FindClass("java/lang/String");
    jobject global = env->NewGlobalRef(of);
    env->DeleteLocalRef(of);
    env->DeleteLocalRef(global);
    env->DeleteGlobalRef(global);
}
PROBE void deleteGlobalTwice(JNIEnv* env) {
    jclass of = env->FindClass("java/lang/String");
    jobject global = env->NewGlobalRef(of);
    env->DeleteLocalRef(of);
    env->DeleteGlobalRef(global);
    env->DeleteGlobalRef(global);
}
PROBE void memberIdForStatic(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    env->CallStaticIntMethod(of, env->GetMethodID(of, "one", "()I"));
    env->DeleteLocalRef(of);
}
PROBE void staticIdForMember(JNIEnv* env) {
    jobject object = makeProbe(env);
    jclass of = env->GetObjectClass(object);
    env->CallIntMethod(object, env->GetStaticMethodID(of, "two", "()I"));
    env->DeleteLocalRef(of);
    env->DeleteLocalRef(object);
}
PROBE void staticFieldForMember(JNIEnv* env) {
    jobject object = makeProbe(env);
    jclass of = env->GetObjectClass(object);
    env->GetIntField(object, env->GetStaticFieldID(of, "shared", "I"));
    env->DeleteLocalRef(of);
    env->DeleteLocalRef(object);
}
PROBE void inventedId(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    static int nothing;
    env->CallStaticVoidMethod(of, reinterpret_cast<jmethodID>(&nothing));
    env->DeleteLocalRef(of);
}
PROBE void otherReturnType(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    env->CallStaticVoidMethod(of, env->GetStaticMethodID(of, "two", "()I"));
    env->DeleteLocalRef(of);
}
PROBE void otherFieldType(JNIEnv* env) {
    jobject object = makeProbe(env);
    jclass of = env->GetObjectClass(object);
    env->GetLongField(object, env->GetFieldID(of, "number", "I"));
    env->DeleteLocalRef(of);
    env->DeleteLocalRef(object);
}
PROBE void otherObjectClass(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    jstring object = env->NewStringUTF("no probe");
    env->GetIntField(object, env->GetFieldID(of, "number", "I"));
    env->DeleteLocalRef(object);
    env->DeleteLocalRef(of);
}
PROBE void otherConstructor(JNIEnv* env) {
    jclass of = env->FindClass(probe_class);
    jclass string = env->FindClass("java/lang/String");
    env->NewObject(string, env->GetMethodID(of, "<init>", "()V"));
    env->DeleteLocalRef(string);
    env->DeleteLocalRef(of);
}
PROBE void negativeLength(JNIEnv* env) {
    env->NewByteArray(-1);
}
PROBE void emptyFrame(JNIEnv* env) {
    env->PushLocalFrame(0);
}
PROBE void popTooMuch(JNIEnv* env) {
    env->PopLocalFrame(nullptr);
}
PROBE void tooManyLocals(JNIEnv* env) {
    env->PushLocalFrame(300);
    for (int i = 0; i < 257; ++i) {
        env->FindClass("java/lang/String");
    }
    env->PopLocalFrame(nullptr);
}
PROBE void releaseTwice(JNIEnv* env) {
    jbyteArray bytes = env->NewByteArray(3);
    jbyte* elements = env->GetByteArrayElements(bytes, nullptr);
    env->ReleaseByteArrayElements(bytes, elements, 0);
    env->ReleaseByteArrayElements(bytes, elements, 0);
    env->DeleteLocalRef(bytes);
}
PROBE void releaseAsOther(JNIEnv* env) {
    jstring made = env->NewStringUTF("text");
    const char* characters = env->GetStringUTFChars(made, nullptr);
    env->ReleaseStringChars(made, reinterpret_cast<const jchar*>(characters));
    env->ReleaseStringUTFChars(made, characters);
    env->DeleteLocalRef(made);
}
PROBE void callInCritical(JNIEnv* env) {
    jbyteArray bytes = env->NewByteArray(3);
    void* elements = env->GetPrimitiveArrayCritical(bytes, nullptr);
    env->GetArrayLength(bytes);
    env->ReleasePrimitiveArrayCritical(bytes, elements, 0);
    env->DeleteLocalRef(bytes);
}
PROBE void variadicTable(JNIEnv* env) {
    // The C form of the call, with variable arguments.
    jclass of = env->FindClass(probe_class);
    jmethodID take = env->GetStaticMethodID(of, "take", "(Ljava/lang/Object;)V");
    env->functions->CallStaticIntMethod(env, of, take, static_cast<jobject>(nullptr));
    env->DeleteLocalRef(of);
}

PROBE jstring makeText(JNIEnv* env, const char* bytes) {
    return env->NewStringUTF(bytes);
}
PROBE jint makeFrame(JNIEnv* env) {
    return env->PushLocalFrame(4);
}
PROBE jint askEnv(JavaVM* vm, void** env) {
    return vm->GetEnv(env, JNI_VERSION_1_4);
}
PROBE jint attach(JavaVM* vm, void** env) {
    return vm->AttachCurrentThread(env, nullptr);
}
PROBE jint detach(JavaVM* vm) {
    return vm->DetachCurrentThread();
}
PROBE void dropGlobal(JNIEnv* env, jobject global) {
    env->DeleteGlobalRef(global);
}
PROBE jobject makeGlobal(JNIEnv* env, jobject object) {
    return env->NewGlobalRef(object);
}

namespace {
jobject JNICALL give(JNIEnv* env, jobject, jobject argument) {
    jobject made = env->NewLocalRef(argument);
    return made;
}
jobject JNICALL giveDeleted(JNIEnv* env, jobject, jobject argument) {
    jobject made = env->NewLocalRef(argument);
    env->DeleteLocalRef(made);
    return made;
}
void JNICALL keepFrame(JNIEnv* env, jobject) {
    env->PushLocalFrame(4);
    env->PopLocalFrame(nullptr);
    env->PushLocalFrame(4);
}
void JNICALL keepText(JNIEnv* env, jobject, jstring text) {
    static const char* kept;
    kept = env->GetStringUTFChars(text, nullptr);
    (void)kept;
}
void JNICALL makeMany(JNIEnv* env, jobject, jint count) {
    for (jint i = 0; i < count; ++i) {
        env->FindClass("java/lang/String");
    }
}

jdouble JNICALL mix(JNIEnv*, jobject, jboolean a, jbyte b, jchar c, jshort d, jint e, jlong f,
                    jfloat g, jdouble h, jobject i, jintArray j, jint k) {
    return h + a + b + c + d + e + static_cast<jdouble>(f) + static_cast<jdouble>(g) +
           (i != nullptr ? 1000 : 0) + (j != nullptr ? 1000 : 0) + k;
}
} // namespace

PROBE void bindNatives(jint (*bind)(const JNINativeMethod*, jint)) {
    auto row = [](const char* name, const char* signature, void* function) {
        return JNINativeMethod{const_cast<char*>(name), const_cast<char*>(signature), function};
    };
    const JNINativeMethod methods[] = {
        row("give", "(Ljava/lang/Object;)Ljava/lang/Object;", reinterpret_cast<void*>(&give)),
        row("giveDeleted", "(Ljava/lang/Object;)Ljava/lang/Object;",
            reinterpret_cast<void*>(&giveDeleted)),
        row("keepFrame", "()V", reinterpret_cast<void*>(&keepFrame)),
        row("keepText", "(Ljava/lang/String;)V", reinterpret_cast<void*>(&keepText)),
        row("makeMany", "(I)V", reinterpret_cast<void*>(&makeMany)),
        row("mix", "(ZBCSIJFDLjava/lang/Object;[II)D", reinterpret_cast<void*>(&mix)),
    };
    bind(methods, sizeof methods / sizeof *methods);
}

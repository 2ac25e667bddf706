#include "runner/technologies.h"

#include "runner/virtual_machine.h"

namespace bench {
namespace {

struct Row {
    const char* name;
    const char* java_class; ///< in the package of the peers
};
constexpr Row kRows[] = {
    {"jna-direct", "JnaDirect"},
    {"jna", "JnaInterface"},
    {"jnr", "Jnr"},
    {"ffm", "Ffm"},
};

jclass peersClass() {
    static const jclass peers = findClass("tenrik/bench/peers/Peers");
    return peers;
}

/// Describes and clears the exception that is pending: its innermost cause.
std::string takeReason() {
    JNIEnv* const jni = env();
    jobject thrown = jni->ExceptionOccurred();
    jni->ExceptionClear();
    const jclass throwable = jni->FindClass("java/lang/Throwable");
    const jmethodID get_cause = jni->GetMethodID(throwable, "getCause", "()Ljava/lang/Throwable;");
    while (const jobject cause = jni->CallObjectMethod(thrown, get_cause)) {
        thrown = cause;
    }
    const auto text = static_cast<jstring>(jni->CallObjectMethod(
        thrown, jni->GetMethodID(throwable, "toString", "()Ljava/lang/String;")));
    const std::string reason = textOf(text);
    return reason.substr(0, reason.find('\n'));
}

jobject makePeer(const char* java_class) {
    const jmethodID make =
        findStaticMethod(peersClass(), "make", "(Ljava/lang/String;)Ljava/lang/Object;");
    return env()->CallStaticObjectMethod(peersClass(), make, env()->NewStringUTF(java_class));
}

jobject makeCallLoop(jobject peer) {
    const jmethodID call_loop =
        findStaticMethod(peersClass(), "callLoop", "(Ljava/lang/Object;)Ljava/lang/Object;");
    const jobject loop = env()->CallStaticObjectMethod(peersClass(), call_loop, peer);
    requireNoException("callLoop");
    return env()->NewGlobalRef(loop);
}

Technology make(const Row& row) {
    Technology technology;
    technology.name = row.name;
    const jobject peer = makePeer(row.java_class);
    if (!env()->ExceptionCheck()) {
        env()->CallStaticVoidMethod(
            peersClass(), findStaticMethod(peersClass(), "listen", "(Ljava/lang/Object;)V"), peer);
    }
    if (env()->ExceptionCheck()) {
        technology.missing = takeReason();
        return technology;
    }
    technology.on_event = peers::onEvent();
    technology.on_ints = peers::onInts();
    const jmethodID proxy = findStaticMethod(
        peersClass(), "proxy", "(Ljava/lang/Object;)Ltenrik/service/dtvserver/DtvServerProxy;");
    technology.proxy =
        env()->NewGlobalRef(env()->CallStaticObjectMethod(peersClass(), proxy, peer));
    requireNoException(row.name);
    technology.call_loop = makeCallLoop(peer);
    return technology;
}

jint JNICALL sum(JNIEnv*, jobject, jint a, jint b) {
    return peer_sum(a, b);
}

} // namespace

const std::vector<Technology>& technologies() {
    static const std::vector<Technology> all = [] {
        std::vector<Technology> made;
        for (const Row& row : kRows) {
            made.push_back(make(row));
        }
        return made;
    }();
    return all;
}

jobject jniCallLoop() {
    static const jobject loop = [] {
        const jobject peer = makePeer("Jni");
        requireNoException("Jni");
        const JNINativeMethod native = {const_cast<char*>("sum"), const_cast<char*>("(II)I"),
                                        reinterpret_cast<void*>(sum)};
        env()->RegisterNatives(env()->GetObjectClass(peer), &native, 1);
        requireNoException("sum");
        return makeCallLoop(peer);
    }();
    return loop;
}

} // namespace bench

#include "entry/vm_probes.h"

#include "harness/harness.h"

namespace harness {
namespace {

std::vector<Registration> registrations;
bool refuse_registration = false;
decltype(JNINativeInterface_::RegisterNatives) register_natives = nullptr;

jint JNICALL keepRegistration(JNIEnv* env, jclass of, const JNINativeMethod* methods, jint count) {
    Registration kept;
    jclass class_class = env->FindClass("java/lang/Class");
    jmethodID get_name = env->GetMethodID(class_class, "getName", "()Ljava/lang/String;");
    auto name = static_cast<jstring>(env->CallObjectMethod(of, get_name));
    EXPECT_FALSE(env->ExceptionCheck());
    kept.class_name = toText(name);
    env->DeleteLocalRef(name);
    env->DeleteLocalRef(class_class);
    if (kept.class_name.compare(0, 7, "tenrik.") != 0) {
        return register_natives(env, of, methods, count); // the JDK's own
    }
    for (jint i = 0; i < count; ++i) {
        kept.names.emplace_back(methods[i].name);
        kept.signatures.emplace_back(methods[i].signature);
        kept.functions.push_back(methods[i].fnPtr);
    }
    registrations.push_back(kept);
    if (refuse_registration) {
        jclass error = env->FindClass("java/lang/NoSuchMethodError");
        env->ThrowNew(error, "refused by the test");
        env->DeleteLocalRef(error);
        return JNI_ERR;
    }
    return register_natives(env, of, methods, count);
}

/// The table that all environments share; the harness has already written its functions into it.
JNINativeInterface_& table() {
    return const_cast<JNINativeInterface_&>(*env()->functions);
}

int asked_for_1_4 = 0;
bool refuse_1_4 = false;
JNIInvokeInterface_ invoke;
decltype(JNIInvokeInterface_::GetEnv) get_env = nullptr;

jint JNICALL keepVersion(JavaVM* vm, void** env, jint version) {
    if (version == 0x10004) {
        ++asked_for_1_4;
        if (refuse_1_4) {
            *env = nullptr;
            return JNI_EVERSION;
        }
    }
    return get_env(vm, env, version);
}

} // namespace

RegistrationRecorder::RegistrationRecorder(bool refuse) {
    registrations.clear();
    refuse_registration = refuse;
    register_natives = table().RegisterNatives;
    table().RegisterNatives = &keepRegistration;
}

RegistrationRecorder::~RegistrationRecorder() {
    table().RegisterNatives = register_natives;
}

const std::vector<Registration>& RegistrationRecorder::kept() const {
    return registrations;
}

VersionProbe::VersionProbe(bool refuse) {
    JavaVM* vm = VirtualMachine::instance().vm();
    before = vm->functions;
    asked_for_1_4 = 0;
    refuse_1_4 = refuse;
    get_env = before->GetEnv;
    invoke = *before;
    invoke.GetEnv = &keepVersion;
    vm->functions = &invoke;
}

VersionProbe::~VersionProbe() {
    VirtualMachine::instance().vm()->functions = before;
}

int VersionProbe::asked() const {
    return asked_for_1_4;
}

} // namespace harness

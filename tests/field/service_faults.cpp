// Faults of the platform that no script of the simulated service can make. The library is preloaded
// into the VM: it takes the place of dtv::setServiceEndpoint, and replaces functions of the VM.
//
// Environment variables:
//   FIELD_THREADS  the number of threads that deliver events
//   FIELD_EMPTY    ID:N in hexadecimal and decimal: the N-th synchronous command with this message
//                  id is answered with success and without a reply
#include "exchange.h"

#include <dlfcn.h>
#include <jni.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace {

/// Passes everything to the service but the command that gets an empty answer.
class FaultyEndpoint : public dtv::ServiceEndpoint {
public:
    explicit FaultyEndpoint(std::shared_ptr<dtv::ServiceEndpoint> service)
        : service_(std::move(service)) {
        if (const char* rule = std::getenv("FIELD_EMPTY")) {
            std::sscanf(rule, "%x:%d", &empty_id_, &countdown_);
        }
    }

    int onCommand(const dtv::Command& command) override { return service_->onCommand(command); }

    int onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) override {
        if (static_cast<unsigned>(command.message_id) == empty_id_ && --countdown_ == 0) {
            return 0;
        }
        return service_->onSynchronousCommand(command, reply);
    }

private:
    std::shared_ptr<dtv::ServiceEndpoint> service_;
    unsigned empty_id_ = 0;
    int countdown_ = 0;
};

decltype(JNINativeInterface_::NewStringUTF) vm_new_string = nullptr;
const JNIInvokeInterface_* vm_functions = nullptr; ///< the VM's own
JNIInvokeInterface_ other_functions;

/// The texts that the VM has no memory for: those that contain this one.
std::string& refusedText() {
    static std::string& text = *new std::string;
    return text;
}

jstring JNICALL newString(JNIEnv* env, const char* text) {
    if (!refusedText().empty() && text != nullptr &&
        std::strstr(text, refusedText().c_str()) != nullptr) {
        return nullptr;
    }
    return vm_new_string(env, text);
}

jint JNICALL refuseEnvironment(JavaVM*, void** env, jint) {
    *env = nullptr;
    return JNI_EVERSION;
}

jint JNICALL refuseThread(JavaVM* vm, void** env, void* arguments) {
    return arguments == nullptr ? JNI_ENOMEM
                                : vm_functions->AttachCurrentThread(vm, env, arguments);
}

/// Gives the VM a table of functions that can be changed: its own is constant.
void useFunctions(JNIEnv* env) {
    if (vm_functions == nullptr) {
        JavaVM* vm = nullptr;
        env->GetJavaVM(&vm);
        vm_functions = vm->functions;
        other_functions = *vm_functions;
        vm->functions = &other_functions;
    }
}

} // namespace

namespace dtv {

DTV_EXPORT void setServiceEndpoint(std::shared_ptr<ServiceEndpoint> endpoint) {
    using Setter = void (*)(std::shared_ptr<ServiceEndpoint>);
    const auto next =
        reinterpret_cast<Setter>(dlsym(RTLD_NEXT, "_ZN3dtv18setServiceEndpointESt10shared_ptrINS_"
                                                  "15ServiceEndpointEE"));
    if (next == nullptr) {
        std::fprintf(stderr, "field: libDtv has no setServiceEndpoint\n");
        std::abort();
    }
    if (const char* threads = std::getenv("FIELD_THREADS")) {
        setDeliveryThreads(std::atoi(threads));
    }
    if (endpoint != nullptr) {
        endpoint = std::make_shared<FaultyEndpoint>(std::move(endpoint));
    }
    next(std::move(endpoint));
}

} // namespace dtv

extern "C" {

/// From now on the VM makes no string of a text that contains `part`.
JNIEXPORT void JNICALL Java_field_Faults_refuseText(JNIEnv* env, jclass, jstring part) {
    const char* text = env->GetStringUTFChars(part, nullptr);
    refusedText() = text;
    env->ReleaseStringUTFChars(part, text);
    auto* const table = const_cast<JNINativeInterface_*>(env->functions);
    if (vm_new_string == nullptr) {
        vm_new_string = table->NewStringUTF;
        table->NewStringUTF = newString;
    }
}

/// Whether the VM refuses its environment, as a VM of another version does.
JNIEXPORT void JNICALL Java_field_Faults_refuseEnvironment(JNIEnv* env, jclass, jboolean refuse) {
    useFunctions(env);
    other_functions.GetEnv = refuse != JNI_FALSE ? refuseEnvironment : vm_functions->GetEnv;
}

/// From now on the VM attaches no thread that gives no name, as the bridge's do.
JNIEXPORT void JNICALL Java_field_Faults_refuseThreads(JNIEnv* env, jclass) {
    useFunctions(env);
    other_functions.AttachCurrentThread = refuseThread;
}

} // extern "C"

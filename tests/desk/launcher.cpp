// Runs the desk's Java program in a VM of its own process, as the java command does: for a build
// whose sanitizers have to be in the process from its start, and for another architecture than the
// machine's.
//
//     launcher CLASS_PATH ARGUMENT...
#include <jni.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kNotStarted = 2;

/// The arguments as a Java array, or null.
jobjectArray javaArguments(JNIEnv* env, const std::vector<std::string>& arguments) {
    const jobjectArray array = env->NewObjectArray(static_cast<jsize>(arguments.size()),
                                                   env->FindClass("java/lang/String"), nullptr);
    for (size_t index = 0; array != nullptr && index < arguments.size(); ++index) {
        env->SetObjectArrayElement(array, static_cast<jsize>(index),
                                   env->NewStringUTF(arguments[index].c_str()));
    }
    return array;
}

int fail(JNIEnv* env, const char* what) {
    env->ExceptionDescribe();
    std::fprintf(stderr, "launcher: %s\n", what);
    return kNotStarted;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: launcher CLASS_PATH ARGUMENT...\n", stderr);
        return kNotStarted;
    }
    std::string class_path = std::string("-Djava.class.path=") + argv[1];
    char memory[] = "-Xmx256m";
    char collector[] = "-XX:+UseSerialGC";
    char compiler[] = "-XX:TieredStopAtLevel=1"; // the evening is shorter than a second compilation
    JavaVMOption options[] = {
        {class_path.data(), nullptr}, {memory, nullptr}, {collector, nullptr}, {compiler, nullptr}};
    JavaVMInitArgs wanted{JNI_VERSION_1_6, 4, options, JNI_FALSE};
    JavaVM* vm = nullptr;
    JNIEnv* env = nullptr;
    if (JNI_CreateJavaVM(&vm, reinterpret_cast<void**>(&env), &wanted) != JNI_OK) {
        std::fputs("launcher: the VM does not start\n", stderr);
        return kNotStarted;
    }
    const jclass program = env->FindClass("tenrik/desk/Main");
    if (program == nullptr) {
        return fail(env, "no tenrik.desk.Main");
    }
    const jmethodID entry = env->GetStaticMethodID(program, "main", "([Ljava/lang/String;)V");
    const jobjectArray arguments = javaArguments(env, {argv + 2, argv + argc});
    if (entry == nullptr || arguments == nullptr) {
        return fail(env, "no tenrik.desk.Main.main");
    }
    // It ends the process, unless it throws.
    env->CallStaticVoidMethod(program, entry, arguments);
    return fail(env, "tenrik.desk.Main.main came back");
}

#include "entry/java_reflection.h"

#include "harness/harness.h"

#include <algorithm>

namespace harness {
namespace {

jmethodID methodOf(jclass of, const char* name, const char* signature) {
    jmethodID id = env()->GetMethodID(of, name, signature);
    EXPECT_EQ(takeException(), "") << name;
    return id;
}

/// After each call ExceptionCheck is called, which -Xcheck:jni requires.
template <typename Result>
Result checked(Result result) {
    EXPECT_FALSE(env()->ExceptionCheck()) << takeException();
    return result;
}

} // namespace

std::vector<std::string> declaredMethods(const std::string& class_name, int modifiers) {
    LocalFrame frame;
    JNIEnv* jni = env();
    std::vector<std::string> found;
    jclass of = Product::findClass(class_name);
    jclass class_class = jni->FindClass("java/lang/Class");
    jclass method_class = jni->FindClass("java/lang/reflect/Method");
    jclass type_class = jni->FindClass("java/lang/invoke/MethodType");
    if (of == nullptr || class_class == nullptr || method_class == nullptr ||
        type_class == nullptr) {
        ADD_FAILURE() << class_name << ": " << takeException();
        return found;
    }
    jmethodID get_methods =
        methodOf(class_class, "getDeclaredMethods", "()[Ljava/lang/reflect/Method;");
    jmethodID get_name = methodOf(method_class, "getName", "()Ljava/lang/String;");
    jmethodID get_modifiers = methodOf(method_class, "getModifiers", "()I");
    jmethodID get_result = methodOf(method_class, "getReturnType", "()Ljava/lang/Class;");
    jmethodID get_parameters = methodOf(method_class, "getParameterTypes", "()[Ljava/lang/Class;");
    jmethodID descriptor = methodOf(type_class, "toMethodDescriptorString", "()Ljava/lang/String;");
    jmethodID type = jni->GetStaticMethodID(
        type_class, "methodType",
        "(Ljava/lang/Class;[Ljava/lang/Class;)Ljava/lang/invoke/MethodType;");
    auto all = static_cast<jobjectArray>(checked(jni->CallObjectMethod(of, get_methods)));
    EXPECT_EQ(takeException(), "");
    for (jsize i = 0; i < jni->GetArrayLength(all); ++i) {
        LocalFrame inner;
        jobject method = checked(jni->GetObjectArrayElement(all, i));
        if ((checked(jni->CallIntMethod(method, get_modifiers)) & modifiers) != modifiers) {
            continue;
        }
        jobject name = checked(jni->CallObjectMethod(method, get_name));
        jobject result = checked(jni->CallObjectMethod(method, get_result));
        jobject parameters = checked(jni->CallObjectMethod(method, get_parameters));
        jobject method_type =
            checked(jni->CallStaticObjectMethod(type_class, type, result, parameters));
        EXPECT_EQ(takeException(), "");
        jobject text = checked(jni->CallObjectMethod(method_type, descriptor));
        EXPECT_EQ(takeException(), "");
        found.push_back(toText(static_cast<jstring>(name)) + " " +
                        toText(static_cast<jstring>(text)));
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace harness

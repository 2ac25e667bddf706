#include "java_text.h"

namespace desk {
namespace {

constexpr jchar kReplacement = 0xfffd;

/// The character that begins at a place of an UTF-8 text, which goes to the one after it.
char32_t nextCharacter(const std::string& text, size_t& at) {
    const auto byte = [&text](size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned first = byte(at++);
    const size_t more = first < 0x80 ? 0 : first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
    if (more == 0) {
        return first;
    }
    char32_t point = first & (0x3fu >> more);
    for (size_t i = 0; i < more; ++i, ++at) {
        if (first < 0xc2 || first > 0xf4 || at >= text.size() || (byte(at) & 0xc0) != 0x80) {
            return kReplacement;
        }
        point = point << 6 | (byte(at) & 0x3f);
    }
    return point;
}

} // namespace

void throwDeskException(JNIEnv* env, const std::string& message) {
    const jclass exception = env->FindClass("tenrik/desk/core/DeskException");
    if (exception != nullptr) {
        env->ThrowNew(exception, message.c_str());
    }
}

std::string textOf(JNIEnv* env, jstring string) {
    const char* characters = env->GetStringUTFChars(string, nullptr);
    if (characters == nullptr) {
        return {};
    }
    std::string text(characters);
    env->ReleaseStringUTFChars(string, characters);
    return text;
}

jobjectArray stringArray(JNIEnv* env, const std::vector<std::string>& texts) {
    const jclass string = env->FindClass("java/lang/String");
    if (string == nullptr) {
        return nullptr;
    }
    const jobjectArray array =
        env->NewObjectArray(static_cast<jsize>(texts.size()), string, nullptr);
    for (size_t index = 0; array != nullptr && index < texts.size(); ++index) {
        const jstring text = stringOf(env, texts[index]);
        if (text == nullptr) {
            return nullptr;
        }
        env->SetObjectArrayElement(array, static_cast<jsize>(index), text);
        env->DeleteLocalRef(text);
    }
    return array;
}

jintArray intArray(JNIEnv* env, const std::vector<jint>& values) {
    const jintArray array = env->NewIntArray(static_cast<jsize>(values.size()));
    if (array != nullptr) {
        env->SetIntArrayRegion(array, 0, static_cast<jsize>(values.size()), values.data());
    }
    return array;
}

jstring stringOf(JNIEnv* env, const std::string& text) {
    std::vector<jchar> units;
    for (size_t at = 0; at < text.size();) {
        const char32_t point = nextCharacter(text, at);
        if (point < 0x10000) {
            units.push_back(static_cast<jchar>(point));
        } else {
            units.push_back(static_cast<jchar>(0xd7c0 + (point >> 10)));
            units.push_back(static_cast<jchar>(0xdc00 + (point & 0x3ff)));
        }
    }
    static constexpr jchar kNothing = 0;
    return env->NewString(units.empty() ? &kNothing : units.data(),
                          static_cast<jsize>(units.size()));
}

} // namespace desk

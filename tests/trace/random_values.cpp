#include "trace/random_values.h"

#include <string>

namespace trace_test {
namespace {

using namespace harness;

size_t below(Random& random, size_t limit) {
    return random() % limit;
}

std::string randomText(Random& random, size_t longest) {
    std::string text(below(random, longest + 1), ' ');
    for (char& c : text) {
        c = "abcdefgh0123456789 |,="[below(random, 22)];
    }
    return text;
}

/// None of what is called here throws.
void expectNoException() {
    EXPECT_FALSE(env()->ExceptionCheck());
}

jobject callObject(jobject object, const char* method, const char* signature) {
    jclass of = env()->GetObjectClass(object);
    jobject result = env()->CallObjectMethod(object, env()->GetMethodID(of, method, signature));
    expectNoException();
    return result;
}

std::string textOf(jobject string) {
    const char* const bytes = env()->GetStringUTFChars(static_cast<jstring>(string), nullptr);
    std::string text = bytes;
    env()->ReleaseStringUTFChars(static_cast<jstring>(string), bytes);
    return text;
}

bool isStatic(jobject field) {
    jclass of = env()->GetObjectClass(field);
    constexpr jint kStatic = 8;
    const jint modifiers =
        env()->CallIntMethod(field, env()->GetMethodID(of, "getModifiers", "()I"));
    expectNoException();
    return (modifiers & kStatic) != 0;
}

void randomizeField(jobject object, jobject field, Random& random) {
    const std::string type = textOf(callObject(callObject(field, "getType", "()Ljava/lang/Class;"),
                                               "getName", "()Ljava/lang/String;"));
    const jfieldID id = env()->FromReflectedField(field);
    if (type == "int") {
        env()->SetIntField(object, id,
                           static_cast<jint>(below(random, below(random, 2) == 0 ? 3 : 300)));
    } else if (type == "java.lang.String") {
        env()->SetObjectField(object, id, env()->NewStringUTF(randomText(random, 6).c_str()));
    } else if (type.compare(0, 7, "tenrik.") == 0 && type.find(".BG_TE_") == std::string::npos) {
        randomize(env()->GetObjectField(object, id), random);
    }
}

void putNumber(std::vector<uint8_t>& bytes, size_t offset, size_t size, uint64_t value) {
    for (size_t i = 0; i < size; ++i) {
        bytes[offset + i] = static_cast<uint8_t>(value >> (8 * i));
    }
}

bool counts(const std::string& name) {
    for (const char* const part : {"cnt", "Cnt", "count", "channel_num", "length"}) {
        if (name.find(part) != std::string::npos) {
            return true;
        }
    }
    return false;
}

void fill(std::vector<uint8_t>& bytes, size_t start, const catalogue::Record& layout,
          Random& random);

void fillElement(std::vector<uint8_t>& bytes, size_t offset, const catalogue::Field& field,
                 Random& random) {
    switch (field.kind) {
    case catalogue::Kind::kUnsigned:
    case catalogue::Kind::kSigned:
        putNumber(bytes, offset, field.size, counts(field.name) ? below(random, 3) : random());
        break;
    case catalogue::Kind::kBytes:
        for (size_t i = 0; i < field.size; ++i) {
            bytes[offset + i] = static_cast<uint8_t>(random());
        }
        break;
    case catalogue::Kind::kText: {
        const std::string text = randomText(random, std::min<size_t>(field.size - 1, 40));
        std::copy(text.begin(), text.end(), bytes.begin() + static_cast<ptrdiff_t>(offset));
        break;
    }
    case catalogue::Kind::kUtf16Text:
        for (size_t i = 0; i + 2 < std::min<size_t>(field.size, 20); i += 2) {
            putNumber(bytes, offset + i, 2, 'a' + below(random, 26));
        }
        break;
    case catalogue::Kind::kRecord:
        fill(bytes, offset, *field.record, random);
        break;
    }
}

void fill(std::vector<uint8_t>& bytes, size_t start, const catalogue::Record& layout,
          Random& random) {
    for (const catalogue::Field& field : layout.fields) {
        for (size_t i = 0; i < field.count; ++i) {
            fillElement(bytes, start + field.offset + i * field.size, field, random);
        }
    }
}

} // namespace

void randomize(jobject object, Random& random) {
    if (object == nullptr) {
        return;
    }
    LocalFrame frame;
    jobject of = env()->GetObjectClass(object);
    auto* const fields = static_cast<jobjectArray>(
        callObject(of, "getDeclaredFields", "()[Ljava/lang/reflect/Field;"));
    for (jsize i = 0; i < env()->GetArrayLength(fields); ++i) {
        jobject field = env()->GetObjectArrayElement(fields, i);
        if (!isStatic(field)) {
            randomizeField(object, field, random);
        }
    }
}

std::vector<uint8_t> randomRecord(const catalogue::Record& layout, Random& random) {
    std::vector<uint8_t> bytes(layout.size);
    fill(bytes, 0, layout, random);
    return bytes;
}

} // namespace trace_test

#include "arguments/java_side.h"

#include "harness/harness.h"

#include <cstdio>
#include <cstdlib>

namespace hostile {
namespace {

using Form = Value::Form;

bool isSpoiled(Form form) {
    return form == Form::kLacks || form == Form::kOtherType || form == Form::kStatic;
}

/// A type that the field of this one has not.
std::string otherType(const FieldSpec& field) {
    switch (field.kind) {
    case Kind::kInt:
        return "J";
    case Kind::kText:
        return "[C";
    case Kind::kBytes:
        return "[I";
    default:
        return "Ljava/lang/Object;";
    }
}

ClassFile spoiledClass(const ClassSpec& of, const Value& value) {
    ClassFile file(of.path());
    for (size_t i = 0; i < of.fields.size(); ++i) {
        const FieldSpec& field = of.fields[i];
        const bool meant = isSpoiled(value.form) && i == value.field;
        if (meant && value.form == Form::kLacks) {
            continue;
        }
        const bool other = meant && value.form == Form::kOtherType;
        file.addField(field.name, other ? otherType(field) : descriptorOf(field),
                      meant && value.form == Form::kStatic);
    }
    return file;
}

} // namespace

JavaSide::JavaSide() : env_(harness::env()) {
    const std::string refusal = harness::Product::load();
    if (!refusal.empty()) {
        std::fprintf(stderr, "hostile arguments: %s\n", refusal.c_str());
        std::exit(71);
    }
    harness::LocalFrame frame;
    proxy_ = env_->NewGlobalRef(harness::newObject("DtvServerProxy", "()V", {}));
    foreign_ = env_->NewGlobalRef(env_->NewStringUTF("no argument"));
    for (const char* const name : {"OK", "NG", "PARAM_NG"}) {
        results_[name] = env_->NewGlobalRef(
            harness::constant("BG_TE_DTVSVLIB_RESULT", std::string("DTVSVLIB_RESULT_") + name));
    }
    java_surfaces_[0] = env_->NewGlobalRef(harness::newObject("android/view/Surface", "(I)V", {0}));
    for (int i = 0; i < kSurfaces; ++i) {
        surfaces_[i] = new android::Surface;
        const auto address = static_cast<int>(reinterpret_cast<uintptr_t>(surfaces_[i].get()));
        java_surfaces_[i + 1] =
            env_->NewGlobalRef(harness::newObject("android/view/Surface", "(I)V", {address}));
    }
    jclass of = env_->GetObjectClass(proxy_);
    for (const NativeSpec& native : natives()) {
        const std::string name = std::string("DtvSvLib_") + native.name;
        natives_[native.name] = env_->GetMethodID(of, name.c_str(), native.descriptor().c_str());
        check(name);
    }
}

/// An exception that is not the bridge's is a mistake of the campaign.
void JavaSide::check(const std::string& doing) {
    if (env_->ExceptionCheck()) {
        env_->ExceptionDescribe();
        std::fprintf(stderr, "hostile arguments: %s\n", doing.c_str());
        std::_Exit(71);
    }
}

jclass JavaSide::keep(jclass of) const {
    auto kept = static_cast<jclass>(env_->NewGlobalRef(of));
    env_->DeleteLocalRef(of);
    return kept;
}

jclass JavaSide::realClass(const std::string& path) {
    jclass& known = classes_[path];
    if (known == nullptr) {
        known = keep(env_->FindClass(path.c_str()));
        check(path);
    }
    return known;
}

/// A class in a loader of its own, which stays.
jclass JavaSide::defined(const std::string& key, const ClassFile& file) {
    jclass& known = classes_[key];
    if (known != nullptr) {
        return known;
    }
    harness::LocalFrame frame;
    jclass loader_class = env_->FindClass("java/net/URLClassLoader");
    jclass url = env_->FindClass("java/net/URL");
    check("a loader");
    jmethodID constructor =
        env_->GetMethodID(loader_class, "<init>", "([Ljava/net/URL;Ljava/lang/ClassLoader;)V");
    jobject loader =
        env_->NewObject(loader_class, constructor, env_->NewObjectArray(0, url, nullptr), nullptr);
    check("a loader");
    const std::vector<uint8_t> bytes = file.bytes();
    jclass made =
        env_->DefineClass(file.name().c_str(), loader, reinterpret_cast<const jbyte*>(bytes.data()),
                          static_cast<jsize>(bytes.size()));
    check("class " + key);
    known = static_cast<jclass>(env_->NewGlobalRef(made));
    return known;
}

jclass JavaSide::objectClass(const ClassSpec& of, const Value& value) {
    if (value.form == Form::kUsual) {
        return realClass(of.path());
    }
    std::string key = of.path() + "/" + std::to_string(static_cast<int>(value.form));
    if (isSpoiled(value.form)) {
        key += "/" + std::to_string(value.field);
    }
    return defined(key, spoiledClass(of, value));
}

jobject JavaSide::objectOf(const ClassSpec& of, const Value& value) {
    if (value.form == Form::kNull) {
        return nullptr;
    }
    if (value.form == Form::kForeign) {
        return env_->NewLocalRef(foreign_);
    }
    jclass clazz = objectClass(of, value);
    jobject object = env_->AllocObject(clazz);
    check(of.name);
    for (size_t i = 0; i < of.fields.size(); ++i) {
        if (!isSpoiled(value.form) || value.field != i) {
            setField(object, clazz, of.fields[i], value.fields[i]);
        }
    }
    return object;
}

jobject JavaSide::enumOf(const FieldSpec& field, const Value& value) {
    const std::string path =
        std::string("tenrik/service/dtvserver/type/BG_TE_DTVSVLIB_") + field.type;
    if (value.form == Form::kNull) {
        return nullptr;
    }
    if (value.form == Form::kForeign) {
        return env_->NewLocalRef(foreign_);
    }
    jclass clazz = nullptr;
    if (value.form == Form::kUsual) {
        clazz = realClass(path);
    } else {
        Getter getter = Getter::kAnswers;
        if (value.form == Form::kThrows) {
            getter = Getter::kThrows;
        } else if (value.form == Form::kNoGetter) {
            getter = Getter::kNone;
        } else if (value.form == Form::kInstanceGetter) {
            getter = Getter::kInstance;
        }
        ClassFile file(path);
        file.setGetter(getter, field.getter, "(L" + path + ";)I");
        clazz = defined(
            path + "/" + field.getter + "/" + std::to_string(static_cast<int>(value.form)), file);
    }
    jobject object = env_->AllocObject(clazz);
    check(path);
    if (value.form != Form::kNoGetter) {
        jfieldID& id = fields_[{clazz, "value"}];
        if (id == nullptr) {
            id = env_->GetFieldID(clazz, "value", "I");
            check(path);
        }
        env_->SetIntField(object, id, value.number);
    }
    return object;
}

jobject JavaSide::referenceOf(const FieldSpec& field, const Value& value) {
    if (field.kind == Kind::kEnum) {
        return enumOf(field, value);
    }
    if (field.kind == Kind::kObject) {
        return objectOf(*field.of, value);
    }
    if (value.form == Form::kNull) {
        return nullptr;
    }
    switch (field.kind) {
    case Kind::kText:
        return env_->NewString(reinterpret_cast<const jchar*>(value.text.data()),
                               static_cast<jsize>(value.text.size()));
    case Kind::kBytes: {
        const auto length = static_cast<jsize>(value.bytes.size());
        jbyteArray array = env_->NewByteArray(length);
        env_->SetByteArrayRegion(array, 0, length,
                                 reinterpret_cast<const jbyte*>(value.bytes.data()));
        return array;
    }
    default:
        return env_->NewLocalRef(java_surfaces_[value.number]);
    }
}

void JavaSide::setField(jobject object, jclass of, const FieldSpec& field, const Value& value) {
    jfieldID& id = fields_[{of, field.name}];
    if (id == nullptr) {
        id = env_->GetFieldID(of, field.name, descriptorOf(field).c_str());
        check(field.name);
    }
    if (field.kind == Kind::kInt) {
        env_->SetIntField(object, id, value.number);
        return;
    }
    jobject reference = referenceOf(field, value);
    check(field.name);
    env_->SetObjectField(object, id, reference);
    env_->DeleteLocalRef(reference);
}

std::string JavaSide::described(jobject answer) {
    if (answer == nullptr) {
        return "null";
    }
    for (const auto& [name, constant] : results_) {
        if (env_->IsSameObject(answer, constant)) {
            return name;
        }
    }
    return harness::tree(answer);
}

std::string JavaSide::call(const NativeSpec& native, const std::vector<Value>& arguments) {
    if (env_->PushLocalFrame(64) != JNI_OK) {
        check("a frame");
    }
    std::vector<jvalue> values;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const ClassSpec* const of = native.parameters[i].of;
        jvalue value = {};
        if (of == nullptr) {
            value.i = arguments[i].number;
        } else {
            value.l = objectOf(*of, arguments[i]);
        }
        values.push_back(value);
    }
    jobject answer = env_->CallObjectMethodA(proxy_, natives_[native.name], values.data());
    const std::string thrown = harness::takeException();
    std::string text =
        thrown.empty() ? described(answer) : "throws " + thrown.substr(0, thrown.find(':'));
    if (!thrown.empty() && answer != nullptr) {
        text += ", and answers an object";
    }
    check("an answer");
    env_->PopLocalFrame(nullptr);
    return text;
}

} // namespace hostile

#include "commands/argument.h"

#include "commands/java_access.h"

#include <cstring>

void Argument::requireObject(FieldLine null, int line) {
    if (!refused() && object_ == nullptr) {
        refuse(null, line);
    }
}

void Argument::requireClass(FieldLine missing, int line) {
    if (refused()) {
        return;
    }
    class_ = classOf(env_, object_);
    if (class_ == nullptr) {
        refuse(missing, line);
    }
}

void Argument::requireField(const IntField& field, int line) {
    if (!refused() && findField(env_, class_, field.name, "I") == nullptr) {
        refuse(field.missing, line);
    }
}

ReadInt Argument::readInt(const IntField& field, jint unread, int line) {
    jint value = unread;
    readValue(field, line, &value);
    return ReadInt(value);
}

ReadInt Argument::readIntUpTo(jint limit, const LimitedIntField& field, jint unread, int line) {
    jint value = unread;
    const bool read = readValue(field, line, &value);
    return acceptedOr(unread, !read || value <= limit, value, field.too_large, line);
}

ReadInt Argument::readPosition(const LimitedIntField& field, jint unread, int line) {
    jint value = unread;
    const bool read = readValue(field, line, &value);
    return acceptedOr(unread, !read || value >= 0, value, field.too_large, line);
}

ReadInt Argument::readEnum(const EnumField& field, jint unread, int line) {
    jint value = unread;
    readConstant(field, line, &value);
    return ReadInt(value);
}

ReadInt Argument::readEnumUpTo(jint limit, const LimitedEnumField& field, jint unread, int line) {
    jint value = unread;
    const bool read = readConstant(field, line, &value);
    return acceptedOr(unread, !read || value <= limit, value, field.too_large, line);
}

/// The value when it is accepted. Otherwise the argument is refused, and `unread` is the value.
ReadInt Argument::acceptedOr(jint unread, bool accepted, jint value, ValueLine value_line,
                             int line) {
    if (!accepted) {
        refuse(value_line, line, value);
        return ReadInt(unread);
    }
    return ReadInt(value);
}

ReadInt Argument::readEnumIfPossible(const EnumField& field, jint unread) {
    jint value = unread;
    if (!refused()) {
        getEnumValue(env_, object_, field.name, field.type, field.getter, &value);
        threw();
    }
    return ReadInt(value);
}

jobject Argument::readObject(const ObjectField& field, int line) {
    return readReference(field.name, field.type, field.missing, field.null, line);
}

jsize Argument::copyText(const TextField& field, char* target, int size, jsize limit, int line) {
    const auto text = static_cast<jstring>(
        readReference(field.name, STRING_TYPE, field.missing, field.null, line));
    if (refused()) {
        return 0;
    }
    jsize length = 0;
    if (field.too_long.format != nullptr) {
        length = env_->GetStringUTFLength(text);
        if (length > limit) {
            refuse(field.too_long, line, length);
            return 0;
        }
    }
    g_listener->convJStringToChar(env_, text, target, size);
    if (threw()) {
        return 0;
    }
    // Some VMs throw nothing when they have no memory for the characters. The field is all zero
    // then, as it is after an empty text alone.
    if (target[0] == '\0' && env_->GetStringUTFLength(text) != 0) {
        refuse(field.null, line);
        return 0;
    }
    return length;
}

void Argument::copyBytes(const BytesField& field, uint8_t* target, jsize limit, int line) {
    const auto array =
        static_cast<jbyteArray>(readReference(field.name, "[B", field.missing, field.null, line));
    if (refused()) {
        return;
    }
    jbyte* const elements = env_->GetByteArrayElements(array, nullptr);
    if (elements == nullptr) {
        // The VM has no memory for them. Not every VM throws then.
        if (!threw()) {
            refuse(field.null, line);
        }
        return;
    }
    const jsize length = env_->GetArrayLength(array);
    if (length <= limit) {
        std::memcpy(target, elements, static_cast<size_t>(length));
    }
    env_->ReleaseByteArrayElements(array, elements, 0);
    if (length > limit) {
        refuse(field.too_long, line, length);
    }
}

/// A local reference to what a field refers to. Null when that was refused, or when the field may
/// be null and is.
jobject Argument::readReference(const char* name, const char* type, FieldLine missing,
                                FieldLine null, int line) {
    if (refused()) {
        return nullptr;
    }
    const jfieldID id = findField(env_, class_, name, type);
    if (id == nullptr) {
        refuse(missing, line);
        return nullptr;
    }
    const jobject reference = env_->GetObjectField(object_, id);
    if (reference == nullptr && null.format != nullptr) {
        refuse(null, line);
    }
    return reference;
}

bool Argument::readValue(const IntField& field, int line, jint* value) {
    if (refused()) {
        return false;
    }
    const jfieldID id = findField(env_, class_, field.name, "I");
    if (id == nullptr) {
        refuse(field.missing, line);
        return false;
    }
    *value = env_->GetIntField(object_, id);
    return true;
}

bool Argument::readConstant(const EnumField& field, int line, jint* value) {
    if (refused()) {
        return false;
    }
    jint read = 0;
    const int ret = getEnumValue(env_, object_, field.name, field.type, field.getter, &read);
    if (threw()) {
        return false;
    }
    if (ret != 0) {
        // The line shows what getEnumValue answered.
        refuseWith(field.unreadable.format, line, ret);
        return false;
    }
    *value = read;
    return true;
}

void Argument::refuse(FieldLine field_line, int line) {
    refuseWith(field_line.format, line, shown_ret_);
}

void Argument::refuse(ValueLine value_line, int line, jint value) {
    refuseWith(value_line.format, line, value, shown_ret_);
}

void Argument::refuseWith(const char* format, int line, int first, int second) {
    refused_ = true;
    if (call_ != nullptr) {
        call_->refuseFor(function_, format, line, first, second);
    } else {
        writeLine(format, function_, line, first, second);
    }
}

bool Argument::threw() {
    if (!env_->ExceptionCheck()) {
        return false;
    }
    abandon();
    return true;
}

void Argument::abandon() {
    refused_ = true;
    if (call_ != nullptr) {
        call_->abandon();
    }
}

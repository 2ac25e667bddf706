// Reading the Java objects that commands take. A field is looked up by its name at each call: the
// argument classes are Java's, and a missing field is an argument that is refused.
#pragma once

#include "commands/command.h"
#include "commands/fields.h"

/// An int that was read, on its way to a field of a record: it takes the width of the field.
class ReadInt {
public:
    explicit ReadInt(jint value) : value_(value) {}
    template <class Field>
    operator Field() const {
        return static_cast<Field>(value_);
    }

private:
    jint value_;
};

/// A Java object that a command reads. After the first thing that cannot be read it reads nothing
/// more: the line about it has been written, and refused() says so. What is read then is `unread`,
/// or is left as it was. Source lines are those of the calls.
class Argument {
public:
    /// An argument of a native method, which is refused with the argument.
    Argument(NativeCall& call, jobject object)
        : env_(call.env()), function_(call.function()), call_(&call), object_(object),
          shown_ret_(kResultParamNg) {}

    /// The same, when the object and its class are taken at once.
    Argument(NativeCall& call, jobject object, const ObjectLines& lines,
             int line = __builtin_LINE())
        : Argument(call, object) {
        requireObject(lines.null, line);
        requireClass(lines.no_class, line);
    }

    /// A part of an argument, read by a routine of its own. `shown_ret` is what its lines show as
    /// "ret".
    Argument(JNIEnv* env, const char* routine, jobject object, int shown_ret)
        : env_(env), function_(routine), call_(nullptr), object_(object), shown_ret_(shown_ret) {}

    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;

    bool refused() const { return call_ != nullptr ? call_->refused() : refused_; }

    /// Refuses a null object.
    void requireObject(FieldLine null, int line = __builtin_LINE());
    /// Takes the object's class, which all fields are looked up in. Refuses an object without one.
    void requireClass(FieldLine missing, int line = __builtin_LINE());
    jclass clazz() const { return class_; }

    /// What the lines from now on show as "ret".
    void showRet(int ret) { shown_ret_ = ret; }

    /// Refuses an object that lacks a field. The field is not read.
    void requireField(const IntField& field, int line = __builtin_LINE());

    /// Every value is accepted.
    ReadInt readInt(const IntField& field, jint unread = 0, int line = __builtin_LINE());
    /// Refuses a value above the limit.
    ReadInt readIntUpTo(jint limit, const LimitedIntField& field, jint unread = 0,
                        int line = __builtin_LINE());
    /// Refuses a negative value, with the words for one that is too large.
    ReadInt readPosition(const LimitedIntField& field, jint unread = 0,
                         int line = __builtin_LINE());

    /// Every constant is accepted.
    ReadInt readEnum(const EnumField& field, jint unread = 0, int line = __builtin_LINE());
    /// Refuses a value above the limit.
    ReadInt readEnumUpTo(jint limit, const LimitedEnumField& field, jint unread = 0,
                         int line = __builtin_LINE());
    /// Does not refuse an unreadable constant: the value is then `unread`.
    ReadInt readEnumIfPossible(const EnumField& field, jint unread);

    /// Copies a text into a field of a record, in modified UTF-8: zero-filled after a shorter text,
    /// without a terminator when it fills the field. Refuses one of more than `limit` bytes.
    /// Returns the length of the text in bytes.
    template <int Size>
    jsize readText(const TextField& field, char (&target)[Size], jsize limit = Size,
                   int line = __builtin_LINE()) {
        return copyText(field, target, Size, limit, line);
    }

    /// Copies an array of bytes into a field of a record. Refuses one of more than `limit` bytes.
    template <int Size>
    void readBytes(const BytesField& field, uint8_t (&target)[Size], jsize limit = Size,
                   int line = __builtin_LINE()) {
        copyBytes(field, target, limit, line);
    }

    /// A local reference to the field's object, or null.
    jobject readObject(const ObjectField& field, int line = __builtin_LINE());

private:
    jsize copyText(const TextField& field, char* target, int size, jsize limit, int line);
    void copyBytes(const BytesField& field, uint8_t* target, jsize limit, int line);
    jobject readReference(const char* name, const char* type, FieldLine missing, FieldLine null,
                          int line);
    ReadInt acceptedOr(jint unread, bool accepted, jint value, ValueLine value_line, int line);
    bool readValue(const IntField& field, int line, jint* value);
    bool readConstant(const EnumField& field, int line, jint* value);
    /// Refuses the argument with a line in the name of its function.
    void refuseWith(const char* format, int line, int first, int second = 0);
    void refuse(FieldLine field_line, int line);
    void refuse(ValueLine value_line, int line, jint value);
    /// Whether Java code threw. The argument is refused then, without a line.
    bool threw();
    /// Refuses the argument without a line: an exception is pending.
    void abandon();

    JNIEnv* const env_;
    const char* const function_;
    NativeCall* const call_;
    const jobject object_;
    int shown_ret_;
    jclass class_ = nullptr;
    bool refused_ = false;
};

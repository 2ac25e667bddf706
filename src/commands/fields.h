// The fields of Java objects that the commands read, as constants: field::BG_TS_DTVSVLIB_START_PLAY
// holds those of that class. They are the rows of field_table.def.
#pragma once

#include "binding/java_names.h"
#include "entry/trace.h"

/// Writes the line of a field that cannot be read, on behalf of a source line of `function`.
/// `number` is what the line shows as "ret".
using FieldLine = void (*)(const char* function, int line, int number);
/// Writes the line of a value that is not accepted.
using ValueLine = void (*)(const char* function, int line, int value, int number);

struct IntField {
    const char* name;
    FieldLine missing;
};

struct LimitedIntField : IntField {
    ValueLine too_large;
};

struct EnumField {
    const char* name;
    const char* type; ///< descriptor
    const char* getter;
    FieldLine unreadable;
};

struct LimitedEnumField : EnumField {
    ValueLine too_large;
};

/// A String or an array of bytes.
struct DataField {
    const char* name;
    FieldLine missing;
    FieldLine null;
    ValueLine too_long; ///< null: any length is accepted
};
struct TextField : DataField {};
struct BytesField : DataField {};

struct ObjectField {
    const char* name;
    const char* type; ///< descriptor
    FieldLine missing;
    FieldLine null; ///< null: the object may be null
};

// ---- The lines of the rows.

#define PLAIN(text)                                                                                \
    [](const char* function, int line, int) {                                                      \
        TRACE_NATIVE_AT(line, trace::kDebug, function, text);                                      \
    }
#define NUMBERED(text)                                                                             \
    [](const char* function, int line, int number) {                                               \
        TRACE_NATIVE_AT(line, trace::kDebug, function, text, number);                              \
    }
#define LENGTH(text)                                                                               \
    [](const char* function, int line, int length, int) {                                          \
        TRACE_NATIVE_AT(line, trace::kDebug, function, text, length);                              \
    }
#define LENGTH_NUMBERED(text)                                                                      \
    [](const char* function, int line, int length, int number) {                                   \
        TRACE_NATIVE_AT(line, trace::kDebug, function, text, length, number);                      \
    }

namespace field {
#define INT_FIELD(java_class, name)                                                                \
    namespace java_class {                                                                         \
    inline constexpr IntField name = {#name, NUMBERED(#name " fieldID is NULL, ret = %d")};        \
    }
#define LIMITED_INT_FIELD(java_class, name)                                                        \
    namespace java_class {                                                                         \
    inline constexpr LimitedIntField name = {                                                      \
        {#name, NUMBERED(#name " fieldID is NULL, ret = %d")},                                     \
        LENGTH_NUMBERED(#name " is too large : %d, ret = %d")};                                    \
    }
#define NAMED_ENUM_FIELD(java_class, name, text, enumeration, getter)                              \
    namespace java_class {                                                                         \
    inline constexpr EnumField name = {#name, VALUE_TYPE(enumeration), #getter,                    \
                                       NUMBERED(text " getEnumValue Error, ret = %d")};            \
    }
#define ENUM_FIELD(java_class, name, enumeration, getter)                                          \
    NAMED_ENUM_FIELD(java_class, name, #name, enumeration, getter)
#define LIMITED_ENUM_FIELD(java_class, name, enumeration, getter)                                  \
    namespace java_class {                                                                         \
    inline constexpr LimitedEnumField name = {                                                     \
        {#name, VALUE_TYPE(enumeration), #getter,                                                  \
         NUMBERED(#name " getEnumValue Error, ret = %d")},                                         \
        LENGTH_NUMBERED(#name " is too large : %d, ret = %d")};                                    \
    }
#define TEXT_FIELD(java_class, name, missing, null, too_long)                                      \
    namespace java_class {                                                                         \
    inline constexpr TextField name = {{#name, missing, null, too_long}};                          \
    }
#define BYTES_FIELD(java_class, name, missing, null, too_long)                                     \
    namespace java_class {                                                                         \
    inline constexpr BytesField name = {{#name, missing, null, too_long}};                         \
    }
#define OBJECT_FIELD(java_class, name, object_class, missing, null)                                \
    namespace java_class {                                                                         \
    inline constexpr ObjectField name = {#name, VALUE_TYPE(object_class), missing, null};          \
    }
#define SURFACE_FIELD(java_class, name)                                                            \
    namespace java_class {                                                                         \
    inline constexpr const char* name = #name;                                                     \
    }
#define SURFACE_ADDRESS_FIELD(name)                                                                \
    namespace Surface {                                                                            \
    inline constexpr const char* name = #name;                                                     \
    }
#include "commands/field_table.def"
} // namespace field

#undef PLAIN
#undef NUMBERED
#undef LENGTH
#undef LENGTH_NUMBERED

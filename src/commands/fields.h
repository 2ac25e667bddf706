// The fields of Java objects that the commands read, as constants: field::BG_TS_DTVSVLIB_START_PLAY
// holds those of that class. They are the rows of field_table.def.
#pragma once

#include "binding/java_names.h"
#include "commands/line.h"

/// An int of a Java object.
struct IntField {
    const char* name;
    FieldLine missing;
};

/// An int that not every value is accepted of.
struct LimitedIntField : IntField {
    ValueLine too_large; ///< also of a position that is negative
};

/// A constant of an enumeration, read as an int.
struct EnumField {
    const char* name;
    const char* type; ///< descriptor
    const char* getter;
    FieldLine unreadable;
};

/// A constant of which not every value is accepted.
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

/// An object of the value package.
struct ObjectField {
    const char* name;
    const char* type; ///< descriptor
    FieldLine missing;
    FieldLine null; ///< null: the object may be null
};

/// The lines about an argument that is null or has no class.
struct ObjectLines {
    FieldLine null;
    FieldLine no_class;
};
#define OBJECT_LINES(name)                                                                         \
    (ObjectLines{INT_LINE(name "_obj is NULL, ret = %d"),                                          \
                 INT_LINE(name " class is NULL, ret = %d")})

namespace field {
#define INT_FIELD(java_class, name)                                                                \
    namespace java_class {                                                                         \
    inline constexpr IntField name = {#name, INT_LINE(#name " fieldID is NULL, ret = %d")};        \
    }
#define LIMITED_INT_FIELD(java_class, name)                                                        \
    namespace java_class {                                                                         \
    inline constexpr LimitedIntField name = {                                                      \
        {#name, INT_LINE(#name " fieldID is NULL, ret = %d")},                                     \
        TWO_INTS_LINE(#name " is too large : %d, ret = %d")};                                      \
    }
#define NAMED_ENUM_FIELD(java_class, name, text, enumeration, getter)                              \
    namespace java_class {                                                                         \
    inline constexpr EnumField name = {#name, VALUE_TYPE(enumeration), #getter,                    \
                                       INT_LINE(text " getEnumValue Error, ret = %d")};            \
    }
#define ENUM_FIELD(java_class, name, enumeration, getter)                                          \
    NAMED_ENUM_FIELD(java_class, name, #name, enumeration, getter)
#define LIMITED_ENUM_FIELD(java_class, name, enumeration, getter)                                  \
    namespace java_class {                                                                         \
    inline constexpr LimitedEnumField name = {                                                     \
        {#name, VALUE_TYPE(enumeration), #getter,                                                  \
         INT_LINE(#name " getEnumValue Error, ret = %d")},                                         \
        TWO_INTS_LINE(#name " is too large : %d, ret = %d")};                                      \
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

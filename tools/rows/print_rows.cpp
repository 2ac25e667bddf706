// The rows in which the bridge states what it expects of Java, as text. The preprocessor alone
// makes it, so that nothing has to run where the bridge runs. rows/RowReader.java describes a row's
// form.
//
// Who adds a table, or another kind of row, adds it here.
#include "binding/java_names.h"

#define ROW(kind, class_name, name, descriptor, attribute)                                         \
    BRIDGE_ROW | kind | __FILE__ | __LINE__ | class_name | name | descriptor | attribute;
#define CLASS_ROW(class_name) ROW(class, class_name, "", "", static)
#define CONSTRUCTOR_ROW(class_name, descriptor)                                                    \
    ROW(constructor, class_name, "<init>", descriptor, instance)

// The arguments' names are not the words of the rows that they are put into.

#define CLASS(id, package, name) CLASS_ROW(package "/" #name)
#define VALUE(id, name, new_id, new_type)                                                          \
    CLASS_ROW(VALUE_PACKAGE "/" #name)                                                             \
    CONSTRUCTOR_ROW(VALUE_PACKAGE "/" #name, new_type)
#define EVENT(id, folder, name, new_id, new_type, call_id, taker)                                  \
    CLASS_ROW(EVENT_PACKAGE(folder) "/" #name)                                                     \
    CONSTRUCTOR_ROW(EVENT_PACKAGE(folder) "/" #name, new_type)                                     \
    ROW(callback, SERVICE_PACKAGE "/BGCallBack", #taker,                                           \
        "(L" EVENT_PACKAGE(folder) "/" #name ";)V", static)
#include "binding/class_table.def"

#define NATIVE(command, function, parameters, result)                                              \
    ROW(native, SERVICE_PACKAGE "/DtvServerProxy", "DtvSvLib_" #command,                           \
        "(" parameters ")" VALUE_TYPE(result), instance)
#define INT "I"
#define OBJECT(name) VALUE_TYPE(name)
#include "commands/native_table.def"

#define FIELD_ROW(holder, name, type) ROW(field, VALUE_PACKAGE "/" #holder, #name, type, instance)
#define INT_FIELD(holder, name) FIELD_ROW(holder, name, "I")
#define LIMITED_INT_FIELD(holder, name) FIELD_ROW(holder, name, "I")
#define ENUM_FIELD(holder, name, enumeration, method)                                              \
    FIELD_ROW(holder, name, VALUE_TYPE(enumeration))                                               \
    ROW(getter, VALUE_PACKAGE "/" #enumeration, #method, "(" VALUE_TYPE(enumeration) ")I", static)
#define LIMITED_ENUM_FIELD(holder, name, enumeration, method)                                      \
    ENUM_FIELD(holder, name, enumeration, method)
#define NAMED_ENUM_FIELD(holder, name, shown, enumeration, method)                                 \
    ENUM_FIELD(holder, name, enumeration, method)
#define TEXT_FIELD(holder, name, ...) FIELD_ROW(holder, name, STRING_TYPE)
#define BYTES_FIELD(holder, name, ...) FIELD_ROW(holder, name, "[B")
#define OBJECT_FIELD(holder, name, held, ...) FIELD_ROW(holder, name, VALUE_TYPE(held))
#define SURFACE_FIELD(holder, name) FIELD_ROW(holder, name, SURFACE_TYPE)
#define SURFACE_ADDRESS_FIELD(name) ROW(field, "android/view/Surface", #name, "I", instance)
#define RESULT_CONSTANT(code, name)                                                                \
    ROW(field, VALUE_PACKAGE "/BG_TE_DTVSVLIB_RESULT", #name, VALUE_TYPE(BG_TE_DTVSVLIB_RESULT),   \
        static)
#include "commands/field_table.def"

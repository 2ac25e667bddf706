// The checking functions, one per entry of the JNI table, made from the entries' types.
#include "strict_jni/state.h"
#include "strict_jni/strict_jni.h"

#include <tuple>
#include <type_traits>

namespace strict_jni {
namespace {

template <typename T>
constexpr bool isReference = std::is_convertible_v<T, jobject>;
template <typename T>
constexpr bool isId = std::is_same_v<T, jmethodID> || std::is_same_v<T, jfieldID>;

template <typename T, typename... A>
T first(const std::tuple<A...>& arguments) {
    T found{};
    bool have = false;
    std::apply(
        [&](const auto&... argument) {
            auto look = [&](const auto& value) {
                if constexpr (std::is_same_v<std::decay_t<decltype(value)>, T>) {
                    if (!have) {
                        found = value;
                        have = true;
                    }
                }
            };
            (look(argument), ...);
        },
        arguments);
    return found;
}

template <typename... A>
const void* firstId(const std::tuple<A...>& arguments) {
    const void* method = first<jmethodID>(arguments);
    return method != nullptr ? method : first<jfieldID>(arguments);
}

/// The rules that follow from an argument's type.
template <typename T>
bool argumentKept(const Row& row, T value, bool first_object) {
    if constexpr (isReference<T>) {
        if ((row.traits & deletes) != 0) {
            return true;
        }
        bool needed = !std::is_same_v<T, jobject> || (first_object && (row.traits & objectNeeded));
        if (needed && value == nullptr) {
            return broken(row.name, "null object, class, string or array");
        }
        return isKnown(row, value);
    } else if constexpr (isId<T>) {
        return value != nullptr || broken(row.name, "null method or field id");
    } else if constexpr (std::is_same_v<T, jint>) {
        return (row.traits & lengths) == 0 || value >= 0 || broken(row.name, "negative length");
    } else if constexpr (std::is_same_v<T, const char*>) {
        if ((row.traits & names) == 0) {
            return true;
        }
        return (value != nullptr && isModifiedUtf8(value)) || broken(row.name, "name is no text");
    } else {
        return true;
    }
}

/// Rules of some functions only. `keep` runs before the call and `account` after it.
template <auto Member>
struct Special {
    template <typename... A>
    static bool keep(const Row&, const A&...) {
        return true;
    }
    template <typename R, typename... A>
    static void account(const Row&, const R&, const A&...) {}
};
template <>
struct Special<&JNINativeInterface_::FindClass> : Special<nullptr> {
    static bool keep(const Row& row, const char* name) { return isClassName(row, name); }
};
template <>
struct Special<&JNINativeInterface_::NewStringUTF> : Special<nullptr> {
    static bool keep(const Row& row, const char* text) {
        return text == nullptr || isModifiedUtf8(text) ||
               broken(row.name, "text is not modified UTF-8");
    }
};
template <>
struct Special<&JNINativeInterface_::PushLocalFrame> : Special<nullptr> {
    static bool keep(const Row& row, jint capacity) {
        return capacity > 0 || broken(row.name, "capacity is not positive");
    }
    static void account(const Row&, jint result, jint) {
        if (result == JNI_OK) {
            framePushed();
        }
    }
};
template <>
struct Special<&JNINativeInterface_::PopLocalFrame> : Special<nullptr> {
    static bool keep(const Row& row, jobject) { return mayPopFrame(row); }
    static void account(const Row& row, jobject result, jobject) { framePopped(row, result); }
};
template <>
struct Special<&JNINativeInterface_::DeleteLocalRef> {
    static bool keep(const Row& row, jobject reference) { return mayDeleteLocal(row, reference); }
    static void account(const Row&, std::nullptr_t, jobject reference) { localDeleted(reference); }
};
struct DeleteGlobal {
    static bool keep(const Row& row, jobject reference) { return mayDeleteGlobal(row, reference); }
    static void account(const Row&, std::nullptr_t, jobject reference) { globalDeleted(reference); }
};
template <>
struct Special<&JNINativeInterface_::DeleteGlobalRef> : DeleteGlobal {};
template <>
struct Special<&JNINativeInterface_::DeleteWeakGlobalRef> : DeleteGlobal {};

template <auto Member>
struct Entry;

template <typename R, typename... A, R (JNICALL* JNINativeInterface_::*Member)(JNIEnv*, A...)>
struct Entry<Member> {
    static inline Row row;

    static R JNICALL call(JNIEnv* env, A... arguments) {
        return checkAndCall(__builtin_return_address(0), env, arguments...);
    }

    static R checkAndCall(const void* caller, JNIEnv* env, A... arguments) {
        if (!isWatched(caller)) {
            return (vm_table.*Member)(env, arguments...);
        }
        called(row);
        if (isObserved()) {
            std::vector<long long> numbers;
            const char* text = nullptr;
            auto note = [&](auto value) {
                if constexpr (std::is_same_v<decltype(value), jint>) {
                    numbers.push_back(value);
                } else if constexpr (std::is_same_v<decltype(value), const char*>) {
                    text = text == nullptr ? value : text;
                }
            };
            (void)note;
            (note(arguments), ...);
            observe(row, std::move(numbers), text);
        }
        const Turn turn = nextTurn(row);
        // A call that fails must have been legal as well.
        if (rules_checked && !kept(env, arguments...)) {
            return R();
        }
        if (turn == Turn::fails || turn == Turn::throws) {
            if (turn == Turn::throws) {
                throwOutOfMemory(env);
            }
            if constexpr (std::is_same_v<R, jint>) {
                return JNI_ERR;
            } else {
                return R();
            }
        }
        // Released first: once the VM has it back, another thread may be given the same memory.
        if ((row.traits & releasesMemory) != 0) {
            released(arguments...);
        }
        if constexpr (std::is_void_v<R>) {
            (vm_table.*Member)(env, arguments...);
            Special<Member>::account(row, nullptr, arguments...);
            if (turn == Turn::spoiled) {
                throwOutOfMemory(env);
            }
        } else {
            R result = (vm_table.*Member)(env, arguments...);
            made(env, result, arguments...);
            Special<Member>::account(row, result, arguments...);
            if (turn == Turn::spoiled) {
                throwOutOfMemory(env);
            }
            return result;
        }
    }

private:
    static bool kept(JNIEnv* env, A... arguments) {
        if (!mayCall(row, env)) {
            return false;
        }
        // The first jobject is the object of the call; others are its arguments and may be null.
        bool object_seen = false;
        auto keep = [&](auto value) {
            bool first_object = false;
            if constexpr (std::is_same_v<decltype(value), jobject>) {
                first_object = !object_seen;
                object_seen = true;
            }
            return argumentKept(row, value, first_object);
        };
        (void)keep;
        return (keep(arguments) && ...) && membersKept(env, std::make_tuple(arguments...)) &&
               Special<Member>::keep(row, arguments...);
    }

    template <typename Arguments>
    static bool membersKept(JNIEnv* env, Arguments arguments) {
        if constexpr ((isId<A> || ...)) {
            if (!mayUseMember(row, env, first<jobject>(arguments), first<jclass>(arguments),
                              firstId(arguments))) {
                return false;
            }
            if constexpr ((std::is_same_v<A, const jvalue*> || ...)) {
                return argumentsKnown(row, firstId(arguments), first<const jvalue*>(arguments));
            } else if constexpr ((std::is_same_v<A, jmethodID> || ...)) {
                auto list = std::get<sizeof...(A) - 1>(arguments);
                va_list copy;
                va_copy(copy, list);
                bool known = argumentsKnown(row, firstId(arguments), copy);
                va_end(copy);
                return known;
            }
        }
        if constexpr (sizeof...(A) >= 2) {
            if ((row.traits & releasesMemory) != 0) {
                if constexpr (std::is_pointer_v<std::tuple_element_t<1, Arguments>>) {
                    return mayRelease(row, std::get<1>(arguments));
                }
            }
        }
        return true;
    }

    static void released(A... arguments) {
        if constexpr (sizeof...(A) >= 2) {
            auto tuple = std::make_tuple(arguments...);
            if constexpr (std::is_pointer_v<std::decay_t<decltype(std::get<1>(tuple))>>) {
                memoryReleased(std::get<1>(tuple));
                if ((row.traits & criticalAllowed) != 0) {
                    criticalChanged(-1);
                }
            }
        }
    }

    template <typename Result>
    static void made(JNIEnv* env, Result result, A... arguments) {
        if constexpr (isReference<R>) {
            if (std::is_same_v<R, jobject> && (row.traits & makesGlobal) != 0) {
                globalMade(result);
            } else if ((row.traits & deletes) == 0) {
                localMade(row, result);
            }
        } else if constexpr (isId<R>) {
            auto tuple = std::make_tuple(arguments...);
            if (result != nullptr && (row.traits & lookUp) != 0) {
                if constexpr (sizeof...(A) == 3) {
                    idMade(row, env, std::get<0>(tuple), result, std::get<1>(tuple),
                           std::get<2>(tuple));
                }
            }
        } else if constexpr (std::is_pointer_v<R>) {
            if ((row.traits & takesMemory) != 0 && result != nullptr) {
                memoryTaken(row, result);
                if ((row.traits & criticalAllowed) != 0) {
                    criticalChanged(1);
                }
            }
        }
        (void)env;
    }
};

/// The C forms with variable arguments end in the forms that take a list of them.
template <auto Variadic, auto Listed>
struct VariadicEntry;

template <typename R, typename X,
          R (JNICALL* JNINativeInterface_::*Variadic)(JNIEnv*, X, jmethodID, ...), auto Listed>
struct VariadicEntry<Variadic, Listed> {
    static R JNICALL call(JNIEnv* env, X on, jmethodID method, ...) {
        const void* caller = __builtin_return_address(0);
        va_list arguments;
        va_start(arguments, method);
        if constexpr (std::is_void_v<R>) {
            Entry<Listed>::checkAndCall(caller, env, on, method, arguments);
            va_end(arguments);
        } else {
            R result = Entry<Listed>::checkAndCall(caller, env, on, method, arguments);
            va_end(arguments);
            return result;
        }
    }
};

template <typename R,
          R (JNICALL* JNINativeInterface_::*Variadic)(JNIEnv*, jobject, jclass, jmethodID, ...),
          auto Listed>
struct VariadicEntry<Variadic, Listed> {
    static R JNICALL call(JNIEnv* env, jobject on, jclass of, jmethodID method, ...) {
        const void* caller = __builtin_return_address(0);
        va_list arguments;
        va_start(arguments, method);
        if constexpr (std::is_void_v<R>) {
            Entry<Listed>::checkAndCall(caller, env, on, of, method, arguments);
            va_end(arguments);
        } else {
            R result = Entry<Listed>::checkAndCall(caller, env, on, of, method, arguments);
            va_end(arguments);
            return result;
        }
    }
};

template <auto Member>
void put(JNINativeInterface_& table, const char* name, unsigned traits, char type) {
    Row& row = Entry<Member>::row;
    row.name = name;
    row.traits = traits;
    row.type = type;
    addRow(row);
    table.*Member = &Entry<Member>::call;
}

} // namespace

void fillTable(JNINativeInterface_& table) {
#define PUT(NAME, TRAITS) put<&JNINativeInterface_::NAME>(table, #NAME, TRAITS, 0)
#define PUT_TYPED(NAME, TRAITS, LETTER)                                                            \
    put<&JNINativeInterface_::NAME>(table, #NAME, TRAITS, LETTER)
#define PUT_VARIADIC(NAME)                                                                         \
    table.NAME = &VariadicEntry<&JNINativeInterface_::NAME, &JNINativeInterface_::NAME##V>::call
#define PUT_CALLS(NAME, TRAITS, LETTER)                                                            \
    PUT_TYPED(NAME##V, TRAITS, LETTER);                                                            \
    PUT_TYPED(NAME##A, TRAITS, LETTER);                                                            \
    PUT_VARIADIC(NAME)
#define PUT_METHODS(TYPE, LETTER)                                                                  \
    PUT_CALLS(Call##TYPE##Method, objectNeeded | memberId, LETTER);                                \
    PUT_CALLS(CallNonvirtual##TYPE##Method, objectNeeded | memberId, LETTER);                      \
    PUT_CALLS(CallStatic##TYPE##Method, staticId, LETTER)
#define PUT_FIELDS(TYPE, LETTER)                                                                   \
    PUT_TYPED(Get##TYPE##Field, objectNeeded | memberId, LETTER);                                  \
    PUT_TYPED(Set##TYPE##Field, objectNeeded | memberId, LETTER);                                  \
    PUT_TYPED(GetStatic##TYPE##Field, staticId, LETTER);                                           \
    PUT_TYPED(SetStatic##TYPE##Field, staticId, LETTER)
#define PUT_ARRAYS(TYPE)                                                                           \
    PUT(New##TYPE##Array, lengths);                                                                \
    PUT(Get##TYPE##ArrayElements, takesMemory);                                                    \
    PUT(Release##TYPE##ArrayElements, pendingAllowed | releasesMemory);                            \
    PUT(Get##TYPE##ArrayRegion, lengths);                                                          \
    PUT(Set##TYPE##ArrayRegion, lengths)
#define PUT_PRIMITIVE(TYPE, LETTER)                                                                \
    PUT_METHODS(TYPE, LETTER);                                                                     \
    PUT_FIELDS(TYPE, LETTER);                                                                      \
    PUT_ARRAYS(TYPE)

    PUT_PRIMITIVE(Boolean, 'Z');
    PUT_PRIMITIVE(Byte, 'B');
    PUT_PRIMITIVE(Char, 'C');
    PUT_PRIMITIVE(Short, 'S');
    PUT_PRIMITIVE(Int, 'I');
    PUT_PRIMITIVE(Long, 'J');
    PUT_PRIMITIVE(Float, 'F');
    PUT_PRIMITIVE(Double, 'D');
    PUT_METHODS(Object, 'L');
    PUT_FIELDS(Object, 'L');
    PUT_METHODS(Void, 'V');
    PUT_CALLS(NewObject, constructs, 'V');

    PUT(GetVersion, plain);
    PUT(FindClass, names);
    PUT(GetSuperclass, plain);
    PUT(IsAssignableFrom, plain);
    PUT(Throw, plain);
    PUT(ThrowNew, plain);
    PUT(ExceptionOccurred, pendingAllowed);
    PUT(ExceptionDescribe, pendingAllowed);
    PUT(ExceptionClear, pendingAllowed);
    PUT(ExceptionCheck, pendingAllowed);
    PUT(PushLocalFrame, pendingAllowed);
    PUT(PopLocalFrame, pendingAllowed | deletes);
    PUT(EnsureLocalCapacity, lengths);
    PUT(NewGlobalRef, makesGlobal);
    PUT(DeleteGlobalRef, pendingAllowed | deletes);
    PUT(DeleteLocalRef, pendingAllowed | deletes);
    PUT(NewWeakGlobalRef, makesGlobal);
    PUT(DeleteWeakGlobalRef, pendingAllowed | deletes);
    PUT(NewLocalRef, plain);
    PUT(IsSameObject, plain);
    PUT(AllocObject, plain);
    PUT(GetObjectClass, objectNeeded);
    PUT(IsInstanceOf, plain);
    PUT(GetObjectRefType, plain);
    PUT(GetMethodID, names | memberId | lookUp);
    PUT(GetStaticMethodID, names | staticId | lookUp);
    PUT(GetFieldID, names | memberId | lookUp);
    PUT(GetStaticFieldID, names | staticId | lookUp);
    PUT(NewString, lengths);
    PUT(GetStringLength, plain);
    PUT(GetStringChars, takesMemory);
    PUT(ReleaseStringChars, pendingAllowed | releasesMemory);
    PUT(NewStringUTF, plain);
    PUT(GetStringUTFLength, plain);
    PUT(GetStringUTFChars, takesMemory);
    PUT(ReleaseStringUTFChars, pendingAllowed | releasesMemory);
    PUT(GetStringRegion, lengths);
    PUT(GetStringUTFRegion, lengths);
    PUT(GetStringCritical, takesMemory | criticalAllowed);
    PUT(ReleaseStringCritical, pendingAllowed | releasesMemory | criticalAllowed);
    PUT(GetArrayLength, plain);
    PUT(NewObjectArray, lengths);
    PUT(GetObjectArrayElement, lengths);
    PUT(SetObjectArrayElement, lengths);
    PUT(GetPrimitiveArrayCritical, takesMemory | criticalAllowed);
    PUT(ReleasePrimitiveArrayCritical, pendingAllowed | releasesMemory | criticalAllowed);
    PUT(UnregisterNatives, plain);
    PUT(MonitorEnter, objectNeeded);
    PUT(MonitorExit, objectNeeded | pendingAllowed);
    PUT(GetJavaVM, plain);
    PUT(NewDirectByteBuffer, plain);
    PUT(GetDirectBufferAddress, objectNeeded);
    PUT(GetDirectBufferCapacity, objectNeeded);

    table.RegisterNatives = &registerNatives;
}

} // namespace strict_jni

// One event's way: from the service's record to the callback of BGCallBack.
//
//     FUNCSTART -> view of the record -> its fields in the trace -> size -> Java objects ->
//     callback
#pragma once

#include "binding/JNIDtvSvLibListener.h"
#include "binding/signature.h"
#include "entry/trace.h"
#include "records/field_text.h"

#include <jni.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

/// A record as its handler sees it: the bytes that were sent, zero for those that were not. Nothing
/// behind `size` is touched; a negative size is that of an empty record.
template <typename Record>
Record viewRecord(const void* data, int size) {
    static_assert(std::is_trivially_copyable_v<Record>);
    Record record{};
    if (size > 0) {
        const auto sent = static_cast<size_t>(size);
        std::memcpy(&record, data, sent < sizeof(Record) ? sent : sizeof(Record));
    }
    return record;
}

/// A 32-bit field that goes to Java as a long, without its sign.
constexpr jlong zeroExtended(uint32_t value) {
    return value;
}
/// A 32-bit field that goes to Java as a long, with its sign.
constexpr jlong signExtended(int32_t value) {
    return value;
}
/// A 32-bit field that goes to Java as an int, bit by bit.
constexpr jint asJint(uint32_t value) {
    return static_cast<jint>(value);
}

/// The level at which a handler reports what failed.
enum class Reports {
    kDebug,         ///< everything at DEBUG
    kSizeAsError,   ///< a wrong size at ERROR, with the copy on standard output
    kFailedAsError, ///< a wrong size and a failed call at ERROR
};

/// Builds the Java objects of one event and hands them to its callback. Once something could not be
/// made, which has been logged, nothing more is made: build answers null and deliver 1.
class EventBuilder {
public:
    EventBuilder(JNIDtvSvLibListener& listener, JNIEnv* env, const char* handler,
                 Reports reports = Reports::kDebug)
        : listener_(listener), env_(env), handler_(handler), reports_(reports) {}
    EventBuilder(const EventBuilder&) = delete;
    EventBuilder& operator=(const EventBuilder&) = delete;

    JNIEnv* env() const { return env_; }

    /// Whether a record has the size of its event.
    template <typename Record>
    bool hasSizeOf(int size) const {
        return hasSize(size, static_cast<int>(sizeof(Record)));
    }

    /// Constructs an object. Fields of 8 and 16 bits go as ints; 32-bit fields say how they go.
    template <TE_DTVSV_METHODID Constructor, typename... Arguments>
    jobject build(Arguments... arguments) {
        static_assert(signature::takes<JavaType<Arguments>...>(kMethodTable[Constructor].signature),
                      "the constructor takes these arguments");
        jobject object = nullptr;
        if (failed_ ||
            !succeeded(listener_.CallMethod(env_, Constructor, &object,
                                            static_cast<JavaType<Arguments>>(arguments)...))) {
            return nullptr;
        }
        return keep(object);
    }

    /// A Java string of a zero-terminated text, or null: its handler says so in its own words.
    jstring text(const char* text) {
        return failed_ ? nullptr
                       : static_cast<jstring>(keep(listener_.OrgNewStringUTF(env_, text)));
    }

    /// A Java string of UTF-16 units as they stand in a record, or null.
    jstring utf16(const char* text, int units) {
        return failed_ ? nullptr
                       : static_cast<jstring>(keep(listener_.OrgNewString(env_, text, units)));
    }

    /// A Java byte array, or null.
    jbyteArray bytes(const uint8_t* bytes, jsize length);

    /// Keeps a local reference until the event has been delivered. A null one is a failure.
    jobject keep(jobject object);

    /// Constructs the event, calls its callback with it, lets the local references go and ends the
    /// handler with what it answers.
    template <TE_DTVSV_METHODID Constructor, TE_DTVSV_METHODID Callback, typename... Arguments>
    int deliver(Arguments... arguments) {
        static_assert(
            signature::takesClass(kMethodTable[Callback].signature, classNameOf(Constructor)),
            "the callback takes this event");
        const jobject event = build<Constructor>(arguments...);
        if (failed_ || !succeeded(listener_.CallMethod(env_, Callback, nullptr, event))) {
            return 1;
        }
        return finish();
    }

    /// Ends a handler whose event has been delivered.
    int finish();

private:
    /// What an argument is for Java. Anything but the types below does not compile.
    template <typename Type>
    using JavaType = std::conditional_t<
        std::is_pointer_v<Type>, jobject,
        std::conditional_t<std::is_same_v<Type, uint8_t> || std::is_same_v<Type, uint16_t>, jint,
                           Type>>;

    /// The most references that one event keeps: those of the programme guide.
    static constexpr int kMostReferences = 96;

    bool hasSize(int size, int required) const;
    bool succeeded(int ret);

    JNIDtvSvLibListener& listener_;
    JNIEnv* const env_;
    const char* const handler_;
    const Reports reports_;
    bool failed_ = false;
    int reference_count_ = 0;
    jobject references_[kMostReferences];
};

// What a handler says of a string or an array that could not be made, before it ends with 1.

#define REQUIRE_OR_SAY(made, ...)                                                                  \
    do {                                                                                           \
        if ((made) == nullptr) {                                                                   \
            TRACE_LISTENER(trace::kDebug, __func__, __VA_ARGS__);                                  \
            return 1;                                                                              \
        }                                                                                          \
    } while (false)

/// The words of the handlers that have none of their own.
#define REQUIRE_STRING(made)                                                                       \
    do {                                                                                           \
        if ((made) == nullptr) {                                                                   \
            TRACE_LISTENER_ERROR(__func__, "ERROR NewStringUTF");                                  \
            return 1;                                                                              \
        }                                                                                          \
    } while (false)

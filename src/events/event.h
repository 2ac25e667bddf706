// How an event is delivered: from the service's record to the callback of BGCallBack.
//
//     FUNCSTART -> Event, its fields in the trace -> size -> Java objects -> callback
//
// A handler makes an Event of what arrived, traces its fields, and delivers it:
//
//     Event<event_id::kCapStatusNotify> event(*this, env, __func__, data, size);
//     TRACE_LISTENER(kDebug, __func__, "handle = %d, ...", event->handle, ...);
//     return event.deliver(event->handle, event->change_status);
//
// The first thing that is built checks the record's size. After the first thing that cannot be
// made, which is logged, nothing more is made, and deliver answers 1.
#pragma once

#include "binding/JNIDtvSvLibListener.h"
#include "binding/java_object.h"
#include "binding/signature.h"
#include "entry/trace.h"
#include "records/field_text.h"
#include "records/messages.h"

#include <jni.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

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

/// Which sizes of a record are accepted.
enum class Sizes {
    kExact, ///< that of the record
    kAny,   ///< every size: what was not sent is zero
};

/// Writes the line about something that could not be made. It is given the handler's name.
using TraceFailure = void (*)(const char* handler);

/// A TraceFailure that writes a DEBUG line.
#define FAILURE_LINE(text) [](const char* handler) { TRACE_LISTENER(trace::kDebug, handler, text); }

/// The line of the handlers that have none of their own for a string.
void traceFailedString(const char* handler);

/// The record of an event as its handler sees it: the bytes that were sent, zero for those that
/// were not. Nothing after `size` is touched; a negative size is that of an empty record. A record
/// that arrived whole is read in place.
template <class Record>
class RecordView {
    static_assert(std::is_trivially_copyable_v<Record> && alignof(Record) == 1);

public:
    RecordView(const void* data, int size) {
        if (size >= static_cast<int>(sizeof(Record))) {
            record_ = static_cast<const Record*>(data);
            return;
        }
        std::memset(&copy_, 0, sizeof(copy_));
        if (size > 0) {
            std::memcpy(&copy_, data, static_cast<size_t>(size));
        }
        record_ = &copy_;
    }
    RecordView(const RecordView&) = delete;
    RecordView& operator=(const RecordView&) = delete;

    const Record& operator*() const { return *record_; }
    const Record* operator->() const { return record_; }

private:
    const Record* record_;
    Record copy_; ///< of a record that was cut; else not used
};

/// What all events have in common: builds Java objects, and keeps them until they are delivered.
class EventBuilder {
public:
    EventBuilder(JNIDtvSvLibListener& listener, JNIEnv* env, const char* handler, bool size_fits,
                 int size, Reports reports)
        : listener_(listener), env_(env), handler_(handler), reports_(reports),
          size_fits_(size_fits), size_(size) {}
    ~EventBuilder() { closeFrame(); }
    EventBuilder(const EventBuilder&) = delete;
    EventBuilder& operator=(const EventBuilder&) = delete;

    /// Whether a condition holds, the record has the right size, and everything could be made so
    /// far. When only the condition does not hold, `trace` writes the line about it; it is given
    /// the handler's name. To be asked before a count of the record is used.
    template <class Trace>
    bool accepts(bool condition, const Trace& trace) {
        if (!isSound()) {
            return false;
        }
        if (!condition) {
            trace(handler_);
            failed_ = true;
        }
        return condition;
    }

    /// Lets what is made from now on live in a frame of its own, so that it goes with one call. For
    /// events of many objects; where no frame can be had the references go one by one, as they do
    /// without this.
    void openFrame();

    /// Constructs an object. Fields of 8 and 16 bits go as ints; 32-bit fields say how they go.
    template <int ClassId, typename... Arguments>
    Object<ClassId> build(Arguments... arguments) {
        constexpr TE_DTVSV_METHODID kConstructor = kConstructorOf<ClassId>;
        static_assert(
            signature::takes<JavaType<Arguments>...>(kMethodTable[kConstructor].signature),
            "the constructor takes these arguments");
        jobject object = nullptr;
        if (!isSound() ||
            !succeeded(listener_.CallMethod(env_, kConstructor, &object, passed(arguments)...))) {
            return {nullptr};
        }
        return {keep(object)};
    }

    /// A Java string of a zero-terminated text, or null. `trace_failure` writes the line about one
    /// that cannot be made; with null no line is written.
    jstring text(const char* text, TraceFailure trace_failure = traceFailedString);

    /// A Java string of UTF-16 units as they are in a record, or null. No line is written.
    jstring utf16(const char* text, int units);

    /// A Java byte array, or null. Without `trace_failure` no line is written.
    jbyteArray bytes(const uint8_t* bytes, jsize length, TraceFailure trace_failure = nullptr);

    /// The length of a string in modified UTF-8, in bytes; 0 for none.
    jint lengthOf(jstring string) const;

    /// An array of `count` objects of a class, all null, or no array. No line is written.
    template <int ClassId>
    ObjectArray<ClassId> array(jsize count) {
        return {objectArray(ClassId, count)};
    }

    /// Puts an object into its place of an array.
    template <int ClassId>
    void put(ObjectArray<ClassId> array, jsize index, Object<ClassId> object) {
        if (!failed_) {
            env_->SetObjectArrayElement(array.reference, index, object.reference);
        }
    }

    /// A Java int array, or null. No line is written.
    jintArray ints(const jint* values, jsize count);

    /// Ends the handler of an event that nothing is delivered of: with a bare FUNCEND line and 0,
    /// or with 1.
    int endUndelivered();

protected:
    /// Hands the event to its callback. 0, or 1 after the line about it.
    int call(TE_DTVSV_METHODID callback, jobject event, TraceFailure trace_failure);

private:
    /// What an argument is for Java. Anything but these does not compile.
    template <typename Type>
    using JavaType =
        std::conditional_t<std::is_same_v<Type, uint8_t> || std::is_same_v<Type, uint16_t>, jint,
                           Type>;

    static jint passed(jint value) { return value; }
    static jlong passed(jlong value) { return value; }
    static jobject passed(jobject reference) { return reference; }
    template <int ClassId>
    static jobject passed(Object<ClassId> object) {
        return object.reference;
    }
    template <int ClassId>
    static jobject passed(ObjectArray<ClassId> array) {
        return array.reference;
    }

    /// The most references that one event keeps: those of the programme guide.
    static constexpr int kMostReferences = 96;

    /// Whether everything could be made so far. Checks the record's size when nothing has done so.
    bool isSound();
    void traceWrongSize() const;
    bool succeeded(int ret);
    jobjectArray objectArray(int class_id, jsize count);
    jobject keep(jobject object);
    void dropReferences();
    void closeFrame();

    JNIDtvSvLibListener& listener_;
    JNIEnv* const env_;
    const char* const handler_;
    const Reports reports_;
    const bool size_fits_;
    const int size_; ///< bytes, as it arrived
    bool size_checked_ = false;
    bool failed_ = false;
    bool framed_ = false; ///< the references live in a frame of their own
    int reference_count_ = 0;
    jobject references_[kMostReferences]; ///< without a frame of their own
};

/// What the rows say of an event besides its record: its class and its callback.
template <int EventId>
struct EventTraits;
#define REPLY(id, name, record, java_class)                                                        \
    template <>                                                                                    \
    struct EventTraits<id> {                                                                       \
        static constexpr int kClass = class_id::k##java_class;                                     \
        static constexpr TE_DTVSV_METHODID kCallback = kCall_##java_class;                         \
    };
#define EVENT(id, name, record, handler, java_class) REPLY(id, name, record, java_class)
#include "records/message_table.def"

/// An event that has arrived: its record, its Java objects and its delivery.
template <int EventId>
class Event : public EventBuilder {
    using Traits = EventTraits<EventId>;

public:
    using Record = typename messages::RecordOfEvent<EventId>::Type;

    /// `data` holds `size` bytes, and is not null.
    Event(JNIDtvSvLibListener& listener, JNIEnv* env, const char* handler, const void* data,
          int size, Reports reports = Reports::kDebug, Sizes sizes = Sizes::kExact)
        : EventBuilder(listener, env, handler,
                       sizes == Sizes::kAny || size == static_cast<int>(sizeof(Record)), size,
                       reports),
          record_(data, size) {}

    const Record& operator*() const { return *record_; }
    const Record* operator->() const { return record_.operator->(); }

    /// Constructs the event and calls its callback with it. The references go, the handler's
    /// FUNCEND line is written, and the answer is the handler's.
    template <typename... Arguments>
    int deliver(Arguments... arguments) {
        return deliverOr(nullptr, arguments...);
    }

    /// The same with a line of its own for a callback that fails.
    template <typename... Arguments>
    int deliverOr(TraceFailure trace_failure, Arguments... arguments) {
        const auto event = build<Traits::kClass>(arguments...);
        return event.reference == nullptr ? 1
                                          : call(Traits::kCallback, event.reference, trace_failure);
    }

private:
    const RecordView<Record> record_;
};

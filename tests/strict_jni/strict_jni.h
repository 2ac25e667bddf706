// A JNI function table that is as strict as the strictest VM the bridge runs on. The desk's VM
// continues where another VM stops the process; this table passes the text of such a mistake to a
// reporter. It depends on the VM and on nothing else of the tests.
//
// It checks the calls that come from the watched library and passes all others (those of the JDK's
// own natives and of the test) directly to the VM. The caller is identified by the return address,
// so a call that the compiler turned into the last jump of a function counts as its caller's.
#pragma once

#include <jni.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace strict_jni {

/// One call, as it is passed to an observer.
struct JniCall {
    const char* function; ///< as StrictJni::calls names it
    /// Its jint arguments in order (a mode, a length, a version); of AttachCurrentThread the
    /// address of the thread's arguments, 0 for null.
    std::vector<long long> numbers;
    /// Its first text (a name, or what becomes a string); null when it takes none.
    const char* text = nullptr;
};

/// Everything here counts what the watched library does, in every mode; rules are checked in the
/// strict mode only (in the other the VM's own -Xcheck:jni checks them).
class StrictJni {
public:
    /// Gets the text of every broken rule, and of every wrong use of this table, on the thread
    /// where it happens.
    using Reporter = void (*)(const std::string& text);
    /// Without a reporter the text goes to standard error and the process ends with status 70, as
    /// it would in the strictest VM.
    static void reportTo(Reporter reporter);

    /// Gets every call of the watched library to a JNI or invocation function, on the calling
    /// thread and before the call is made. It makes no JNI call itself.
    using Observer = std::function<void(const JniCall& call)>;

    /// Replaces the VM's table, for every thread at once and until the process ends. Called when
    /// the VM is made.
    static void install(JavaVM* vm, bool strict);

    /// Names the library whose calls are checked, by its file. It need not be loaded yet.
    static void watch(const std::string& library);

    static bool strict();

    /// Whether the code at `address` belongs to the watched library.
    static bool isWatched(const void* address);

    /// Rules broken since the process began.
    static int violations();

    /// How often the watched library called the JNI or invocation function of this name
    /// ("NewObjectV", "AttachCurrentThread"; jni.h's C++ calls end in the functions named ...V). 0
    /// and a report for an unknown name.
    static int calls(const std::string& function);

    /// Local references that the watched library made and that live now, on all threads.
    static int liveLocals();

    /// The most that lived at once on one thread since the last resetPeakLocals.
    static int peakLocals();
    static void resetPeakLocals();

    /// Drops the calling thread's local references from the count: its native frame has ended.
    static void forgetLocals();

    static int globalsMade();
    static int globalsDeleted();

    /// Characters and elements that were taken (GetStringUTFChars and the like) and not yet
    /// released.
    static int unreleased();
};

/// While it lives, calls of the watched library are observed. One at a time; when it ends, no other
/// thread is in a call of the watched library.
class ObservedJni {
public:
    explicit ObservedJni(StrictJni::Observer observer);
    ~ObservedJni();
    ObservedJni(const ObservedJni&) = delete;
    ObservedJni& operator=(const ObservedJni&) = delete;

private:
    StrictJni::Observer observer;
};

/// Counts the watched library's calls of one JNI function from here on.
class Calls {
public:
    explicit Calls(std::string name)
        : function(std::move(name)), before(StrictJni::calls(function)) {}
    int made() const { return StrictJni::calls(function) - before; }

private:
    std::string function;
    int before;
};

/// While it lives, one call of the watched library to a JNI or invocation function does nothing and
/// fails: null or JNI_ERR (GetEnv: JNI_EDETACHED), with an OutOfMemoryError pending if requested.
/// `Leaves::result` is only for the functions of the JNI table.
class FailJni {
public:
    enum class Leaves {
        exception, ///< as a VM does that has run out of memory
        nothing,
        result ///< the call is made and its result is answered, with the exception pending
    };
    /// `let_through` calls succeed first.
    explicit FailJni(const std::string& function, int let_through = 0,
                     Leaves leaves = Leaves::exception);
    /// Reports when the call never came.
    ~FailJni();
    FailJni(const FailJni&) = delete;
    FailJni& operator=(const FailJni&) = delete;

    bool fired() const;

private:
    std::string function;
};

/// The ways in which a JNI or invocation function can fail in a VM when its caller keeps the rules,
/// the usual one first. Empty for one that cannot fail.
const std::vector<FailJni::Leaves>& waysToFail(const std::string& function);

/// While it lives, calls of the watched library that can fail (those with waysToFail) are counted
/// from 0, of whatever function, and some of them fail. One at a time, and not with a FailJni.
class FailNth {
public:
    enum class Span {
        once,       ///< the calls that are named
        fromThereOn ///< also all calls after the last that is named
    };
    struct Call {
        int number; ///< calls before it
        /// A function that does not fail in this way fails in its usual one.
        FailJni::Leaves leaves;
    };
    /// `calls` in the order of their numbers; none: all are made, and counted.
    explicit FailNth(std::vector<Call> calls = {}, Span span = Span::once);
    ~FailNth();
    FailNth(const FailNth&) = delete;
    FailNth& operator=(const FailNth&) = delete;

    /// Calls that could fail so far, and those that did.
    int counted() const;
    int failed() const;
};

/// Modified UTF-8 by the strictest VM's rules: no four-byte forms, nothing overlong but C0 80.
bool isModifiedUtf8(const char* text);

} // namespace strict_jni

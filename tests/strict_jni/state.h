// The data of the strict table, and its rules. Private to this folder.
#pragma once

#include "strict_jni/strict_jni.h"

#include <jni.h>

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

namespace strict_jni {

/// What is special about a JNI function. The rest follows from the types of its arguments.
enum Trait : unsigned {
    plain = 0,
    pendingAllowed = 1U << 0,  ///< legal while an exception is pending
    objectNeeded = 1U << 1,    ///< its object must not be null
    lengths = 1U << 2,         ///< its ints are lengths, starts or capacities
    names = 1U << 3,           ///< its texts are names and signatures
    makesGlobal = 1U << 4,     ///< its result is a global or weak reference
    takesMemory = 1U << 5,     ///< its result must be released
    releasesMemory = 1U << 6,  ///< its second argument is such a result
    criticalAllowed = 1U << 7, ///< legal between GetXxxCritical and its release
    staticId = 1U << 8,        ///< takes (or, when it looks up, makes) the id of a static member
    memberId = 1U << 9,        ///< takes or makes the id of an instance member
    constructs = 1U << 10,     ///< takes the id of a constructor
    lookUp = 1U << 11,         ///< makes an id
    deletes = 1U << 12,        ///< checks its reference itself
};

/// One function of the table.
struct Row {
    const char* name = "";
    unsigned traits = plain;
    char type = 0; ///< letter of the type that is returned, read or written; 'L' for arrays too
    std::atomic<int> calls{0};
    std::atomic<int> fail_after{-1}; ///< calls until the one that fails; -1: none fails
    std::atomic<int> fail_leaves{0}; ///< a FailJni::Leaves
    /// The ways in which it can fail; not null once the row has been added.
    const std::vector<FailJni::Leaves>* ways = nullptr;
};

Row* findRow(const std::string& name);
void addRow(Row& row);

extern JNINativeInterface_ vm_table; ///< the functions as the VM has them
extern JNIInvokeInterface_ vm_invoke;
extern JavaVM* vm;
extern bool rules_checked;

/// Whether the code at `address` belongs to the watched library.
bool isWatched(const void* address);

/// Reports a broken rule. Always false.
bool broken(const char* function, const std::string& rule);
void report(const std::string& text);

/// Counts a call of the watched library.
void called(Row& row);
/// Whether calls are observed, and the function that notifies the observer.
bool isObserved();
void observe(const Row& row, std::vector<long long> numbers, const char* text = nullptr);

/// What is done with a call.
enum class Turn {
    made,   ///< as usual
    fails,  ///< not made
    throws, ///< not made, and throwOutOfMemory instead
    spoiled ///< made, and throwOutOfMemory after it
};
Turn nextTurn(Row& row);
/// The same for the calls of FailNth. (fail_nth.cpp)
Turn nextCounted(const Row& row);
Turn turnOf(FailJni::Leaves leaves);
void throwOutOfMemory(JNIEnv* env);

// Rules. Each is true when it is kept.
bool mayCall(const Row& row, JNIEnv* env);
bool isKnown(const Row& row, jobject reference); ///< null is known
bool mayUseMember(const Row& row, JNIEnv* env, jobject object, jclass of, const void* id);
bool argumentsKnown(const Row& row, const void* id, va_list arguments);
bool argumentsKnown(const Row& row, const void* id, const jvalue* arguments);
bool isClassName(const Row& row, const char* name);
bool mayDeleteLocal(const Row& row, jobject reference);
bool mayDeleteGlobal(const Row& row, jobject reference);
bool mayPopFrame(const Row& row);
bool mayRelease(const Row& row, const void* memory);

// Records of references, memory and frames.
void localMade(const Row& row, jobject reference);
void localDeleted(jobject reference);
void globalMade(jobject reference);
void globalDeleted(jobject reference);
void framePushed();
void framePopped(const Row& row, jobject result);
void memoryTaken(const Row& row, const void* memory);
void memoryReleased(const void* memory);
void criticalChanged(int by);
void idMade(const Row& row, JNIEnv* env, jclass of, const void* id, const char* name,
            const char* signature);

/// One run of a native method of the watched library: what it made ends with it.
class NativeRun {
public:
    NativeRun(const std::string& name, std::vector<jobject> arguments);
    void end(bool object, jobject result);

private:
    const std::string& name;
    int memory_before;
};

/// RegisterNatives: puts a NativeRun around every method of the watched library.
jint JNICALL registerNatives(JNIEnv* env, jclass of, const JNINativeMethod* methods, jint count);

/// Fills `table` with the checking functions.
void fillTable(JNINativeInterface_& table);

} // namespace strict_jni

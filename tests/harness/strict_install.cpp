// How the strict table gets into the VM, who is watched, and which calls are made to fail.
#include "harness/strict_jni.h"
#include "harness/strict_state.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <link.h>

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <utility>

namespace harness::strict {

JNINativeInterface_ vm_table;
JNIInvokeInterface_ vm_invoke;
JavaVM* vm = nullptr;
bool rules_judged = false;

namespace {

std::map<std::string, Row*>& rows() {
    static auto& instance = *new std::map<std::string, Row*>;
    return instance;
}

std::string& watched() {
    static std::string& instance = *new std::string;
    return instance;
}
std::atomic<bool> looking{false}; ///< a library is named but its addresses are not known yet
std::atomic<uintptr_t> code_begin{0};
std::atomic<uintptr_t> code_end{0};

std::string realPath(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) != nullptr ? resolved : path;
}

int findWatched(dl_phdr_info* info, size_t, void*) {
    if (info->dlpi_name == nullptr || *info->dlpi_name == 0 ||
        realPath(info->dlpi_name) != watched()) {
        return 0;
    }
    uintptr_t begin = UINTPTR_MAX;
    uintptr_t end = 0;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto& segment = info->dlpi_phdr[i];
        if (segment.p_type == PT_LOAD) {
            begin = std::min(begin, static_cast<uintptr_t>(info->dlpi_addr + segment.p_vaddr));
            end = std::max(
                end, static_cast<uintptr_t>(info->dlpi_addr + segment.p_vaddr + segment.p_memsz));
        }
    }
    code_begin = begin;
    code_end = end;
    looking = false;
    return 1;
}

// Native methods pass six words at most here: the environment, the object and four arguments, all
// in registers. So one shape of function stands before each of them whatever its types.
using Word = intptr_t;
using AnyNative = Word(JNICALL*)(JNIEnv*, jobject, Word, Word, Word, Word);
constexpr size_t mostArguments = 4;
constexpr size_t mostNatives = 96;

struct Native {
    std::string name;
    std::string arguments; ///< their letters, 'L' for arrays too
    bool object = false;   ///< returns one
    AnyNative function = nullptr;
};

std::array<Native, mostNatives>& natives() {
    static auto& instance = *new std::array<Native, mostNatives>;
    return instance;
}
size_t native_count = 0;

template <size_t Index>
__attribute__((no_sanitize("undefined"))) Word JNICALL runNative(JNIEnv* env, jobject self, Word a,
                                                                 Word b, Word c, Word d) {
    const Native& native = natives()[Index];
    const Word words[mostArguments] = {a, b, c, d};
    std::vector<jobject> references{self};
    for (size_t i = 0; i < native.arguments.size(); ++i) {
        if (native.arguments[i] == 'L') {
            references.push_back(reinterpret_cast<jobject>(words[i]));
        }
    }
    NativeRun run(native.name, std::move(references));
    Word result = native.function(env, self, a, b, c, d);
    run.end(native.object, native.object ? reinterpret_cast<jobject>(result) : nullptr);
    return result;
}

template <size_t... Index>
std::array<AnyNative, sizeof...(Index)> runners(std::index_sequence<Index...>) {
    return {&runNative<Index>...};
}

/// The letters of a signature's arguments, arrays as 'L'.
std::string argumentLetters(const std::string& signature) {
    std::string letters;
    for (size_t at = 1; at < signature.size() && signature[at] != ')'; ++at) {
        char letter = signature[at] == '[' ? 'L' : signature[at];
        while (signature[at] == '[') {
            ++at;
        }
        if (signature[at] == 'L') {
            at = signature.find(';', at);
        }
        letters += letter;
    }
    return letters;
}

void* runnerFor(const JNINativeMethod& method) {
    static const auto all = runners(std::make_index_sequence<mostNatives>());
    Native native;
    native.name = method.name;
    native.arguments = argumentLetters(method.signature);
    char returned =
        std::string(method.signature).substr(std::string(method.signature).find(')'))[1];
    native.object = returned == 'L' || returned == '[';
    native.function = reinterpret_cast<AnyNative>(method.fnPtr);
    std::string all_letters = native.arguments + returned;
    if (native.arguments.size() > mostArguments || native_count == mostNatives ||
        all_letters.find_first_of("FD") != std::string::npos) {
        std::fprintf(stderr, "strict_jni: no room for the native method %s\n", method.name);
        std::abort();
    }
    natives()[native_count] = native;
    return reinterpret_cast<void*>(all[native_count++]);
}

Row invoke_rows[4];
enum InvokeRow {
    getEnvRow,
    attachRow,
    attachAsDaemonRow,
    detachRow
};

bool counted(InvokeRow index, const void* caller) {
    if (!isWatched(caller)) {
        return false;
    }
    ++invoke_rows[index].calls;
    return failsNow(invoke_rows[index], nullptr);
}

jint JNICALL getEnv(JavaVM* on, void** env, jint version) {
    if (counted(getEnvRow, __builtin_return_address(0))) {
        *env = nullptr;
        return JNI_EDETACHED;
    }
    return vm_invoke.GetEnv(on, env, version);
}

jint JNICALL attach(JavaVM* on, void** env, void* arguments) {
    return counted(attachRow, __builtin_return_address(0))
               ? JNI_ERR
               : vm_invoke.AttachCurrentThread(on, env, arguments);
}

jint JNICALL attachAsDaemon(JavaVM* on, void** env, void* arguments) {
    return counted(attachAsDaemonRow, __builtin_return_address(0))
               ? JNI_ERR
               : vm_invoke.AttachCurrentThreadAsDaemon(on, env, arguments);
}

jint JNICALL detach(JavaVM* on) {
    return counted(detachRow, __builtin_return_address(0)) ? JNI_ERR
                                                           : vm_invoke.DetachCurrentThread(on);
}

Row& rowNamed(const std::string& function) {
    Row* row = findRow(function);
    if (row == nullptr) {
        ADD_FAILURE() << "no JNI function " << function << " is judged";
        static Row none;
        return none;
    }
    return *row;
}

} // namespace

void addRow(Row& row) {
    rows()[row.name] = &row;
}

Row* findRow(const std::string& name) {
    auto found = rows().find(name);
    return found == rows().end() ? nullptr : found->second;
}

bool isWatched(const void* address) {
    if (looking) {
        // Between dlopen and JNI_OnLoad nobody tells us; so we look until it is there.
        dl_iterate_phdr(&findWatched, nullptr);
    }
    auto at = reinterpret_cast<uintptr_t>(address);
    return at >= code_begin && at < code_end;
}

bool failsNow(Row& row, JNIEnv* env) {
    int left = row.fail_after;
    if (left < 0) {
        return false;
    }
    row.fail_after = left - 1;
    if (left > 0) {
        return false;
    }
    if (env != nullptr && row.fail_throws && !vm_table.ExceptionCheck(env)) {
        jclass error = vm_table.FindClass(env, "java/lang/OutOfMemoryError");
        vm_table.ThrowNew(env, error, "as if the VM had no memory left");
        vm_table.DeleteLocalRef(env, error);
    }
    return true;
}

jint JNICALL registerNatives(JNIEnv* env, jclass of, const JNINativeMethod* methods, jint count) {
    std::vector<JNINativeMethod> table(methods, methods + (count > 0 ? count : 0));
    size_t before = native_count;
    for (JNINativeMethod& method : table) {
        if (isWatched(method.fnPtr)) {
            method.fnPtr = runnerFor(method);
        }
    }
    jint result = vm_table.RegisterNatives(env, of, table.data(), count);
    if (result != JNI_OK) {
        native_count = before;
    }
    return result;
}

} // namespace harness::strict

namespace harness {

using namespace strict;

void StrictJni::install(JavaVM* of, bool judge) {
    JNIEnv* env = nullptr;
    if (of->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_4) != JNI_OK) {
        std::abort();
    }
    vm = of;
    rules_judged = judge;
    vm_table = *env->functions;
    vm_invoke = *of->functions;

    // The VM gives every thread's environment the address of one table, which is writable memory
    // (its tool interface lets agents exchange it). Written over in place it counts for all
    // threads.
    auto& table = const_cast<JNINativeInterface_&>(*env->functions);
    JNINativeInterface_ strict_table = vm_table;
    fillTable(strict_table);
    table = strict_table;

    const char* invoke_names[] = {"GetEnv", "AttachCurrentThread", "AttachCurrentThreadAsDaemon",
                                  "DetachCurrentThread"};
    for (size_t i = 0; i < 4; ++i) {
        invoke_rows[i].name = invoke_names[i];
        addRow(invoke_rows[i]);
    }
    static JNIInvokeInterface_ invoke = vm_invoke;
    invoke.GetEnv = &getEnv;
    invoke.AttachCurrentThread = &attach;
    invoke.AttachCurrentThreadAsDaemon = &attachAsDaemon;
    invoke.DetachCurrentThread = &detach;
    of->functions = &invoke;
}

void StrictJni::watch(const std::string& library) {
    watched() = realPath(library);
    code_begin = 0;
    code_end = 0;
    looking = true;
}

bool StrictJni::strict() {
    return rules_judged;
}

int StrictJni::calls(const std::string& function) {
    return rowNamed(function).calls;
}

FailJni::FailJni(const std::string& name, int let_through, Leaves leaves) : function(name) {
    Row& row = rowNamed(function);
    row.fail_throws = leaves == Leaves::exception;
    row.fail_after = let_through;
}

FailJni::~FailJni() {
    EXPECT_TRUE(fired()) << "the call of " << function << " that was to fail never came";
    rowNamed(function).fail_after = -1;
}

bool FailJni::fired() const {
    return rowNamed(function).fail_after < 0;
}

} // namespace harness

// How the strict table is installed in the VM, which library is watched, and which calls are made
// to fail.
#include "strict_jni/state.h"
#include "strict_jni/strict_jni.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <link.h>

#include <algorithm>
#include <map>
#include <utility>

namespace strict_jni {

JNINativeInterface_ vm_table;
JNIInvokeInterface_ vm_invoke;
JavaVM* vm = nullptr;
bool rules_checked = false;

namespace {

std::map<std::string, Row*>& rows() {
    static auto& instance = *new std::map<std::string, Row*>;
    return instance;
}

std::string& watched() {
    static std::string& instance = *new std::string;
    return instance;
}
std::atomic<StrictJni::Reporter> reporter{nullptr};
std::atomic<const StrictJni::Observer*> observer_of_all{nullptr};
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

Row invoke_rows[4];
enum InvokeRow {
    getEnvRow,
    attachRow,
    attachAsDaemonRow,
    detachRow
};

long long addressOf(const void* arguments) {
    return static_cast<long long>(reinterpret_cast<intptr_t>(arguments));
}

bool counted(InvokeRow index, const void* caller, std::vector<long long> numbers) {
    if (!isWatched(caller)) {
        return false;
    }
    called(invoke_rows[index]);
    observe(invoke_rows[index], std::move(numbers));
    const Turn turn = nextTurn(invoke_rows[index]);
    return turn == Turn::fails || turn == Turn::throws;
}

jint JNICALL getEnv(JavaVM* on, void** env, jint version) {
    if (counted(getEnvRow, __builtin_return_address(0), {version})) {
        *env = nullptr;
        return JNI_EDETACHED;
    }
    return vm_invoke.GetEnv(on, env, version);
}

jint JNICALL attach(JavaVM* on, void** env, void* arguments) {
    return counted(attachRow, __builtin_return_address(0), {addressOf(arguments)})
               ? JNI_ERR
               : vm_invoke.AttachCurrentThread(on, env, arguments);
}

jint JNICALL attachAsDaemon(JavaVM* on, void** env, void* arguments) {
    return counted(attachAsDaemonRow, __builtin_return_address(0), {addressOf(arguments)})
               ? JNI_ERR
               : vm_invoke.AttachCurrentThreadAsDaemon(on, env, arguments);
}

jint JNICALL detach(JavaVM* on) {
    return counted(detachRow, __builtin_return_address(0), {}) ? JNI_ERR
                                                               : vm_invoke.DetachCurrentThread(on);
}

Row& rowNamed(const std::string& function) {
    Row* row = findRow(function);
    if (row == nullptr) {
        report("no JNI function " + function + " is checked");
        static Row none;
        return none;
    }
    return *row;
}

} // namespace

void addRow(Row& row) {
    row.ways = &waysToFail(row.name);
    rows()[row.name] = &row;
}

Row* findRow(const std::string& name) {
    auto found = rows().find(name);
    return found == rows().end() ? nullptr : found->second;
}

bool isWatched(const void* address) {
    if (looking) {
        // There is no notification between dlopen and JNI_OnLoad, so each call looks for the
        // library until it is loaded.
        dl_iterate_phdr(&findWatched, nullptr);
    }
    auto at = reinterpret_cast<uintptr_t>(address);
    return at >= code_begin && at < code_end;
}

void report(const std::string& text) {
    if (const StrictJni::Reporter to = reporter) {
        to(text);
        return;
    }
    std::fprintf(stderr, "%s\n", text.c_str());
    std::fflush(nullptr);
    std::_Exit(70);
}

void called(Row& row) {
    // Relaxed: ordering the threads here would hide data races of the library.
    row.calls.fetch_add(1, std::memory_order_relaxed);
}

bool isObserved() {
    return observer_of_all.load() != nullptr;
}

void observe(const Row& row, std::vector<long long> numbers, const char* text) {
    if (const StrictJni::Observer* const told = observer_of_all.load()) {
        (*told)({row.name, std::move(numbers), text});
    }
}

void throwOutOfMemory(JNIEnv* env) {
    if (env != nullptr && !vm_table.ExceptionCheck(env)) {
        jclass error = vm_table.FindClass(env, "java/lang/OutOfMemoryError");
        vm_table.ThrowNew(env, error, "as if the VM had no memory left");
        vm_table.DeleteLocalRef(env, error);
    }
}

Turn turnOf(FailJni::Leaves leaves) {
    switch (leaves) {
    case FailJni::Leaves::result:
        return Turn::spoiled;
    case FailJni::Leaves::exception:
        return Turn::throws;
    default:
        return Turn::fails;
    }
}

Turn nextTurn(Row& row) {
    const int left = row.fail_after.load(std::memory_order_relaxed);
    if (left < 0) {
        return row.ways->empty() ? Turn::made : nextCounted(row);
    }
    row.fail_after = left - 1;
    return left > 0 ? Turn::made : turnOf(static_cast<FailJni::Leaves>(row.fail_leaves.load()));
}

void StrictJni::reportTo(Reporter to) {
    reporter = to;
}

ObservedJni::ObservedJni(StrictJni::Observer to) : observer(std::move(to)) {
    observer_of_all = &observer;
}

ObservedJni::~ObservedJni() {
    observer_of_all = nullptr;
}

void StrictJni::install(JavaVM* of, bool check_rules) {
    JNIEnv* env = nullptr;
    if (of->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_4) != JNI_OK) {
        std::abort();
    }
    vm = of;
    rules_checked = check_rules;
    vm_table = *env->functions;
    vm_invoke = *of->functions;

    // The VM gives every thread's environment the address of one table, which is writable memory
    // (its tool interface lets agents exchange it). Overwriting the table in place takes effect for
    // all threads.
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

bool StrictJni::isWatched(const void* address) {
    return strict_jni::isWatched(address);
}

bool StrictJni::strict() {
    return rules_checked;
}

int StrictJni::calls(const std::string& function) {
    return rowNamed(function).calls;
}

FailJni::FailJni(const std::string& name, int let_through, Leaves leaves) : function(name) {
    Row& row = rowNamed(function);
    row.fail_leaves = static_cast<int>(leaves);
    row.fail_after = let_through;
}

FailJni::~FailJni() {
    if (!fired()) {
        report("the call of " + function + " that was to fail never came");
    }
    rowNamed(function).fail_after = -1;
}

bool FailJni::fired() const {
    return rowNamed(function).fail_after < 0;
}

} // namespace strict_jni

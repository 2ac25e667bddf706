// The rules, the data that they are checked with, and how a broken one is reported.
#include "strict_jni/state.h"
#include "strict_jni/strict_jni.h"

#include <algorithm>
#include <cstring>
#include <list>
#include <map>
#include <memory>
#include <mutex>

namespace strict_jni {
namespace {

constexpr int mostLocals = 256;

struct Frame {
    bool native; ///< opened by a native method's run, not by PushLocalFrame
    std::unordered_set<jobject> made;
    std::unordered_set<jobject> arguments; ///< the VM's own: usable, but not to be deleted
};

/// What one thread has. Never freed: it may be read at the end of the process, after the thread has
/// ended.
struct Thread {
    std::vector<Frame> frames{Frame{false, {}, {}}};
    std::atomic<int> live{0};
    std::atomic<int> peak{0};
    int critical = 0;
    int memory = 0;
};

struct Id {
    bool of_class = false;
    std::string name;
    std::string signature;
    jclass declared_by = nullptr; ///< a global reference of our own
};

struct Memory {
    std::string kind;
    int times;
};

struct Shared {
    std::mutex mutex;
    std::vector<std::unique_ptr<Thread>> threads;
    std::unordered_set<jobject> globals;
    int globals_made = 0;
    int globals_deleted = 0;
    std::map<const void*, std::list<Id>> ids; ///< the VM gives fields of several classes one id
    std::map<const void*, Memory> memory;
};

Shared& shared() {
    static Shared& instance = *new Shared; // never destroyed: exit handlers still use it
    return instance;
}

Thread& thisThread() {
    thread_local Thread* mine = [] {
        auto made = std::make_unique<Thread>();
        Thread* thread = made.get();
        std::lock_guard lock(shared().mutex);
        shared().threads.push_back(std::move(made));
        return thread;
    }();
    return *mine;
}

std::atomic<int> violation_count{0};

bool isUsable(jobject reference) {
    Thread& thread = thisThread();
    for (const Frame& frame : thread.frames) {
        if (frame.made.count(reference) != 0 || frame.arguments.count(reference) != 0) {
            return true;
        }
    }
    std::lock_guard lock(shared().mutex);
    return shared().globals.count(reference) != 0;
}

/// The members that have this id. A method's is its own; a field's may be that of any field that is
/// at the same offset in another class.
std::vector<const Id*> findIds(const void* id) {
    std::vector<const Id*> found;
    std::lock_guard lock(shared().mutex);
    auto entries = shared().ids.find(id);
    if (entries != shared().ids.end()) {
        for (const Id& entry : entries->second) {
            found.push_back(&entry);
        }
    }
    return found;
}

/// The letter of the type that a method returns or a field has.
char typeLetter(const std::string& signature) {
    size_t parenthesis = signature.find(')');
    char letter = signature[parenthesis == std::string::npos ? 0 : parenthesis + 1];
    return letter == '[' ? 'L' : letter;
}

/// Why this member may not be used in this way; empty when it may.
std::string faultOfMember(const Row& row, JNIEnv* env, jobject object, jclass of, const Id& known) {
    std::string member = known.name + " " + known.signature;
    if (known.of_class != ((row.traits & staticId) != 0)) {
        return (known.of_class ? "id of a static member: " : "id of an instance member: ") + member;
    }
    if ((row.traits & constructs) != 0 && known.name != "<init>") {
        return "id is not a constructor's: " + member;
    }
    if (typeLetter(known.signature) != row.type) {
        return "member is of another type: " + member;
    }
    if ((row.traits & constructs) != 0 && !vm_table.IsSameObject(env, of, known.declared_by)) {
        return "constructor of another class: " + member;
    }
    if ((row.traits & staticId) != 0 && !vm_table.IsAssignableFrom(env, of, known.declared_by)) {
        return "member of another class: " + member;
    }
    if ((row.traits & memberId) != 0 && !vm_table.IsInstanceOf(env, object, known.declared_by)) {
        return "object of another class than the member's: " + member;
    }
    return "";
}

std::string kindOfMemory(const Row& row) {
    return row.name + std::strlen(std::strncmp(row.name, "Get", 3) == 0 ? "Get" : "Release");
}

/// Walks the arguments that `signature` names; `next` gets the letter of each one and returns true
/// to continue.
template <typename Next>
bool walk(const std::string& signature, Next next) {
    for (size_t at = 1; at < signature.size() && signature[at] != ')'; ++at) {
        char letter = signature[at];
        while (signature[at] == '[') {
            ++at;
        }
        if (signature[at] == 'L') {
            at = signature.find(';', at);
        }
        if (!next(letter == '[' ? 'L' : letter)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool broken(const char* function, const std::string& rule) {
    ++violation_count;
    report(std::string("JNI rule broken by ") + function + ": " + rule);
    return false;
}

bool mayCall(const Row& row, JNIEnv* env) {
    void* own = nullptr;
    if (vm_invoke.GetEnv(vm, &own, JNI_VERSION_1_4) != JNI_OK) {
        return broken(row.name, "called on a thread that is not attached to the VM");
    }
    if (own != env) {
        return broken(row.name, "called with the environment of another thread");
    }
    if (thisThread().critical > 0 && (row.traits & criticalAllowed) == 0) {
        return broken(row.name, "called between a critical get and its release");
    }
    if ((row.traits & pendingAllowed) == 0 && vm_table.ExceptionCheck(env)) {
        return broken(row.name, "called with an exception pending");
    }
    return true;
}

bool isKnown(const Row& row, jobject reference) {
    return reference == nullptr || isUsable(reference) ||
           broken(row.name, "reference is deleted, or of another thread, or never was");
}

bool mayUseMember(const Row& row, JNIEnv* env, jobject object, jclass of, const void* id) {
    std::vector<const Id*> known = findIds(id);
    if (known.empty()) {
        return broken(row.name, "id was never looked up");
    }
    std::string fault;
    for (const Id* member : known) {
        fault = faultOfMember(row, env, object, of, *member);
        if (fault.empty()) {
            return true;
        }
    }
    return broken(row.name, fault);
}

bool argumentsKnown(const Row& row, const void* id, va_list arguments) {
    std::vector<const Id*> known = findIds(id);
    if (known.empty()) {
        return true; // mayUseMember has reported it
    }
    // Promoted as the compiler promotes variable arguments.
    return walk(known.front()->signature, [&](char letter) {
        switch (letter) {
        case 'L':
            return isKnown(row, va_arg(arguments, jobject));
        case 'J':
            (void)va_arg(arguments, jlong);
            return true;
        case 'F':
        case 'D':
            (void)va_arg(arguments, jdouble);
            return true;
        default:
            (void)va_arg(arguments, jint);
            return true;
        }
    });
}

bool argumentsKnown(const Row& row, const void* id, const jvalue* arguments) {
    std::vector<const Id*> known = findIds(id);
    return known.empty() || walk(known.front()->signature, [&](char letter) {
               const jvalue& argument = *arguments++;
               return letter != 'L' || isKnown(row, argument.l);
           });
}

bool isClassName(const Row& row, const char* name) {
    std::string text = name;
    bool descriptor = !text.empty() && text.front() == 'L' && text.back() == ';';
    return (!text.empty() && text.find('.') == std::string::npos && !descriptor) ||
           broken(row.name, "class name is not of the form package/Class: " + text);
}

bool mayDeleteLocal(const Row& row, jobject reference) {
    const std::vector<Frame>& frames = thisThread().frames;
    if (reference == nullptr || frames.back().made.count(reference) != 0) {
        return true;
    }
    for (const Frame& frame : frames) {
        if (frame.made.count(reference) != 0) {
            return broken(row.name, "local reference belongs to an outer frame");
        }
    }
    return broken(row.name, "local reference was deleted before or never made");
}

bool mayDeleteGlobal(const Row& row, jobject reference) {
    if (reference == nullptr) {
        return true;
    }
    bool known = false;
    {
        std::lock_guard lock(shared().mutex);
        known = shared().globals.count(reference) != 0;
    }
    return known || broken(row.name, "global reference was deleted before or never made");
}

bool mayPopFrame(const Row& row) {
    const std::vector<Frame>& frames = thisThread().frames;
    return (frames.size() > 1 && !frames.back().native) || broken(row.name, "no frame was pushed");
}

bool mayRelease(const Row& row, const void* memory) {
    std::string taken_as;
    {
        std::lock_guard lock(shared().mutex);
        auto found = shared().memory.find(memory);
        if (found != shared().memory.end()) {
            taken_as = found->second.kind;
        }
    }
    if (taken_as.empty()) {
        return broken(row.name, "memory was released before or never taken");
    }
    return taken_as == kindOfMemory(row) ||
           broken(row.name, "memory was taken with Get" + taken_as);
}

void localMade(const Row& row, jobject reference) {
    Thread& thread = thisThread();
    if (reference == nullptr || !thread.frames.back().made.insert(reference).second) {
        return;
    }
    int live = ++thread.live;
    if (live > thread.peak) {
        thread.peak = live;
    }
    if (live == mostLocals + 1 && rules_checked) {
        broken(row.name, "more than 256 local references live on one thread");
    }
}

void localDeleted(jobject reference) {
    Thread& thread = thisThread();
    for (auto frame = thread.frames.rbegin(); frame != thread.frames.rend(); ++frame) {
        if (frame->made.erase(reference) != 0) {
            --thread.live;
            return;
        }
    }
}

void globalMade(jobject reference) {
    if (reference != nullptr) {
        std::lock_guard lock(shared().mutex);
        shared().globals.insert(reference);
        ++shared().globals_made;
    }
}

void globalDeleted(jobject reference) {
    std::lock_guard lock(shared().mutex);
    if (shared().globals.erase(reference) != 0) {
        ++shared().globals_deleted;
    }
}

void framePushed() {
    thisThread().frames.push_back(Frame{false, {}, {}});
}

void framePopped(const Row& row, jobject result) {
    Thread& thread = thisThread();
    if (thread.frames.size() > 1 && !thread.frames.back().native) {
        thread.live -= static_cast<int>(thread.frames.back().made.size());
        thread.frames.pop_back();
    }
    localMade(row, result);
}

void memoryTaken(const Row& row, const void* memory) {
    ++thisThread().memory;
    std::lock_guard lock(shared().mutex);
    Memory& taken = shared().memory.try_emplace(memory, Memory{kindOfMemory(row), 0}).first->second;
    ++taken.times;
}

void memoryReleased(const void* memory) {
    --thisThread().memory;
    std::lock_guard lock(shared().mutex);
    auto found = shared().memory.find(memory);
    if (found != shared().memory.end() && --found->second.times == 0) {
        shared().memory.erase(found);
    }
}

void criticalChanged(int by) {
    thisThread().critical += by;
}

void idMade(const Row& row, JNIEnv* env, jclass of, const void* id, const char* name,
            const char* signature) {
    auto declared_by = static_cast<jclass>(vm_table.NewGlobalRef(env, of));
    std::lock_guard lock(shared().mutex);
    std::list<Id>& entries = shared().ids[id];
    for (Id& entry : entries) {
        if (entry.name != name || entry.signature != signature) {
            continue;
        }
        // An inherited member has one id in all classes; the widest of them is
        // kept.
        if (vm_table.IsAssignableFrom(env, declared_by, entry.declared_by)) {
            vm_table.DeleteGlobalRef(env, declared_by);
            return;
        }
        if (vm_table.IsAssignableFrom(env, entry.declared_by, declared_by)) {
            vm_table.DeleteGlobalRef(env, entry.declared_by);
            entry.declared_by = declared_by;
            return;
        }
    }
    entries.push_back(Id{(row.traits & staticId) != 0, name, signature, declared_by});
}

NativeRun::NativeRun(const std::string& native, std::vector<jobject> arguments)
    : name(native), memory_before(thisThread().memory) {
    thisThread().frames.push_back(Frame{true, {}, {arguments.begin(), arguments.end()}});
}

void NativeRun::end(bool object, jobject result) {
    Thread& thread = thisThread();
    if (rules_checked) {
        if (!thread.frames.back().native) {
            broken(name.c_str(), "returned with a local frame still pushed");
        } else if (object && result != nullptr && !isUsable(result)) {
            broken(name.c_str(), "returned a reference that is deleted or never was");
        }
        if (thread.memory != memory_before) {
            broken(name.c_str(), "returned without releasing what it took");
        }
    }
    bool native = false;
    while (!native) {
        native = thread.frames.back().native;
        thread.live -= static_cast<int>(thread.frames.back().made.size());
        thread.frames.pop_back();
    }
}

int StrictJni::violations() {
    return violation_count;
}

int StrictJni::liveLocals() {
    std::lock_guard lock(shared().mutex);
    int live = 0;
    for (const auto& thread : shared().threads) {
        live += thread->live;
    }
    return live;
}

int StrictJni::peakLocals() {
    std::lock_guard lock(shared().mutex);
    int peak = 0;
    for (const auto& thread : shared().threads) {
        peak = std::max(peak, thread->peak.load());
    }
    return peak;
}

void StrictJni::resetPeakLocals() {
    std::lock_guard lock(shared().mutex);
    for (const auto& thread : shared().threads) {
        thread->peak = thread->live.load();
    }
}

void StrictJni::forgetLocals() {
    Thread& thread = thisThread();
    thread.frames.assign(1, Frame{false, {}, {}});
    thread.live = 0;
}

int StrictJni::globalsMade() {
    std::lock_guard lock(shared().mutex);
    return shared().globals_made;
}

int StrictJni::globalsDeleted() {
    std::lock_guard lock(shared().mutex);
    return shared().globals_deleted;
}

int StrictJni::unreleased() {
    std::lock_guard lock(shared().mutex);
    int count = 0;
    for (const auto& [memory, taken] : shared().memory) {
        count += taken.times;
    }
    return count;
}

bool isModifiedUtf8(const char* text) {
    auto at = reinterpret_cast<const unsigned char*>(text);
    auto follows = [](unsigned char byte) { return (byte & 0xC0) == 0x80; };
    while (*at != 0) {
        if (at[0] < 0x80) {
            at += 1;
        } else if ((at[0] & 0xE0) == 0xC0) {
            bool overlong = at[0] < 0xC2 && !(at[0] == 0xC0 && at[1] == 0x80);
            if (!follows(at[1]) || overlong) {
                return false;
            }
            at += 2;
        } else if ((at[0] & 0xF0) == 0xE0) {
            bool overlong = at[0] == 0xE0 && at[1] < 0xA0;
            if (!follows(at[1]) || !follows(at[2]) || overlong) {
                return false;
            }
            at += 3;
        } else {
            return false;
        }
    }
    return true;
}

} // namespace strict_jni

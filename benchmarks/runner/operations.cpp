#include "runner/operations.h"

#include "libdtv/quiet.h"
#include "runner/bridges.h"
#include "runner/checks.h"
#include "runner/java_side.h"
#include "runner/records.h"
#include "runner/technologies.h"
#include "runner/virtual_machine.h"

#include <algorithm>
#include <map>
#include <memory>

namespace bench {
namespace {

constexpr int kHandle = 1; ///< of the events on the main thread

void deliver(DtvSvLibListener& listener, const EventRecord& event, void* bytes, int count) {
    const int size = static_cast<int>(event.bytes.size());
    for (int i = 0; i < count; ++i) {
        if (listener.recvEventFromServer(event.id, bytes, size) != 0) {
            giveUp(event.name + " was not delivered");
        }
    }
}

Arrived arrivedCommands() {
    const quiet::Sends& sends = quiet::sends();
    return {static_cast<long long>(sends.count), static_cast<long long>(sends.bytes)};
}

struct CommandRowOfLoop {
    const char* name;
    const char* method; ///< of CommandLoop
};
constexpr CommandRowOfLoop kCommands[] = {
    {"SelectChannel", "selectChannel"},
    {"ControlDecodeAudio", "controlDecodeAudio"},
    {"ControlDecodeAudio_Sync", "controlDecodeAudioSync"},
    {"SetDisplay_All", "setDisplayAll"},
    {"BMLReadNvramReply", "readNvramReply"},
};

/// The loops over the commands of a technology, made once.
jobject commandLoopOf(const Technology& technology) {
    static std::map<std::string, jobject> made;
    jobject& loop = made[technology.name];
    if (loop == nullptr) {
        loop = makeCommandLoop(technology.proxy);
    }
    return loop;
}

/// Whether a technology is there; notes with the operation when it is not.
bool isThere(const Technology& technology, Operation& operation) {
    if (!technology.missing.empty()) {
        operation.missing[technology.name] = technology.missing;
    }
    return technology.missing.empty();
}

/// What one run of a variant leaves.
struct Outcome {
    long long arrived;
    long long sum;
    std::vector<unsigned char> record; ///< of the last command
    int surfaces;
    std::vector<std::string> lines;
    std::string event; ///< all fields of the Java object, for events
};

Outcome runOnce(const Operation& operation, const Variant& variant) {
    // Not the one whose lines are kept: a thread's first event has lines of its own.
    const std::string event = describeEvent([&] { variant.run(1); });
    quiet::takeLines();
    const Arrived before = operation.arrived();
    quiet::setMask(~0UL);
    variant.run(1);
    quiet::setMask(0);
    const Arrived after = operation.arrived();
    const quiet::Sends& sends = quiet::sends();
    return {after.count - before.count,
            after.sum - before.sum,
            std::vector<unsigned char>(sends.record, sends.record + sends.size),
            sends.surfaces,
            quiet::takeLines(),
            event};
}

/// The place where two texts differ.
std::string difference(const std::string& text, const std::string& expected) {
    constexpr size_t kShown = 40;
    const auto at = static_cast<size_t>(
        std::mismatch(text.begin(), text.end(), expected.begin(), expected.end()).first -
        text.begin());
    const size_t start = at > kShown ? at - kShown : 0;
    return "\"" + text.substr(start, 2 * kShown) + "\" in place of \"" +
           expected.substr(start, 2 * kShown) + "\"";
}

/// Names the first line that differs.
void compareLines(const std::string& what, const std::vector<std::string>& expected,
                  const std::vector<std::string>& lines) {
    const auto [ours, theirs] =
        std::mismatch(lines.begin(), lines.end(), expected.begin(), expected.end());
    const auto quoted = [](auto at, auto end) { return at == end ? "no line" : "\"" + *at + "\""; };
    require(lines == expected, what + ": " + quoted(ours, lines.end()) + ", where the bridge has " +
                                   quoted(theirs, expected.end()));
}

} // namespace

std::vector<Operation> eventOperations() {
    std::vector<Operation> all;
    for (const EventRecord& record : eventRecords(kHandle)) {
        Operation operation = {record.name, "events", {}, arrivedEvents, {}};
        const auto event = std::make_shared<EventRecord>(record);
        for (const Bridge& bridge : bridges()) {
            // A look-up is a matter of commands alone.
            if (!bridge.looks_up) {
                operation.variants.push_back(
                    {bridge.name, [event, listener = bridge.listener](int count) {
                         deliver(*listener, *event, event->bytes.data(), count);
                     }});
            }
        }
        for (const Technology& technology : technologies()) {
            if (isThere(technology, operation)) {
                operation.variants.push_back(
                    {technology.name, [event, on_event = technology.on_event](int count) {
                         for (int i = 0; i < count; ++i) {
                             on_event(event->id, event->bytes.data(),
                                      static_cast<int>(event->bytes.size()));
                         }
                     }});
            }
        }
        all.push_back(operation);
    }
    return all;
}

std::vector<Operation> commandOperations() {
    std::vector<Operation> all;
    for (const CommandRowOfLoop& row : kCommands) {
        Operation operation = {row.name, "commands", {}, arrivedCommands, {}};
        for (const Bridge& bridge : bridges()) {
            operation.variants.push_back(loopVariant(bridge.name, bridge.loop, row.method));
        }
        for (const Technology& technology : technologies()) {
            if (isThere(technology, operation)) {
                operation.variants.push_back(
                    loopVariant(technology.name, commandLoopOf(technology), row.method));
            }
        }
        all.push_back(operation);
    }
    return all;
}

std::vector<Operation> callOperations() {
    Operation calls = {"call of C", "calls", {loopVariant("jni", jniCallLoop(), "sum")}, {}, {}};
    Operation callbacks = {"callback of Java", "calls", {}, arrivedEvents, {}};
    const jclass counting = findClass("tenrik/bench/CountingListener");
    const jmethodID on_ints = findStaticMethod(counting, "onInts", "(II)V");
    callbacks.variants.push_back({"jni", [counting, on_ints](int count) {
                                      for (int i = 0; i < count; ++i) {
                                          env()->CallStaticVoidMethod(counting, on_ints, kHandle,
                                                                      1);
                                      }
                                  }});
    for (const Technology& technology : technologies()) {
        if (isThere(technology, calls) && isThere(technology, callbacks)) {
            calls.variants.push_back(loopVariant(technology.name, technology.call_loop, "sum"));
            callbacks.variants.push_back({technology.name, [&technology](int count) {
                                              for (int i = 0; i < count; ++i) {
                                                  technology.on_ints(kHandle, 1);
                                              }
                                          }});
        }
    }
    return {calls, callbacks};
}

void checkVariants(const Operation& operation) {
    Outcome expected;
    for (const Variant& variant : operation.variants) {
        const std::string what = operation.name + ", " + variant.name;
        const Outcome outcome = runOnce(operation, variant);
        require(outcome.arrived == 1, what + ": it did not arrive");
        if (variant.name == "bridge") {
            expected = outcome;
            require(!outcome.lines.empty(), what + ": it writes no lines");
            require(outcome.event.empty() == (operation.group != "events"),
                    what + ": no event has reached Java");
            continue;
        }
        require(outcome.sum == expected.sum, what + ": another content than the bridge's");
        require(outcome.event == expected.event, what + ": another Java event than the bridge's, " +
                                                     difference(outcome.event, expected.event));
        require(outcome.record == expected.record, what + ": another record than the bridge's");
        require(outcome.surfaces == expected.surfaces,
                what + ": another number of surfaces than the bridge's");
        const bool writes_lines = variant.name.compare(0, 5, "floor") == 0;
        compareLines(what, writes_lines ? expected.lines : std::vector<std::string>(),
                     outcome.lines);
    }
}

} // namespace bench

#include "runner/operations.h"

#include "libdtv/quiet.h"
#include "runner/bridges.h"
#include "runner/checks.h"
#include "runner/records.h"
#include "runner/virtual_machine.h"

#include <algorithm>
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

void call(const Bridge& bridge, const char* name, jmethodID method, int count) {
    const jint answered = env()->CallIntMethod(bridge.loop, method, count);
    requireNoException(name);
    if (answered != count) {
        giveUp(bridge.name + ": " + name + " was not answered as it should be");
    }
}

/// What one run of a variant leaves.
struct Outcome {
    long long arrived;
    long long sum;
    std::vector<unsigned char> record; ///< of the last command
    int surfaces;
    std::vector<std::string> lines;
};

Outcome runOnce(const Operation& operation, const Variant& variant) {
    variant.run(1); // a thread's first event has lines of its own
    quiet::takeLines();
    const Arrived before = operation.arrived();
    quiet::setMask(~0UL);
    variant.run(1);
    quiet::setMask(0);
    const Arrived after = operation.arrived();
    const quiet::Sends& sends = quiet::sends();
    return {after.count - before.count, after.sum - before.sum,
            std::vector<unsigned char>(sends.record, sends.record + sends.size), sends.surfaces,
            quiet::takeLines()};
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
        Operation operation = {record.name, "events", {}, [] {
                                   const Counted counted = countedEvents();
                                   return Arrived{counted.events, counted.sum};
                               }};
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
        all.push_back(operation);
    }
    return all;
}

std::vector<Operation> commandOperations() {
    std::vector<Operation> all;
    for (const CommandRowOfLoop& row : kCommands) {
        Operation operation = {row.name, "commands", {}, [] {
                                   const quiet::Sends& sends = quiet::sends();
                                   return Arrived{static_cast<long long>(sends.count),
                                                  static_cast<long long>(sends.bytes)};
                               }};
        for (const Bridge& bridge : bridges()) {
            const jmethodID method =
                findMethod(env()->GetObjectClass(bridge.loop), row.method, "(I)I");
            operation.variants.push_back({bridge.name, [&bridge, &row, method](int count) {
                                              call(bridge, row.name, method, count);
                                          }});
        }
        all.push_back(operation);
    }
    return all;
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
            continue;
        }
        require(outcome.sum == expected.sum, what + ": another content than the bridge's");
        require(outcome.record == expected.record, what + ": another record than the bridge's");
        require(outcome.surfaces == expected.surfaces,
                what + ": another number of surfaces than the bridge's");
        const bool writes_lines = variant.name.compare(0, 5, "floor") == 0;
        compareLines(what, writes_lines ? expected.lines : std::vector<std::string>(),
                     outcome.lines);
    }
}

} // namespace bench

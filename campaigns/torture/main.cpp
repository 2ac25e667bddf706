// Every call of the bridge is made to fail: each native method, each event, the load.
#include "events.h"
#include "load.h"
#include "natives.h"
#include "rounds.h"
#include "witness.h"
#include "workers.h"

#include "harness/harness.h"

#include <algorithm>
#include <random>

namespace {

using namespace torture;

constexpr const char* native_note = "natives and their shapes";
constexpr const char* event_note = "events, their shapes and threads";
constexpr const char* call_note = "calls that can fail, of natives and events";
constexpr const char* load_note = "calls that can fail, of the load and the first event";

/// Plays all rounds of the operations: first those in which one thing fails.
void playAll(Worker& worker, const std::vector<std::unique_ptr<Operation>>& all,
             const std::string& note) {
    uint64_t points = 0;
    std::vector<Operation*> sound;
    for (const auto& operation : all) {
        const std::string wrong = takeBaseline(*operation);
        if (!wrong.empty()) {
            worker.found(operation->name() + "/baseline", wrong);
            continue;
        }
        points += operation->baseline.calls.size();
        sound.push_back(operation.get());
    }
    worker.note(note, points);
    for (auto rounds : {singleRounds, compoundRounds}) {
        for (Operation* operation : sound) {
            if (!worker.hasTime()) {
                return;
            }
            // In an order of the seed's, so that a run that ends early has played some of each
            // part.
            std::vector<Round> ordered = rounds(*operation);
            std::mt19937_64 random = worker.random(operation->name());
            std::shuffle(ordered.begin(), ordered.end(), random);
            for (const Round& round : ordered) {
                if (worker.takes(round.name)) {
                    worker.played(round.kind, play(round));
                }
            }
        }
    }
}

/// Plays the rounds of natives and events, in a process that loads the bridge as Java does.
void playCommandsAndEvents(Worker& worker) {
    Witness& witness = Witness::instance();
    const std::string refused = harness::Product::load();
    if (!refused.empty()) {
        worker.found("start", "the bridge cannot be loaded: " + refused);
        return;
    }
    std::vector<std::unique_ptr<Operation>> all = nativeOperations();
    const size_t natives = all.size();
    for (auto& event : eventOperations()) {
        all.push_back(std::move(event));
    }
    witness.takeFaults();
    worker.note(native_note, natives);
    worker.note(event_note, all.size() - natives);
    playAll(worker, all, call_note);
}

/// Plays the rounds of the load and of the first event, in a process that loads the library again
/// and again. Java loads it last.
void playLoads(Worker& worker) {
    Witness::instance();
    std::vector<std::unique_ptr<Operation>> all = loadOperations();
    playAll(worker, all, load_note);
    for (const auto& [round, wrong] :
         playRefusedLoads([&](const std::string& name) { worker.begins(name); })) {
        if (worker.takes(round, true)) {
            worker.played(Kind::systemLoad, wrong);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    campaigns::Run run(argc, argv);
    std::map<std::string, uint64_t> notes;
    inWorkers(run, 0.6, playCommandsAndEvents, notes);
    inWorkers(run, 1.0, playLoads, notes);
    const auto note = [&](const std::string& name) {
        run.note(name, static_cast<double>(notes[name]));
    };
    note(native_note);
    note(event_note);
    note(call_note);
    note(load_note);
    for (size_t kind = 0; kind < static_cast<size_t>(Kind::count); ++kind) {
        note(std::string("rounds: ") + describe(static_cast<Kind>(kind)));
    }
    run.leftOut(
        "calls that cannot fail in a VM when the bridge keeps their rules: reads of ints and "
        "lengths, copies within an array's bounds, releases and deletions");
    run.leftOut("three and more separate failures in one round, but for all calls from one on");
    run.leftOut("a load without memory for the listener whose natives cannot be unregistered: they "
                "stay bound to a library that the VM unloads");
    run.leftOut("allocations inside the C library, the C++ library and the platform's libraries");
    return run.end();
}

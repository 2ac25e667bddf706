// Every call of the bridge is made to fail: each native method, each event, the load.
#include "events.h"
#include "load.h"
#include "natives.h"
#include "rounds.h"
#include "witness.h"
#include "workers.h"

#include "harness/harness.h"

namespace {

using namespace torture;

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
            for (const Round& round : rounds(*operation)) {
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
    worker.note("natives and their shapes", natives);
    worker.note("events, their shapes and threads", all.size() - natives);
    playAll(worker, all, "calls that can fail, of natives and events");
}

/// Plays the rounds of the load and of the first event, in a process that loads the library again
/// and again. Java loads it last.
void playLoads(Worker& worker) {
    Witness::instance();
    std::vector<std::unique_ptr<Operation>> all = loadOperations();
    playAll(worker, all, "calls that can fail, of the load and the first event");
    for (const auto& [round, wrong] : playRefusedLoads()) {
        if (worker.takes(round)) {
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
    for (const auto& [name, value] : notes) {
        run.note(name, static_cast<double>(value));
    }
    return run.end();
}

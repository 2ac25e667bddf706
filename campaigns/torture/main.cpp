// Every call of the bridge is made to fail: each native method, each event, the load.
#include "events.h"
#include "natives.h"
#include "rounds.h"
#include "witness.h"
#include "workers.h"

#include "harness/harness.h"

namespace {

using namespace torture;

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
    uint64_t points = 0;
    std::vector<Operation*> sound;
    for (auto& operation : all) {
        const std::string wrong = takeBaseline(*operation);
        if (!wrong.empty()) {
            worker.found(operation->name() + "/baseline", wrong);
            continue;
        }
        points += operation->baseline.calls.size();
        sound.push_back(operation.get());
    }
    worker.note("natives and their shapes", natives);
    worker.note("events, their shapes and threads", all.size() - natives);
    worker.note("calls that can fail, of natives and events", points);
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

} // namespace

int main(int argc, char** argv) {
    campaigns::Run run(argc, argv);
    std::map<std::string, uint64_t> notes;
    inWorkers(run, 1.0, playCommandsAndEvents, notes);
    for (const auto& [name, value] : notes) {
        run.note(name, static_cast<double>(value));
    }
    return run.end();
}

// The processes that play the rounds, each with a VM of its own: a round that ends its process is a
// finding, and another process goes on after it.
#pragma once

#include "rounds.h"
#include "rounds/run.h"

#include <functional>
#include <map>

namespace torture {

/// What a worker is given, and what it gives back.
class Worker {
public:
    /// Whether the next round is this worker's, and wanted. To be asked once for each round, in the
    /// same order in every process. `always`: also when the time is over.
    bool takes(const std::string& round, bool always = false);
    /// A round is played before it is asked for: a process that ends now ends in it.
    void begins(const std::string& round);
    /// The round that was taken has been played.
    void played(Kind kind, const std::string& wrong);
    /// Something is wrong that is no round.
    void found(const std::string& round, const std::string& wrong);
    /// A figure that is the same in all workers.
    void note(const std::string& name, uint64_t value);
    bool hasTime() const;
    /// Random numbers for one purpose: the same for the same seed and name.
    std::mt19937_64 random(const std::string& name) const { return run->random(name); }

private:
    friend class Workers;
    struct Shared;
    const campaigns::Run* run = nullptr;
    double until = 0;
    uint64_t jobs = 1;
    uint64_t index = 0;   ///< of this worker among them
    uint64_t counter = 0; ///< rounds that were asked for
    uint64_t first = 0;   ///< rounds before it are another process's
    Shared* shared = nullptr;
    int reports = -1;
};

/// Runs `work` in as many processes as the run may use, until the share of the time is over. The
/// work makes its VM itself.
void inWorkers(campaigns::Run& run, double share_of_time, const std::function<void(Worker&)>& work,
               std::map<std::string, uint64_t>& notes);

} // namespace torture

// Hostile arguments: every native with what no caller should give it, and what comes of it held
// against what is promised.
#include "arguments/caller.h"
#include "arguments/plan.h"

#include "rounds/job.h"
#include "rounds/run.h"

#include "harness/harness.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace hostile;

/// Rounds at random of a run that has no time limit.
constexpr uint64_t kRandomRounds = 2'000'000;
constexpr int kMostFindingsOfJob = 5;

/// What a process that calls shares with the one that started it.
struct Progress : campaigns::Progress {
    std::atomic<uint64_t> next; ///< the number of the round that is played, or comes next
    std::atomic<uint64_t> sent;
    char name[200]; ///< of the round that is played
};

[[noreturn]] void giveUp(const std::string& why) {
    std::fprintf(stderr, "arguments: %s\n", why.c_str());
    std::_Exit(71);
}

/// The Java VM and the bridge of this process.
std::unique_ptr<Caller> prepare() {
    setenv("DTV_TEST_VM_OPTIONS", "-XX:+ErrorFileToStderr", 0);
    // The lines of errors go to standard output.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        giveUp("/dev/null");
    }
    harness::VirtualMachine::instance();
    return std::make_unique<Caller>();
}

/// Plays every `step`th round from the next one on. Does not return.
void playRounds(const campaigns::Run& run, const Plan& plan, Progress& progress, uint64_t step,
                uint64_t end) {
    const std::unique_ptr<Caller> caller = prepare();
    progress.keepTime();
    while (!progress.stop && progress.next < end) {
        const std::string name = plan.name(progress.next);
        std::snprintf(progress.name, sizeof progress.name, "%s", name.c_str());
        Round round;
        if (!plan.make(run, name, round)) {
            giveUp("no round " + name);
        }
        const std::string wrong = caller->play(round);
        progress.sent = caller->sent();
        ++progress.rounds;
        if (!wrong.empty()) {
            progress.keepWrong(wrong.c_str());
            _exit(campaigns::kFound);
        }
        progress.next += step;
        if (progress.rounds % 256 == 0) {
            progress.keepTime();
        }
    }
    progress.keepTime();
    _exit(0);
}

Progress* newProgress() {
    return static_cast<Progress*>(campaigns::sharedMemory(sizeof(Progress)));
}

std::string logFile(const std::string& name) {
    return std::string(DTV_ARGUMENTS_WORK) + "/" + name + ".log";
}

/// One processor's rounds, in one process after the other.
class Place {
public:
    Place(const campaigns::Run& run, const Plan& plan, uint64_t number, uint64_t end)
        : run_(run), plan_(plan), number_(number), end_(end) {
        start(number);
    }

    /// Whether it has to be asked again.
    bool plays(campaigns::Run& run) {
        if (job_->runs()) {
            return true;
        }
        const std::string wrong = job_->wrong();
        rounds_ += progress_->rounds;
        sent_ += progress_->sent;
        seconds_ += static_cast<double>(progress_->played) / 1e9;
        if (wrong.empty()) {
            return false;
        }
        run.played(progress_->name, wrong);
        ++findings_;
        if (findings_ == kMostFindingsOfJob || !run.hasTime()) {
            return false;
        }
        start(progress_->next + static_cast<uint64_t>(run.jobs()));
        return true;
    }

    void stop() { progress_->stop = true; }
    uint64_t rounds() const { return rounds_; }
    uint64_t sent() const { return sent_; }
    /// Of processor time.
    double seconds() const { return seconds_; }

private:
    void start(uint64_t next) {
        progress_ = newProgress();
        progress_->next = next;
        Progress* const progress = progress_;
        job_ = std::make_unique<campaigns::Job>(
            *progress, logFile("job-" + std::to_string(number_)), [this, progress] {
                playRounds(run_, plan_, *progress, static_cast<uint64_t>(run_.jobs()), end_);
            });
    }

    const campaigns::Run& run_;
    const Plan& plan_;
    const uint64_t number_;
    const uint64_t end_;
    Progress* progress_ = nullptr;
    std::unique_ptr<campaigns::Job> job_;
    uint64_t rounds_ = 0;
    uint64_t sent_ = 0;
    double seconds_ = 0;
    int findings_ = 0;
};

void play(campaigns::Run& run, const Plan& plan) {
    const auto jobs = static_cast<uint64_t>(run.jobs());
    const uint64_t systematic = plan.singles() + plan.pairs();
    const uint64_t end = run.seconds() > 0 ? UINT64_MAX : systematic + kRandomRounds;
    std::vector<std::unique_ptr<Place>> places;
    for (uint64_t i = 0; i < jobs; ++i) {
        places.push_back(std::make_unique<Place>(run, plan, i, end));
    }
    std::vector<bool> playing(places.size(), true);
    for (size_t left = places.size(); left != 0;) {
        usleep(20'000);
        for (size_t i = 0; i < places.size(); ++i) {
            if (!playing[i]) {
                continue;
            }
            if (!run.hasTime()) {
                places[i]->stop();
            }
            if (!places[i]->plays(run)) {
                playing[i] = false;
                --left;
            }
        }
    }
    double seconds = 0;
    uint64_t rounds = 0;
    uint64_t sent = 0;
    for (const auto& place : places) {
        rounds += place->rounds();
        sent += place->sent();
        seconds += place->seconds();
    }
    const auto found = static_cast<uint64_t>(run.findings());
    run.played(rounds - std::min(rounds, found));
    run.note("natives", static_cast<double>(natives().size()));
    run.note("calls of one hostile part, in all", static_cast<double>(plan.singles()));
    run.note("calls of two hostile parts, in all", static_cast<double>(plan.pairs()));
    run.note("sent, within the limits", static_cast<double>(sent));
    run.note("calls a second of processor time",
             seconds > 0 ? std::round(static_cast<double>(rounds) / seconds) : 0);
    run.note("processes", static_cast<double>(jobs));
}

void repeat(campaigns::Run& run, const Plan& plan) {
    Round round;
    if (!plan.make(run, run.repeated(), round)) {
        return;
    }
    std::printf("%s\n", described(round).c_str());
    Progress* const progress = newProgress();
    campaigns::Job job(*progress, logFile("repeat"), [&] {
        const std::unique_ptr<Caller> caller = prepare();
        const std::string wrong = caller->play(round);
        progress->keepWrong(wrong.c_str());
        _exit(wrong.empty() ? 0 : campaigns::kFound);
    });
    while (job.runs()) {
        usleep(10'000);
    }
    run.played(run.repeated(), job.wrong());
}

} // namespace

int main(int argc, char** argv) {
    campaigns::Run run(argc, argv);
    const Plan plan;
    if (run.repeated().empty()) {
        play(run, plan);
    } else {
        repeat(run, plan);
    }
    run.leftOut("Natives that are called by several threads at a time.");
    run.leftOut(
        "Objects of java.lang.String and android.view.Surface that are of another class than "
        "their fields' types.");
    run.leftOut("Surfaces whose address is no native surface's.");
    return run.end();
}

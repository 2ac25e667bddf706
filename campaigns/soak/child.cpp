#include "soak/child.h"

#include "dtv/exchange.h"
#include "soak/machine.h"
#include "soak/resources.h"
#include "soak/service.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace soak {
namespace {

constexpr int kStages = 10;
constexpr int kSendingThreads = 8;
constexpr int kDeliveryThreads = 20;
constexpr uint64_t kRoundTrips = 10'000'000;
/// A stage without a time of its own ends with its commands.
constexpr double kNoLimit = 1e6;
/// A round whose finding is about all points: all stages have to be played to see it.
const std::string kPoints = "points";

#ifdef SOAK_THREAD_SANITIZER
/// It keeps memory of its own for each address that was used.
constexpr bool kLookAtMemory = false;
/// As long as a run without a time is in this build.
constexpr double kFullSeconds = 600;
#else
constexpr bool kLookAtMemory = true;
constexpr double kFullSeconds = 0;
#endif

struct Soak {
    explicit Soak(campaigns::Run& of_run) : run(of_run) {}

    campaigns::Run& run;
    NumberingService service;
    Machine machine;
    std::vector<Resources> points;
    uint64_t counted = 0;

    bool isWanted(const std::string& name) const {
        return run.repeated().empty() || run.repeated() == kPoints || run.repeated() == name;
    }

    double secondsFor(int stage) const {
        const double whole = run.seconds() > 0 ? run.seconds() : kFullSeconds;
        if (whole <= 0) {
            return kNoLimit;
        }
        // A stage that is repeated alone takes as long as it took.
        const double left = run.repeated().empty() ? whole - run.elapsed() : whole;
        const double share =
            run.repeated().empty() ? left / (kStages + 1 - stage) : whole / kStages;
        return share > 0.1 ? share : 0.1;
    }

    /// What was wrong with a stage, or empty.
    std::string play(int stage) {
        // A thread leaves the last place of a count to nobody: each sends its part, rounded up.
        const bool timed = secondsFor(stage) < kNoLimit;
        const uint64_t commands =
            timed ? UINT64_MAX >> 1
                  : (kRoundTrips / kStages + kSendingThreads - 1) / kSendingThreads;
        const uint64_t seed = run.random("stage-" + std::to_string(stage))();
        std::string wrong = machine.stage(seed, commands, secondsFor(stage));
        if (!dtv::waitUntilDelivered(std::chrono::seconds(60))) {
            wrong += "\nevents were never delivered";
        }
        const auto sent = static_cast<int64_t>(service.otherEvents());
        const int64_t came = machine.number("otherEvents");
        if (wrong.empty() && sent != came) {
            wrong = "of " + std::to_string(sent) + " events that are no answers " +
                    std::to_string(came) + " came";
        }
        return wrong;
    }

    void count() {
        const auto now = static_cast<uint64_t>(machine.number("roundTrips"));
        run.played(now - counted);
        counted = now;
    }

    void notes(double seconds) {
        const auto synchronous = static_cast<double>(machine.number("synchronous"));
        run.note("sending Java threads", kSendingThreads);
        run.note("delivery threads that events came on",
                 static_cast<double>(machine.number("deliveryThreads")));
        run.note("round trips a second",
                 static_cast<double>(static_cast<int64_t>(static_cast<double>(counted) / seconds)));
        run.note("answers before the command returned", synchronous);
        run.note("further events", static_cast<double>(machine.number("otherEvents")));
        if (points.empty()) {
            return;
        }
        const auto fromTo = [this](auto value) {
            return std::to_string(value(points.front())) + ", " +
                   std::to_string(value(points.back()));
        };
        if (kLookAtMemory) {
            run.note("resident memory, first and last point, KiB",
                     fromTo([](const Resources& at) { return at.resident >> 10; }));
        }
        run.note("Java heap in use, KiB",
                 fromTo([](const Resources& at) { return at.java_heap >> 10; }));
        run.note("global references in the VM",
                 fromTo([](const Resources& at) { return at.vm_references; }));
        run.note("live local references of the bridge",
                 fromTo([](const Resources& at) { return at.bridge_locals; }));
        run.note("descriptors", fromTo([](const Resources& at) { return at.descriptors; }));
        run.note("threads", fromTo([](const Resources& at) { return at.threads; }));
    }
};

void sayWhatIsLeftOut(campaigns::Run& run) {
    run.leftOut("Create and SetSoundVideoDelay are not called on several threads at a time: Java "
                "calls them one after the other.");
    run.leftOut("The round trips use the commands that a session without reception answers; scans "
                "and receptions come between them on one thread.");
    if (!kLookAtMemory) {
        run.leftOut("The resident memory is not looked at under the thread sanitizer, which keeps "
                    "memory of its own.");
    }
}

} // namespace

int playStages(campaigns::Run& run) {
    Soak soak(run);
    dtv::setLogLevelMask(0);
    dtv::setDeliveryThreads(kDeliveryThreads);
    std::string wrong =
        soak.machine.open(kSendingThreads, soak.service.empty(), soak.service.occupied());
    if (!wrong.empty()) {
        run.played("open", wrong);
        return run.end();
    }
    soak.machine.number("references"); // its first use loads classes
    const double begun = run.elapsed();
    double playing = 0;
    for (int stage = 1; stage <= kStages && wrong.empty(); ++stage) {
        const std::string name = "stage-" + std::to_string(stage);
        if (!soak.isWanted(name)) {
            continue;
        }
        std::printf("round %s\n", name.c_str());
        std::fflush(stdout);
        const double began = run.elapsed();
        wrong = soak.play(stage);
        playing += run.elapsed() - began;
        soak.count();
        if (!wrong.empty()) {
            run.played(name, wrong);
        }
        soak.points.push_back(measure(soak.machine));
        std::printf("%s\n", lineOf(soak.points.back()).c_str());
        std::fflush(stdout);
    }
    if (wrong.empty()) {
        wrong = whatGrew(soak.points, kLookAtMemory);
        if (!wrong.empty()) {
            run.played(kPoints, wrong);
        }
    }
    std::printf("%.1f s, %.1f s of them between the points\n", run.elapsed() - begun,
                run.elapsed() - begun - playing);
    soak.notes(playing);
    sayWhatIsLeftOut(run);
    const int status = run.end();
    soak.service.disconnect();
    dtv::stopDelivery();
    return status;
}

} // namespace soak

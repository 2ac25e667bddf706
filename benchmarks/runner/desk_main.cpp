// dtv-bench-desk: measures what the desk's own libDtv and the simulated service add to the bridge,
// and prints every figure as JSON. ./bench starts it, with DTV_LOG_FILE set.
#include "dtv/exchange.h"
#include "entry/trace.h"
#include "runner/checks.h"
#include "runner/java_side.h"
#include "runner/json.h"
#include "runner/options.h"
#include "runner/records.h"
#include "runner/rounds.h"
#include "runner/virtual_machine.h"
#include "simulator.h"

#include <chrono>
#include <cstdlib>
#include <memory>

namespace {

using bench::Operation;
using bench::Plan;
using bench::Variant;

// Lines are written to a file in this run: it is shorter, so that the file stays small.
constexpr Plan kWholeRun = {11, 8, 100};
/// Enough to run everything, and too short for figures.
constexpr Plan kCheckRun = {3, 1, 5};

constexpr unsigned long kAllLevels = ~0UL;
constexpr unsigned long kErrorsAlone = 2;
constexpr std::chrono::seconds kLimit{60};

constexpr int kSession = 1;

bench::EventRecord& reply() {
    static bench::EventRecord record = bench::eventRecords(kSession).front();
    return record;
}

/// A line of the bridge, with the values of an event.
void writeLines(int count) {
    for (int i = 0; i < count; ++i) {
        TRACE_LISTENER(trace::kFuncStart, "recvEventFromServer",
                       "pid = %d, threadid = %x, event_id = %x, recv_size = %d", 4711, 0x7f1234u,
                       static_cast<unsigned>(reply().id), i);
    }
}

void deliverEvents(int count) {
    for (int i = 0; i < count; ++i) {
        if (dtv::deliverEvent(reply().id, reply().bytes.data(),
                              static_cast<int>(reply().bytes.size())) != 0) {
            bench::giveUp("an event was not delivered");
        }
    }
}

void postEvents(int count) {
    for (int i = 0; i < count; ++i) {
        if (!dtv::postEvent(reply().id, reply().bytes.data(),
                            static_cast<int>(reply().bytes.size()))) {
            bench::giveUp("an event was not taken");
        }
    }
    if (!dtv::waitUntilDelivered(kLimit)) {
        bench::giveUp("the events were not delivered in a minute");
    }
}

/// The simulated service. Its time passes when it is advanced.
simulator::Simulator& service() {
    static const std::shared_ptr<simulator::Simulator> only = [] {
        simulator::Options options;
        options.pace = simulator::Pace::kStepped;
        auto made = std::make_shared<simulator::Simulator>(std::move(options));
        dtv::setServiceEndpoint(made);
        return made;
    }();
    return *only;
}

/// A command of Java's, and its reply event in Java.
class RoundTrips {
public:
    RoundTrips()
        : command_(bench::loopVariant("bridge",
                                      bench::makeCommandLoop(bench::makeProxy("bridgeProxy")),
                                      "controlDecodeAudio")) {
        const jobject proxy = bench::makeProxy("bridgeProxy");
        const jmethodID create =
            bench::findMethod(bench::env()->GetObjectClass(proxy), "DtvSvLib_Create",
                              "(II)Ltenrik/service/dtvserver/type/BG_TE_DTVSVLIB_RESULT;");
        service();
        bench::env()->CallObjectMethod(proxy, create, 0, 0);
        bench::requireNoException("DtvSvLib_Create");
        answerAll();
    }

    void run(int count) const {
        for (int i = 0; i < count; ++i) {
            command_.run(1);
            answerAll();
        }
    }

private:
    /// Lets time pass until the service has nothing more to do.
    static void answerAll() {
        while (service().advance()) {
        }
    }

    Variant command_;
};

/// The same with the lines filtered by libDtv, and written to its file.
template <typename Work>
Operation withLog(const char* name, double (*clock)(), const Work& work) {
    const auto under = [&work](unsigned long mask) {
        return [&work, mask](int count) {
            dtv::setLogLevelMask(mask);
            work(count);
            dtv::setLogLevelMask(kErrorsAlone);
        };
    };
    return {name,
            "desk",
            {{"filtered", under(kErrorsAlone)}, {"written", under(kAllLevels)}},
            bench::arrivedEvents,
            {},
            clock};
}

} // namespace

int main(int argc, char** argv) {
    const bench::Options options = bench::parseOptions(argc, argv);
    bench::startVm({"-Djava.class.path=" + options.class_path});
    bench::loadBridge(options.library);
    bench::installCounting();
    // Commands that no event answers, until the service is there.
    static const RoundTrips round_trips;
    const auto roundTrip = [](int count) { round_trips.run(count); };

    Operation lines = withLog("log line, CPU", bench::threadTime, writeLines);
    lines.arrived = nullptr;
    const Operation operations[] = {
        lines,
        withLog("event delivered, CPU", bench::threadTime, deliverEvents),
        withLog("event posted, CPU", bench::processTime, postEvents),
        withLog("event posted, wall", bench::wallTime, postEvents),
        withLog("round trip, CPU", bench::processTime, roundTrip),
        withLog("round trip, wall", bench::wallTime, roundTrip),
    };
    bench::JsonResults results;
    for (const Operation& operation : operations) {
        std::fprintf(stderr, "%s\n", operation.name.c_str());
        results.add(bench::measure(operation, options.check ? kCheckRun : kWholeRun));
    }
    const bool is_written = results.end();
    std::_Exit(bench::failedChecks() == 0 && is_written ? 0 : 1);
}

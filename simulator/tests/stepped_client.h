// A client of the simulator in stepped time: events come at moments that are known to the
// millisecond.
#pragma once

#include "desk_client.h"

#include <memory>
#include <string>
#include <vector>

/// An event and when it came, in milliseconds of the service's clock.
struct TimedEvent {
    int64_t moment;
    Event event;
};

/// The simulator of SimulatorTest in stepped time, as fast as in reality.
class SteppedTest : public SimulatorTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Connects a simulator to libDtv that follows the script of this text.
    void follow(const std::string& script, uint32_t seed = 0);
    /// Connects a simulator with these options to libDtv, but in stepped time.
    void follow(simulator::Options options);

    int64_t now() const { return service_->now().count(); }
    simulator::Simulator& service() { return *service_; }

    /// Lets time pass until the next event of this kind; others before it are dropped. A failure
    /// when none comes within two hours.
    TimedEvent await(int event_id);
    /// The result of the next event of this kind.
    int awaitResult(int event_id);
    /// Lets time pass until something is to be done at `moment` or later and has been done; what
    /// came meanwhile.
    std::vector<TimedEvent> until(int64_t moment);

    /// Sends a synchronous command; returns what sendEventToServer returned.
    template <class Reply, class Record>
    int exchangeInto(Reply& reply, int command_id, Record record) {
        int size = 0;
        return listener().sendEventToServer(command_id, &record, sizeof record, &reply, &size);
    }
    int exchangeResult(int command_id, int handle);

    /// A new session. Takes 60 ms.
    int openSession();
    /// A new session that receives channel 20. Takes 185 ms.
    int openReceiving();

private:
    void collect(std::vector<TimedEvent>& events);

    std::shared_ptr<simulator::Simulator> service_;
    std::vector<TimedEvent> arrived_; ///< and not yet taken
};

/// How many of the events are of this kind.
size_t countOf(const std::vector<TimedEvent>& events, int event_id);

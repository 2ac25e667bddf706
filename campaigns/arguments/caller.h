// Plays one round: makes the call, and says what was wrong with what came of it.
#pragma once

#include "arguments/java_side.h"
#include "arguments/model.h"
#include "arguments/round.h"

#include "harness/service_double.h"

#include <memory>
#include <string>
#include <vector>

namespace hostile {

class Caller {
public:
    Caller();

    /// What is wrong; empty when nothing is.
    std::string play(const Round& round);

    uint64_t sent() const { return sent_; }

private:
    std::string playOne(const Round& round);
    std::string compare(const Round& round, const Expected& expected, const std::string& answer);
    void addLeftBehind(std::vector<std::string>& wrong);
    std::string checkBound();
    std::string createWithBound(int bound);

    JavaSide java_;
    std::shared_ptr<harness::ServiceDouble> service_;
    int delay_bound_ = 0; ///< as the bridge is to have it
    int open_frames_ = 0;
    uint64_t sent_ = 0;
};

/// The round's arguments in words.
std::string described(const Round& round);

} // namespace hostile

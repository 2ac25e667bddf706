// One run of a part of a campaign: what it was asked to do, what it counted, what it found. Every
// part takes the same options and leaves the same report, whatever it tests.
//
//     int main(int argc, char** argv) {
//         campaigns::Run run(argc, argv);
//         for (const Case& each : cases()) {
//             if (run.wants(each.name)) {            // "SelectChannel/NewObject/3/once"
//                 std::string wrong = play(each);
//                 run.played(each.name, wrong);      // counts it; a text is a finding
//             }
//         }
//         run.note("natives", 65);
//         return run.end();
//     }
#pragma once

#include <chrono>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace campaigns {

/// Options: --seed N, --seconds S, --jobs N, --repeat ROUND, --report FILE. A wrong one ends the
/// process with status 2 and one line on standard error.
class Run {
public:
    Run(int argc, char** argv);

    /// Every random choice of the run follows from it.
    uint64_t seed() const { return seed_; }
    /// A sequence of random numbers for one purpose: the same for the same seed and name.
    std::mt19937_64 random(const std::string& name) const;

    /// Processors that the run may use at a time; at least 1.
    int jobs() const { return jobs_; }

    /// Seconds that the run may take; 0: as long as its rounds need.
    double seconds() const { return seconds_; }
    /// Seconds since the run began.
    double elapsed() const;
    /// Whether there is time for a further round.
    bool hasTime() const;

    /// The one round to play; empty: all.
    const std::string& repeated() const { return repeated_; }
    /// Whether the round is to be played: there is time for it, and no other alone is asked for.
    bool wants(const std::string& round) const;

    /// Counts a round. A text says what was wrong with it: it is a finding, and is printed. The
    /// name has no blanks, and is what --repeat takes.
    void played(const std::string& round, const std::string& wrong);
    /// Counts rounds that have no names of their own.
    void played(uint64_t rounds) { rounds_ += rounds; }

    /// A finding of a round that has been counted.
    void found(const std::string& round, const std::string& wrong);

    /// A figure besides, for the page. In the order of the calls; a name that comes again replaces.
    void note(const std::string& name, double value);
    void note(const std::string& name, const std::string& text);
    /// What was not tested, in a sentence.
    void leftOut(const std::string& what);

    int findings() const { return static_cast<int>(findings_.size()); }

    /// Writes the report. The status for main: 0 without findings, 1 with, 2 when a repeated round
    /// was none of the rounds or the report cannot be written.
    int end();

private:
    struct Note {
        std::string name;
        std::string value; ///< as JSON
    };
    struct Finding {
        std::string round;
        std::string text;
    };
    void keep(const std::string& name, std::string value);
    std::string reportText() const;

    std::string part_; ///< the program's name without "campaign_"
    uint64_t seed_ = 1;
    double seconds_ = 0;
    int jobs_ = 1;
    std::string repeated_;
    std::string report_;
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
    uint64_t rounds_ = 0;
    std::vector<Note> notes_;
    std::vector<Finding> findings_;
    std::vector<std::string> left_out_;
};

} // namespace campaigns

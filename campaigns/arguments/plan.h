// The rounds of the campaign in their order, and by their names.
//
//     SelectChannel/-            all parts as they are accepted
//     SelectChannel/3.5          part 3 has its choice 5, the others are accepted
//     SelectChannel/3.5+7.2      two parts
//     SelectChannel/r12          all parts at random, from the seed
#pragma once

#include "arguments/round.h"

#include "rounds/run.h"

#include <cstdint>
#include <string>
#include <vector>

namespace hostile {

class Plan {
public:
    Plan();

    /// Rounds of one part, and of two.
    uint64_t singles() const { return single_count_; }
    uint64_t pairs() const { return pair_count_; }

    /// The name of a round: first those of one part, then by turns one of two parts and one at
    /// random, for ever.
    std::string name(uint64_t number) const;

    /// The round of this name; false when there is none.
    bool make(const campaigns::Run& run, const std::string& name, Round& round) const;

private:
    struct Part {
        size_t count;
        size_t in_pairs;
    };
    struct Native {
        const NativeSpec* spec;
        std::vector<Part> parts;
        uint64_t singles; ///< the accepted call among them
        uint64_t pairs;
    };
    std::string nameOfSingle(uint64_t number) const;
    std::string nameOfPair(uint64_t number) const;
    std::string nameOfRandom(uint64_t number) const;

    std::vector<Native> natives_;
    std::vector<size_t> by_parts_; ///< the place of each native, as often as it has parts
    uint64_t single_count_ = 0;
    uint64_t pair_count_ = 0;
};

} // namespace hostile

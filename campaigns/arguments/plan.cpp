#include "arguments/plan.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace hostile {
namespace {

/// Random numbers of one round. They begin at once, as a round takes microseconds.
class Random {
public:
    Random(uint64_t seed, const std::string& name) : state_(seed * 0x9e3779b97f4a7c15) {
        for (const char letter : name) {
            state_ = (state_ ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
        }
    }
    uint64_t operator()() {
        state_ += 0x9e3779b97f4a7c15;
        uint64_t mixed = (state_ ^ state_ >> 30) * 0xbf58476d1ce4e5b9;
        mixed = (mixed ^ mixed >> 27) * 0x94d049bb133111eb;
        return mixed ^ mixed >> 31;
    }

private:
    uint64_t state_;
};

/// Notes how many choices each part has, and accepts all.
class Counting : public Chooser {
public:
    size_t choose(size_t count, size_t in_pairs) override {
        parts.emplace_back(count, std::min(count, in_pairs));
        return 0;
    }
    uint64_t any() override { return 0; }

    std::vector<std::pair<size_t, size_t>> parts;
};

/// The choices that a name says.
class Named : public Chooser {
public:
    Named(std::map<size_t, size_t> choices, Random random)
        : choices_(std::move(choices)), random_(random) {}
    size_t choose(size_t count, size_t) override {
        const auto found = choices_.find(part_++);
        if (found == choices_.end()) {
            return 0;
        }
        fits = fits && found->second < count;
        return found->second % count;
    }
    uint64_t any() override { return random_(); }
    /// Whether there are such parts and choices.
    bool fits = true;
    size_t parts() const { return part_; }

private:
    const std::map<size_t, size_t> choices_;
    Random random_;
    size_t part_ = 0;
};

/// A few parts, or all of them, are not the accepted ones.
class AtRandom : public Chooser {
public:
    AtRandom(Random random, size_t parts)
        : random_(random), one_in_(std::max<uint64_t>(1, parts / (1 + random_() % 6))) {}
    size_t choose(size_t count, size_t) override {
        return random_() % one_in_ == 0 ? random_() % count : 0;
    }
    uint64_t any() override { return random_(); }

private:
    Random random_;
    const uint64_t one_in_;
};

/// "3.5+7.2"; false when it is none.
bool readChoices(const std::string& text, std::map<size_t, size_t>& choices) {
    const char* at = text.c_str();
    while (*at != 0) {
        size_t part = 0;
        size_t choice = 0;
        int length = 0;
        if (std::sscanf(at, "%zu.%zu%n", &part, &choice, &length) != 2) {
            return false;
        }
        choices[part] = choice;
        at += length;
        if (*at == '+') {
            ++at;
        } else if (*at != 0) {
            return false;
        }
    }
    return !choices.empty();
}

std::string choiceText(size_t part, uint64_t choice) {
    return std::to_string(part) + "." + std::to_string(choice);
}

} // namespace

Plan::Plan() {
    for (const NativeSpec& spec : natives()) {
        Counting counting;
        makeRound(spec, counting);
        Native native{&spec, {}, 1, 0};
        uint64_t before = 0; // choices of the parts before
        for (const auto& [count, in_pairs] : counting.parts) {
            native.parts.push_back({count, in_pairs});
            native.singles += count - 1;
            native.pairs += before * (in_pairs - 1);
            before += in_pairs - 1;
        }
        single_count_ += native.singles;
        pair_count_ += native.pairs;
        by_parts_.insert(by_parts_.end(), native.parts.size(), natives_.size());
        natives_.push_back(std::move(native));
    }
}

std::string Plan::nameOfSingle(uint64_t number) const {
    for (const Native& native : natives_) {
        if (number >= native.singles) {
            number -= native.singles;
            continue;
        }
        const std::string name = std::string(native.spec->name) + "/";
        if (number == 0) {
            return name + "-";
        }
        --number;
        for (size_t part = 0; part < native.parts.size(); ++part) {
            if (number < native.parts[part].count - 1) {
                return name + choiceText(part, number + 1);
            }
            number -= native.parts[part].count - 1;
        }
    }
    return "";
}

std::string Plan::nameOfPair(uint64_t number) const {
    for (const Native& native : natives_) {
        if (number >= native.pairs) {
            number -= native.pairs;
            continue;
        }
        for (size_t second = 1; second < native.parts.size(); ++second) {
            const uint64_t of_second = native.parts[second].in_pairs - 1;
            for (size_t first = 0; first < second; ++first) {
                const uint64_t both = (native.parts[first].in_pairs - 1) * of_second;
                if (number < both) {
                    return std::string(native.spec->name) + "/" +
                           choiceText(first, number / of_second + 1) + "+" +
                           choiceText(second, number % of_second + 1);
                }
                number -= both;
            }
        }
    }
    return "";
}

std::string Plan::nameOfRandom(uint64_t number) const {
    const Native& native = natives_[by_parts_[number % by_parts_.size()]];
    return std::string(native.spec->name) + "/r" + std::to_string(number);
}

std::string Plan::name(uint64_t number) const {
    if (number < single_count_) {
        return nameOfSingle(number);
    }
    number -= single_count_;
    const uint64_t turn = number / 2;
    if (turn >= pair_count_) {
        return nameOfRandom(number - pair_count_);
    }
    // Pairs of all natives come early: a step through them that has no factor with their number.
    return number % 2 == 0 ? nameOfPair(turn * 1000003 % pair_count_) : nameOfRandom(turn);
}

bool Plan::make(const campaigns::Run& run, const std::string& name, Round& round) const {
    const size_t slash = name.find('/');
    if (slash == std::string::npos) {
        return false;
    }
    for (const Native& native : natives_) {
        if (name.substr(0, slash) != native.spec->name) {
            continue;
        }
        const std::string what = name.substr(slash + 1);
        if (what.size() > 1 && what[0] == 'r') {
            AtRandom chooser(Random(run.seed(), name), native.parts.size());
            round = makeRound(*native.spec, chooser);
            return what.find_first_not_of("0123456789", 1) == std::string::npos;
        }
        std::map<size_t, size_t> choices;
        if (what != "-" && !readChoices(what, choices)) {
            return false;
        }
        Named chooser(choices, Random(run.seed(), name));
        round = makeRound(*native.spec, chooser);
        return chooser.fits && (choices.empty() || choices.rbegin()->first < chooser.parts());
    }
    return false;
}

} // namespace hostile

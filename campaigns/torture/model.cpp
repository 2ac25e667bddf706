#include "model.h"

#include <algorithm>

namespace torture {

Model::Fate Model::call(const char* function, const char* text) {
    const int number = number_++;
    ++base_;
    out_.calls.push_back(
        {std::string(function) + (text != nullptr ? std::string(" ") + text : ""), 0});
    const FailNth::Call* failure = nullptr;
    for (const FailNth::Call& each : plan_.calls) {
        if (each.number == number ||
            (plan_.calls_on && each.number == plan_.calls.back().number && number > each.number)) {
            failure = &each;
        }
    }
    if (failure == nullptr) {
        return Fate::made;
    }
    const auto& ways = harness::waysToFail(function);
    const bool has_way = std::find(ways.begin(), ways.end(), failure->leaves) != ways.end();
    switch (has_way ? failure->leaves : ways.at(0)) {
    case Leaves::nothing:
        return Fate::null;
    case Leaves::exception:
        pending_ = true;
        return Fate::threw;
    default:
        pending_ = true;
        return Fate::spoiled;
    }
}

bool Model::lookUp(const char* function, const char* text) {
    if (call(function, text) == Fate::made) {
        return true;
    }
    clear();
    return false;
}

bool Model::allocated() {
    const int number = allocation_++;
    return plan_.allocation < 0 || number < plan_.allocation ||
           (number > plan_.allocation && !plan_.allocations_on);
}

void Model::leaveAt(size_t call) {
    if (following_) {
        leaveAtLine(call < baseline_.calls.size() ? baseline_.calls[call].lines_before
                                                  : baseline_.lines.size());
    }
}

void Model::leaveAtLine(size_t at) {
    if (following_) {
        following_ = false;
        out_.lines.assign(baseline_.lines.begin(),
                          baseline_.lines.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

void Model::line(const std::string& text) {
    if (!following_) {
        out_.lines.push_back(text);
    }
}

Outcome Model::finished() {
    if (following_) {
        out_.lines = baseline_.lines;
    }
    out_.allocations = allocation_;
    return std::move(out_);
}

namespace {

std::string list(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += "\n  " + text;
    }
    return all.empty() ? " nothing" : all;
}

std::string compared(const char* what, const std::vector<std::string>& seen,
                     const std::vector<std::string>& expected) {
    if (seen == expected) {
        return "";
    }
    size_t same = 0;
    while (same < seen.size() && same < expected.size() && seen[same] == expected[same]) {
        ++same;
    }
    const auto rest = [same](const std::vector<std::string>& of) {
        return std::vector<std::string>(
            of.begin() + static_cast<std::ptrdiff_t>(same),
            of.begin() + static_cast<std::ptrdiff_t>(std::min(of.size(), same + 8)));
    };
    return std::string(what) + " from " + std::to_string(same) + " on:" + list(rest(seen)) +
           "\n expected:" + list(rest(expected)) + "\n";
}

std::vector<std::string> names(const std::vector<CallSeen>& calls) {
    std::vector<std::string> all;
    for (const CallSeen& call : calls) {
        all.push_back(call.what);
    }
    return all;
}

} // namespace

std::string difference(const Outcome& seen, const Outcome& expected) {
    std::string text = seen.answer == expected.answer
                           ? ""
                           : "answer " + seen.answer + ", expected " + expected.answer + "\n";
    text += compared("calls", names(seen.calls), names(expected.calls));
    text += compared("lines", seen.lines, expected.lines);
    text += compared("messages", seen.messages, expected.messages);
    text += compared("callbacks", seen.callbacks, expected.callbacks);
    if (seen.allocations != expected.allocations) {
        text += "allocations " + std::to_string(seen.allocations) + ", expected " +
                std::to_string(expected.allocations) + "\n";
    }
    return text;
}

} // namespace torture

#include "rounds/run.h"

#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace campaigns {
namespace {

[[noreturn]] void complain(const std::string& part, const std::string& what) {
    std::fprintf(stderr, "%s: %s\n", part.c_str(), what.c_str());
    std::exit(2);
}

std::string partOf(const char* program) {
    const char* slash = std::strrchr(program, '/');
    std::string name = slash != nullptr ? slash + 1 : program;
    const std::string before = "campaign_";
    return name.rfind(before, 0) == 0 ? name.substr(before.size()) : name;
}

/// A whole text as a number, or the end of the process.
template <typename Number, typename Read>
Number numberOf(const std::string& part, const std::string& option, const char* text, Read read) {
    char* end = nullptr;
    errno = 0;
    const auto number = read(text, &end);
    if (*text == 0 || *text == '-' || *end != 0 || errno != 0) {
        complain(part, option + " " + text + ": it is a number, 0 or more");
    }
    return static_cast<Number>(number);
}

std::string asJson(const Json::Value& value) {
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    writer["precision"] = 10;
    return Json::writeString(writer, value);
}

} // namespace

Run::Run(int argc, char** argv) : part_(partOf(argv[0])) {
    for (int i = 1; i < argc; i += 2) {
        const std::string option = argv[i];
        if (i + 1 == argc) {
            complain(part_, option + " needs a value, or is unknown");
        }
        const char* value = argv[i + 1];
        if (option == "--seed") {
            seed_ = numberOf<uint64_t>(part_, option, value, [](const char* text, char** end) {
                return std::strtoull(text, end, 10);
            });
        } else if (option == "--seconds") {
            seconds_ = numberOf<double>(part_, option, value, [](const char* text, char** end) {
                return std::strtod(text, end);
            });
        } else if (option == "--jobs") {
            jobs_ =
                std::max(1, numberOf<int>(part_, option, value, [](const char* text, char** end) {
                             return std::strtol(text, end, 10);
                         }));
        } else if (option == "--repeat") {
            repeated_ = value;
        } else if (option == "--report") {
            report_ = value;
        } else {
            complain(part_, "unknown option " + option);
        }
    }
}

std::mt19937_64 Run::random(const std::string& name) const {
    std::vector<uint32_t> words = {static_cast<uint32_t>(seed_),
                                   static_cast<uint32_t>(seed_ >> 32)};
    for (char letter : name) {
        words.push_back(static_cast<unsigned char>(letter));
    }
    std::seed_seq sequence(words.begin(), words.end());
    return std::mt19937_64(sequence);
}

double Run::elapsed() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - began_).count();
}

bool Run::hasTime() const {
    return seconds_ <= 0 || elapsed() < seconds_;
}

bool Run::wants(const std::string& round) const {
    return repeated_.empty() ? hasTime() : repeated_ == round;
}

void Run::played(const std::string& round, const std::string& wrong) {
    ++rounds_;
    if (!wrong.empty()) {
        found(round, wrong);
    }
}

void Run::found(const std::string& round, const std::string& wrong) {
    findings_.push_back({round, wrong});
    std::printf("%s: %s\n", round.c_str(), wrong.c_str());
    std::fflush(stdout);
}

void Run::keep(const std::string& name, std::string value) {
    for (Note& note : notes_) {
        if (note.name == name) {
            note.value = std::move(value);
            return;
        }
    }
    notes_.push_back({name, std::move(value)});
}

void Run::note(const std::string& name, double value) {
    // A number of things has no fraction.
    const auto whole = static_cast<Json::Int64>(value);
    keep(name, static_cast<double>(whole) == value ? asJson(Json::Value(whole))
                                                   : asJson(Json::Value(value)));
}

void Run::note(const std::string& name, const std::string& text) {
    keep(name, asJson(Json::Value(text)));
}

void Run::leftOut(const std::string& what) {
    left_out_.push_back(what);
}

std::string Run::reportText() const {
    // Written by hand in the outer level: the library would sort the notes by their names.
    std::string text = "{\n  \"rounds\": " + std::to_string(rounds_) + ",\n  \"notes\": {";
    const char* between = "\n    ";
    for (const Note& note : notes_) {
        text += between + asJson(Json::Value(note.name)) + ": " + note.value;
        between = ",\n    ";
    }
    Json::Value findings(Json::arrayValue);
    for (const Finding& finding : findings_) {
        Json::Value one;
        one["round"] = finding.round;
        one["text"] = finding.text;
        findings.append(one);
    }
    Json::Value left_out(Json::arrayValue);
    for (const std::string& what : left_out_) {
        left_out.append(what);
    }
    return text + "\n  },\n  \"findings\": " + asJson(findings) +
           ",\n  \"left_out\": " + asJson(left_out) + "\n}\n";
}

int Run::end() {
    if (!repeated_.empty() && rounds_ == 0) {
        complain(part_, "--repeat " + repeated_ + ": seed " + std::to_string(seed_) +
                            " has no such round");
    }
    if (!report_.empty()) {
        const std::string text = reportText();
        std::FILE* file = std::fopen(report_.c_str(), "w");
        const bool written =
            file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size();
        if ((file != nullptr && std::fclose(file) != 0) || !written) {
            complain(part_, report_ + ": " + std::strerror(errno));
        }
    }
    return findings_.empty() ? 0 : 1;
}

} // namespace campaigns

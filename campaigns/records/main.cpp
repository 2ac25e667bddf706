// Hostile records: many processes' records, each of which must get the answer that it is to get.
#include "records/input.h"
#include "records/player.h"
#include "records/progress.h"
#include "records/totals.h"

#include "rounds/job.h"
#include "rounds/run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace hostile;
using campaigns::Job;
namespace fs = std::filesystem;

/// Records of a run that has no time limit.
constexpr uint64_t kAllRecords = 100'000'000;
constexpr int kMostFindingsOfJob = 5;
/// Names of rounds that are longer are files.
constexpr size_t kLongestName = 200;

const fs::path kSources = DTV_SOURCES;
const fs::path kWork = DTV_RECORDS_WORK;

void writeFile(const fs::path& file, const std::vector<uint8_t>& data) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(data.data()),
                 static_cast<std::streamsize>(data.size()));
    stream.close();
    if (!stream) {
        std::fprintf(stderr, "records: %s: it cannot be written\n", file.c_str());
        std::exit(2);
    }
}

/// The name of a round, under which --repeat finds it. The input is kept in a file as well.
std::string keepInput(const std::vector<uint8_t>& data) {
    uint64_t hash = 0xcbf29ce484222325;
    for (uint8_t byte : data) {
        hash = (hash ^ byte) * 0x100000001b3;
    }
    char name[32];
    std::snprintf(name, sizeof name, "%016llx", static_cast<unsigned long long>(hash));
    const fs::path file = kWork / "findings" / name;
    fs::create_directories(file.parent_path());
    writeFile(file, data);
    const std::string hex = asHex(data.data(), data.size());
    return hex.size() <= kLongestName ? hex : fs::relative(file, kSources).string();
}

/// The input of a round. Ends the process when there is none of this name.
std::vector<uint8_t> inputOf(const std::string& round) {
    std::vector<uint8_t> data;
    if (fromHex(round, data)) {
        return data;
    }
    for (const fs::path& path : {fs::path(round), kSources / round}) {
        std::ifstream file(path, std::ios::binary);
        if (file) {
            data.assign(std::istreambuf_iterator<char>(file), {});
            return data;
        }
    }
    std::fprintf(stderr, "records: --repeat %s: it is neither hexadecimal nor a file\n",
                 round.c_str());
    std::exit(2);
}

void repeat(campaigns::Run& run) {
    const std::vector<uint8_t> data = inputOf(run.repeated());
    std::printf("%s\n", described(readInput(data.data(), data.size())).c_str());
    std::fflush(stdout);
    Progress* const progress = sharedProgress();
    Job job(*progress, kWork / "repeat.log", [&] { playOne(*progress, data); });
    while (job.runs()) {
        usleep(10'000);
    }
    run.played(run.repeated(), job.wrong());
}

fs::path corpusFolder() {
    return kWork / "corpus";
}

/// The files of the corpus in one order: a folder has them in any. Every process begins with them.
void listCorpus() {
    std::vector<std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(corpusFolder())) {
        files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    std::string list;
    for (const std::string& file : files) {
        list += (list.empty() ? "" : ",") + file;
    }
    writeFile(kWork / "corpus.list", {list.begin(), list.end()});
}

/// Lays the inputs of the corpus into a folder of files, as libFuzzer takes them.
void layCorpus() {
    fs::remove_all(corpusFolder());
    fs::create_directories(corpusFolder());
    std::vector<std::vector<uint8_t>> inputs;
    if (!readCorpus(DTV_RECORDS_CORPUS, inputs)) {
        std::fprintf(stderr, "records: %s: it cannot be read\n", DTV_RECORDS_CORPUS);
        std::exit(2);
    }
    int number = 0;
    for (const std::vector<uint8_t>& input : inputs) {
        writeFile(corpusFolder() / std::to_string(++number), input);
    }
    listCorpus();
}

/// So that a process that takes the place of one does not end at the same input.
void dropFromCorpus(const std::vector<uint8_t>& input) {
    for (const fs::directory_entry& entry : fs::directory_iterator(corpusFolder())) {
        std::ifstream file(entry.path(), std::ios::binary);
        if (std::vector<uint8_t>(std::istreambuf_iterator<char>(file), {}) == input) {
            fs::remove(entry.path());
            listCorpus();
            return;
        }
    }
}

/// A process that plays, and the one that takes its place when it has found something.
class Place {
public:
    Place(const campaigns::Run& run, int number, uint64_t most)
        : run_(run), number_(number), most_(most),
          found_(kWork / ("found-" + std::to_string(number))) {
        fs::remove_all(found_);
        fs::create_directories(found_);
        start();
    }

    /// Whether it has to be asked again.
    bool plays(campaigns::Run& run) {
        if (job_->runs()) {
            return true;
        }
        const std::string wrong = job_->wrong();
        totals_.add(*progress_);
        if (wrong.empty()) {
            return false;
        }
        const uint8_t* const input = progress_->input;
        const std::vector<uint8_t> data(input, input + progress_->input_size);
        dropFromCorpus(data);
        run.played(keepInput(data), described(readInput(data.data(), data.size())) + ": " + wrong);
        ++findings_;
        if (findings_ == kMostFindingsOfJob || !run.hasTime() || totals_.records >= most_) {
            return false;
        }
        start();
        return true;
    }

    void stop() { progress_->stop = true; }
    const Totals& totals() const { return totals_; }
    const fs::path& found() const { return found_; }

private:
    void start() {
        progress_ = sharedProgress();
        std::vector<std::string> arguments = {"campaign_records"};
        for (std::string& option : fuzzerOptions()) {
            arguments.push_back(std::move(option));
        }
        // 0 would be the time of day.
        const uint64_t seed = run_.seed() * 1009 + static_cast<uint64_t>(number_) * 101 +
                              static_cast<uint64_t>(findings_) + 1;
        arguments.push_back("-seed=" + std::to_string(seed % 0xffffffff + 1));
        arguments.push_back("-artifact_prefix=" + found_.string() + "-");
        arguments.push_back("-seed_inputs=@" + (kWork / "corpus.list").string());
        arguments.push_back(found_.string());
        const uint64_t most = most_ - std::min(most_, totals_.records);
        Progress* const progress = progress_;
        job_ = std::make_unique<Job>(
            *progress, kWork / ("job-" + std::to_string(number_) + ".log"),
            [progress, most, arguments] { playFuzzed(*progress, most, arguments); });
    }

    const campaigns::Run& run_;
    const int number_;
    const uint64_t most_;
    const fs::path found_;
    Progress* progress_ = nullptr;
    std::unique_ptr<Job> job_;
    Totals totals_;
    int findings_ = 0;
};

size_t filesIn(const fs::path& folder) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), {}));
}

/// Of what all processes have kept and the corpus, what covers the same together.
size_t merge(const char* program, const std::vector<std::unique_ptr<Place>>& places) {
    const fs::path merged = kWork / "merged";
    fs::remove_all(merged);
    fs::create_directories(merged);
    std::vector<std::string> arguments = {program, "-set_cover_merge=1"};
    for (std::string& option : fuzzerOptions()) {
        arguments.push_back(std::move(option));
    }
    arguments.push_back(merged.string());
    arguments.push_back(corpusFolder().string());
    for (const auto& place : places) {
        arguments.push_back(place->found().string());
    }
    Progress* const progress = sharedProgress();
    Job job(*progress, kWork / "merge.log", [&] {
        std::vector<char*> pointers;
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        execv("/proc/self/exe", pointers.data());
        _exit(71);
    });
    while (job.runs()) {
        usleep(10'000);
    }
    return filesIn(merged);
}

void play(campaigns::Run& run, const char* program) {
    const auto jobs = static_cast<size_t>(run.jobs());
    const uint64_t all = run.seconds() > 0 ? UINT64_MAX : kAllRecords;
    std::vector<std::unique_ptr<Place>> places;
    for (size_t i = 0; i < jobs; ++i) {
        const uint64_t most = all == UINT64_MAX ? all : all / jobs + (i < all % jobs ? 1 : 0);
        places.push_back(std::make_unique<Place>(run, static_cast<int>(i), most));
    }
    size_t left = places.size();
    std::vector<bool> playing(left, true);
    while (left != 0) {
        usleep(50'000);
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
    Totals totals;
    for (const auto& place : places) {
        totals.add(place->totals());
    }
    run.played(totals.records -
               std::min<uint64_t>(totals.records, static_cast<uint64_t>(run.findings())));
    run.note("delivered to Java", static_cast<double>(totals.delivered));
    run.note("refused, as they are to be", static_cast<double>(totals.records - totals.delivered));
    run.note("with the trace on", static_cast<double>(totals.traced));
    run.note("records a second of processor time",
             totals.seconds > 0 ? std::round(static_cast<double>(totals.records) / totals.seconds)
                                : 0);
    run.note("processes", static_cast<double>(jobs));
    run.note("edges of src/ taken", static_cast<double>(totals.edgesTaken()));
    run.note("edges of src/, those of commands too", static_cast<double>(totals.edge_count));
    run.note("inputs of the corpus", static_cast<double>(filesIn(corpusFolder())));
    run.note("inputs that cover the same as all that were played",
             static_cast<double>(merge(program, places)));
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && argv[1][0] == '-' && argv[1][1] != '-') {
        return runFuzzer(*sharedProgress(), argc, argv);
    }
    campaigns::Run run(argc, argv);
    fs::create_directories(kWork);
    if (run.repeated().empty()) {
        layCorpus();
        play(run, argv[0]);
    } else {
        repeat(run);
    }
    run.leftOut("Records that change while the bridge reads them, and records on several threads "
                "at a time.");
    run.leftOut("On 32 bits the records of the corpus alone are played, without sanitizers.");
    return run.end();
}

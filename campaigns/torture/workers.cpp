#include "workers.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>

#include <memory>
#include <vector>

namespace torture {
namespace {

/// A process that dies again and again would never end.
constexpr int most_restarts = 20;
/// Seconds after which a round does not end any more.
constexpr double longest_round = 20;

std::string contentOf(int file) {
    std::string text;
    char block[4096];
    ssize_t got = 0;
    while ((got = pread(file, block, sizeof block, static_cast<off_t>(text.size()))) > 0) {
        text.append(block, static_cast<size_t>(got));
    }
    return text;
}

std::string endOf(const std::string& text) {
    constexpr size_t most = 1500;
    return text.size() <= most ? text : text.substr(text.size() - most);
}

} // namespace

/// What survives the worker.
struct Worker::Shared {
    char round[256];
    uint64_t next; ///< the round after the one in progress
    bool in_round;
    double began; ///< the round, in seconds of the run
    uint64_t kinds[static_cast<size_t>(Kind::count)];
    struct {
        char name[80];
        uint64_t value;
    } notes[24];
};

bool Worker::hasTime() const {
    return until <= 0 || run->elapsed() < until;
}

bool Worker::takes(const std::string& round, bool always) {
    const uint64_t number = counter++;
    if (number % jobs != index || number < first) {
        return false;
    }
    if (run->repeated().empty() ? !always && !hasTime() : run->repeated() != round) {
        return false;
    }
    std::snprintf(shared->round, sizeof shared->round, "%s", round.c_str());
    shared->next = counter;
    shared->began = run->elapsed();
    shared->in_round = true;
    // Exceptions that were described: only those of the round in progress are of interest.
    if (ftruncate(2, 0) != 0) {
        return true;
    }
    return true;
}

void Worker::begins(const std::string& round) {
    std::snprintf(shared->round, sizeof shared->round, "%s", round.c_str());
    shared->next = counter;
    shared->began = run->elapsed();
    shared->in_round = true;
}

void Worker::played(Kind kind, const std::string& wrong) {
    shared->in_round = false;
    ++shared->kinds[static_cast<size_t>(kind)];
    if (!wrong.empty()) {
        found(shared->round, wrong);
    }
}

void Worker::found(const std::string& round, const std::string& wrong) {
    const std::string record = round + '\x1f' + wrong + '\x1e';
    if (write(reports, record.data(), record.size()) < 0) {
        _exit(2);
    }
}

void Worker::note(const std::string& name, uint64_t value) {
    for (auto& note : shared->notes) {
        if (note.name[0] == 0 || name == note.name) {
            std::snprintf(note.name, sizeof note.name, "%s", name.c_str());
            note.value = value;
            return;
        }
    }
}

class Workers {
public:
    Workers(campaigns::Run& run, double until, const std::function<void(Worker&)>& work)
        : run_(run), until_(until), work_(work) {}

    void start(int index) {
        auto place = std::make_unique<Place>();
        place->worker.run = &run_;
        place->worker.until = until_;
        place->worker.jobs = static_cast<uint64_t>(run_.jobs());
        place->worker.index = static_cast<uint64_t>(index);
        void* memory = mmap(nullptr, sizeof(Worker::Shared), PROT_READ | PROT_WRITE,
                            MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        place->worker.shared = static_cast<Worker::Shared*>(memory);
        place->worker.reports = memfd_create("reports", MFD_CLOEXEC);
        place->errors = memfd_create("stderr", MFD_CLOEXEC);
        if (memory == MAP_FAILED || place->worker.reports < 0 || place->errors < 0 ||
            fcntl(place->worker.reports, F_SETFL, O_APPEND) != 0 ||
            fcntl(place->errors, F_SETFL, O_APPEND) != 0) {
            std::perror("torture");
            std::exit(2);
        }
        places_.push_back(std::move(place));
        launch(*places_.back());
    }

    void wait() {
        for (;;) {
            int status = 0;
            const pid_t ended = waitpid(-1, &status, WNOHANG);
            if (ended < 0) {
                return;
            }
            if (ended == 0) {
                usleep(20000);
            }
            for (auto& place : places_) {
                if (ended != 0 && place->process == ended) {
                    place->process = -1;
                    hasEnded(*place, status);
                } else if (place->process > 0) {
                    endWhenStuck(*place);
                }
            }
        }
    }

    void report(std::map<std::string, uint64_t>& notes) {
        for (auto& place : places_) {
            Worker::Shared& shared = *place->worker.shared;
            for (size_t kind = 0; kind < static_cast<size_t>(Kind::count); ++kind) {
                run_.played(shared.kinds[kind]);
                notes[std::string("rounds: ") + describe(static_cast<Kind>(kind))] +=
                    shared.kinds[kind];
            }
            for (const auto& note : shared.notes) {
                if (note.name[0] != 0) {
                    notes[note.name] = note.value;
                }
            }
            const std::string reports = contentOf(place->worker.reports);
            for (size_t at = 0; at < reports.size();) {
                const size_t middle = reports.find('\x1f', at);
                const size_t end = reports.find('\x1e', at);
                // The round has been counted.
                run_.found(reports.substr(at, middle - at),
                           reports.substr(middle + 1, end - middle - 1));
                at = end + 1;
            }
        }
    }

private:
    struct Place {
        Worker worker;
        pid_t process = -1;
        int errors = -1;
        int restarts = 0;
    };

    void launch(Place& place) {
        std::fflush(nullptr);
        place.process = fork();
        if (place.process < 0) {
            std::perror("torture: fork");
            std::exit(2);
        }
        if (place.process == 0) {
            dup2(place.errors, 2);
            std::atexit([] {
                std::fflush(stdout);
                char block[2000];
                const ssize_t got = pread(1, block, sizeof block, 0);
                if (got > 0 && write(2, block, static_cast<size_t>(got)) < 0) {
                    _exit(2);
                }
            });
            work_(place.worker);
            std::fflush(nullptr);
            _exit(0);
        }
    }

    void endWhenStuck(Place& place) {
        const Worker::Shared& shared = *place.worker.shared;
        if (shared.in_round && run_.elapsed() - shared.began > longest_round) {
            kill(place.process, SIGKILL);
        }
    }

    void hasEnded(Place& place, int status) {
        Worker::Shared& shared = *place.worker.shared;
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
            return;
        }
        const std::string how =
            WIFSIGNALED(status)
                ? std::string("the process ended by ") + strsignal(WTERMSIG(status)) +
                      (WTERMSIG(status) == SIGKILL ? ": the round did not end" : "")
                : "the process ended with status " + std::to_string(WEXITSTATUS(status));
        const std::string text = how + "\n" + endOf(contentOf(place.errors));
        const bool in_round = shared.in_round;
        run_.played(in_round ? shared.round : "start", text);
        shared.in_round = false;
        shared.began = run_.elapsed();
        if (in_round && run_.repeated().empty() && place.restarts++ < most_restarts) {
            place.worker.first = shared.next;
            launch(place);
        }
    }

    campaigns::Run& run_;
    const double until_;
    const std::function<void(Worker&)>& work_;
    std::vector<std::unique_ptr<Place>> places_;
};

void inWorkers(campaigns::Run& run, double share_of_time, const std::function<void(Worker&)>& work,
               std::map<std::string, uint64_t>& notes) {
    const double until =
        run.seconds() > 0 ? run.elapsed() + (run.seconds() - run.elapsed()) * share_of_time : 0;
    Workers workers(run, until, work);
    for (int i = 0; i < run.jobs(); ++i) {
        workers.start(i);
    }
    workers.wait();
    workers.report(notes);
}

} // namespace torture

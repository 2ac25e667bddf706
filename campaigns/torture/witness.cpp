#include "witness.h"

#include <DtvSvCom.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace torture {
namespace {

using harness::JniCall;
using harness::ObservedJni;
using harness::StrictJni;
using harness::waysToFail;

/// What is kept of a line: its short form, and what an ERROR line prints besides.
struct Seen {
    std::string text;
    std::string copy;
};

char levelLetter(const std::string& word) {
    if (word == "FUNCSTART") {
        return 'S';
    }
    if (word == "FUNCEND  ") {
        return 'E';
    }
    if (word == "INFO     ") {
        return 'I';
    }
    if (word == "DEBUG    ") {
        return 'D';
    }
    return word == "ERROR    " ? 'R' : '?';
}

Seen shortForm(const dtv::LogLine& line) {
    // ",TENRIK,<task>,<level word>,<function>(),<source line>,<message>"
    const std::string text = line.text;
    const size_t level = text.find(',', 8) + 1;
    const size_t function = text.find(',', level) + 1;
    const size_t number = text.find("(),", function);
    const size_t message = number == std::string::npos ? number : text.find(',', number + 3);
    if (message == std::string::npos) {
        return {"? " + text, ""};
    }
    const std::string word = text.substr(level, 9);
    Seen seen;
    seen.text = std::string(1, std::string(line.module) == "Dtv_jni" ? 'N' : 'L') + " " +
                levelLetter(word) + " " + text.substr(function, number - function) + "|" +
                text.substr(message + 1);
    if (word == "ERROR    ") {
        char head[200];
        std::snprintf(head, sizeof head, "%s(%5d):<%-8s>%s [%s():%4d] ", line.module,
                      static_cast<int>(getpid()), DtvSvCom_GetMyTaskName(), word.c_str(),
                      text.substr(function, number - function).c_str(),
                      std::atoi(text.c_str() + number + 3));
        seen.copy = head + text.substr(message + 1) + "\n";
    }
    return seen;
}

} // namespace

struct Witness::Body : dtv::LogSink {
    std::mutex mutex;
    bool watching = false;
    std::vector<std::string> lines;
    std::string copies;
    std::vector<CallSeen> calls;
    std::string faults;
    int output = -1;
    ObservedJni* observed = nullptr;

    void write(const dtv::LogLine& line) override {
        Seen seen = shortForm(line);
        const std::lock_guard lock(mutex);
        if (watching) {
            lines.push_back(std::move(seen.text));
            copies += seen.copy;
        }
    }

    void note(const JniCall& call) {
        if (!watching || waysToFail(call.function).empty()) {
            return;
        }
        const std::lock_guard lock(mutex);
        CallSeen seen{call.function, lines.size()};
        // Only names: the text of a string is seen in Java.
        if (call.text != nullptr && seen.what != "NewStringUTF") {
            seen.what += std::string(" ") + call.text;
        }
        calls.push_back(std::move(seen));
    }

    std::string takeOutput() {
        std::fflush(stdout);
        std::string text;
        char block[4096];
        ssize_t got = 0;
        while ((got = pread(output, block, sizeof block, static_cast<off_t>(text.size()))) > 0) {
            text.append(block, static_cast<size_t>(got));
        }
        if (!text.empty() && (ftruncate(output, 0) != 0 || lseek(output, 0, SEEK_SET) != 0)) {
            std::abort();
        }
        return text;
    }
};

Witness& Witness::instance() {
    static Witness& only = *new Witness;
    return only;
}

Witness::Witness() : body(new Body) {
    harness::env();
    body->output = memfd_create("stdout", MFD_CLOEXEC);
    std::fflush(stdout);
    if (body->output < 0 || dup2(body->output, 1) < 0) {
        std::perror("standard output cannot be kept");
        std::abort();
    }
    dtv::setLogSink(std::shared_ptr<dtv::LogSink>(body, [](dtv::LogSink*) {}));
    dtv::setLogLevelMask(~0UL);
    body->observed = new ObservedJni([this](const JniCall& call) { body->note(call); });
    StrictJni::reportTo([](const std::string& text) {
        Body& of = *instance().body;
        const std::lock_guard lock(of.mutex);
        of.faults += text + "\n";
    });
}

void Witness::begin() {
    const std::lock_guard lock(body->mutex);
    body->takeOutput();
    body->lines.clear();
    body->copies.clear();
    body->calls.clear();
    body->watching = true;
}

void Witness::end(Outcome& into) {
    const std::lock_guard lock(body->mutex);
    body->watching = false;
    const std::string printed = body->takeOutput();
    if (printed != body->copies) {
        body->faults +=
            "on standard output: \"" + printed + "\" instead of \"" + body->copies + "\"\n";
    }
    into.lines = std::move(body->lines);
    into.calls = std::move(body->calls);
}

std::string Witness::takeFaults() {
    const std::lock_guard lock(body->mutex);
    return std::move(body->faults);
}

size_t Witness::lineCount() const {
    const std::lock_guard lock(body->mutex);
    return body->lines.size();
}

} // namespace torture

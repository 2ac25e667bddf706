#include "desk/explain/tests/short_log.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <sstream>

namespace explain::tests {
namespace {

constexpr int kPid = 3109;

/// The time in seconds after 22:00, as the header of a line shows it.
std::string timeOf(double seconds) {
    const auto milliseconds = static_cast<int64_t>(seconds * 1000 + 0.5);
    char text[32];
    std::snprintf(
        text, sizeof text, "11-21 22:%02d:%02d.%03d", static_cast<int>(milliseconds / 60000),
        static_cast<int>(milliseconds / 1000 % 60), static_cast<int>(milliseconds % 1000));
    return text;
}

class LogText {
public:
    void add(const std::string& line) {
        if (line.front() == '@') {
            time_ = timeOf(std::stod(line.substr(1)));
        } else if (line.front() == '=') {
            text_ += line.substr(1) + "\n";
        } else if (!addTrace(line)) {
            text_ += time_ + "  3109  3109 W System.err: " + line + "\n";
        }
    }
    const std::string& text() const { return text_; }

private:
    bool addTrace(const std::string& line) {
        static const std::pair<const char*, const char*> kLevels[] = {{" ERROR ", "ERROR    "},
                                                                      {" START ", "FUNCSTART"},
                                                                      {" END ", "FUNCEND  "},
                                                                      {" INFO ", "INFO     "},
                                                                      {" DEBUG ", "DEBUG    "}};
        const size_t bar = line.find('|');
        const size_t colon = line.find(':');
        for (const auto& [level, word] : kLevels) {
            const size_t at = line.find(level);
            if (bar == std::string::npos || colon > bar || at > colon) {
                continue;
            }
            std::string thread = line.substr(0, at);
            const size_t function = at + std::string_view(level).size();
            char start[160];
            std::snprintf(start, sizeof start, "%s %5d %5d D desk    : ,TENRIK,%-8s,%s,%s(),%4d,",
                          time_.c_str(), kPid, tidOf(thread), thread.c_str(), word,
                          line.substr(function, colon - function).c_str(),
                          std::stoi(line.substr(colon + 1)));
            text_ += start + line.substr(bar + 1) + "\n";
            return true;
        }
        return false;
    }

    int tidOf(const std::string& thread) {
        const auto [found, is_new] =
            tids_.try_emplace(thread, kPid + static_cast<int>(tids_.size()));
        return found->second;
    }

    std::string time_ = timeOf(0);
    std::string text_;
    std::map<std::string, int> tids_;
};

std::string placesOf(const Finding& finding) {
    std::string text = ", lines";
    for (const uint64_t line : finding.lines) {
        text += " " + std::to_string(line);
    }
    return text;
}

} // namespace

std::string logOf(std::string_view short_lines) {
    LogText log;
    std::istringstream input{std::string(short_lines)};
    for (std::string line; std::getline(input, line);) {
        const size_t begin = line.find_first_not_of(' ');
        if (begin != std::string::npos) {
            log.add(line.substr(begin));
        }
    }
    return log.text();
}

std::string load() {
    return R"(
        desk START JNI_OnLoad:124|
        desk DEBUG JNI_OnLoad:125|pid = 3109, threadid = a1dfe6c0
        desk START registerNatives:71|
        desk END registerNatives:93|ret = 0
        desk DEBUG DtvSvLibListenerInit:84|env = 0x7f3ed4239b60
        desk END JNI_OnLoad:128|
)";
}

std::string command(const std::string& name, const std::string& begin, const std::string& sent) {
    return "desk START dtvSvLib" + name + ":129|" + begin + "\ndesk DEBUG dtvSvLib" + name +
           ":128|SEND, " + sent +
           "\ndesk START getRetCode:42|(param)ret = 0\ndesk END getRetCode:64|\ndesk END dtvSvLib" +
           name + ":141|ret = 0\n";
}

std::string command(const std::string& name, int handle) {
    const std::string number = std::to_string(handle);
    return command(name, "hdl = " + number, "dtvsv_handle = " + number);
}

std::string event(const std::string& id, int size, const std::string& handler) {
    return "Event START recvEventFromServer:49|pid = 3109, threadid = a17ff6c0, event_id = " + id +
           ", recv_size = " + std::to_string(size) + R"(
        Event START getJNIEnv:42|
        Event INFO getJNIEnv:68|JNIEnv already got! index=0 threadid=a17ff6c0 env=0x7f3e3c001430 
        Event START DoListenerEvent:69|
)" + handler +
           R"(
        Event END DoListenerEvent:88|
        Event END recvEventFromServer:64|
)";
}

std::string reply(const std::string& id, int handle, int result) {
    return event(id, 8,
                 R"(
        Event START dtvsv_msgid_lib_common_reply:12|
        Event DEBUG dtvsv_msgid_lib_common_reply:13|dtvsv_handle = )" +
                     std::to_string(handle) + ", result = " + std::to_string(result) + R"(
        Event DEBUG CallMethod:114|CallMethod, method_id = 114, class_id = 47, attr_id = 0
        Event INFO CallMethod:129|CallMethod, NewObject
        Event DEBUG CallMethod:114|CallMethod, method_id = 45, class_id = 0, attr_id = 1
        Event DEBUG CallMethod:123|CallMethod, CallStaticMethod, type_id = 0
        Event END dtvsv_msgid_lib_common_reply:24|ret = 0
)");
}

std::string session(int handle) {
    return command("Create", "", "start_type = 0 max_delay_time = 100") + reply("1000004f", handle);
}

std::string opened() {
    return load() + session(1);
}

std::string released() {
    return command("Release", 1) + reply("10000050", 1);
}

std::unique_ptr<Explained> explain(const std::string& bytes, double slow_seconds) {
    const int descriptor = memfd_create("log", 0);
    size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t more = write(descriptor, bytes.data() + written, bytes.size() - written);
        if (more <= 0) {
            ADD_FAILURE() << "the log cannot be written";
            break;
        }
        written += static_cast<size_t>(more);
    }
    ReadOptions options;
    options.slow = static_cast<int64_t>(slow_seconds * 1e9);
    auto explained = explainFile("/proc/self/fd/" + std::to_string(descriptor), options);
    close(descriptor);
    explained->name = "evening.log";
    return explained;
}

std::vector<std::string> findingsOf(const Explained& explained) {
    std::vector<std::string> texts;
    for (const Finding& finding : explained.analysis.findings()) {
        std::string text = std::to_string(finding.id) + " " + nameOf(finding.severity) + " " +
                           textOf(finding.key.rule).name;
        text += finding.key.subject.empty() ? "" : " " + finding.key.subject;
        text += finding.handle ? ", session " + std::to_string(*finding.handle) : "";
        text += finding.thread.empty() ? "" : ", " + finding.thread;
        text += placesOf(finding);
        if (!finding.first.function.empty()) {
            text += ", " + finding.first.function + ":" + std::to_string(finding.first.source_line);
        }
        text += finding.first.text.empty() ? "" : ", " + finding.first.text;
        if (finding.caused_by != 0) {
            text += " <- " + std::to_string(finding.caused_by) + ": " + finding.relation;
        }
        texts.push_back(text);
    }
    return texts;
}

std::vector<std::string> findingsIn(std::string_view short_lines) {
    return findingsOf(*explain(logOf(short_lines)));
}

std::vector<std::string> lossesOf(const Explained& explained) {
    std::vector<std::string> texts;
    for (const Loss& loss : explained.losses) {
        std::string text = nameOf(loss.kind);
        text += loss.line != 0 ? ", line " + std::to_string(loss.line) : "";
        text += loss.count != 1 ? ", " + std::to_string(loss.count) + " times" : "";
        texts.push_back(text + ": " + loss.text);
    }
    return texts;
}

std::vector<std::string> lossesIn(std::string_view short_lines) {
    return lossesOf(*explain(logOf(short_lines)));
}

} // namespace explain::tests

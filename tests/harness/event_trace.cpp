#include "harness/event_trace.h"

#include <DtvSvCom.h>

#include <unistd.h>

#include <cstdio>

namespace harness {

void prepareEvents() {
    ASSERT_EQ(Product::load(), "");
    static bool prepared = false;
    if (!prepared) {
        ASSERT_EQ(deliver(0x10000041, {}), 1);
        prepared = true;
    }
}

std::string received(int event_id, int size) {
    char values[80];
    std::snprintf(values, sizeof values, "event_id = %x, recv_size = %d",
                  static_cast<unsigned>(event_id), size);
    return listenerTrace(
        "recvEventFromServer",
        std::string("START |pid = <pid>, threadid = <tid>, ") + values +
            "\nSTART getJNIEnv|\n"
            "INFO getJNIEnv|JNIEnv already got! index=0 threadid=<tid> env=<ptr> \n"
            "START DoListenerEvent|\n");
}

std::string delivered(int event_id, int size, const std::string& handler,
                      const std::string& lines) {
    return received(event_id, size) + listenerTrace(handler, lines) +
           listenerTrace("DoListenerEvent", "END") + listenerTrace("recvEventFromServer", "END");
}

std::string refused(int event_id, int size, const std::string& handler, const std::string& lines) {
    return received(event_id, size) + listenerTrace(handler, lines) +
           listenerTrace("recvEventFromServer", "END");
}

LiveAtEnd::LiveAtEnd(LogRecorder& log, const std::string& function) : observed(log) {
    observed.onLine([this, function](const TraceLine& line) {
        if (line.level == "FUNCEND  " && line.function == function) {
            live = StrictJni::liveLocals();
        }
    });
}

LiveAtEnd::~LiveAtEnd() {
    observed.onLine(nullptr);
}

std::string onStandardOutput(const TraceLine& line) {
    char head[160];
    std::snprintf(head, sizeof head, "JNIDtvSvLibListener(%5d):<%-8s>ERROR     [%s():%4d] ",
                  static_cast<int>(getpid()), DtvSvCom_GetMyTaskName(), line.function.c_str(),
                  line.line);
    return head + line.message + "\n";
}

std::string copiesOfErrors(const std::vector<TraceLine>& lines) {
    std::string copies;
    for (const TraceLine& line : lines) {
        if (line.level == "ERROR    ") {
            copies += onStandardOutput(line);
        }
    }
    return copies;
}

} // namespace harness

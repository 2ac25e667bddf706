#include "status/event_trace.h"

#include <DtvSvCom.h>

#include <unistd.h>

#include <cstdio>

namespace status {

using namespace harness;

namespace {

std::string listenerLine(const char* level, const std::string& function,
                         const std::string& message) {
    return std::string("JNIDtvSvLibListener|") + level + "|" + function + "|" + message + "\n";
}

} // namespace

void prepare() {
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
    return functionStart("recvEventFromServer",
                         std::string("pid = <pid>, threadid = <tid>, ") + values) +
           functionStart("getJNIEnv") +
           listenerLine("512|5|INFO     ", "getJNIEnv",
                        "JNIEnv already got! index=0 threadid=<tid> env=<ptr> ") +
           functionStart("DoListenerEvent");
}

std::string delivered(int event_id, int size, const std::string& handler_lines) {
    return received(event_id, size) + handler_lines + functionEnd("DoListenerEvent") +
           functionEnd("recvEventFromServer");
}

std::string refused(int event_id, int size, const std::string& handler_lines) {
    return received(event_id, size) + handler_lines + functionEnd("recvEventFromServer");
}

std::string functionStart(const std::string& function, const std::string& message) {
    return listenerLine("128|5|FUNCSTART", function, message);
}

std::string functionEnd(const std::string& function, const std::string& message) {
    return listenerLine("256|5|FUNCEND  ", function, message);
}

std::string debug(const std::string& function, const std::string& message) {
    return listenerLine("1024|5|DEBUG    ", function, message);
}

std::string error(const std::string& function, const std::string& message) {
    return listenerLine("2|6|ERROR    ", function, message);
}

namespace {

std::string taken(int method_id, int class_id, int attr_id) {
    char values[100];
    std::snprintf(values, sizeof values, "CallMethod, method_id = %d, class_id = %d, attr_id = %d",
                  method_id, class_id, attr_id);
    return debug("CallMethod", values);
}

} // namespace

std::string built(int method_id, int class_id) {
    return taken(method_id, class_id, 0) +
           listenerLine("512|5|INFO     ", "CallMethod", "CallMethod, NewObject") +
           listenerLine("512|5|INFO     ", "setJavaMethod", "setJavaMethod");
}

std::string notBuilt(int method_id, int class_id) {
    return taken(method_id, class_id, 0) +
           listenerLine("512|5|INFO     ", "CallMethod", "CallMethod, NewObject") +
           debug("CallMethod", "CallMethod, NewObject error!");
}

std::string called(int method_id) {
    return taken(method_id, 0, 1) +
           debug("CallMethod", "CallMethod, CallStaticMethod, type_id = 0");
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

} // namespace status

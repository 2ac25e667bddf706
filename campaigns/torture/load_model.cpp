#include "load_model.h"

#include "entry/java_tables.h"

#include <unistd.h>

namespace torture {
namespace {

constexpr const char* proxy = "tenrik/service/dtvserver/DtvServerProxy";

std::string textOf(const expected::Method& row) {
    return "class_id = " + std::to_string(row.class_id) +
           ", method_id = " + std::to_string(row.method_id) +
           ", attr_id = " + std::to_string(row.attr_id) +
           ", type_id = 0, method_name = " + row.name + ", signature = " + row.signature;
}

} // namespace

std::string withoutAddresses(const std::string& line) {
    std::string text = line;
    for (const char* mark : {"threadid = ", "threadid=", "env = ", "env=", "clazz = ", ".cls = "}) {
        const size_t at = text.find(mark);
        if (at != std::string::npos) {
            const size_t begin = at + std::string(mark).size();
            const size_t end = text.find_first_not_of("0123456789abcdefx", begin);
            text.erase(begin, end == std::string::npos ? end : end - begin);
        }
    }
    return text;
}

std::string loadAnswer(const std::string& returned, const std::string& native,
                       const std::string& event) {
    return returned + ", native " + native + ", event " + event;
}

void LoadModel::refuse(const std::string& last_line) {
    if (!last_line.empty()) {
        line(last_line);
    }
    line("N E JNI_OnLoad|");
    out_.answer =
        loadAnswer(std::string("-1") +
                       (refusal_thrown_ ? " java.lang.NoSuchMethodError: refused by the test" : ""),
                   "unbound", "-1000");
}

void LoadModel::unregister(bool exception_kept) {
    if (lookUp("FindClass", proxy)) {
        if (call("UnregisterNatives") != Fate::made) {
            clear();
        }
    }
    // When the exception cannot be thrown again there is none.
    refusal_thrown_ = exception_kept && call("Throw") == Fate::made;
}

Outcome LoadModel::load() {
    leaveAtLine(0);
    line("N S JNI_OnLoad|");
    line("N D JNI_OnLoad|pid = " + std::to_string(getpid()) + ", threadid = ");
    if (call("GetEnv") != Fate::made) {
        refuse("N D JNI_OnLoad|GetEnv failed");
        return finished();
    }
    line("N S registerNatives|");
    if (plan_.refuse_registration) {
        unregister(true);
        line(std::string("N D registerNatives|registerNatives, failed for '") + proxy + "'");
        refuse("N D JNI_OnLoad|registerNatives failed");
        return finished();
    }
    line("N E registerNatives|ret = 0");
    if (!allocated()) {
        unregister(false);
        refuse("");
        return finished();
    }
    line("N D DtvSvLibListenerInit|env = ");
    line("N D DtvSvLibListenerInit|env = ");
    // Without the frame the references end with the load.
    if (call("PushLocalFrame") != Fate::made) {
        clear();
    }
    resolveClasses();
    resolveMethods();
    line("N E JNI_OnLoad|");
    // The constants of the results are in class 127; the reply that is delivered is row 114, its
    // callback row 45.
    const bool answers = missing_classes_.count(127) == 0;
    const bool delivers = missing_methods_.count(114) == 0 && missing_methods_.count(45) == 0;
    out_.answer = loadAnswer("65540", answers ? "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG" : "null",
                             delivers ? "0" : "1");
    return finished();
}

void LoadModel::resolveClasses() {
    for (int id = 0; id < expected::classCount; ++id) {
        const std::string& name = expected::classes[static_cast<size_t>(id)];
        const std::string head = "L D setJavaClass|setJavaClass, ";
        line(head + "threadid = , class_id = " + std::to_string(id) + ", class_name = " + name);
        if (call("FindClass", name.c_str()) != Fate::made) {
            line(head + "Can't find class : " + name);
        } else if (call("NewGlobalRef") != Fate::made) {
            line(head + "NewGlobalRef error! : class_id = " + std::to_string(id));
        } else {
            line(head + "clazz = , m_class_info[class_id].cls = ");
            continue;
        }
        clear();
        missing_classes_.insert(id);
    }
}

void LoadModel::resolveMethods() {
    for (const expected::Method& row : expected::methods) {
        const std::string head = "L D setJavaMethod|setJavaMethod, ";
        line(head + textOf(row));
        const bool found =
            missing_classes_.count(row.class_id) == 0 &&
            lookUp(row.attr_id == 1 ? "GetStaticMethodID" : "GetMethodID", row.name.c_str());
        if (!found) {
            line(head + "GetMethodID error!, " + textOf(row));
            missing_methods_.insert(row.method_id);
        }
    }
}

} // namespace torture

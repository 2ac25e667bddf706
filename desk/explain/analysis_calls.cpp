// What is found in the calls of a log, and in what other programs wrote there.
#include "desk/explain/analysis.h"
#include "desk/explain/java_names.h"
#include "desk/explain/names.h"

#include "sessions/log/text.h"

#include <algorithm>

namespace explain {

namespace {

using sessions::BridgeCall;
using sessions::Fault;
using sessions::FaultLine;

const FaultLine* findFault(const BridgeCall& call, Fault fault) {
    const auto found = std::find_if(call.faults.begin(), call.faults.end(),
                                    [fault](const FaultLine& each) { return each.fault == fault; });
    return found != call.faults.end() ? &*found : nullptr;
}

/// The format of a line without its values, so that equal reasons are put together.
std::string reasonOf(const std::string& text) {
    std::string reason;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            reason += c;
        }
    }
    return reason;
}

struct RuleOfFault {
    Fault fault;
    Rule rule;
};

/// The first fault of an event in this order is what the others follow from.
constexpr RuleOfFault kEventFaults[] = {
    {Fault::kThreadTableFull, Rule::kThreadTableFull}, {Fault::kAttachFailed, Rule::kAttachFailed},
    {Fault::kNoEnvironment, Rule::kAttachFailed},      {Fault::kRecordSize, Rule::kRecordSize},
    {Fault::kRecordCount, Rule::kRecordCount},         {Fault::kRecordText, Rule::kRecordText},
    {Fault::kObjectNotMade, Rule::kObjectNotMade},     {Fault::kCallFailed, Rule::kObjectNotMade},
};

} // namespace

void Analysis::callEnded(const BridgeCall& call) {
    switch (call.kind) {
    case BridgeCall::Kind::kNative:
        nativeEnded(call);
        break;
    case BridgeCall::Kind::kEvent:
        eventEnded(call);
        break;
    case BridgeCall::Kind::kLoad:
        loadEnded(call);
        break;
    }
}

void Analysis::nativeEnded(const BridgeCall& call) {
    const std::string subject =
        call.message != nullptr ? std::string(call.message->name) : call.function;
    Relations relations;
    relations.handle = call.handle;
    if (const FaultLine* const fault = findFault(call, Fault::kResultNotMade)) {
        relations.class_id = fault->class_id;
        add(Rule::kResultNotMade, subject, {}, placeOf(fault->where), relations, call.thread);
    }
    const FaultLine* reason = findFault(call, Fault::kFieldMissing);
    if (reason != nullptr && reason->where.function == "getRetCode") {
        add(Rule::kFieldMissing, "BG_TE_DTVSVLIB_RESULT", {}, placeOf(reason->where), relations,
            call.thread);
        return;
    }
    if (!call.refused) {
        return;
    }
    const FaultLine* const enumeration = findFault(call, Fault::kEnumNotRead);
    if (reason == nullptr && enumeration != nullptr &&
        enumeration->where.text != "enum object is NULL") {
        reason = enumeration;
    }
    if (reason != nullptr) {
        add(Rule::kFieldMissing, subject, reasonOf(reason->where.text), placeOf(reason->where),
            relations, call.thread);
        return;
    }
    reason = findFault(call, Fault::kSurfaceRefused);
    if (reason != nullptr) {
        add(Rule::kSurfaceRefused, subject, {}, placeOf(reason->where), relations, call.thread);
        return;
    }
    reason = findFault(call, Fault::kArgumentRefused);
    if (reason == nullptr) {
        reason = enumeration;
    }
    Place where = reason != nullptr ? placeOf(reason->where) : lineOf(call, call.first);
    if (reason == nullptr) {
        where.text = "the line that says why is not in the log";
    }
    add(Rule::kArgumentRefused, subject, reason != nullptr ? reasonOf(where.text) : "", where,
        relations, call.thread);
}

void Analysis::eventEnded(const BridgeCall& call) {
    const std::string subject = call.message != nullptr ? std::string(call.message->name)
                                : call.id != 0          ? messageName(call.id)
                                                        : std::string();
    Relations relations;
    relations.handle = call.handle;
    for (const RuleOfFault& each : kEventFaults) {
        if (const FaultLine* const fault = findFault(call, each.fault)) {
            if (each.rule == Rule::kAttachFailed && call.id == 0 && !call.has_begin) {
                loose_attach_ = {placeOf(fault->where), call.thread};
                return;
            }
            relations.class_id = fault->class_id;
            relations.method_id = fault->method_id;
            add(each.rule, subject, {}, placeOf(fault->where), relations, call.thread);
            return;
        }
    }
    if (call.id == 0 && call.result.value_or(0) != 0) {
        // Which command it answers is not in the log.
        Place where = lineOf(call, call.last);
        where.text = "result = " + std::to_string(*call.result);
        add(Rule::kCommandFailed, subject, where.text, where, relations, call.thread);
    }
    if (call.has_begin && call.has_end && !call.done && call.message != nullptr) {
        add(Rule::kEventRefused, subject, {}, lineOf(call, call.first), relations, call.thread);
    }
}

void Analysis::loadEnded(const BridgeCall& call) {
    for (const FaultLine& fault : call.faults) {
        Relations relations;
        relations.class_id = fault.class_id;
        relations.method_id = fault.method_id;
        const Place where = placeOf(fault.where);
        std::string name = fault.name.substr(fault.name.find_last_of('/') + 1);
        switch (fault.fault) {
        case Fault::kLoadFailed:
            add(Rule::kLoadFailed, {}, {}, where, relations, call.thread);
            break;
        case Fault::kNativesMissing:
            add(Rule::kNativeMissing, name, {}, where, relations, call.thread);
            break;
        case Fault::kClassMissing:
            relations.class_id = name.empty() ? fault.class_id : classIdOf(name);
            if (name.empty()) {
                name = classNamed(fault.class_id);
            }
            add(Rule::kClassMissing, name, {}, where, relations, call.thread);
            break;
        case Fault::kMethodMissing:
            add(Rule::kMethodMissing, std::string(classNamed(fault.class_id)) + "." + name,
                std::to_string(fault.method_id), where, relations, call.thread);
            break;
        default:
            break;
        }
    }
}

void Analysis::line(const sessions::LogLine& line) {
    coverage_.line(line);
    recent_.add(line);
    if (loose_attach_ && line.kind <= sessions::LogLineKind::kShortened) {
        takeLooseAttach(line.trace.function == "freeJNIEnv");
    }
    if (line.kind == sessions::LogLineKind::kForeign) {
        readStackTrace(line);
    } else if (line.kind == sessions::LogLineKind::kTrace) {
        process_ended_ = process_ended_ || line.trace.function == "freeJNIEnv";
    }
}

/// A thread that the VM did not attach. At the end of a process the listener goes on one, and its
/// threads are freed next; with the lines of errors alone that looks as an event does, and is the
/// last line.
void Analysis::takeLooseAttach(bool ends_process) {
    if (!ends_process) {
        add(Rule::kAttachFailed, {}, {}, loose_attach_->first, {}, loose_attach_->second);
    }
    loose_attach_.reset();
}

namespace {

/// What follows a text, up to one of the characters; empty when it is not there.
std::string_view wordAfter(std::string_view text, std::string_view start, const char* ends) {
    const size_t found = text.find(start);
    if (found == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(found + start.size());
    return text.substr(0, text.find_first_of(ends));
}

} // namespace

/// A stack trace that leads through a callback or a native method.
void Analysis::readStackTrace(const sessions::LogLine& line) {
    const std::string_view text = line.text;
    const size_t frame = text.find("at ");
    const bool is_frame = frame != std::string_view::npos &&
                          text.find_first_not_of(" \t") == frame &&
                          text.find('(') != std::string_view::npos;
    if (!is_frame) {
        if (sessions::contains(text, "Exception") || sessions::contains(text, "Error")) {
            exception_.assign(text);
        }
        return;
    }
    if (exception_.empty()) {
        return;
    }
    const std::string_view callback = wordAfter(text, ".BGCallBack.", "(");
    const std::string_view native = wordAfter(text, ".DtvServerProxy.DtvSvLib_", "(");
    Place where{line.first, {}, 0, exception_};
    if (!native.empty() && sessions::contains(text, "(Native Method)")) {
        add(Rule::kNativeThrew, std::string(native), {}, where, {}, {});
    } else if (!callback.empty()) {
        const std::string_view event = eventOfCallback(callback);
        add(Rule::kCallbackThrew, std::string(event.empty() ? callback : event), {}, where, {}, {});
    } else {
        return;
    }
    exception_.clear();
}

} // namespace explain

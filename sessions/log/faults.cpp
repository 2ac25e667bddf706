#include "sessions/log/faults.h"

#include "sessions/log/record_fields.h"
#include "sessions/log/text.h"

#include <unordered_map>

namespace sessions {
namespace {

/// What a line of one function says that contains the text. The first that fits applies.
struct FaultText {
    std::string_view function; ///< empty: any handler of an event
    std::string_view text;
    Fault fault;
};

constexpr FaultText kFaults[] = {
    {"JNI_OnLoad", "failed", Fault::kLoadFailed},
    {"registerNatives", "failed for", Fault::kNativesMissing},
    {"setJavaClass", "Can't find class", Fault::kClassMissing},
    {"setJavaClass", "NewGlobalRef error", Fault::kClassMissing},
    {"setJavaMethod", "GetMethodID error", Fault::kMethodMissing},
    {"getJNIEnv", "AttachCurrentThread", Fault::kAttachFailed},
    {"recvEventFromServer", "env is NULL", Fault::kNoEnvironment},
    {"CallMethod", "NewObject error", Fault::kObjectNotMade},
    {"NewFieldObject", "error", Fault::kObjectNotMade},
    {"SetObjectField", "error", Fault::kObjectNotMade},
    {"SetIntField", "error", Fault::kObjectNotMade},
    {"OrgNewString", "Failure", Fault::kRecordText},
    {"OrgNewStringUTF", "Failure", Fault::kRecordText},
    {"getRetCode", "field_id is NULL", Fault::kFieldMissing},
    {"getRetCode", "", Fault::kResultNotMade},
    {"makeComSubReplyObjSync", "NG, ", Fault::kResultNotMade},
    {"makeComSubReplyObjSync", "bad err", Fault::kResultNotMade},
    {"makeComReplyObjSync", "NG, ", Fault::kResultNotMade},
    {"makeComReplyObjSync", "bad err", Fault::kResultNotMade},
    {"getEnumValue", "", Fault::kEnumNotRead},
    {"setSurface", "object is NULL", Fault::kSurfaceRefused},
    {"setSurface", "", Fault::kFieldMissing},
    {"setScreenDrawingInfo", "", Fault::kArgumentRefused},
    {"setCapDrawingInfo", "", Fault::kArgumentRefused},
    {"setCapDisplayInfo", "", Fault::kArgumentRefused},
    {"setBMLDrawingInfo", "", Fault::kArgumentRefused},
    {"", "recv_size err!", Fault::kRecordSize},
    {"", "is over count", Fault::kRecordCount},
    {"", "ERROR NewStringUTF", Fault::kRecordText},
    {"", "ERROR find class", Fault::kCallFailed},
    {"", "CallMethod NG", Fault::kCallFailed},
    {"", "ERROR CallMethod", Fault::kCallFailed},
    {"", "is NULL", Fault::kRecordText},
};

bool namesMissingField(std::string_view text) {
    for (const std::string_view word : {"fieldID is NULL", "field ID is null", "fid is NULL"}) {
        if (contains(text, word)) {
            return true;
        }
    }
    return false;
}

/// A line that refuses an argument says that a field is missing, or what else is wrong with it.
Fault refusal(std::string_view text) {
    return namesMissingField(text) ? Fault::kFieldMissing : Fault::kArgumentRefused;
}

Fault find(const TraceLine& line) {
    if (line.level == TraceLevel::kFuncStart) {
        return Fault::kNone;
    }
    if (line.level == TraceLevel::kFuncEnd) {
        if (line.function == "getJNIEnv") {
            return Fault::kThreadTableFull;
        }
        return contains(line.message, "CallMethod NG") ? Fault::kResultNotMade : Fault::kNone;
    }
    if (commandOf(line.function) != nullptr) {
        return beginsWith(line.message, "SEND, ") || beginsWith(line.message, "RECV, ")
                   ? Fault::kNone
                   : refusal(line.message);
    }
    // A value that a line shows must not be taken for its words.
    const std::string_view words = line.known != nullptr ? line.known->format : line.message;
    const bool handler = handlesReplies(line.function) || eventOf(line.function) != nullptr;
    for (const FaultText& fault : kFaults) {
        if ((fault.function.empty() ? handler : fault.function == line.function) &&
            contains(words, fault.text)) {
            return fault.fault == Fault::kArgumentRefused ? refusal(words) : fault.fault;
        }
    }
    return Fault::kNone;
}

} // namespace

Fault faultOf(const TraceLine& line) {
    if (line.known == nullptr) {
        return Fault::kNone;
    }
    // Of the lines that any function may write, what one says depends on the function.
    if (line.known->function.empty()) {
        return find(line);
    }
    thread_local std::unordered_map<const KnownLine*, Fault> known;
    const auto found = known.find(line.known);
    return found != known.end() ? found->second
                                : known.emplace(line.known, find(line)).first->second;
}

} // namespace sessions

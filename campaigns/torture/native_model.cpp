#include "native_model.h"

#include <cstring>

namespace torture {
namespace {

constexpr const char* result_type = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_";
constexpr const char* out_of_memory =
    "throws java.lang.OutOfMemoryError: as if the VM had no memory left";
/// The session of all commands.
constexpr int session = 3;

int signedAt(const std::vector<uint8_t>& bytes, size_t at) {
    int32_t value = 0;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

int unsignedAt(const std::vector<uint8_t>& bytes, size_t at) {
    return bytes[at] | bytes[at + 1] << 8;
}

/// A text in which %d or %x is a number.
std::string number(std::string text, int value) {
    const size_t place = text.find('%');
    char digits[16];
    if (text[place + 1] == 'x') {
        std::snprintf(digits, sizeof digits, "%x", static_cast<unsigned>(value));
    } else {
        std::snprintf(digits, sizeof digits, "%d", value);
    }
    return text.replace(place, 2, digits);
}

} // namespace

Reply usualReply(const SyncAnswer& sync) {
    std::vector<uint8_t> bytes{3, 0, 0x11, 0x12, 0x13, 0x14, 0x15, 0x16};
    if (sync.endsRecording()) {
        bytes.insert(bytes.end(), {0x17, 0x18, 0x19, 0x1a});
    }
    const int size = static_cast<int>(bytes.size());
    return {std::move(bytes), size};
}

// ---- Refusals.

void NativeModel::refuse(const std::string& text) {
    refuseWithoutLine();
    if (!pending()) {
        line("N D " + function_ + "|" + text);
    }
}

void NativeModel::refuseWithoutLine() {
    refused_ = true;
    if (pending()) {
        answer_ = out_of_memory;
        return;
    }
    answer_ = sync_ != nullptr ? withoutReply(5) : constant(5);
}

void NativeModel::abandon() {
    refused_ = true;
    answer_ = out_of_memory;
}

void NativeModel::refuseValue(const std::string& why) {
    if (!refused_) {
        refuse(why);
    }
}

// ---- Fields of an argument.

void NativeModel::objectClass(const char* no_class) {
    if (!refused_ && call("GetObjectClass") != Fate::made) {
        leave();
        refuse(no_class);
    }
}

void NativeModel::intField(const std::string& name) {
    if (!refused_ && !lookUp("GetFieldID", name.c_str())) {
        leave();
        refuse(name + " fieldID is NULL, ret = 5");
    }
}

NativeModel::Read NativeModel::readEnum(const char* name, const char* getter) {
    const auto unreadable = [&](const char* why) {
        leave();
        line(std::string("N D getEnumValue|") + why);
        return Read::unreadable;
    };
    if (call("GetObjectClass") != Fate::made) {
        return unreadable("orgObj's clazz is NULL");
    }
    if (!lookUp("GetFieldID", name)) {
        return unreadable("enum field ID is NULL");
    }
    if (call("GetObjectField") != Fate::made) {
        return unreadable("enum object is NULL");
    }
    if (call("GetObjectClass") != Fate::made) {
        return unreadable("enum class is NULL");
    }
    if (!lookUp("GetStaticMethodID", getter)) {
        return unreadable("enum method is NULL");
    }
    if (call("CallStaticIntMethodV") != Fate::made) {
        leave();
        return Read::thrown;
    }
    return Read::done;
}

void NativeModel::enumField(const char* name, const char* getter, const char* shown) {
    if (refused_) {
        return;
    }
    const Read read = readEnum(name, getter);
    if (read == Read::unreadable) {
        refuse(std::string(shown != nullptr ? shown : name) + " getEnumValue Error, ret = 1");
    } else if (read == Read::thrown) {
        abandon();
    }
}

void NativeModel::enumFieldIfPossible(const char* name, const char* getter, const char* sent,
                                      const char* sent_instead) {
    if (refused_) {
        return;
    }
    // This is the last field: what is written after it is the baseline's from the send's lines on.
    const size_t lines_before = baseline_.calls.at(out_.calls.size() + 6).lines_before;
    const Read read = readEnum(name, getter);
    if (read == Read::thrown) {
        abandon();
    } else if (read == Read::unreadable) {
        sent_value_ = sent;
        sent_instead_ = sent_instead;
        // The lines between the reading of the field and the answer are those of the send.
        for (size_t at = lines_before - 3; at + 1 < lines_before; ++at) {
            std::string text = baseline_.lines.at(at);
            const size_t place = text.rfind(sent);
            if (place != std::string::npos) {
                text.replace(place, std::strlen(sent), sent_instead);
            }
            line(text);
        }
    }
}

NativeModel::Fate NativeModel::reference(const char* name, const char* missing, const char* null) {
    if (!lookUp("GetFieldID", name)) {
        leave();
        refuse(missing);
        return Fate::null;
    }
    if (call("GetObjectField") != Fate::made) {
        leave();
        refuse(null);
        return Fate::null;
    }
    return Fate::made;
}

void NativeModel::text(const char* name, const char* missing, const char* null) {
    if (refused_ || reference(name, missing, null) != Fate::made) {
        return;
    }
    const Fate fate = call("GetStringUTFChars");
    if (fate == Fate::made) {
        return;
    }
    leave();
    line("L E convJStringToChar|");
    if (fate == Fate::threw) {
        abandon();
    } else {
        refuse(null);
    }
}

void NativeModel::bytes(const char* name, const char* missing, const char* null) {
    if (refused_ || reference(name, missing, null) != Fate::made) {
        return;
    }
    const Fate fate = call("GetByteArrayElements");
    if (fate == Fate::made) {
        return;
    }
    leave();
    if (fate == Fate::threw) {
        abandon();
    } else {
        refuse(null);
    }
}

void NativeModel::object(const char* name, const char* missing, const char* null) {
    if (!refused_) {
        reference(name, missing, null);
    }
}

// ---- Planes.

bool NativeModel::routineFails(const char* routine, const std::string& text) {
    leave();
    line(std::string("N D ") + routine + "|" + text);
    return false;
}

bool NativeModel::routineClass(const char* routine, const char* text) {
    return call("GetObjectClass") == Fate::made || routineFails(routine, text);
}

bool NativeModel::routineInt(const char* routine, const std::string& name, int ret) {
    return lookUp("GetFieldID", name.c_str()) ||
           routineFails(routine, name + " fieldID is NULL, ret = " + std::to_string(ret));
}

bool NativeModel::routineEnum(const char* routine, const char* name, const char* getter) {
    const Read read = readEnum(name, getter);
    if (read == Read::unreadable) {
        return routineFails(routine, std::string(name) + " getEnumValue Error, ret = 1");
    }
    return read == Read::done;
}

void NativeModel::screenPlane(const char* no_class) {
    if (refused_) {
        return;
    }
    constexpr const char* routine = "setScreenDrawingInfo";
    endRoutine(routineClass(routine, "screen_drawing_info_clazz class is NULL, ret = 1") &&
                   routineEnum(routine, "screen_rotate", "getScreenRotateValue") &&
                   routineEnum(routine, "screen_mode", "getScreenModeValue") &&
                   routineInt(routine, "surface_width", 1) &&
                   routineInt(routine, "surface_height", 1),
               no_class);
}

void NativeModel::capPlane(const char* no_class) {
    if (refused_) {
        return;
    }
    constexpr const char* routine = "setCapDrawingInfo";
    bool done = routineClass(routine, "caption drawing_info_clazz class is NULL, ret = 1") &&
                routineEnum(routine, "screen_rotate", "getScreenRotateValue") &&
                routineInt(routine, "surface_width", 5) &&
                routineInt(routine, "surface_height", 5) && routineInt(routine, "cap_info", 5);
    if (done && call("GetObjectField") != Fate::made) {
        done = routineFails(routine, "cap_info display_info_obj object is NULL, ret = 5");
    }
    endRoutine(done && capLayout(), no_class);
}

bool NativeModel::capLayout() {
    constexpr const char* routine = "setCapDisplayInfo";
    if (!routineClass(routine, "display_info_clazz class is NULL, ret = 1")) {
        return false;
    }
    for (const char* name : {"font_size", "characters_num", "lines_num", "separator_size",
                             "position_x", "position_y"}) {
        if (!routineInt(routine, name, 1)) {
            return false;
        }
    }
    return routineEnum(routine, "background_color", "getBackgroundColorValue") &&
           routineEnum(routine, "background_alpha", "getOnOffValue");
}

void NativeModel::bmlPlane(const char* no_class) {
    if (refused_) {
        return;
    }
    constexpr const char* routine = "setBMLDrawingInfo";
    endRoutine(routineClass(routine, "BML drawing_info_clazz class is NULL, ret = 1") &&
                   routineEnum(routine, "screen_rotate", "getScreenRotateValue") &&
                   routineInt(routine, "surface_width", 1) &&
                   routineInt(routine, "surface_height", 1),
               no_class);
}

void NativeModel::drawingInfoOfLink() {
    if (refused_) {
        return;
    }
    if (!lookUp("GetFieldID", "drawing_info")) {
        leave();
        refuse("BML drawing_info_obj fieldID is NULL, ret = 5");
        return;
    }
    if (call("GetObjectField") != Fate::made) {
        // A null object has no class: nothing is asked for it.
        leave();
        line("N S setBMLDrawingInfo|");
        routineFails("setBMLDrawingInfo", "BML drawing_info_clazz class is NULL, ret = 1");
        refuseWithoutLine();
        return;
    }
    bmlPlane("bml drawing_info_clazz class is NULL, ret = 1");
}

void NativeModel::endRoutine(bool done, const char* no_class) {
    if (!done) {
        refuseWithoutLine();
        return;
    }
    surface(no_class);
}

void NativeModel::surface(const char* no_class) {
    if (call("GetObjectClass") != Fate::made) {
        leave();
        refuse(no_class);
        return;
    }
    constexpr const char* routine = "setSurface";
    const bool done = (lookUp("GetFieldID", "mSurface") ||
                       routineFails(routine, "mSurface fid Surface fieldID is NULL, ret = 1")) &&
                      (lookUp("GetFieldID", "surface_handle") ||
                       routineFails(routine, "surface_handle fid is NULL, ret = 1")) &&
                      (call("GetObjectField") == Fate::made ||
                       routineFails(routine, "surface_object is NULL, ret = 1"));
    if (!done) {
        refuseWithoutLine();
    }
}

// ---- Answers.

std::string NativeModel::constant(int code) {
    line(number("N S getRetCode|(param)ret = %d", code));
    const char* names[] = {"OK", "NG", "CANCEL", "ADD_NG", "DELETE_NG", "PARAM_NG"};
    const std::string name = std::string("DTVSVLIB_RESULT_") + names[code];
    if (!lookUp("GetStaticFieldID", name.c_str())) {
        leave();
        line("N D getRetCode|RESULT's field_id is NULL, ret = 0");
        return "null";
    }
    if (call("GetStaticObjectField") != Fate::made) {
        leave();
        line("N D getRetCode|RESULT's field's object NULL, ret = 0");
        return "null";
    }
    line("N E getRetCode|");
    return std::string(result_type) + names[code];
}

bool NativeModel::construct(int row, int class_id) {
    char text[120];
    std::snprintf(text, sizeof text,
                  "L D CallMethod|CallMethod, method_id = %d, class_id = %d, attr_id = 0", row,
                  class_id);
    line(text);
    line("L I CallMethod|CallMethod, NewObject");
    if (call("NewObjectV") != Fate::made) {
        leave();
        line("L D CallMethod|CallMethod, NewObject error!");
        return false;
    }
    line("L I setJavaMethod|setJavaMethod");
    return true;
}

/// An answer that is made of a result code.
std::string NativeModel::withoutReply(int code) {
    line("N S makeComReplyObjSync|");
    line(number("N S makeComReplyObjSync|make param NG message_id = 0x%x",
                static_cast<int>(sync_->id)));
    std::string nested;
    if (sync_->endsRecording()) {
        if (!construct(208, 126)) {
            if (pending()) {
                return out_of_memory;
            }
            line("N E makeComReplyObjSync|makeComReplyObjSync terminate rec CallMethod NG, "
                 "ret_call = 1");
            return "null";
        }
        nested = ", BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(0, 0)";
    }
    if (!construct(sync_->row, sync_->class_id)) {
        if (pending()) {
            return out_of_memory;
        }
        line("N E makeComReplyObjSync|makeComReplyObjSync CallMethod NG, ret_call = 1");
        return "null";
    }
    line("N E makeComReplyObjSync|");
    return std::string(sync_->java_class) + "(" + std::to_string(code) + ", " +
           std::to_string(session) + nested + ")";
}

/// An answer that is made of a reply.
std::string NativeModel::reply(const Reply& reply) {
    constexpr const char* sub = "makeComSubReplyObjSync|";
    const std::vector<uint8_t>& bytes = reply.bytes;
    const int handle = unsignedAt(bytes, 0);
    const int result = signedAt(bytes, 4);
    line("N S makeComReplyObjSync|");
    line(std::string("N S ") + sub + number("message_id = 0x%x", static_cast<int>(sync_->id)));
    line(std::string("N D ") + sub + "retvalue = 0");
    line(std::string("N D ") + sub + number("com_data->handle = %d", handle));
    line(std::string("N D ") + sub + number("com_data->return_value = %d", result));
    std::string nested;
    bool made = true;
    if (sync_->endsRecording()) {
        const int program = unsignedAt(bytes, 8);
        const int object = unsignedAt(bytes, 10);
        line(std::string("N I ") + sub + number("p_terminate_data->handle = %d", handle));
        line(std::string("N I ") + sub + number("p_terminate_data->result = %d", result));
        line(std::string("N I ") + sub +
             number("p_terminate_data->terminate_rec.program_no = %d", program));
        line(std::string("N I ") + sub +
             number("p_terminate_data->terminate_rec.object_no  = %d", object));
        nested = ", BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(" + std::to_string(program) + ", " +
                 std::to_string(object) + ")";
        made = construct(208, 126);
        if (!made && !pending()) {
            line(std::string("N D ") + sub + "CallMethod NG, ret_call = 1");
        }
    }
    if (made) {
        made = construct(sync_->row, sync_->class_id);
        if (!made && !pending()) {
            line(std::string("N D ") + sub + "makeComSubReplyObjSync NG, com ret_call = 1");
        }
    }
    if (made) {
        line(std::string("N E ") + sub);
        line("N E makeComReplyObjSync|");
        return std::string(sync_->java_class) + "(" + std::to_string(result) + ", " +
               std::to_string(handle) + nested + ")";
    }
    if (pending()) {
        return out_of_memory;
    }
    // What follows is the answer without a reply, after the line that has been written.
    const size_t begun = out_.lines.size();
    const std::string answer = withoutReply(0);
    out_.lines.erase(out_.lines.begin() + static_cast<std::ptrdiff_t>(begun));
    return answer;
}

void NativeModel::exchange() {
    const Reply reply_given = plan_.reply ? *plan_.reply : usualReply(*sync_);
    const auto write = [&](const char* text, int value) {
        line("N D " + function_ + "|" + number(text, value));
    };
    if (sendResult() != 0) {
        answer_ = withoutReply(1);
        if (!pending()) {
            line("N E " + function_ + "|" + number("ret = %d", sendResult()));
        }
        return;
    }
    const std::vector<uint8_t>& bytes = reply_given.bytes;
    const int size = reply_given.size.value_or(0);
    write("RECV, reply_size = %d", size);
    int tested = 0;
    if (sync_->endsRecording()) {
        tested = unsignedAt(bytes, 0);
        write("RECV, reply_data.handle = %d", tested);
        write("RECV, reply_data.result = %d", signedAt(bytes, 4));
        write("RECV, reply_data.terminate_rec.program_no = %d", unsignedAt(bytes, 8));
        write("RECV, reply_data.terminate_rec.object_no = %d", unsignedAt(bytes, 10));
    } else {
        tested = unsignedAt(bytes, 4);
        write("RECV, reply_data.handle = %d", tested);
        write("RECV, reply_data.return_value = %d", signedAt(bytes, 0));
    }
    if (size == 0 && tested == 0) {
        line("N E " + function_ + "|return DTVSVLIB_RESULT_ABORT_NG");
        answer_ = withoutReply(16);
        return;
    }
    line("N E " + function_ + "|ret = 0");
    answer_ = reply(reply_given);
}

Outcome NativeModel::end() {
    if (refused_) {
        out_.answer = answer_;
        return finished();
    }
    out_.messages = baseline_.messages;
    if (plan_.no_service) {
        out_.messages.clear();
    }
    for (std::string& message : out_.messages) {
        if (!sent_value_.empty()) {
            // end_type is the fifth byte of the record.
            message.replace(message.find(": ") + 2 + 3 * 4, 2, "84");
        }
    }
    if (sendResult() != 0 || plan_.reply) {
        leaveAtLine(baseline_.lines_before_send);
    }
    if (sync_ != nullptr) {
        exchange();
    } else {
        answer_ = constant(sendResult() == 0 ? 0 : 1);
        line("N E " + function_ + "|" + number("ret = %d", sendResult()));
    }
    out_.answer = answer_;
    return finished();
}

} // namespace torture

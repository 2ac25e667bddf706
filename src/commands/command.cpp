#include "commands/command.h"

#include "commands/java_access.h"
#include "commands/local_reference.h"
#include "commands/sync_reply.h"

#include <cstring>
#include <string_view>

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

/// The constants of the result enumeration, by code.
constexpr const char* kResultNames[] = {
#define RESULT_CONSTANT(code, name) #name,
#include "commands/field_table.def"
};
constexpr unsigned kResultCount = sizeof(kResultNames) / sizeof(kResultNames[0]);

#define RESULT_CONSTANT(code, name)                                                                \
    static_assert(std::string_view(kResultNames[code]) == #name, "constants are in code order");
#include "commands/field_table.def"

/// The signature of an enumeration's getter: an int of a constant.
struct GetterSignature {
    /// `type` is the enumeration's descriptor.
    explicit GetterSignature(const char* type) {
        const size_t length = strnlen(type, sizeof(text) - sizeof("()I"));
        text[0] = '(';
        std::memcpy(text + 1, type, length);
        std::memcpy(text + 1 + length, ")I", sizeof(")I"));
    }
    char text[256];
};

} // namespace

jobject getRetCode(JNIEnv* env, int ret) {
    TRACE_NATIVE(kFuncStart, __func__, "(param)ret = %d", ret);
    const jclass clazz = g_listener->getJavaClass(class_id::kBG_TE_DTVSVLIB_RESULT);
    if (clazz == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "class is NULL");
        return nullptr;
    }
    if (static_cast<unsigned>(ret) >= kResultCount) {
        TRACE_NATIVE(kDebug, __func__, "(param)ret err, ret = %d", ret);
        return nullptr;
    }
    const jfieldID field =
        env->GetStaticFieldID(clazz, kResultNames[ret], VALUE_TYPE(BG_TE_DTVSVLIB_RESULT));
    if (field == nullptr) {
        env->ExceptionClear();
        TRACE_NATIVE(kDebug, __func__, "RESULT's field_id is NULL, ret = %d", 0);
        return nullptr;
    }
    const jobject result = env->GetStaticObjectField(clazz, field);
    if (result == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "RESULT's field's object NULL, ret = %d", 0);
        return nullptr;
    }
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return result;
}

int getEnumValue(JNIEnv* env, jobject holder, const char* name, const char* type,
                 const char* getter, int* value) {
    const jclass holder_class = classOf(env, holder);
    if (holder_class == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "orgObj's clazz is NULL");
        return 1;
    }
    const LocalReference holder_class_reference(env, holder_class);

    const jfieldID field = findField(env, holder_class, name, type);
    if (field == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "enum field ID is NULL");
        return 1;
    }
    const jobject constant = env->GetObjectField(holder, field);
    if (constant == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "enum object is NULL");
        return 1;
    }
    const LocalReference constant_reference(env, constant);

    const jclass enum_class = classOf(env, constant);
    if (enum_class == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "enum class is NULL");
        return 1;
    }
    const LocalReference enum_class_reference(env, enum_class);

    const jmethodID method = env->GetStaticMethodID(enum_class, getter, GetterSignature(type).text);
    if (method == nullptr) {
        env->ExceptionClear();
        TRACE_NATIVE(kDebug, __func__, "enum method is NULL");
        return 1;
    }
    *value = env->CallStaticIntMethod(enum_class, method, constant);
    return 0;
}

void NativeCall::refuseWithoutLine() {
    refused_ = true;
    if (env_->ExceptionCheck()) {
        return;
    }
    if (row_.isSynchronous()) {
        const TS_HANDLE_REQ request = {handle()};
        answer_ = makeComReplyObjSync(env_, row_.id, nullptr, kResultParamNg, &request);
    } else {
        answer_ = getRetCode(env_, kResultParamNg);
    }
}

jobject NativeCall::refuseFor(const char* function, const char* format, int source_line, int first,
                              int second, int third) {
    refuseWithoutLine();
    if (!env_->ExceptionCheck()) {
        writeLine(format, function, source_line, first, second, third);
    }
    return answer_;
}

void NativeCall::traceStart(int line) const {
    TRACE_NATIVE_AT(line, kFuncStart, function_, "hdl = %d", session_);
}

jobject NativeCall::sendRecord(void* record, int size, TS_DTVSV_SP* surfaces) const {
    if (row_.isSynchronous()) {
        return exchangeRecord(record, size, surfaces);
    }
    const int ret =
        surfaces != nullptr
            ? g_listener->sendEventToServer(row_.id, record, size, surfaces, nullptr, nullptr)
            : g_listener->sendEventToServer(row_.id, record, size, nullptr, nullptr);
    const jobject result = getRetCode(env_, ret == 0 ? kResultOk : kResultNg);
    TRACE_NATIVE(kFuncEnd, function_, "ret = %d", ret);
    return result;
}

jobject sendHandle(JNIEnv* env, const char* function, const CommandRowOf<TS_HANDLE_REQ>& row,
                   jint session, Line<1> send_line, int source_line) {
    Command command(env, function, row, session);
    writeLine(send_line.format, function, source_line, command.record.handle);
    return command.send();
}

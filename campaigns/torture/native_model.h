// What is promised of a native method whose calls fail.
#pragma once

#include "model.h"

#include <functional>

namespace torture {

/// How a synchronous command answers.
struct SyncAnswer {
    const char* native = nullptr;
    unsigned id = 0;
    int row = 0; ///< the constructor's
    int class_id = 0;
    const char* java_class = nullptr;

    bool endsRecording() const { return id == 0x10000040; }
};

class NativeModel : public Model {
public:
    NativeModel(const Plan& plan, const Outcome& baseline, std::string function,
                const SyncAnswer* sync)
        : Model(plan, baseline), function_(std::move(function)), sync_(sync) {}

    // The steps of a command, in the order of its calls. After a refusal they do nothing. The lines
    // are what is written when the step fails.

    void objectClass(const char* no_class);
    void intField(const std::string& name); ///< "<name> fieldID is NULL, ret = 5"
    /// "<shown> getEnumValue Error, ret = 1"
    void enumField(const char* name, const char* getter, const char* shown = nullptr);
    /// An unreadable one is sent as another value.
    void enumFieldIfPossible(const char* name, const char* getter, const char* sent,
                             const char* sent_instead);
    void text(const char* name, const char* missing, const char* null);
    void bytes(const char* name, const char* missing, const char* null);
    void object(const char* name, const char* missing, const char* null);
    /// The plane of a TV link, whose field may hold null.
    void drawingInfoOfLink();
    void screenPlane(const char* no_class);
    void capPlane(const char* no_class);
    void bmlPlane(const char* no_class);
    /// An argument that is refused for its value, after all that is read before it.
    void refuseValue(const std::string& why);

    Outcome end();

private:
    enum class Read {
        done,
        unreadable,
        thrown
    };
    void refuse(const std::string& text);
    void refuseWithoutLine();
    void abandon();
    Read readEnum(const char* name, const char* getter);
    Fate reference(const char* name, const char* missing, const char* null);
    /// A step of a routine: false, and its line has been written, when it failed.
    bool routineInt(const char* routine, const std::string& name, int ret);
    bool routineEnum(const char* routine, const char* name, const char* getter);
    bool routineClass(const char* routine, const char* line);
    bool capLayout();
    bool routineFails(const char* routine, const std::string& text);
    void surface(const char* no_class);
    void endRoutine(bool done, const char* no_class);

    void answerWith(int code);
    std::string constant(int code);
    void exchange();
    std::string reply(const Reply& reply);
    std::string withoutReply(int code);
    bool construct(int row, int class_id);
    int sendResult() const { return plan_.no_service ? -1 : plan_.send_result; }

    const std::string function_;
    const SyncAnswer* const sync_;
    bool refused_ = false;
    std::string answer_;
    std::string sent_value_;
    std::string sent_instead_;
};

/// The reply that the service gives when the plan says nothing of it.
Reply usualReply(const SyncAnswer& sync);

} // namespace torture

#include "arguments/caller.h"

#include "arguments/sent_limits.h"

#include "harness/harness.h"

#include <cstdio>
#include <cstring>
#include <utility>

namespace hostile {
namespace {

using harness::StrictJni;

/// The most local references that a native may hold at a time.
constexpr int kMostLocals = 16;

std::string& brokenRule() {
    static std::string& text = *new std::string;
    return text;
}

void keepBrokenRule(const std::string& text) {
    if (brokenRule().empty()) {
        brokenRule() = text;
    }
}

class ReadingSink : public dtv::LogSink {
public:
    void write(const dtv::LogLine& line) override { read += std::strlen(line.text); }

private:
    size_t read = 0; ///< all lines come on one thread
};

int openFrames() {
    static const std::string pushed = "PushLocalFrame";
    static const std::string popped = "PopLocalFrame";
    return StrictJni::calls(pushed) - StrictJni::calls(popped);
}

const NativeSpec& nativeNamed(const std::string& name) {
    for (const NativeSpec& native : natives()) {
        if (name == native.name) {
            return native;
        }
    }
    std::abort();
}

Value number(int value) {
    Value made;
    made.number = value;
    return made;
}

std::string textOf(const ClassSpec& of, const Value& value) {
    switch (value.form) {
    case Value::Form::kNull:
        return "null";
    case Value::Form::kForeign:
        return "a String";
    default:
        break;
    }
    std::string text = of.name;
    if (value.form == Value::Form::kImpostor) {
        text += " of another loader";
    } else if (value.form != Value::Form::kUsual) {
        static const char* const how[] = {" without ", " with another type of ", " with a static "};
        text += how[static_cast<int>(value.form) - static_cast<int>(Value::Form::kLacks)];
        text += of.fields[value.field].name;
    }
    text += "(";
    for (size_t i = 0; i < of.fields.size(); ++i) {
        const FieldSpec& field = of.fields[i];
        const Value& inner = value.fields[i];
        text += i != 0 ? ", " : "";
        if (field.kind == Kind::kObject) {
            text += textOf(*field.of, inner);
        } else if (inner.form == Value::Form::kNull) {
            text += "null";
        } else if (inner.form != Value::Form::kUsual) {
            static const char* const how[] = {"a String", "of another loader: ", "throws",
                                              "no getter", "an instance getter"};
            text += how[static_cast<int>(inner.form) - static_cast<int>(Value::Form::kForeign)];
            text += inner.form == Value::Form::kImpostor ? std::to_string(inner.number) : "";
        } else if (field.kind == Kind::kText) {
            text += "text of " + std::to_string(modifiedUtf8(inner.text).size());
        } else if (field.kind == Kind::kBytes) {
            text += "bytes of " + std::to_string(inner.bytes.size());
        } else {
            text += std::to_string(inner.number);
        }
    }
    return text + ")";
}

/// Where two records differ.
std::string difference(const std::vector<uint8_t>& sent, const std::vector<uint8_t>& expected) {
    if (sent.size() != expected.size()) {
        return std::to_string(sent.size()) + " bytes instead of " + std::to_string(expected.size());
    }
    for (size_t i = 0; i < sent.size(); ++i) {
        if (sent[i] != expected[i]) {
            char text[64];
            std::snprintf(text, sizeof text, "%02x instead of %02x at %zu", sent[i], expected[i],
                          i);
            return text;
        }
    }
    return "";
}

} // namespace

std::string described(const Round& round) {
    std::string text = std::string(round.native->name) + "(";
    for (size_t i = 0; i < round.arguments.size(); ++i) {
        const ClassSpec* const of = round.native->parameters[i].of;
        text += (i != 0 ? ", " : "") + (of != nullptr ? textOf(*of, round.arguments[i])
                                                      : std::to_string(round.arguments[i].number));
    }
    return text + "), the send returns " + std::to_string(round.send_result);
}

Caller::Caller() : service_(harness::ServiceDouble::serve()) {
    StrictJni::reportTo(&keepBrokenRule);
    dtv::setLogSink(std::make_shared<ReadingSink>());
    dtv::setLogLevelMask(0);
    open_frames_ = openFrames();
}

std::string Caller::createWithBound(int bound) {
    Round create;
    create.native = &nativeNamed("Create");
    create.arguments = {number(0), number(bound)};
    return playOne(create);
}

/// The bound of the delays can be seen by what is refused for it.
std::string Caller::checkBound() {
    const int bound = delay_bound_;
    for (const int64_t video : {static_cast<int64_t>(bound), static_cast<int64_t>(bound) + 1}) {
        Round delay;
        delay.native = &nativeNamed("SetSoundVideoDelay");
        delay.arguments = {number(3), number(static_cast<int>(video)), number(-32768)};
        const std::string wrong = playOne(delay);
        if (!wrong.empty()) {
            return "the bound of the delays is not " + std::to_string(bound) + ": " + wrong;
        }
    }
    return "";
}

std::string Caller::play(const Round& round) {
    const bool creates = std::strcmp(round.native->name, "Create") == 0;
    if (creates || std::strcmp(round.native->name, "SetSoundVideoDelay") == 0) {
        const std::string wrong = createWithBound(round.delay_bound);
        if (!wrong.empty()) {
            return "before the call: " + wrong;
        }
    }
    dtv::setLogLevelMask(round.traced ? ~0UL : 0);
    std::string wrong = playOne(round);
    dtv::setLogLevelMask(0);
    if (wrong.empty() && creates) {
        wrong = checkBound();
    }
    return wrong;
}

std::string Caller::playOne(const Round& round) {
    service_->setResult(round.send_result);
    service_->setReply(round.reply, round.reply_size);
    const Expected result = expected(round, delay_bound_);
    if (std::strcmp(round.native->name, "Create") == 0 && result.sent) {
        delay_bound_ = round.arguments[1].number;
    }
    StrictJni::resetPeakLocals();
    const std::string answer = java_.call(*round.native, round.arguments);
    return compare(round, result, answer);
}

std::string Caller::compare(const Round& round, const Expected& expected,
                            const std::string& answer) {
    std::vector<std::string> wrong;
    if (answer != expected.answer) {
        wrong.push_back("it answered " + answer + " instead of " + expected.answer);
    }
    const std::vector<harness::Message> messages = service_->take();
    if (messages.size() != (expected.sent ? 1 : 0)) {
        wrong.push_back("it sent " + std::to_string(messages.size()) + " messages");
    }
    for (const harness::Message& message : messages) {
        const std::string outside = outsideLimits(message);
        if (!outside.empty()) {
            wrong.push_back("outside the limits is sent: " + outside);
        }
    }
    if (messages.size() == 1 && expected.sent) {
        ++sent_;
        const harness::Message& message = messages.front();
        if (message.message_id != expected.message) {
            wrong.push_back("it sent another message");
        }
        const std::string differs = difference(message.bytes, expected.record);
        if (!differs.empty()) {
            wrong.push_back("its record differs: " + differs);
        }
        for (size_t i = 0; i < expected.surfaces.size() && i < 3; ++i) {
            const int surface = expected.surfaces[i];
            if (message.surfaces[i].surface != (surface != 0 ? java_.surface(surface) : nullptr)) {
                wrong.push_back("another surface is sent at " + std::to_string(i));
            }
        }
    }
    addLeftBehind(wrong);
    std::string text;
    for (const std::string& one : wrong) {
        text += (text.empty() ? "" : "; ") + one;
    }
    return text.empty() ? "" : described(round) + ": " + text;
}

/// What should not be there after a call.
void Caller::addLeftBehind(std::vector<std::string>& wrong) {
    if (!brokenRule().empty()) {
        wrong.push_back(std::exchange(brokenRule(), ""));
    }
    if (StrictJni::liveLocals() != 0) {
        wrong.push_back("local references are left");
        StrictJni::forgetLocals();
    }
    if (StrictJni::peakLocals() > kMostLocals) {
        wrong.push_back(std::to_string(StrictJni::peakLocals()) + " local references at a time");
    }
    if (StrictJni::unreleased() != 0) {
        wrong.push_back("characters or elements are not released");
    }
    if (const int open = openFrames(); open != open_frames_) {
        wrong.push_back("a frame of references is left open");
        open_frames_ = open;
    }
    for (int i = 1; i <= kSurfaces; ++i) {
        if (java_.holders(i) != 1) {
            wrong.push_back("a surface is still held");
        }
    }
}

} // namespace hostile

#include "programme/event_case.h"

#include <unistd.h>

#include <cstdio>
#include <sstream>

namespace event_case {

using namespace harness;

Record& Record::u8(size_t offset, unsigned value) {
    content.at(offset) = static_cast<uint8_t>(value);
    return *this;
}

Record& Record::u16(size_t offset, unsigned value) {
    return u8(offset, value & 0xFF).u8(offset + 1, value >> 8 & 0xFF);
}

Record& Record::u32(size_t offset, uint32_t value) {
    return u16(offset, value & 0xFFFF).u16(offset + 2, value >> 16);
}

Record& Record::text(size_t offset, const std::string& value) {
    return raw(offset, value).u8(offset + value.size(), 0);
}

Record& Record::raw(size_t offset, const std::string& value) {
    for (size_t i = 0; i < value.size(); ++i) {
        u8(offset + i, static_cast<unsigned char>(value[i]));
    }
    return *this;
}

Record& Record::fill(size_t offset, size_t count, unsigned value) {
    for (size_t i = 0; i < count; ++i) {
        u8(offset + i, value);
    }
    return *this;
}

Record& Record::units(size_t offset, const std::u16string& value) {
    for (size_t i = 0; i < value.size(); ++i) {
        u16(offset + 2 * i, value[i]);
    }
    return *this;
}

std::string Case::start(int size) const {
    return start_shows_size ? "START recv_size = " + std::to_string(size) + "\n" : "START\n";
}

std::string Case::delivered() const {
    std::string lines;
    for (const std::string& rows : built) {
        lines += "NEW " + rows + "\n";
    }
    return lines + "STATIC " + std::to_string(callback_row) + "\nEND ret = 0\n";
}

std::string nameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

namespace {

const std::string listener = "JNIDtvSvLibListener|";

std::string lineOf(const char* level, const std::string& function, const std::string& message) {
    return listener + level + "|" + function + "|" + message + "\n";
}
const char* const funcstart = "128|5|FUNCSTART";
const char* const funcend = "256|5|FUNCEND  ";
const char* const info = "512|5|INFO     ";
const char* const debug = "1024|5|DEBUG    ";
const char* const error = "2|6|ERROR    ";

/// A construction's lines up to the attempt.
std::string construction(const std::string& rows) {
    size_t blank = rows.find(' ');
    return lineOf(debug, "CallMethod",
                  "CallMethod, method_id = " + rows.substr(0, blank) +
                      ", class_id = " + rows.substr(blank + 1) + ", attr_id = 0") +
           lineOf(info, "CallMethod", "CallMethod, NewObject");
}

/// One short line in full.
std::string whole(const std::string& line, const std::string& handler) {
    size_t blank = line.find(' ');
    std::string kind = line.substr(0, blank);
    std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
    if (kind == "START") {
        return lineOf(funcstart, handler, rest);
    }
    if (kind == "END") {
        return lineOf(funcend, handler, rest);
    }
    if (kind == "DEBUG") {
        return lineOf(debug, handler, rest);
    }
    if (kind == "ERROR") {
        return lineOf(error, handler, rest);
    }
    if (kind == "NEW") {
        return construction(rest) + lineOf(info, "setJavaMethod", "setJavaMethod");
    }
    if (kind == "NEWFAIL") {
        return construction(rest) + lineOf(debug, "CallMethod", "CallMethod, NewObject error!");
    }
    if (kind == "STATIC") {
        return lineOf(debug, "CallMethod",
                      "CallMethod, method_id = " + rest + ", class_id = 0, attr_id = 1") +
               lineOf(debug, "CallMethod", "CallMethod, CallStaticMethod, type_id = 0");
    }
    if (kind == "NOTEXT") {
        return lineOf(debug, rest, "Failure, ret is NULL");
    }
    ADD_FAILURE() << "no such short line: " << line;
    return "";
}

/// The whole trace of an event on a thread whose environment is known.
std::string wholeTrace(const Case& of, int size, int result, const std::string& lines) {
    char reception[96];
    std::snprintf(reception, sizeof reception,
                  "pid = <pid>, threadid = <tid>, event_id = %x, recv_size = %d", of.id, size);
    std::string text =
        lineOf(funcstart, "recvEventFromServer", reception) + lineOf(funcstart, "getJNIEnv", "") +
        lineOf(info, "getJNIEnv", "JNIEnv already got! index=<int> threadid=<tid> env=<ptr> ") +
        lineOf(funcstart, "DoListenerEvent", "");
    std::istringstream input(lines);
    for (std::string line; std::getline(input, line);) {
        size_t begin = line.find_first_not_of(' ');
        if (begin != std::string::npos) {
            text += whole(line.substr(begin), of.handler);
        }
    }
    if (result == 0) {
        text += lineOf(funcend, "DoListenerEvent", "");
    }
    return text + lineOf(funcend, "recvEventFromServer", "");
}

/// What standard output must hold beside these trace lines.
std::string copiesOf(const std::vector<TraceLine>& lines) {
    std::string text;
    for (const TraceLine& line : lines) {
        if (line.level == "ERROR    ") {
            char head[160];
            std::snprintf(head, sizeof head, "%s(%5d):<%-8s>%s [%s():%4d] ", line.module.c_str(),
                          getpid(), line.task.c_str(), line.level.c_str(), line.function.c_str(),
                          line.line);
            text += head + line.message + "\n";
        }
    }
    return text;
}

std::vector<uint8_t> firstBytes(const Record& record, size_t count) {
    auto end = record.bytes().begin() + static_cast<std::ptrdiff_t>(count);
    return {record.bytes().begin(), end};
}

} // namespace

void EventTest::SetUp() {
    if (records_callbacks) {
        ASSERT_EQ(Product::load(), "");
        callbacks.emplace();
    }
    log = LogRecorder::install();
    // An id that is none: the thread has its environment now.
    ASSERT_EQ(deliver(0x10000041, {}), 1);
    log->clear();
    output = std::make_unique<StdoutCapture>();
}

void EventTest::TearDown() {
    output.reset();
}

void EventTest::expect(const Case& of, const std::vector<uint8_t>& bytes, int size, int result,
                       const std::string& callback, const std::string& lines) {
    int locals_before = StrictJni::liveLocals();
    output->take();
    int returned = deliver(of.id, bytes, size);
    // Taken before anything is compared: failures are written to standard output as well.
    std::string written = output->take();
    EXPECT_EQ(returned, result);
    std::vector<TraceLine> trace = log->take();
    EXPECT_TRACE(trace, wholeTrace(of, size, result, lines));
    EXPECT_EQ(written, copiesOf(trace));
    EXPECT_EQ(StrictJni::liveLocals(), locals_before);
    EXPECT_FALSE(env()->ExceptionCheck());
    if (callbacks) {
        EXPECT_EQ(callbacks->take(), callback.empty() ? std::vector<std::string>{}
                                                      : std::vector<std::string>{callback});
    }
}

void EventTest::expectDelivered(const Case& of, const Record& record, const std::string& callback,
                                const std::string& lines) {
    expect(of, record.bytes(), record.size(), 0, callback, of.start(record.size()) + lines);
}

void EventTest::expectRefused(const Case& of, const Record& record, const std::string& lines) {
    expect(of, record.bytes(), record.size(), 1, "", of.start(record.size()) + lines);
}

void EventTest::expectGoesOn(const Case& of) {
    expectDelivered(of, of.record, of.callback, of.fields + of.delivered());
}

void EveryEvent::isDelivered() {
    const Case& of = GetParam();
    expectGoesOn(of);
    EXPECT_LE(StrictJni::peakLocals(), 256);
    expectGoesOn(of);
}

void EveryEvent::oneByteShortOrLong() {
    const Case& of = GetParam();
    auto refusal = [&](int size) {
        return std::string(of.size_level) + " recv_size err!, recv_size = " + std::to_string(size) +
               "\n";
    };
    int size = of.record.size();
    // The byte that was not sent lies there all the same, and shows if it is looked at.
    const std::string& fields = of.short_fields.empty() ? of.fields : of.short_fields;
    expect(of, of.record.bytes(), size - 1, 1, "", of.start(size - 1) + fields + refusal(size - 1));
    expect(of, firstBytes(of.record, of.record.bytes().size() - 1), size - 1, 1, "",
           of.start(size - 1) + fields + refusal(size - 1));
    std::vector<uint8_t> more = of.record.bytes();
    more.push_back(0xEE);
    expect(of, more, size + 1, 1, "", of.start(size + 1) + of.fields + refusal(size + 1));
    expectGoesOn(of);
}

void EveryEvent::anyLengthIsSafe() {
    const Case& of = GetParam();
    log.reset();
    dtv::setLogSink(nullptr);
    dtv::setLogLevelMask(0);
    for (size_t count = 0; count < of.record.bytes().size(); ++count) {
        ASSERT_EQ(deliver(of.id, firstBytes(of.record, count)), 1) << count;
    }
    for (int size : {-1, -of.record.size(), INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(deliver(of.id, of.record.bytes(), size), 1) << size;
    }
    EXPECT_TRUE(callbacks->take().empty());
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    output->take();
    log = LogRecorder::install();
    expectGoesOn(of);
}

void EveryEvent::constructionFails(FailJni::Leaves leaves) {
    const Case& of = GetParam();
    std::string built;
    for (size_t i = 0; i < of.built.size(); ++i) {
        SCOPED_TRACE("object " + std::to_string(i));
        {
            FailJni fail("NewObjectV", static_cast<int>(i), leaves);
            expectRefused(of, of.record,
                          of.fields + built + "NEWFAIL " + of.built[i] + "\n" + of.call_level +
                              " CallMethod NG, ret = 1\n");
            EXPECT_TRUE(fail.fired());
        }
        expectGoesOn(of);
        built += "NEW " + of.built[i] + "\n";
    }
}

void EveryEvent::textFails(FailJni::Leaves leaves) {
    const Case& of = GetParam();
    int before = StrictJni::calls("NewStringUTF");
    expectGoesOn(of);
    EXPECT_EQ(StrictJni::calls("NewStringUTF") - before, static_cast<int>(of.text_failures.size()));
    for (size_t i = 0; i < of.text_failures.size(); ++i) {
        SCOPED_TRACE("text " + std::to_string(i));
        {
            FailJni fail("NewStringUTF", static_cast<int>(i), leaves);
            expectRefused(of, of.record,
                          of.fields + "NOTEXT OrgNewStringUTF\n" + of.text_failures[i]);
            EXPECT_TRUE(fail.fired());
        }
        expectGoesOn(of);
    }
}

void EveryEvent::callbackThrows() {
    const Case& of = GetParam();
    callbacks->throwNext();
    expectGoesOn(of);
    expectGoesOn(of);
}

} // namespace event_case

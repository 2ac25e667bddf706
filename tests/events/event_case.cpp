#include "events/event_case.h"

namespace events {

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
    return start_shows_size ? "START |recv_size = " + std::to_string(size) + "\n" : "START\n";
}

std::string Case::delivered() const {
    std::string lines;
    for (const std::string& rows : built) {
        lines += "NEW " + rows + "\n";
    }
    return lines + "STATIC " + std::to_string(callback_row) + "\nEND |ret = 0\n";
}

std::string nameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

namespace {

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
    // An id without a handler: afterwards the thread has its environment.
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
    LiveAtEnd at_end(*log, of.handler);
    int returned = deliver(of.id, bytes, size);
    // Taken before anything is compared: failures are written to standard output as well.
    std::string written = output->take();
    EXPECT_EQ(returned, result);
    std::vector<TraceLine> trace = log->take();
    EXPECT_TRACE(trace, result == 0 ? delivered(of.id, size, of.handler, lines)
                                    : refused(of.id, size, of.handler, lines));
    EXPECT_EQ(written, copiesOfErrors(trace));
    EXPECT_EQ(at_end.count(), result == 0 ? 0 : -1) << "references are released before FUNCEND";
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

void EventTest::expectStillDelivered(const Case& of) {
    expectDelivered(of, of.record, of.callback, of.fields + of.delivered());
}

void EveryEvent::isDelivered() {
    const Case& of = GetParam();
    expectStillDelivered(of);
    EXPECT_LE(StrictJni::peakLocals(), 256);
    expectStillDelivered(of);
}

void EveryEvent::oneByteShortOrLong() {
    const Case& of = GetParam();
    auto refusal = [&](int size) {
        return std::string(of.size_level) +
               " |recv_size err!, recv_size = " + std::to_string(size) + "\n";
    };
    int size = of.record.size();
    // The byte that was not sent is in the buffer, so that a read of it changes the result.
    const std::string& fields = of.short_fields.empty() ? of.fields : of.short_fields;
    expect(of, of.record.bytes(), size - 1, 1, "", of.start(size - 1) + fields + refusal(size - 1));
    expect(of, firstBytes(of.record, of.record.bytes().size() - 1), size - 1, 1, "",
           of.start(size - 1) + fields + refusal(size - 1));
    std::vector<uint8_t> more = of.record.bytes();
    more.push_back(0xEE);
    expect(of, more, size + 1, 1, "", of.start(size + 1) + of.fields + refusal(size + 1));
    expectStillDelivered(of);
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
    expectStillDelivered(of);
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
                              " |CallMethod NG, ret = 1\n");
            EXPECT_TRUE(fail.fired());
        }
        expectStillDelivered(of);
        built += "NEW " + of.built[i] + "\n";
    }
}

void EveryEvent::textFails(FailJni::Leaves leaves) {
    const Case& of = GetParam();
    int before = StrictJni::calls("NewStringUTF");
    expectStillDelivered(of);
    EXPECT_EQ(StrictJni::calls("NewStringUTF") - before, static_cast<int>(of.text_failures.size()));
    for (size_t i = 0; i < of.text_failures.size(); ++i) {
        SCOPED_TRACE("text " + std::to_string(i));
        {
            FailJni fail("NewStringUTF", static_cast<int>(i), leaves);
            expectRefused(of, of.record,
                          of.fields + "NOTEXT OrgNewStringUTF\n" + of.text_failures[i]);
            EXPECT_TRUE(fail.fired());
        }
        expectStillDelivered(of);
    }
}

void EveryEvent::callbackThrows() {
    const Case& of = GetParam();
    callbacks->throwNext();
    expectStillDelivered(of);
    expectStillDelivered(of);
}

} // namespace events

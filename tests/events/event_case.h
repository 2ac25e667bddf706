// One event as libDtv delivers it: its record, and everything that the bridge makes of it.
#pragma once

#include "harness/event_trace.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace events {

/// A record by its fields. Bytes that no field sets are 0xEE: a value with such bytes was read from
/// where no field is.
class Record {
public:
    explicit Record(size_t size) : content(size, 0xEE) {}

    Record& u8(size_t offset, unsigned value);
    Record& u16(size_t offset, unsigned value);
    Record& u32(size_t offset, uint32_t value);
    /// These bytes and a NUL.
    Record& text(size_t offset, const std::string& value);
    /// Only these bytes.
    Record& raw(size_t offset, const std::string& value);
    /// As many bytes of one value.
    Record& fill(size_t offset, size_t count, unsigned value);
    /// Only UTF-16 units, little-endian.
    Record& units(size_t offset, const std::u16string& value);

    const std::vector<uint8_t>& bytes() const { return content; }
    int size() const { return static_cast<int>(content.size()); }

private:
    std::vector<uint8_t> content;
};

/// A kind of event with one record of it, and the lines that it leaves, in the notation of
/// harness/trace_text.h.
struct Case {
    const char* name; ///< the handler's between "dtvsv_msgid_lib_" and its end
    int id;
    std::string handler;
    Record record;
    bool start_shows_size;
    std::string fields;             ///< the DEBUG lines before the size is checked
    const char* size_level;         ///< of "recv_size err!"; null when any size will do
    const char* call_level;         ///< of "CallMethod NG"
    std::vector<std::string> built; ///< the rows of the objects in order: "157 90"
    int callback_row;
    std::string callback; ///< what reaches Java
    /// The lines when the first, second, ... text cannot be made; "" for none.
    std::vector<std::string> text_failures = {};
    /// The field lines when the last byte was not sent, where they differ.
    std::string short_fields = {};

    std::string start(int size) const;
    /// The lines of a delivered event, by the objects that are built and the callback's row.
    std::string delivered() const;
};

/// For the names of parameterised tests.
std::string nameOf(const testing::TestParamInfo<Case>& info);

/// With the bridge loaded, and nothing to take yet.
class EventTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Delivers and compares everything: `result`, the callback ("" for none), the whole trace with
    /// the handler's `lines`, standard output, and that no local reference remains.
    void expect(const Case& of, const std::vector<uint8_t>& bytes, int size, int result,
                const std::string& callback, const std::string& lines);
    void expectDelivered(const Case& of, const Record& record, const std::string& callback,
                         const std::string& lines);
    void expectRefused(const Case& of, const Record& record, const std::string& lines);
    /// The same handler with its first record again, delivered as if nothing had happened before.
    void expectStillDelivered(const Case& of);

    std::shared_ptr<harness::LogRecorder> log;
    std::unique_ptr<harness::StdoutCapture> output;
    std::optional<harness::CallbackRecorder> callbacks;
    bool records_callbacks = true;
};

/// The same once for each kind.
class EveryEvent : public EventTest, public testing::WithParamInterface<Case> {
protected:
    void isDelivered();
    void oneByteShortOrLong();
    void anyLengthIsSafe();
    void constructionFails(harness::FailJni::Leaves leaves);
    void textFails(harness::FailJni::Leaves leaves);
    void callbackThrows();
};

} // namespace events

#include "events/record_event.h"

#include <climits>

namespace events {

using namespace harness;

std::ostream& operator<<(std::ostream& out, const RecordEvent& event) {
    return out << event.name;
}

std::string recordEventName(const testing::TestParamInfo<RecordEvent>& info) {
    return info.param.name;
}

void RecordEvents::SetUp() {
    prepareEvents();
    log = LogRecorder::install();
}

std::string RecordEvents::startOf(int size, const std::vector<std::string>& fields) const {
    std::string start = GetParam().start;
    if (start == says_size) {
        start += std::to_string(size);
    }
    std::string lines = "START |" + start + "\n";
    for (const std::string& field : fields) {
        lines += "DEBUG |" + field + "\n";
    }
    return lines;
}

void RecordEvents::expectRefused(const std::vector<uint8_t>& bytes, int size,
                                 const std::vector<std::string>& fields) {
    SCOPED_TRACE("size " + std::to_string(size) + " of " + std::to_string(bytes.size()));
    const RecordEvent& event = GetParam();
    CallbackRecorder callbacks;
    StdoutCapture output;
    Calls new_objects("NewObjectV");
    log->clear();
    EXPECT_EQ(deliver(event.event_id, bytes, size), 1);
    std::string message = "recv_size err!, recv_size = " + std::to_string(size);
    std::vector<TraceLine> lines = log->take();
    EXPECT_TRACE(lines, refused(event.event_id, size, event.handler(),
                                startOf(size, fields) +
                                    (event.size_is_error ? "ERROR |" : "DEBUG |") + message));
    EXPECT_EQ(output.take(), copiesOfErrors(lines));
    EXPECT_TRUE(callbacks.take().empty());
    EXPECT_EQ(new_objects.made(), 0);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_P(RecordEvents, ReachesJava) {
    const RecordEvent& event = GetParam();
    std::vector<uint8_t> record = fromHex(event.record);
    int size = static_cast<int>(record.size());
    CallbackRecorder callbacks;
    StdoutCapture output;
    Calls frames("PushLocalFrame");
    Calls frame_ends("PopLocalFrame");
    Calls deleted("DeleteLocalRef");
    StrictJni::resetPeakLocals();
    LiveAtEnd at_end(*log, event.handler());
    EXPECT_EQ(deliver(event.event_id, record), 0);
    EXPECT_EQ(at_end.count(), 0) << "references are released before FUNCEND";
    std::string lines = startOf(size, event.fields);
    for (const Construction& object : event.constructions) {
        lines += "NEW " + object.rows() + "\n";
    }
    lines += "STATIC " + std::to_string(event.callback_id) + "\nEND |ret = 0\n";
    EXPECT_TRACE(log->take(), delivered(event.event_id, size, event.handler(), lines));
    EXPECT_EQ(callbacks.take(), std::vector<std::string>{event.callback});
    EXPECT_EQ(output.take(), "");
    EXPECT_EQ(frames.made(), 1);
    EXPECT_EQ(frame_ends.made(), 1);
    EXPECT_EQ(deleted.made(), static_cast<int>(event.constructions.size()));
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_LE(StrictJni::peakLocals(), 256);
}

TEST_P(RecordEvents, IsRefusedOneByteShortAndLong) {
    std::vector<uint8_t> record = fromHex(GetParam().record);
    int size = static_cast<int>(record.size());
    ASSERT_FALSE(GetParam().cuts.empty());
    ASSERT_EQ(GetParam().cuts.front().size, size - 1);
    record.push_back(0xee);
    expectRefused(record, size + 1, GetParam().fields);
    record.resize(record.size() + 15, 0xee);
    expectRefused(record, size + 16, GetParam().fields);
}

TEST_P(RecordEvents, WhatWasNotSentIsZero) {
    std::vector<uint8_t> whole = fromHex(GetParam().record);
    bool nothing_sent = false;
    for (const Cut& cut : GetParam().cuts) {
        // Once with bytes after the end that are not the record's, once with none.
        expectRefused(whole, cut.size, cut.fields);
        expectRefused({whole.begin(), whole.begin() + cut.size}, cut.size, cut.fields);
        if (cut.size == 0) {
            nothing_sent = true;
            expectRefused(whole, -1, cut.fields);
            expectRefused(whole, INT_MIN, cut.fields);
        }
    }
    EXPECT_TRUE(nothing_sent);
}

TEST_P(RecordEvents, NullRecordIsRefused) {
    const RecordEvent& event = GetParam();
    CallbackRecorder callbacks;
    int size = static_cast<int>(fromHex(event.record).size());
    EXPECT_EQ(dtv::deliverEvent(event.event_id, nullptr, size), 1);
    EXPECT_TRACE(log->take(), refused(event.event_id, size));
    EXPECT_TRUE(callbacks.take().empty());
}

TEST_P(RecordEvents, ObjectThatCannotBeBuiltEndsIt) {
    const RecordEvent& event = GetParam();
    std::vector<uint8_t> record = fromHex(event.record);
    int size = static_cast<int>(record.size());
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        std::string lines = startOf(size, event.fields);
        int before = 0;
        for (const Construction& object : event.constructions) {
            SCOPED_TRACE("object " + std::to_string(before));
            CallbackRecorder callbacks;
            StdoutCapture output;
            Calls described("ExceptionDescribe");
            Calls deleted("DeleteLocalRef");
            Calls frame_ends("PopLocalFrame");
            log->clear();
            {
                FailJni fails("NewObjectV", before, leaves);
                EXPECT_EQ(deliver(event.event_id, record), 1);
            }
            EXPECT_EQ(takeException(), "");
            EXPECT_TRACE(log->take(), refused(event.event_id, size, event.handler(),
                                              lines + "NEWFAIL " + object.rows() +
                                                  "\nDEBUG |CallMethod NG, ret = 1\n"));
            EXPECT_EQ(output.take(), "");
            EXPECT_TRUE(callbacks.take().empty());
            EXPECT_EQ(described.made(), leaves == FailJni::Leaves::exception ? 1 : 0);
            EXPECT_EQ(deleted.made(), 0);
            EXPECT_EQ(frame_ends.made(), 1);
            EXPECT_EQ(StrictJni::liveLocals(), 0);
            lines += "NEW " + object.rows() + "\n";
            ++before;
        }
    }
}

TEST_P(RecordEvents, CallbackThatThrowsCountsAsCalled) {
    const RecordEvent& event = GetParam();
    std::vector<uint8_t> record = fromHex(event.record);
    CallbackRecorder callbacks;
    Calls described("ExceptionDescribe");
    Calls deleted("DeleteLocalRef");
    callbacks.throwNext();
    EXPECT_EQ(deliver(event.event_id, record), 0);
    EXPECT_EQ(takeException(), "");
    int size = static_cast<int>(record.size());
    std::string lines = startOf(size, event.fields);
    for (const Construction& object : event.constructions) {
        lines += "NEW " + object.rows() + "\n";
    }
    lines += "STATIC " + std::to_string(event.callback_id) + "\nEND |ret = 0\n";
    EXPECT_TRACE(log->take(), delivered(event.event_id, size, event.handler(), lines));
    EXPECT_EQ(described.made(), 1);
    EXPECT_EQ(deleted.made(), static_cast<int>(event.constructions.size()));
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_EQ(deliver(event.event_id, record), 0) << "the thread delivers further events";
    EXPECT_EQ(callbacks.take(), (std::vector<std::string>{event.callback, event.callback}));
    EXPECT_EQ(described.made(), 1);
}

std::vector<std::string> afterDelivering(int event_id, const char* record) {
    harness::CallbackRecorder callbacks;
    EXPECT_EQ(deliver(event_id, harness::fromHex(record)), 0);
    return callbacks.take();
}

} // namespace events

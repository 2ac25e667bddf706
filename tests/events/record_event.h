// Events whose record has one fixed size: the same tests for a table of them.
#pragma once

#include "harness/event_trace.h"

#include <ostream>
#include <string>
#include <vector>

namespace events {

/// A constructor that the handler calls.
struct Construction {
    int method_id;
    int class_id;

    std::string rows() const { return std::to_string(method_id) + " " + std::to_string(class_id); }
};

/// The field lines when only `size` bytes were sent.
struct Cut {
    int size;
    std::vector<std::string> fields;
};

struct RecordEvent {
    const char* name; ///< "play_event_notify": the handler without "dtvsv_msgid_lib_"
    int event_id;
    const char* record;              ///< in hexadecimal; its length is the one that is taken
    const char* start;               ///< FUNCSTART's text
    std::vector<std::string> fields; ///< of the whole record
    std::vector<Construction> constructions;
    int callback_id;
    const char* callback; ///< what reaches Java
    bool size_is_error;   ///< whether a wrong size is an ERROR
    std::vector<Cut> cuts;

    std::string handler() const { return std::string("dtvsv_msgid_lib_") + name; }
};

std::ostream& operator<<(std::ostream& out, const RecordEvent& event);
std::string recordEventName(const testing::TestParamInfo<RecordEvent>& info);

/// What reaches Java of a record, given in hexadecimal, that is delivered.
std::vector<std::string> afterDelivering(int event_id, const char* record);

/// The later handlers' FUNCSTART prints the size that was received, which is not always the right
/// one.
constexpr const char* says_size = "recv_size = ";

class RecordEvents : public testing::TestWithParam<RecordEvent> {
protected:
    void SetUp() override;
    std::string startOf(int size, const std::vector<std::string>& fields) const;
    void expectRefused(const std::vector<uint8_t>& bytes, int size,
                       const std::vector<std::string>& fields);

    std::shared_ptr<harness::LogRecorder> log;
};

} // namespace events

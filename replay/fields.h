// The fields of a record, one by one, to be compared with those of another.
#pragma once

#include "sessions/bytes.h"

#include "records/catalogue.h"

#include <string>
#include <vector>

namespace replay {

struct FieldValue {
    std::string name; ///< with those of the records around it, as "cap.cap_info.font_size"
    std::string value;
};

/// The fields of which the record has a byte, then "reserved at 3" for reserved bytes that are not
/// zero, and "surplus" for what follows the layout.
std::vector<FieldValue> fieldValues(const catalogue::Record& layout, sessions::Bytes record);

/// A field that differs. A value is empty where the record has no such field.
struct FieldDifference {
    std::string name;
    std::string recorded;
    std::string this_run;
};

/// The fields in which two records differ.
std::vector<FieldDifference> differentFields(const std::vector<FieldValue>& recorded,
                                             const std::vector<FieldValue>& this_run);

} // namespace replay

// Which fields of a record are not in the log, over many records.
#pragma once

#include "records/catalogue.h"

#include <string>
#include <vector>

namespace trace_test {

class MissingFields {
public:
    explicit MissingFields(const catalogue::Record& layout)
        : layout_(layout), some_(layout.size), all_(layout.size, true) {}

    /// Takes which bytes of a record are known. A record may be shorter than its layout.
    void take(const std::vector<bool>& known);

    /// The fields that are not known in every record: "network.ts_name". "services[]" is an array
    /// of which nothing is known, "services[].name" a field of its elements.
    std::vector<std::string> names() const;

private:
    void add(const catalogue::Record& layout, const std::vector<size_t>& starts,
             const std::string& path, std::vector<std::string>& names) const;
    bool hasUnknown(const std::vector<size_t>& starts, const catalogue::Field& field) const;
    bool hasKnown(const std::vector<size_t>& starts, const catalogue::Field& field) const;

    const catalogue::Record& layout_;
    std::vector<bool> some_; ///< of each byte: whether it was known once
    std::vector<bool> all_;  ///< whether it was known each time
};

} // namespace trace_test

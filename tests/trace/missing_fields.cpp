#include "trace/missing_fields.h"

#include <algorithm>

namespace trace_test {

void MissingFields::take(const std::vector<bool>& known) {
    for (size_t i = 0; i < std::min(known.size(), all_.size()); ++i) {
        some_[i] = some_[i] || known[i];
        all_[i] = all_[i] && known[i];
    }
}

std::vector<std::string> MissingFields::names() const {
    std::vector<std::string> names;
    add(layout_, {0}, "", names);
    return names;
}

bool MissingFields::hasUnknown(const std::vector<size_t>& starts,
                               const catalogue::Field& field) const {
    return std::any_of(starts.begin(), starts.end(), [&](size_t start) {
        const auto first = all_.begin() + static_cast<ptrdiff_t>(start + field.offset);
        return std::find(first, first + static_cast<ptrdiff_t>(field.size * field.count), false) !=
               first + static_cast<ptrdiff_t>(field.size * field.count);
    });
}

/// Reserved bytes are always known: of a record, one of its fields counts.
bool MissingFields::hasKnown(const std::vector<size_t>& starts,
                             const catalogue::Field& field) const {
    std::vector<size_t> elements;
    for (const size_t start : starts) {
        for (size_t i = 0; i < field.count; ++i) {
            elements.push_back(start + field.offset + i * field.size);
        }
    }
    if (field.record != nullptr) {
        return std::any_of(field.record->fields.begin(), field.record->fields.end(),
                           [&](const catalogue::Field& each) { return hasKnown(elements, each); });
    }
    return std::any_of(elements.begin(), elements.end(), [&](size_t start) {
        const auto first = some_.begin() + static_cast<ptrdiff_t>(start);
        return std::find(first, first + static_cast<ptrdiff_t>(field.size), true) !=
               first + static_cast<ptrdiff_t>(field.size);
    });
}

void MissingFields::add(const catalogue::Record& layout, const std::vector<size_t>& starts,
                        const std::string& path, std::vector<std::string>& names) const {
    for (const catalogue::Field& field : layout.fields) {
        if (!hasUnknown(starts, field)) {
            continue;
        }
        const std::string name = path + field.name + (field.count > 1 ? "[]" : "");
        if (field.record == nullptr || !hasKnown(starts, field)) {
            names.push_back(name);
            continue;
        }
        std::vector<size_t> elements;
        for (const size_t start : starts) {
            for (size_t i = 0; i < field.count; ++i) {
                elements.push_back(start + field.offset + i * field.size);
            }
        }
        add(*field.record, elements, name + ".", names);
    }
}

} // namespace trace_test

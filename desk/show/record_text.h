// The bytes of a record as lines of text.
#pragma once

#include "sessions/bytes.h"

#include "records/catalogue.h"

#include <string>
#include <vector>

namespace show {

/// The column that lines do not pass.
constexpr size_t kColumns = 80;

/// The fields of a record, one on a line, from column `indent` on. Shown besides: reserved bytes
/// that are not zero, where the record ends before its layout does, and what follows it. `known`
/// says of each byte whether it is known; empty: all are. Of what is not, "unknown" is shown.
std::vector<std::string> recordLines(const catalogue::Record& layout, sessions::Bytes record,
                                     size_t indent, const std::vector<bool>& known = {});

/// Bytes of unknown meaning, 16 on a line, with their offset before and as ASCII after them.
std::vector<std::string> dumpLines(sessions::Bytes bytes, size_t indent);

} // namespace show

#include "desk/explain/redacted_lines.h"

#include <vector>

namespace explain {

RedactedLines::RedactedLines(const sessions::HashKey* key, sessions::LogReader& reader)
    : reader_(reader) {
    if (key != nullptr) {
        reader.keepLines();
        redaction_.emplace(*key);
        lines_.emplace(*redaction_, sessions::OtherLines::kReplaced);
    }
}

void RedactedLines::take(sessions::LogLine& line) {
    if (!lines_) {
        return;
    }
    text_.clear();
    for (const std::string& redacted : lines_->redact(line, reader_.lines())) {
        const std::string_view text = sessions::readHeader(redacted).text;
        text_.append(text_.empty() ? "" : "\n").append(text);
    }
    if (line.kind > sessions::LogLineKind::kCopy) {
        line.text = text_;
        return;
    }
    const size_t start = sessions::findTraceLine(text_);
    const std::string_view text =
        std::string_view(text_).substr(start != std::string::npos ? start : 0);
    if (line.kind == sessions::LogLineKind::kCopy ? sessions::readTraceCopy(text, line.trace)
                                                  : sessions::readTraceLine(text, line.trace)) {
        sessions::understand(line.trace);
    }
    line.text = text;
}

} // namespace explain

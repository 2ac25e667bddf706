#include "harness/read_back.h"

#include "sessions/log/trace_lines.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cinttypes>
#include <cstdlib>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace harness {
namespace {

constexpr std::string_view start_of_formats = ",TENRIK,%-8s,%s,%s(),%4d,";

/// A number as the conversion prints it.
std::string printed(char conversion, int64_t number) {
    char text[32];
    switch (conversion) {
    case 'd':
        return std::to_string(number);
    case 'x':
        std::snprintf(text, sizeof text, "%" PRIx64, static_cast<uint64_t>(number));
        return text;
    case 'p':
        std::snprintf(text, sizeof text, "0x%" PRIx64, static_cast<uint64_t>(number));
        return number == 0 ? "(nil)" : text;
    default:
        return "?";
    }
}

/// The message again, from the values that were read.
std::string writtenFrom(const sessions::TraceLine& line) {
    std::string text(line.known->literals.front());
    for (size_t i = 0; i < line.values.size(); ++i) {
        const sessions::ShownValue& value = line.values[i];
        const char conversion = line.known->values[i].conversion;
        text += conversion == 's' ? std::string(value.text) : printed(conversion, value.number);
        text += line.known->literals[i + 1];
    }
    return text;
}

/// Never destroyed: the bridge writes lines until its process has ended.
struct Written {
    std::mutex mutex;
    std::set<const sessions::KnownLine*> lines;
};

void noteWritten(const sessions::KnownLine* known) {
    static Written& written = *new Written;
    const char* const path = std::getenv("DTV_WRITTEN_LINES");
    if (path == nullptr) {
        return;
    }
    const std::lock_guard lock(written.mutex);
    if (!written.lines.insert(known).second) {
        return;
    }
    const std::string line = std::string(nameOf(known->level)) + "|" +
                             std::string(known->function) + "|" + std::string(known->format) + "\n";
    const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    const bool done =
        file >= 0 && write(file, line.data(), line.size()) == static_cast<ssize_t>(line.size());
    if (file >= 0) {
        close(file);
    }
    EXPECT_TRUE(done) << path << " cannot be written";
}

} // namespace

void checkReadBack(const dtv::LogLine& given) {
    // What the reader knows is made of the sources. Who runs the tests with changed sources, and
    // does not make it again, wants to know what the tests themselves say.
    static const char* const wish = std::getenv("DTV_TEST_READ_BACK");
    if (wish != nullptr && std::string_view(wish) == "off") {
        return;
    }
    const std::string_view text = given.text;
    sessions::TraceLine line;
    if (!readTraceLine(text, line)) {
        ADD_FAILURE() << "not read back: " << text;
        return;
    }
    understand(line);
    if (line.known == nullptr || line.shortened) {
        ADD_FAILURE() << "not known: " << text;
        return;
    }
    EXPECT_EQ(std::string(start_of_formats) + std::string(line.known->format), given.format)
        << text;
    EXPECT_EQ(line.values.size(), line.known->values.size()) << text;
    EXPECT_EQ(writtenFrom(line), line.message) << text;
    EXPECT_EQ(text.substr(text.size() - line.message.size()), line.message) << text;
    noteWritten(line.known);
}

} // namespace harness

// The formats in the library that the device loads, beside those that the reader of logs knows.
#include "sessions/log/trace_lines.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

constexpr char kPrefix[] = ",TENRIK,%-8s,%s,%s(),%4d,";

/// What follows the prefix in each string of the library that begins with it.
std::set<std::string> formatsInLibrary() {
    std::ifstream file(DTV_JNI_LIBRARY_FILE, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::set<std::string> formats;
    const std::string start = kPrefix;
    for (size_t at = bytes.find(start); at != std::string::npos; at = bytes.find(start, at + 1)) {
        const size_t begin = at + start.size();
        formats.insert(bytes.substr(begin, bytes.find('\0', begin) - begin));
    }
    return formats;
}

TEST(KnownFormats, AreThoseOfTheLibrary) {
    const std::set<std::string> in_library = formatsInLibrary();
    EXPECT_GT(in_library.size(), 200u);
    std::set<std::string> known;
    for (const sessions::KnownLine& line : sessions::knownLines()) {
        known.emplace(line.format);
    }
    for (const std::string& format : in_library) {
        EXPECT_EQ(known.count(format), 1u) << "not known: " << format;
    }
    for (const std::string& format : known) {
        EXPECT_EQ(in_library.count(format), 1u) << "not in the library: " << format;
    }
}

} // namespace

#include "script/script_text.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

namespace {

/// A file that is removed with this object.
class TextFile {
public:
    explicit TextFile(const std::string& text)
        : path_(testing::TempDir() + "script-" + std::to_string(getpid()) + ".json") {
        std::ofstream(path_, std::ios::binary) << text;
    }
    ~TextFile() { std::remove(path_.c_str()); }
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

    const std::string& path() const { return path_; }

private:
    const std::string path_;
};

} // namespace

simulator::Script scriptOf(const std::string& text) {
    const TextFile file(text);
    std::string error;
    std::optional<simulator::Script> script = simulator::readScript(file.path(), error);
    EXPECT_TRUE(script.has_value());
    EXPECT_EQ("", error) << text;
    return script.value_or(simulator::Script{});
}

std::string errorOf(const std::string& text) {
    const TextFile file(text);
    std::string error;
    const bool read = simulator::readScript(file.path(), error).has_value();
    EXPECT_EQ(read, error.empty());
    if (read) {
        return "";
    }
    EXPECT_EQ(file.path() + ":", error.substr(0, file.path().size() + 1));
    return error.substr(file.path().size() + 1);
}

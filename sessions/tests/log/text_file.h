// A log in memory that is opened like any file.
#pragma once

#include "sessions/log/log_reader.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <string>
#include <vector>

class TextFile {
public:
    explicit TextFile(std::string_view bytes) : descriptor_(memfd_create("log", 0)) {
        write(bytes);
    }
    ~TextFile() { close(descriptor_); }
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

    /// Adds to its end.
    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            ASSERT_GT(written, 0);
            bytes.remove_prefix(static_cast<size_t>(written));
        }
    }
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
    int descriptor() const { return descriptor_; }

private:
    const int descriptor_;
};

/// The bytes as gzip writes them.
inline std::string compressed(const std::string& bytes) {
    z_stream stream = {};
    EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string out(deflateBound(&stream, bytes.size()) + 32, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

// The capture of the messages, written as pcapng without a library: three kinds of block suffice.

// Captures beyond 2 GiB, also where a file offset is 32 bits wide by default.
#define _FILE_OFFSET_BITS 64

#include "capture.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

namespace dtv {
namespace {

constexpr uint8_t message_version = 1;
constexpr size_t message_header = 36;

/// The longest packet of the file, in bytes. What a record has beyond it is left out, and the
/// packet says so.
constexpr size_t longest_packet = 65536;

/// The longest description of the session, in bytes. A reader looks for damage in a section header
/// that is longer than a few of these.
constexpr size_t longest_description = 2000;

/// Little-endian bytes, one after the other, in a room that is large enough for them.
template <size_t Room>
class Bytes {
public:
    void put8(uint8_t value) { bytes_[size_++] = value; }
    void put16(uint16_t value) {
        put8(static_cast<uint8_t>(value));
        put8(static_cast<uint8_t>(value >> 8));
    }
    void put32(uint32_t value) {
        put16(static_cast<uint16_t>(value));
        put16(static_cast<uint16_t>(value >> 16));
    }
    void put(const void* bytes, size_t count) {
        std::memcpy(bytes_ + size_, bytes, count);
        size_ += count;
    }
    iovec all() { return {bytes_, size_}; }

private:
    unsigned char bytes_[Room];
    size_t size_ = 0;
};

constexpr size_t padded(size_t size) {
    return (size + 3) / 4 * 4;
}

/// What the section header says of the session, until it is written. Never destroyed.
struct Description {
    std::mutex mutex;
    std::string lines;
    bool written = false;

    static Description& instance() {
        static Description& description = *new Description;
        return description;
    }
};

/// The name of the calling thread, with zero bytes to its end.
struct ThreadName {
    char text[16] = {};

    ThreadName() {
        char name[sizeof text] = {};
        if (pthread_getname_np(pthread_self(), name, sizeof name) == 0) {
            std::memcpy(text, name, strnlen(name, sizeof name));
        }
    }
};

uint64_t nanosecondsNow() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

size_t lengthOf(const void* record, int size) {
    return record != nullptr && size > 0 ? static_cast<size_t>(size) : 0;
}

/// What the capture does to errno is not the caller's business.
class KeepErrno {
public:
    KeepErrno() : value_(errno) {}
    ~KeepErrno() { errno = value_; }
    KeepErrno(const KeepErrno&) = delete;
    KeepErrno& operator=(const KeepErrno&) = delete;

private:
    const int value_;
};

} // namespace

/// Never destroyed: messages pass until the process has ended.
Capture* Capture::instance() {
    static Capture* const capture = open();
    return capture;
}

Capture::Capture(int descriptor, std::string path)
    : descriptor_(descriptor), tally_(*new WriteTally("messages", std::move(path))) {}

Capture* Capture::open() {
    const KeepErrno keep_errno;
    const char* path = std::getenv("DTV_CAPTURE_FILE");
    if (path == nullptr || *path == '\0') {
        return nullptr;
    }
    // O_NONBLOCK, so that a pipe without a reader does not hold up the process.
    const int file =
        ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0644);
    if (file < 0) {
        std::fprintf(stderr, "libDtv: cannot open the capture file %s: %s\n", path,
                     std::strerror(errno));
        noteUnwritableFile();
        return nullptr;
    }
    // What goes to a pipe may be written in part, or end the process with a signal.
    struct stat status = {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        std::fprintf(stderr, "libDtv: the capture file %s is not a regular file\n", path);
        noteUnwritableFile();
        close(file);
        return nullptr;
    }
    auto* capture = new Capture(file, path);
    capture->writeStart();
    return capture;
}

bool Capture::describe(std::string_view lines) {
    Description& description = Description::instance();
    const std::lock_guard<std::mutex> lock(description.mutex);
    if (description.written || lines.size() > longest_description) {
        return false;
    }
    description.lines = lines;
    return true;
}

bool describeCapture(std::string_view lines) {
    return Capture::describe(lines);
}

/// The section header and the one interface.
void Capture::writeStart() {
    Description& description = Description::instance();
    const std::lock_guard<std::mutex> lock(description.mutex);
    description.written = true;
    const std::string& lines = description.lines;
    const size_t comment = lines.empty() ? 0 : 4 + padded(lines.size());
    const auto section_size = static_cast<uint32_t>(44 + comment);

    Bytes<96 + 4 + padded(longest_description)> blocks;
    blocks.put32(0x0a0d0d0a); // section header block
    blocks.put32(section_size);
    blocks.put32(0x1a2b3c4d); // the bytes' order
    blocks.put16(1);          // version 1.0
    blocks.put16(0);
    blocks.put32(0xffffffff); // the section's length is not given
    blocks.put32(0xffffffff);
    blocks.put16(4); // shb_userappl
    blocks.put16(6);
    blocks.put("libDtv\0", 8);
    if (!lines.empty()) {
        blocks.put16(1); // opt_comment
        blocks.put16(static_cast<uint16_t>(lines.size()));
        blocks.put(lines.data(), lines.size());
        blocks.put("\0\0", padded(lines.size()) - lines.size());
    }
    blocks.put32(0); // end of the options
    blocks.put32(section_size);

    blocks.put32(1); // interface description block
    blocks.put32(44);
    blocks.put16(147); // LINKTYPE_USER0
    blocks.put16(0);
    blocks.put32(longest_packet);
    blocks.put16(2); // if_name
    blocks.put16(6);
    blocks.put("libDtv\0", 8);
    blocks.put16(9); // if_tsresol: 10^-9 s
    blocks.put16(1);
    blocks.put32(9);
    blocks.put32(0); // end of the options
    blocks.put32(44);

    const iovec part = blocks.all();
    writeBlocks(&part, 1);
}

/// One enhanced packet block.
void Capture::write(const Message& message) {
    const KeepErrno keep_errno;
    if (tally_.hasEnded()) {
        tally_.countLost();
        return;
    }
    const size_t length = std::min(message.length, longest_packet - message_header);
    const size_t captured = message_header + length;
    const size_t padding = (4 - captured % 4) % 4;
    const auto block_size = static_cast<uint32_t>(28 + captured + padding + 16);
    const uint64_t now = nanosecondsNow();
    const ThreadName thread_name;
    const bool outbound = message.kind == Kind::command || message.kind == Kind::refused_event;

    Bytes<28 + message_header> head;
    head.put32(6); // enhanced packet block
    head.put32(block_size);
    head.put32(0); // the interface
    head.put32(static_cast<uint32_t>(now >> 32));
    head.put32(static_cast<uint32_t>(now));
    head.put32(static_cast<uint32_t>(captured));
    head.put32(static_cast<uint32_t>(message_header + message.length));

    head.put8(message_version);
    head.put8(static_cast<uint8_t>(message.kind));
    head.put8(message.surfaces);
    head.put8(0);
    head.put32(static_cast<uint32_t>(gettid()));
    head.put32(static_cast<uint32_t>(message.id));
    head.put32(static_cast<uint32_t>(message.value));
    head.put32(static_cast<uint32_t>(message.size));
    head.put(thread_name.text, sizeof thread_name.text);

    Bytes<3 + 16> tail;
    tail.put("\0\0", padding);
    tail.put16(2); // epb_flags
    tail.put16(4);
    tail.put32(outbound ? 2 : 1);
    tail.put32(0); // end of the options
    tail.put32(block_size);

    const iovec parts[] = {head.all(), {const_cast<void*>(message.record), length}, tail.all()};
    if (writeBlocks(parts, 3)) {
        tally_.countKept();
    } else {
        tally_.countLost();
    }
}

/// In one call, so that the blocks of several threads do not mix. A part of a block cannot be
/// completed afterwards: another thread's block may follow it by then.
bool Capture::writeBlocks(const iovec* parts, int count) {
    size_t size = 0;
    for (int i = 0; i < count; ++i) {
        size += parts[i].iov_len;
    }
    ssize_t written = 0;
    do {
        written = writev(descriptor_, parts, count);
    } while (written < 0 && errno == EINTR);
    if (written >= 0 && static_cast<size_t>(written) == size) {
        return true;
    }
    const char* reason = written < 0 ? strerrordesc_np(errno) : "no room for a whole message";
    if (reason == nullptr) {
        reason = "it cannot be written";
    }
    if (tally_.end(reason)) {
        std::fprintf(stderr, "libDtv: the capture ends, for %s cannot be written: %s\n",
                     tally_.path().c_str(), reason);
    }
    return false;
}

void Capture::command(const Command& command) {
    const int surfaces = command.references != nullptr ? command.references->surface_count : 0;
    write({Kind::command, static_cast<uint8_t>(std::clamp(surfaces, 0, 255)), command.message_id, 0,
           command.size, command.data, lengthOf(command.data, command.size)});
}

void Capture::answer(int message_id, int result, const void* reply, int reply_size, int capacity) {
    write({Kind::answer, 0, message_id, result, reply_size, reply,
           lengthOf(reply, std::min(reply_size, capacity))});
}

void Capture::event(int event_id, const void* data, int size) {
    write({Kind::event, 0, event_id, 0, size, data, lengthOf(data, size)});
}

void Capture::refusedEvent(int event_id, int result) {
    write({Kind::refused_event, 0, event_id, result, 0, nullptr, 0});
}

} // namespace dtv

#include "replay/tests/capture_writer.h"

#include <algorithm>
#include <cstring>

namespace replay {
namespace {

size_t padded(size_t size) {
    return (size + 3) / 4 * 4;
}

size_t optionSize(const std::string& value) {
    return value.empty() ? 0 : 4 + padded(value.size());
}

} // namespace

CaptureWriter::CaptureWriter(const std::string& comment) {
    const size_t section = 28 + (comment.empty() ? 0 : optionSize(comment) + 4);
    put(0x0a0d0d0a, 4);
    put(section, 4);
    put(0x1a2b3c4d, 4);
    put(1, 4);
    put(~uint64_t{0}, 8);
    if (!comment.empty()) {
        putOption(1, comment);
        put(0, 4);
    }
    put(section, 4);
    put(1, 4);
    put(32, 4);
    put(147, 4);
    put(65536, 4);
    put(9, 2); // if_tsresol
    put(1, 2);
    put(9, 4); // nanoseconds
    put(0, 4);
    put(32, 4);
}

void CaptureWriter::add(const WrittenMessage& message) {
    const size_t data = 36 + message.record.size();
    const size_t options = message.comment.empty() ? 0 : optionSize(message.comment) + 4;
    const size_t block = 32 + padded(data) + options;
    put(6, 4);
    put(block, 4);
    put(0, 4);
    put(message.time >> 32, 4);
    put(message.time & 0xffffffff, 4);
    put(data, 4);
    put(data + message.left_out, 4);
    put(1, 1);
    put(static_cast<uint64_t>(message.kind), 1);
    put(static_cast<uint64_t>(message.surfaces), 2);
    put(message.thread_id, 4);
    put(static_cast<uint32_t>(message.id), 4);
    put(static_cast<uint32_t>(message.value), 4);
    const int size = message.size != -1 ? message.size : static_cast<int>(message.record.size());
    put(static_cast<uint32_t>(size), 4);
    char name[16] = {};
    std::memcpy(name, message.thread.data(), std::min<size_t>(message.thread.size(), 15));
    putBytes(name, sizeof name);
    putBytes(message.record.data(), message.record.size());
    put(0, padded(data) - data);
    if (!message.comment.empty()) {
        putOption(1, message.comment);
        put(0, 4);
    }
    put(block, 4);
}

void CaptureWriter::put(uint64_t value, size_t size) {
    for (size_t i = 0; i < size; ++i) {
        bytes_ += static_cast<char>(value >> (8 * i));
    }
}

void CaptureWriter::putBytes(const void* bytes, size_t size) {
    bytes_.append(static_cast<const char*>(bytes), size);
}

void CaptureWriter::putOption(unsigned code, const std::string& value) {
    put(code, 2);
    put(value.size(), 2);
    putBytes(value.data(), value.size());
    put(0, padded(value.size()) - value.size());
}

} // namespace replay

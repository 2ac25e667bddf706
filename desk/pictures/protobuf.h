// Writes messages in the wire format of protocol buffers: fields of variable-length numbers, of
// eight bytes, and of bytes with their length.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace pictures {

class Protobuf {
public:
    /// A number that is not negative, or an enumeration.
    Protobuf& number(unsigned field, uint64_t value) {
        key(field, 0);
        variable(value);
        return *this;
    }
    /// int32 and int64.
    Protobuf& integer(unsigned field, int64_t value) {
        return number(field, static_cast<uint64_t>(value));
    }
    Protobuf& fixed(unsigned field, uint64_t value) {
        key(field, 1);
        for (int i = 0; i < 8; ++i) {
            bytes_ += static_cast<char>(value >> (8 * i));
        }
        return *this;
    }
    Protobuf& real(unsigned field, double value) {
        uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return fixed(field, bits);
    }
    /// Texts are UTF-8.
    Protobuf& text(unsigned field, std::string_view value) {
        key(field, 2);
        variable(value.size());
        bytes_ += value;
        return *this;
    }
    Protobuf& message(unsigned field, const Protobuf& value) { return text(field, value.bytes_); }

    const std::string& bytes() const { return bytes_; }

private:
    void key(unsigned field, unsigned type) { variable(field << 3 | type); }
    void variable(uint64_t value) {
        while (value >= 0x80) {
            bytes_ += static_cast<char>(value | 0x80);
            value >>= 7;
        }
        bytes_ += static_cast<char>(value);
    }

    std::string bytes_;
};

} // namespace pictures

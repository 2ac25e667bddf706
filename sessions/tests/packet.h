// Packets of a capture, for tests.
#pragma once

#include "sessions/capture_reader.h"
#include "sessions/tests/hex.h"

#include <cstdint>
#include <string>

/// The packet at byte 88 of a file, which lacks its last `left_out` bytes.
inline sessions::Packet packetOf(const std::string& hex, uint32_t left_out = 0) {
    sessions::Packet packet;
    packet.offset = 88;
    packet.data = fromHex(hex);
    packet.original_size = static_cast<uint32_t>(packet.data.size()) + left_out;
    return packet;
}

// The numbers of pcapng that a capture of the DTV service is made of.
#pragma once

#include <cstdint>

namespace sessions {

constexpr uint32_t kSectionHeader = 0x0a0d0d0a; ///< the same in both byte orders
constexpr uint32_t kInterfaceDescription = 1;
constexpr uint32_t kEnhancedPacket = 6;

constexpr uint16_t kNoMoreOptions = 0;
constexpr uint16_t kPacketFlags = 2;
constexpr uint16_t kInterfaceName = 2;
constexpr uint16_t kWriter = 4;
constexpr uint16_t kTimeResolution = 9;
constexpr uint16_t kTimeOffset = 14;

constexpr uint16_t kUserLinkType = 147;

} // namespace sessions

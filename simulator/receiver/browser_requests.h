// The requests of a document of data broadcasting to the application.
#pragma once

#include "service/nvram.h"

#include <cstddef>
#include <cstdint>

namespace simulator {

class Service;

/// In the order in which the document sends them.
enum class BrowserRequest : size_t {
    kPermission,
    kAuth,
    kWriteNvram,
    kReadNvram,
    kFep,
    kMail,
    kPhonebook,
    kCall,
    kSchedule,
    kBrowser,
    kSavePicture,
    kStartTvLink,
    kEnrolTvLink,
};
constexpr size_t kBrowserRequests = 13;

/// The task numbers that the answers to two of them have to give back.
constexpr int32_t kPermissionTask = 101;
constexpr int32_t kAuthTask = 102;

/// The block that the document writes and then reads, and what it writes.
NvramBlock documentBlock();
NvramContents documentMemory();

/// Sends the request with this place in the order, below kBrowserRequests.
void sendBrowserRequest(Service& service, uint16_t handle, size_t place);

} // namespace simulator

#include "records/limits.h"

#include <algorithm>
#include <iterator>

namespace hostile {

// clang-format off
const EventLimits kEvents[] = {
    {0x10000042, 12, "onEvDtvsvBmlPermissionReq", EventLimits::kEvent},
    {0x10000043, 8, "onEvDtvsvBmlAuthReq", EventLimits::kEvent},
    {0x10000044, 116, "onEvDtvsvBmlWriteNvramReq", EventLimits::kEvent},
    {0x10000045, 8, "onEvDtvsvBmlReadNvramReq", EventLimits::kEvent},
    {0x10000046, 1940, "onEvDtvsvBmlStartFepReq", EventLimits::kEvent},
    {0x10000047, 2530, "onEvDtvsvBmlMailReq", EventLimits::kEvent},
    {0x10000048, 1310, "onEvDtvsvBmlPhoneBookReq", EventLimits::kEvent},
    {0x10000049, 102, "onEvDtvsvBmlCallReq", EventLimits::kEvent},
    {0x1000004a, 1490, "onEvDtvsvBmlScheduleReq", EventLimits::kEvent},
    {0x1000004b, 2056, "onEvDtvsvBmlBrowserReq", EventLimits::kEvent},
    {0x1000004c, 1580, "onEvDtvsvBmlSavePictureReq", EventLimits::kEvent},
    {0x1000004d, 2056, "onEvDtvsvBmlStartTvlinkReq", EventLimits::kEvent},
    {0x1000004e, 960, "onEvDtvsvBmlEnrolTvlinkReq", EventLimits::kEvent},
    {0x1000004f, kAnySize, "onEvDtvsvCreateReply", EventLimits::kReply},
    {0x10000050, kAnySize, "onEvDtvsvReleaseReply", EventLimits::kReply},
    {0x10000051, 12, "onEvDtvsvStartScanReply", EventLimits::kEvent},
    {0x10000052, 16, "onEvDtvsvStartBroadcastReply", EventLimits::kEvent},
    {0x10000053, kAnySize, "onEvDtvsvTerminateBroadcastReply", EventLimits::kReply},
    {0x10000054, 16, "onEvDtvsvSelectChannelReply", EventLimits::kEvent},
    {0x10000055, kAnySize, "onEvDtvsvStartSearchChannelReply", EventLimits::kReply},
    {0x10000056, kAnySize, "onEvDtvsvSetDisplayAllReply", EventLimits::kReply},
    {0x10000057, kAnySize, "onEvDtvsvSetScreenDisplayReply", EventLimits::kReply},
    {0x10000058, kAnySize, "onEvDtvsvSetCapDisplayReply", EventLimits::kReply},
    {0x10000059, kAnySize, "onEvDtvsvSetBmlDisplayReply", EventLimits::kReply},
    {0x1000005a, 12, "onEvDtvsvReleaseDisplayReply", EventLimits::kEvent},
    {0x1000005b, kAnySize, "onEvDtvsvControlDisplayModeReply", EventLimits::kReply},
    {0x1000005c, kAnySize, "onEvDtvsvControlScreenDisplayReply", EventLimits::kReply},
    {0x1000005d, kAnySize, "onEvDtvsvControlDecodeScreenReply", EventLimits::kReply},
    {0x1000005e, kAnySize, "onEvDtvsvChangeAudioComponentReply", EventLimits::kReply},
    {0x1000005f, kAnySize, "onEvDtvsvChangeSoundDualMonoReply", EventLimits::kReply},
    {0x10000060, kAnySize, "onEvDtvsvSetSoundVideoDelayReply", EventLimits::kReply},
    {0x10000061, kAnySize, "onEvDtvsvControlDecodeAudioReply", EventLimits::kReply},
    {0x10000062, kAnySize, "onEvDtvsvControlCapReply", EventLimits::kReply},
    {0x10000063, kAnySize, "onEvDtvsvControlBmlReply", EventLimits::kReply},
    {0x10000064, kAnySize, "onEvDtvsvChangeCapLangReply", EventLimits::kReply},
    {0x10000065, kAnySize, "onEvDtvsvControlLNAReply", EventLimits::kReply},
    {0x10000066, kAnySize, "onEvDtvsvSetTunerLogReply", EventLimits::kReply},
    {0x10000067, 12, "onEvDtvsvGetTunerLogStatusReply", EventLimits::kEvent},
    {0x10000068, kAnySize, "onEvDtvsvBmlStartTvlinkReply", EventLimits::kReply},
    {0x10000069, kAnySize, "onEvDtvsvBmlEndTvlinkReply", EventLimits::kReply},
    {0x1000006a, kAnySize, "onEvDtvsvBmlRebootBrowserReply", EventLimits::kReply},
    {0x1000006b, 16, "onEvDtvsvStartRecReply", EventLimits::kEvent},
    {0x1000006c, 12, "onEvDtvsvTerminateRecReply", EventLimits::kEvent},
    {0x1000006d, kAnySize, "onEvDtvsvStartPlayReply", EventLimits::kReply},
    {0x1000006e, kAnySize, "onEvDtvsvChangePlaySpeedReply", EventLimits::kReply},
    {0x1000006f, kAnySize, "onEvDtvsvPausePlayReply", EventLimits::kReply},
    {0x10000070, kAnySize, "onEvDtvsvRestartPlayReply", EventLimits::kReply},
    {0x10000071, kAnySize, "onEvDtvsvSkipPlayReply", EventLimits::kReply},
    {0x10000072, kAnySize, "onEvDtvsvFrameSlidePlayReply", EventLimits::kReply},
    {0x10000073, kAnySize, "onEvDtvsvTerminatePlayReply", EventLimits::kReply},
    {0x10000074, kAnySize, "onEvDtvsvMovePausePositionReply", EventLimits::kReply},
    {0x1000007f, 132, "onEvDtvsvScanNotify", EventLimits::kCounted, 110, 2, 8},
    {0x10000080, 8, "onEvDtvsvTerminateScanNotify", EventLimits::kEvent},
    {0x10000081, 8, "onEvDtvsvStartSearchChannelNotify", EventLimits::kEvent},
    {0x10000082, 16, "onEvDtvsvTerminateSearchChannelNotify", EventLimits::kEvent},
    {0x10000083, 8, "onEvDtvsvChangeAudioMainSubNotify", EventLimits::kEvent},
    {0x10000084, 8, "onEvDtvsvSelectAudioComponentNotify", EventLimits::kEvent},
    {0x10000085, 4, "onEvDtvsvBmlStatusNotify", EventLimits::kEvent},
    {0x10000086, 4, "onEvDtvsvCapStatusNotify", EventLimits::kEvent},
    {0x10000087, 8, "onEvDtvsvAssignVideoAreaNotify", EventLimits::kEvent},
    {0x10000088, 4, "onEvDtvsvGetCaptionDataNotify", EventLimits::kEvent},
    {0x10000089, 4, "onEvDtvsvBmlDispIconNotify", EventLimits::kEvent},
    {0x1000008a, 2, "onEvDtvsvBmlEndFepNotify", EventLimits::kEvent},
    {0x1000008b, 12, "onEvDtvsvGoodSensNotify", EventLimits::kEvent},
    {0x1000008c, 12, "onEvDtvsvBadSensNotify", EventLimits::kEvent},
    {0x1000008d, kAnySize, "onEvDtvsvBmlSavePictureNotify", EventLimits::kReply},
    {0x1000008e, 12, "onEvDtvsvCaInfoNotify", EventLimits::kEvent},
    {0x1000008f, 20, "onEvDtvsvReceiveSensitivityNotify", EventLimits::kEvent},
    {0x10000090, 124, "onEvDtvsvNetworkInfoNotify", EventLimits::kCounted, 106, 2, 7},
    {0x10000091, kAnySize, "onEvDtvsvServiceInfoNotify", EventLimits::kCounted, 16, 1, 8},
    {0x10000092, 16, "onEvDtvsvComponentInfoNotify", EventLimits::kEvent},
    {0x10000093, 6380, "onEvDtvsvReceiveEpgInfoNotify", EventLimits::kCounted, 1288, 2, 8},
    {0x10000094, 16, "onEvDtvsvUpdateVideoInfoNotify", EventLimits::kEvent},
    {0x10000095, 12, "onEvDtvsvUpdateAudioInfoNotify", EventLimits::kEvent},
    {0x10000096, 12, "onEvDtvsvCopyControlInfoNotify", EventLimits::kEvent},
    {0x10000097, 2, "broadcast_fatal_error_notify", EventLimits::kNotCalled},
    {0x10000098, 16, "onEvDtvsvRecStatusNotify", EventLimits::kEvent},
    {0x10000099, 2, "caption_fatal_error_notify", EventLimits::kNotCalled},
    {0x1000009a, 20, "onEvDtvsvRecInfoNotify", EventLimits::kEvent},
    {0x1000009b, 16, "onEvDtvsvPlayStatusNotify", EventLimits::kEvent},
    {0x1000009c, 24, "onEvDtvsvPlayEventNotify", EventLimits::kEvent},
    {0x1000009d, 8, "onEvDtvsvPlayErrorNotify", EventLimits::kEvent},
    {0x1000009e, 32, "onEvDtvsvTunerSensitivityDataNotify", EventLimits::kEvent},
};
// clang-format on
const size_t kEventCount = std::size(kEvents);

namespace {

/// Every message buffer has room for as many bytes.
constexpr int kSmallestRecord = 8;

/// The little-endian number at an offset; bytes that were not sent are zero.
uint32_t number(const uint8_t* data, size_t available, int at, int width) {
    uint32_t value = 0;
    for (int i = width - 1; i >= 0; --i) {
        const auto place = static_cast<size_t>(at + i);
        value = value << 8 | (place < available ? data[place] : 0);
    }
    return value;
}

} // namespace

const EventLimits* findLimits(int id) {
    const EventLimits* const end = kEvents + kEventCount;
    const EventLimits* const found = std::lower_bound(
        kEvents, end, id, [](const EventLimits& event, int wanted) { return event.id < wanted; });
    return found != end && found->id == id ? found : nullptr;
}

size_t readableBytes(int id, int size) {
    const EventLimits* const event = findLimits(id);
    const bool is_reply = event != nullptr && event->form == EventLimits::kReply;
    return static_cast<size_t>(std::max(size, is_reply ? kSmallestRecord : 0));
}

Outcome expected(int id, const uint8_t* data, int size) {
    constexpr Outcome kRefused = {1, nullptr, 0};
    const EventLimits* const event = findLimits(id);
    if (event == nullptr || data == nullptr) {
        return kRefused;
    }
    if (event->size != kAnySize && event->size != size) {
        return kRefused;
    }
    const size_t available = readableBytes(id, size);
    const auto handle = static_cast<int>(number(data, available, 0, 2));
    if (event->form == EventLimits::kNotCalled) {
        return {0, nullptr, 0};
    }
    if (event->form == EventLimits::kCounted &&
        number(data, available, event->count_at, event->count_width) >
            static_cast<uint32_t>(event->highest_count)) {
        return kRefused;
    }
    return {0, event->callback, handle};
}

} // namespace hostile

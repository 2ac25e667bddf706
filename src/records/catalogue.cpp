#include "records/catalogue.h"

#include <algorithm>
#include <type_traits>

namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;

/// The description of a record; there from the first mention, filled while the program starts.
template <class Type>
Record& recordOf() {
    static Record& record = *new Record;
    return record;
}

template <class Type>
bool describeRecord(const char* name) {
    recordOf<Type>().name = name;
    recordOf<Type>().size = sizeof(Type);
    return true;
}

template <class Element>
constexpr Kind kindOf(bool is_array) {
    if (std::is_class_v<Element>) {
        return Kind::kRecord;
    }
    if (std::is_same_v<Element, char>) {
        return Kind::kText;
    }
    if (is_array && sizeof(Element) == 1) {
        return Kind::kBytes;
    }
    return std::is_signed_v<Element> ? Kind::kSigned : Kind::kUnsigned;
}

template <class Owner, class Type>
bool describeField(const char* name, size_t offset) {
    using Element = std::remove_extent_t<Type>;
    constexpr Kind kind = kindOf<Element>(std::is_array_v<Type>);
    constexpr bool whole = kind == Kind::kBytes || kind == Kind::kText;
    Field field{name,
                offset,
                whole ? sizeof(Type) : sizeof(Element),
                whole ? 1 : sizeof(Type) / sizeof(Element),
                kind,
                nullptr};
    if constexpr (std::is_class_v<Element>) {
        field.record = &recordOf<Element>();
    }
    recordOf<Owner>().fields.push_back(std::move(field));
    return true;
}

} // namespace

#define DTV_DESCRIBE_RECORD(record)                                                                \
    [[maybe_unused]] static const bool described_##record = describeRecord<record>(#record);
#define DTV_DESCRIBE_FIELD(record, field)                                                          \
    [[maybe_unused]] static const bool described_##record##_##field =                              \
        describeField<record, decltype(record::field)>(#field, offsetof(record, field));

#include "records/bml_records.h"
#include "records/command_records.h"
#include "records/drawing_info.h"
#include "records/message_ids.h"
#include "records/programme_records.h"
#include "records/reply_records.h"
#include "records/status_records.h"

namespace catalogue {
namespace {

/// The texts of the guide are not bytes as all others are.
[[maybe_unused]] const bool guide_texts = [] {
    for (Field& field : recordOf<PRG_INFO>().fields) {
        if (field.kind == Kind::kText) {
            field.kind = Kind::kUtf16Text;
        }
    }
    return true;
}();

template <class Type>
Message message(int id, std::string_view name) {
    return {id, name, &recordOf<Type>(), nullptr};
}

template <class Type, class Reply>
Message exchange(int id, std::string_view name) {
    return {id, name, &recordOf<Type>(), &recordOf<Reply>()};
}

const std::vector<Message> kCommands{
    message<TS_CREATE_REQ>(command_id::kCreate, "Create"),
    message<TS_HANDLE_REQ>(command_id::kRelease, "Release"),
    message<TS_HANDLE_REQ>(command_id::kStartScan, "StartScan"),
    message<TS_HANDLE_REQ>(command_id::kCancelScan, "CancelScan"),
    message<TS_BROADCAST_INFO_REQ>(command_id::kStartBroadcastReceiving, "StartBroadcastReceiving"),
    message<TS_HANDLE_REQ>(command_id::kTerminateBroadcastReceiving, "TerminateBroadcastReceiving"),
    message<TS_BROADCAST_INFO_REQ>(command_id::kSelectChannel, "SelectChannel"),
    message<TS_SEARCH_CHANNEL_REQ>(command_id::kStartSearchChannel, "StartSearchChannel"),
    message<TS_HANDLE_REQ>(command_id::kCancelSearchChannel, "CancelSearchChannel"),
    message<TS_COMPONENT_SETTING_REQ>(command_id::kSetFirstComponent, "SetFirstComponent"),
    message<TS_DISPLAY_ALL_REQ>(command_id::kSetDisplayAll, "SetDisplayAll"),
    message<TS_SCREEN_DISPLAY_REQ>(command_id::kSetScreenDisplay, "SetScreenDisplay"),
    message<TS_CAP_DISPLAY_REQ>(command_id::kSetCapDisplay, "SetCapDisplay"),
    message<TS_BML_DISPLAY_REQ>(command_id::kSetBMLDisplay, "SetBMLDisplay"),
    message<TS_ONE_VALUE_REQ>(command_id::kReleaseDisplay, "ReleaseDisplay"),
    message<TS_DISPLAY_MODE_REQ>(command_id::kControlDisplayModeReq, "ControlDisplayModeReq"),
    message<TS_ONE_VALUE_REQ>(command_id::kControlScreenDisplay, "ControlScreenDisplay"),
    message<TS_ONE_VALUE_REQ>(command_id::kControlDecodeScreen, "ControlDecodeScreen"),
    message<TS_ONE_VALUE_REQ>(command_id::kChangeAudioComponent, "ChangeAudioComponent"),
    message<TS_ONE_VALUE_REQ>(command_id::kChangeSoundDualMono, "ChangeSoundDualMono"),
    message<TS_SOUND_VIDEO_DELAY_REQ>(command_id::kSetSoundVideoDelay, "SetSoundVideoDelay"),
    message<TS_ONE_VALUE_REQ>(command_id::kControlDecodeAudio, "ControlDecodeAudio"),
    message<TS_CONTROL_CAP_REQ>(command_id::kControlCap, "ControlCap"),
    message<TS_CONTROL_BML_REQ>(command_id::kControlBML, "ControlBML"),
    message<TS_ONE_VALUE_REQ>(command_id::kChangeCapLang, "ChangeCapLang"),
    message<TS_ONE_VALUE_REQ>(command_id::kControlLNA, "ControlLNA"),
    message<TS_ONE_VALUE_REQ>(command_id::kSetTunerLog, "SetTunerLog"),
    message<TS_HANDLE_REQ>(command_id::kGetTunerLogStatus, "GetTunerLogStatus"),
    message<TS_START_TV_LINK_REQ>(command_id::kBMLStartTvLinkReq, "BMLStartTvLinkReq"),
    message<TS_HANDLE_REQ>(command_id::kBMLEndTvLinkReq, "BMLEndTvLinkReq"),
    message<TS_KEY_EVENT_REQ>(command_id::kBMLKeyEventNotify, "BMLKeyEventNotify"),
    message<TS_PERMISSION_REPLY_REQ>(command_id::kBMLPermissionReply, "BMLPermissionReply"),
    message<TS_AUTH_REPLY_REQ>(command_id::kBMLAuthReply, "BMLAuthReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLWriteNvramReply, "BMLWriteNvramReply"),
    message<TS_READ_NVRAM_REPLY_REQ>(command_id::kBMLReadNvramReply, "BMLReadNvramReply"),
    message<TS_FEP_REPLY_REQ>(command_id::kBMLFepReply, "BMLFepReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLMailReply, "BMLMailReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLPhonebookReply, "BMLPhonebookReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLCallReply, "BMLCallReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLScheduleReply, "BMLScheduleReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLBrowserReply, "BMLBrowserReply"),
    message<TS_SAVE_PICTURE_REPLY_REQ>(command_id::kBMLSavePictureReply, "BMLSavePictureReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLStartTvlinkReply, "BMLStartTvlinkReply"),
    message<TS_ONE_VALUE_REQ>(command_id::kBMLEnrolTvlinkReply, "BMLEnrolTvlinkReply"),
    message<TS_HANDLE_REQ>(command_id::kBMLRebootBrowserReq, "BMLRebootBrowserReq"),
    message<TS_ONE_VALUE_REQ>(command_id::kStartRec, "StartRec"),
    message<TS_TERMINATE_REC_REQ>(command_id::kTerminateRec, "TerminateRec"),
    message<TS_START_PLAY_REQ>(command_id::kStartPlay, "StartPlay"),
    message<TS_SPECIAL_PLAY_REQ>(command_id::kChangePlaySpeed, "ChangePlaySpeed"),
    message<TS_HANDLE_REQ>(command_id::kPausePlay, "PausePlay"),
    message<TS_HANDLE_REQ>(command_id::kReStartPlay, "ReStartPlay"),
    message<TS_SKIP_PLAY_REQ>(command_id::kSkipPlay, "SkipPlay"),
    message<TS_ONE_VALUE_REQ>(command_id::kFrameSlidePlay, "FrameSlidePlay"),
    message<TS_HANDLE_REQ>(command_id::kTerminatePlay, "TerminatePlay"),
    message<TS_ONE_VALUE_REQ>(command_id::kMovePausePosition, "MovePausePosition"),
    exchange<TS_HANDLE_REQ, TS_COMMON_SYNC_REPLY>(command_id::kRelease_Sync, "Release_Sync"),
    exchange<TS_HANDLE_REQ, TS_COMMON_SYNC_REPLY>(command_id::kCancelScan_Sync, "CancelScan_Sync"),
    exchange<TS_HANDLE_REQ, TS_COMMON_SYNC_REPLY>(command_id::kTerminateBroadcastReceiving_Sync,
                                                  "TerminateBroadcastReceiving_Sync"),
    exchange<TS_ONE_VALUE_REQ, TS_COMMON_SYNC_REPLY>(command_id::kControlDecodeScreen_Sync,
                                                     "ControlDecodeScreen_Sync"),
    exchange<TS_ONE_VALUE_REQ, TS_COMMON_SYNC_REPLY>(command_id::kControlDecodeAudio_Sync,
                                                     "ControlDecodeAudio_Sync"),
    exchange<TS_CONTROL_CAP_REQ, TS_COMMON_SYNC_REPLY>(command_id::kControlCap_Sync,
                                                       "ControlCap_Sync"),
    exchange<TS_CONTROL_BML_REQ, TS_COMMON_SYNC_REPLY>(command_id::kControlBML_Sync,
                                                       "ControlBML_Sync"),
    exchange<TS_HANDLE_REQ, TS_COMMON_SYNC_REPLY>(command_id::kBMLEndTvLink_Sync,
                                                  "BMLEndTvLink_Sync"),
    exchange<TS_TERMINATE_REC_REQ, TS_TERMINATE_REC_SYNC_REPLY>(command_id::kTerminateRec_Sync,
                                                                "TerminateRec_Sync"),
    exchange<TS_HANDLE_REQ, TS_COMMON_SYNC_REPLY>(command_id::kTerminatePlay_Sync,
                                                  "TerminatePlay_Sync"),
};

const std::vector<Message> kEvents{
    message<TS_PERMISSION_REQ>(event_id::kBmlPermissionReq, "BmlPermissionReq"),
    message<TS_AUTH_REQ>(event_id::kBmlAuthReq, "BmlAuthReq"),
    message<TS_WRITE_NVRAM_REQ>(event_id::kBmlWriteNvramReq, "BmlWriteNvramReq"),
    message<TS_READ_NVRAM_REQ>(event_id::kBmlReadNvramReq, "BmlReadNvramReq"),
    message<TS_START_FEP_REQ>(event_id::kBmlStartFepReq, "BmlStartFepReq"),
    message<TS_MAIL_REQ>(event_id::kBmlMailReq, "BmlMailReq"),
    message<TS_PHONEBOOK_REQ>(event_id::kBmlPhonebookReq, "BmlPhonebookReq"),
    message<TS_CALL_REQ>(event_id::kBmlCallReq, "BmlCallReq"),
    message<TS_SCHEDULE_REQ>(event_id::kBmlScheduleReq, "BmlScheduleReq"),
    message<TS_BROWSER_REQ>(event_id::kBmlBrowserReq, "BmlBrowserReq"),
    message<TS_SAVE_PICTURE_REQ>(event_id::kBmlSavePictureReq, "BmlSavePictureReq"),
    message<TS_BROWSER_REQ>(event_id::kBmlStartTvlinkReq, "BmlStartTvlinkReq"),
    message<TS_ENROL_TVLINK_REQ>(event_id::kBmlEnrolTvlinkReq, "BmlEnrolTvlinkReq"),
    message<TS_COMMON_REPLY>(event_id::kCreateReply, "CreateReply"),
    message<TS_COMMON_REPLY>(event_id::kReleaseReply, "ReleaseReply"),
    message<TS_START_SCAN_REPLY>(event_id::kStartScanReply, "StartScanReply"),
    message<TS_SERVICE_REPLY>(event_id::kStartBroadcastReceivingReply,
                              "StartBroadcastReceivingReply"),
    message<TS_COMMON_REPLY>(event_id::kTerminateBroadcastReceivingReply,
                             "TerminateBroadcastReceivingReply"),
    message<TS_SERVICE_REPLY>(event_id::kSelectChannelReply, "SelectChannelReply"),
    message<TS_COMMON_REPLY>(event_id::kStartSearchChannelReply, "StartSearchChannelReply"),
    message<TS_COMMON_REPLY>(event_id::kSetDisplayAllReply, "SetDisplayAllReply"),
    message<TS_COMMON_REPLY>(event_id::kSetScreenDisplayReply, "SetScreenDisplayReply"),
    message<TS_COMMON_REPLY>(event_id::kSetCapDisplayReply, "SetCapDisplayReply"),
    message<TS_COMMON_REPLY>(event_id::kSetBmlDisplayReply, "SetBmlDisplayReply"),
    message<TS_RELEASE_DISPLAY_REPLY>(event_id::kReleaseDisplayReply, "ReleaseDisplayReply"),
    message<TS_COMMON_REPLY>(event_id::kControlDisplayModeReply, "ControlDisplayModeReply"),
    message<TS_COMMON_REPLY>(event_id::kControlScreenDisplayReply, "ControlScreenDisplayReply"),
    message<TS_COMMON_REPLY>(event_id::kControlDecodeScreenReply, "ControlDecodeScreenReply"),
    message<TS_COMMON_REPLY>(event_id::kChangeAudioComponentReply, "ChangeAudioComponentReply"),
    message<TS_COMMON_REPLY>(event_id::kChangeSoundDualMonoReply, "ChangeSoundDualMonoReply"),
    message<TS_COMMON_REPLY>(event_id::kSetSoundVideoDelayReply, "SetSoundVideoDelayReply"),
    message<TS_COMMON_REPLY>(event_id::kControlDecodeAudioReply, "ControlDecodeAudioReply"),
    message<TS_COMMON_REPLY>(event_id::kControlCapReply, "ControlCapReply"),
    message<TS_COMMON_REPLY>(event_id::kControlBmlReply, "ControlBmlReply"),
    message<TS_COMMON_REPLY>(event_id::kChangeCapLangReply, "ChangeCapLangReply"),
    message<TS_COMMON_REPLY>(event_id::kControlLNAReply, "ControlLNAReply"),
    message<TS_COMMON_REPLY>(event_id::kSetTunerLogReply, "SetTunerLogReply"),
    message<TS_TUNER_LOG_STATUS_REPLY>(event_id::kTunerLogStatusReply, "TunerLogStatusReply"),
    message<TS_BML_START_TVLINK_REPLY>(event_id::kBmlStartTvlinkReply, "BmlStartTvlinkReply"),
    message<TS_COMMON_REPLY>(event_id::kBmlEndTvlinkReply, "BmlEndTvlinkReply"),
    message<TS_COMMON_REPLY>(event_id::kBmlRebootBrowserReply, "BmlRebootBrowserReply"),
    message<TS_SERVICE_REPLY>(event_id::kStartRecReply, "StartRecReply"),
    message<TS_TERMINATE_REC_REPLY>(event_id::kTerminateRecReply, "TerminateRecReply"),
    message<TS_COMMON_REPLY>(event_id::kStartPlayReply, "StartPlayReply"),
    message<TS_COMMON_REPLY>(event_id::kChangePlaySpeedReply, "ChangePlaySpeedReply"),
    message<TS_COMMON_REPLY>(event_id::kPausePlayReply, "PausePlayReply"),
    message<TS_COMMON_REPLY>(event_id::kRestartPlayReply, "RestartPlayReply"),
    message<TS_COMMON_REPLY>(event_id::kSkipPlayReply, "SkipPlayReply"),
    message<TS_COMMON_REPLY>(event_id::kFrameSlidePlayReply, "FrameSlidePlayReply"),
    message<TS_COMMON_REPLY>(event_id::kTerminatePlayReply, "TerminatePlayReply"),
    message<TS_COMMON_REPLY>(event_id::kMovePausePositionReply, "MovePausePositionReply"),
    message<TS_SCAN_NOTIFY>(event_id::kScanNotify, "ScanNotify"),
    message<TS_TERMINATE_SCAN_NOTIFY>(event_id::kTerminateScanNotify, "TerminateScanNotify"),
    message<TS_START_SEARCH_CHANNEL_NOTIFY>(event_id::kStartSearchChannelNotify,
                                            "StartSearchChannelNotify"),
    message<TS_TERMINATE_SEARCH_CHANNEL_NOTIFY>(event_id::kTerminateSearchChannelNotify,
                                                "TerminateSearchChannelNotify"),
    message<TS_RESULT_NOTIFY>(event_id::kChangeAudioMainSubNotify, "ChangeAudioMainSubNotify"),
    message<TS_SELECT_AUDIO_COMPONENT_NOTIFY>(event_id::kSelectAudioComponentNotify,
                                              "SelectAudioComponentNotify"),
    message<TS_CHANGE_STATUS_NOTIFY>(event_id::kBmlStatusNotify, "BmlStatusNotify"),
    message<TS_CHANGE_STATUS_NOTIFY>(event_id::kCapStatusNotify, "CapStatusNotify"),
    message<TS_ASSIGN_VIDEO_AREA_NOTIFY>(event_id::kAssignVideoAreaNotify, "AssignVideoAreaNotify"),
    message<TS_GET_CAPTION_DATA_NOTIFY>(event_id::kGetCaptionDataNotify, "GetCaptionDataNotify"),
    message<TS_BML_DISP_ICON_NOTIFY>(event_id::kBmlDispIconNotify, "BmlDispIconNotify"),
    message<TS_HANDLE_NOTIFY>(event_id::kBmlEndFepNotify, "BmlEndFepNotify"),
    message<TS_SENS_NOTIFY>(event_id::kGoodSensNotify, "GoodSensNotify"),
    message<TS_SENS_NOTIFY>(event_id::kBadSensNotify, "BadSensNotify"),
    message<TS_COMMON_REPLY>(event_id::kBmlSavePictureNotify, "BmlSavePictureNotify"),
    message<TS_CA_INFO_NOTIFY>(event_id::kCaInfoNotify, "CaInfoNotify"),
    message<TS_RECEIVE_SENSITIVITY_NOTIFY>(event_id::kReceiveSensitivityNotify,
                                           "ReceiveSensitivityNotify"),
    message<TS_NETWORK_INFO_NOTIFY>(event_id::kNetworkInfoNotify, "NetworkInfoNotify"),
    message<TS_SERVICE_INFO_NOTIFY>(event_id::kServiceInfoNotify, "ServiceInfoNotify"),
    message<TS_COMPONENT_INFO_NOTIFY>(event_id::kComponentInfoNotify, "ComponentInfoNotify"),
    message<TS_RECEIVE_EPG_INFO_NOTIFY>(event_id::kReceiveEpgInfoNotify, "ReceiveEpgInfoNotify"),
    message<TS_UPDATE_VIDEO_INFO_NOTIFY>(event_id::kUpdateVideoInfoNotify, "UpdateVideoInfoNotify"),
    message<TS_UPDATE_AUDIO_INFO_NOTIFY>(event_id::kUpdateAudioInfoNotify, "UpdateAudioInfoNotify"),
    message<TS_COPY_CONTROL_INFO_NOTIFY>(event_id::kCopyControlInfoNotify, "CopyControlInfoNotify"),
    message<TS_HANDLE_NOTIFY>(event_id::kBroadcastFatalErrorNotify, "BroadcastFatalErrorNotify"),
    message<TS_REC_STATUS_NOTIFY>(event_id::kRecStatusNotify, "RecStatusNotify"),
    message<TS_HANDLE_NOTIFY>(event_id::kCaptionFatalErrorNotify, "CaptionFatalErrorNotify"),
    message<TS_REC_INFO_NOTIFY>(event_id::kRecInfoNotify, "RecInfoNotify"),
    message<TS_PLAY_STATUS_NOTIFY>(event_id::kPlayStatusNotify, "PlayStatusNotify"),
    message<TS_PLAY_EVENT_NOTIFY>(event_id::kPlayEventNotify, "PlayEventNotify"),
    message<TS_PLAY_ERROR_NOTIFY>(event_id::kPlayErrorNotify, "PlayErrorNotify"),
    message<TS_TUNER_SENSITIVITY_DATA_NOTIFY>(event_id::kTunerSensitivityDataNotify,
                                              "TunerSensitivityDataNotify"),
};

template <class Wanted>
const Message* findWhere(Wanted wanted) {
    for (const std::vector<Message>* messages : {&kCommands, &kEvents}) {
        const auto found = std::find_if(messages->begin(), messages->end(), wanted);
        if (found != messages->end()) {
            return &*found;
        }
    }
    return nullptr;
}

} // namespace

const std::vector<Message>& commands() {
    return kCommands;
}

const std::vector<Message>& events() {
    return kEvents;
}

const Message* find(int id) {
    return findWhere([id](const Message& message) { return message.id == id; });
}

const Message* find(std::string_view name) {
    return findWhere([name](const Message& message) { return message.name == name; });
}

} // namespace catalogue

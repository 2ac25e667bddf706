package tenrik.service.dtvserver;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BAD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_DISP_ICON_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_END_FEP_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BROADCAST_FATAL_ERROR_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CAPTION_FATAL_ERROR_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CAP_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CA_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_COMPONENT_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_GOOD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_NETWORK_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_ERROR_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_EVENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_AUTH_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_BROWSER_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_CALL_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_ENROL_TVLINK_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_MAIL_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_PERMISSION_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_PHONEBOOK_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_READ_NVRAM_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_SAVE_PICTURE_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_SCHEDULE_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_START_FEP_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_START_TVLINK_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_WRITE_NVRAM_REQ;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_END_TVLINK_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_START_TVLINK_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_BML_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_CAP_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_LNA_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_PAUSE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RESTART_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_BML_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_TUNER_LOG_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SKIP_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;

/**
 * What the broadcast service tells: one method for each event, each of which does nothing until it
 * is overridden. Given to {@link BGCallBack#setListener}.
 * <p>The events come on threads of the native library, several at once perhaps. A method that takes
 * long holds up the events behind it; an exception that leaves it is written to standard error and
 * forgotten.
 */
public interface DtvEventListener {
    /**
     * A data-broadcast document asks for a user and a password. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLAuthReply}.
     */
    default void onEvDtvsvBmlAuthReq(BG_EV_DTVSV_BML_AUTH_REQ event) {}

    /**
     * A data-broadcast document asks for a browser. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLBrowserReply}.
     */
    default void onEvDtvsvBmlBrowserReq(BG_EV_DTVSV_BML_BROWSER_REQ event) {}

    /**
     * A data-broadcast document asks for a telephone call. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLCallReply}.
     */
    default void onEvDtvsvBmlCallReq(BG_EV_DTVSV_BML_CALL_REQ event) {}

    /**
     * A data-broadcast document asks to keep a TV link. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLEnrolTvlinkReply}.
     */
    default void onEvDtvsvBmlEnrolTvlinkReq(BG_EV_DTVSV_BML_ENROL_TVLINK_REQ event) {}

    /**
     * A data-broadcast document asks to write a mail. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLMailReply}.
     */
    default void onEvDtvsvBmlMailReq(BG_EV_DTVSV_BML_MAIL_REQ event) {}

    /**
     * A data-broadcast document asks for a permission. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLPermissionReply}.
     */
    default void onEvDtvsvBmlPermissionReq(BG_EV_DTVSV_BML_PERMISSION_REQ event) {}

    /**
     * A data-broadcast document asks for a phone-book entry. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLPhonebookReply}.
     */
    default void onEvDtvsvBmlPhoneBookReq(BG_EV_DTVSV_BML_PHONEBOOK_REQ event) {}

    /**
     * A data-broadcast document reads a block of the broadcaster's memory. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLReadNvramReply}.
     */
    default void onEvDtvsvBmlReadNvramReq(BG_EV_DTVSV_BML_READ_NVRAM_REQ event) {}

    /**
     * A data-broadcast document asks to save a picture. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLSavePictureReply}.
     */
    default void onEvDtvsvBmlSavePictureReq(BG_EV_DTVSV_BML_SAVE_PICTURE_REQ event) {}

    /**
     * A data-broadcast document asks for an entry in the schedule. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLScheduleReply}.
     */
    default void onEvDtvsvBmlScheduleReq(BG_EV_DTVSV_BML_SCHEDULE_REQ event) {}

    /**
     * A data-broadcast document asks for a text input. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLFepReply}.
     */
    default void onEvDtvsvBmlStartFepReq(BG_EV_DTVSV_BML_START_FEP_REQ event) {}

    /**
     * A data-broadcast document asks to follow a TV link. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLStartTvlinkReply}.
     */
    default void onEvDtvsvBmlStartTvlinkReq(BG_EV_DTVSV_BML_START_TVLINK_REQ event) {}

    /**
     * A data-broadcast document writes a block of the broadcaster's memory. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLWriteNvramReply}.
     */
    default void onEvDtvsvBmlWriteNvramReq(BG_EV_DTVSV_BML_WRITE_NVRAM_REQ event) {}

    /** A drawing destination was given its video area. */
    default void onEvDtvsvAssignVideoAreaNotify(BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY event) {}

    /** The reception has become bad. */
    default void onEvDtvsvBadSensNotify(BG_EV_DTVSV_BAD_SENS_NOTIFY event) {}

    /** An icon of data broadcasting is to be shown or hidden. */
    default void onEvDtvsvBmlDispIconNotify(BG_EV_DTVSV_BML_DISP_ICON_NOTIFY event) {}

    /** The data-broadcast document no longer waits for the text input. */
    default void onEvDtvsvBmlEndFepNotify(BG_EV_DTVSV_BML_END_FEP_NOTIFY event) {}

    /** Data broadcasting has changed its state. */
    default void onEvDtvsvBmlStatusNotify(BG_EV_DTVSV_BML_STATUS_NOTIFY event) {}

    /**
     * Reception has failed for good. The library takes note of such an error and delivers no event
     * of it yet.
     */
    default void onEvDtvsvBroadcastFatalErrorNotify(
            BG_EV_DTVSV_BROADCAST_FATAL_ERROR_NOTIFY event) {}

    /** The state of conditional access on a channel. */
    default void onEvDtvsvCaInfoNotify(BG_EV_DTVSV_CA_INFO_NOTIFY event) {}

    /** The captions have changed their state. */
    default void onEvDtvsvCapStatusNotify(BG_EV_DTVSV_CAP_STATUS_NOTIFY event) {}

    /**
     * The captions have failed for good. The library takes note of such an error and delivers no
     * event of it yet.
     */
    default void onEvDtvsvCaptionFatalErrorNotify(BG_EV_DTVSV_CAPTION_FATAL_ERROR_NOTIFY event) {}

    /** The sound was switched between main and sub. */
    default void onEvDtvsvChangeAudioMainSubNotify(
            BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY event) {}

    /** Which components the programme of a channel carries. */
    default void onEvDtvsvComponentInfoNotify(BG_EV_DTVSV_COMPONENT_INFO_NOTIFY event) {}

    /** What may be copied from a channel. */
    default void onEvDtvsvCopyControlInfoNotify(BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY event) {}

    /** Caption data has arrived. */
    default void onEvDtvsvGetCaptionDataNotify(BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY event) {}

    /** The reception has become good. */
    default void onEvDtvsvGoodSensNotify(BG_EV_DTVSV_GOOD_SENS_NOTIFY event) {}

    /** The network that is being received. */
    default void onEvDtvsvNetworkInfoNotify(BG_EV_DTVSV_NETWORK_INFO_NOTIFY event) {}

    /** The programme guide of a service. */
    default void onEvDtvsvReceiveEpgInfoNotify(BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY event) {}

    /** How well a channel is received. */
    default void onEvDtvsvReceiveSensitivityNotify(BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY event) {}

    /** What a channel scan has found on one channel. */
    default void onEvDtvsvScanNotify(BG_EV_DTVSV_SCAN_NOTIFY event) {}

    /** A sound stream was chosen. */
    default void onEvDtvsvSelectAudioComponentNotify(
            BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY event) {}

    /** The services of the transport stream that is being received. */
    default void onEvDtvsvServiceInfoNotify(BG_EV_DTVSV_SERVICE_INFO_NOTIFY event) {}

    /** A channel search looks at a channel. */
    default void onEvDtvsvStartSearchChannelNotify(BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY event) {}

    /** A channel scan has ended. */
    default void onEvDtvsvTerminateScanNotify(BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY event) {}

    /** A channel search has ended. */
    default void onEvDtvsvTerminateSearchChannelNotify(
            BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY event) {}

    /** The sound of a channel has changed. */
    default void onEvDtvsvUpdateAudioInfoNotify(BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY event) {}

    /** The picture of a channel has changed. */
    default void onEvDtvsvUpdateVideoInfoNotify(BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_BMLEndTvLinkReq}. */
    default void onEvDtvsvBmlEndTvlinkReply(BG_EV_DTVSV_BML_END_TVLINK_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_BMLRebootBrowserReq}. */
    default void onEvDtvsvBmlRebootBrowserReply(BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_BMLStartTvLinkReq}. */
    default void onEvDtvsvBmlStartTvlinkReply(BG_EV_DTVSV_BML_START_TVLINK_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ChangeAudioComponent}. */
    default void onEvDtvsvChangeAudioComponentReply(
            BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ChangeCapLang}. */
    default void onEvDtvsvChangeCapLangReply(BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ChangeSoundDualMono}. */
    default void onEvDtvsvChangeSoundDualMonoReply(BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ControlDisplayModeReq}. */
    default void onEvDtvsvControlDisplayModeReply(BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_Create}. */
    default void onEvDtvsvCreateReply(BG_EV_DTVSV_CREATE_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ReleaseDisplay}. */
    default void onEvDtvsvReleaseDisplayReply(BG_EV_DTVSV_RELEASE_DISPLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_Release}. */
    default void onEvDtvsvReleaseReply(BG_EV_DTVSV_RELEASE_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SelectChannel}. */
    default void onEvDtvsvSelectChannelReply(BG_EV_DTVSV_SELECT_CHANNEL_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SetBMLDisplay}. */
    default void onEvDtvsvSetBmlDisplayReply(BG_EV_DTVSV_SET_BML_DISPLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SetCapDisplay}. */
    default void onEvDtvsvSetCapDisplayReply(BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SetDisplayAll}. */
    default void onEvDtvsvSetDisplayAllReply(BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SetScreenDisplay}. */
    default void onEvDtvsvSetScreenDisplayReply(BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SetSoundVideoDelay}. */
    default void onEvDtvsvSetSoundVideoDelayReply(BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_StartBroadcastReceiving}. */
    default void onEvDtvsvStartBroadcastReply(BG_EV_DTVSV_START_BROADCAST_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_StartScan}. */
    default void onEvDtvsvStartScanReply(BG_EV_DTVSV_START_SCAN_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_StartSearchChannel}. */
    default void onEvDtvsvStartSearchChannelReply(BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_TerminateBroadcastReceiving}. */
    default void onEvDtvsvTerminateBroadcastReply(BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ControlScreenDisplay}. */
    default void onEvDtvsvControlScreenDisplayReply(
            BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ControlDecodeScreen}. */
    default void onEvDtvsvControlDecodeScreenReply(BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ControlDecodeAudio}. */
    default void onEvDtvsvControlDecodeAudioReply(BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY event) {}

    /** A picture of a data-broadcast document was saved, or could not be. */
    default void onEvDtvsvBmlSavePictureNotify(BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ControlCap}. */
    default void onEvDtvsvControlCapReply(BG_EV_DTVSV_CONTROL_CAP_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ControlBML}. */
    default void onEvDtvsvControlBmlReply(BG_EV_DTVSV_CONTROL_BML_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ControlLNA}. */
    default void onEvDtvsvControlLNAReply(BG_EV_DTVSV_CONTROL_LNA_REPLY event) {}

    /** What the tuner measures on a channel. */
    default void onEvDtvsvTunerSensitivityDataNotify(
            BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SetTunerLog}. */
    default void onEvDtvsvSetTunerLogReply(BG_EV_DTVSV_SET_TUNER_LOG_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_GetTunerLogStatus}. */
    default void onEvDtvsvGetTunerLogStatusReply(BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_StartRec}. */
    default void onEvDtvsvStartRecReply(BG_EV_DTVSV_START_REC_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_TerminateRec}. */
    default void onEvDtvsvTerminateRecReply(BG_EV_DTVSV_TERMINATE_REC_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_StartPlay}. */
    default void onEvDtvsvStartPlayReply(BG_EV_DTVSV_START_PLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ChangePlaySpeed}. */
    default void onEvDtvsvChangePlaySpeedReply(BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_PausePlay}. */
    default void onEvDtvsvPausePlayReply(BG_EV_DTVSV_PAUSE_PLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_ReStartPlay}. */
    default void onEvDtvsvRestartPlayReply(BG_EV_DTVSV_RESTART_PLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_SkipPlay}. */
    default void onEvDtvsvSkipPlayReply(BG_EV_DTVSV_SKIP_PLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_FrameSlidePlay}. */
    default void onEvDtvsvFrameSlidePlayReply(BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_TerminatePlay}. */
    default void onEvDtvsvTerminatePlayReply(BG_EV_DTVSV_TERMINATE_PLAY_REPLY event) {}

    /** Answer to {@link DtvServerProxy#DtvSvLib_MovePausePosition}. */
    default void onEvDtvsvMovePausePositionReply(BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY event) {}

    /** A recording has changed its state. */
    default void onEvDtvsvRecStatusNotify(BG_EV_DTVSV_REC_STATUS_NOTIFY event) {}

    /** How far a recording has come. */
    default void onEvDtvsvRecInfoNotify(BG_EV_DTVSV_REC_INFO_NOTIFY event) {}

    /** The state of playback. */
    default void onEvDtvsvPlayStatusNotify(BG_EV_DTVSV_PLAY_STATUS_NOTIFY event) {}

    /** Playback has come to an event. */
    default void onEvDtvsvPlayEventNotify(BG_EV_DTVSV_PLAY_EVENT_NOTIFY event) {}

    /** Playback has failed. */
    default void onEvDtvsvPlayErrorNotify(BG_EV_DTVSV_PLAY_ERROR_NOTIFY event) {}
}

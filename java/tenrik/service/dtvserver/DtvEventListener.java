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
 * Receives the events of the broadcast service. There is one method for each event; it does nothing
 * until it is overridden. A listener is registered with {@link BGCallBack#setListener}.
 * <p>The events come on threads of the native library, possibly several at the same time. A method
 * that takes long delays the events after it. An exception that leaves it is written to standard
 * error and then cleared.
 */
public interface DtvEventListener {
    /**
     * A data-broadcast document asks for a user and a password. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLAuthReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlAuthReq(BG_EV_DTVSV_BML_AUTH_REQ event) {}

    /**
     * A data-broadcast document asks for a browser. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLBrowserReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlBrowserReq(BG_EV_DTVSV_BML_BROWSER_REQ event) {}

    /**
     * A data-broadcast document asks for a telephone call. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLCallReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlCallReq(BG_EV_DTVSV_BML_CALL_REQ event) {}

    /**
     * A data-broadcast document asks to keep a TV link. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLEnrolTvlinkReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlEnrolTvlinkReq(BG_EV_DTVSV_BML_ENROL_TVLINK_REQ event) {}

    /**
     * A data-broadcast document asks to write a mail. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLMailReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlMailReq(BG_EV_DTVSV_BML_MAIL_REQ event) {}

    /**
     * A data-broadcast document asks for a permission. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLPermissionReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlPermissionReq(BG_EV_DTVSV_BML_PERMISSION_REQ event) {}

    /**
     * A data-broadcast document asks for a phone-book entry. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLPhonebookReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlPhoneBookReq(BG_EV_DTVSV_BML_PHONEBOOK_REQ event) {}

    /**
     * A data-broadcast document reads a block of the broadcaster's memory. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLReadNvramReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlReadNvramReq(BG_EV_DTVSV_BML_READ_NVRAM_REQ event) {}

    /**
     * A data-broadcast document asks to save a picture. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLSavePictureReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlSavePictureReq(BG_EV_DTVSV_BML_SAVE_PICTURE_REQ event) {}

    /**
     * A data-broadcast document asks for an entry in the schedule. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLScheduleReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlScheduleReq(BG_EV_DTVSV_BML_SCHEDULE_REQ event) {}

    /**
     * A data-broadcast document asks for a text input. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLFepReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlStartFepReq(BG_EV_DTVSV_BML_START_FEP_REQ event) {}

    /**
     * A data-broadcast document asks to follow a TV link. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLStartTvlinkReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlStartTvlinkReq(BG_EV_DTVSV_BML_START_TVLINK_REQ event) {}

    /**
     * A data-broadcast document writes a block of the broadcaster's memory. Answered with {@link
     * DtvServerProxy#DtvSvLib_BMLWriteNvramReply}.
     *
     * @param event the request
     */
    default void onEvDtvsvBmlWriteNvramReq(BG_EV_DTVSV_BML_WRITE_NVRAM_REQ event) {}

    /**
     * A drawing destination was given its video area.
     *
     * @param event the notification
     */
    default void onEvDtvsvAssignVideoAreaNotify(BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY event) {}

    /**
     * The reception has become bad.
     *
     * @param event the notification
     */
    default void onEvDtvsvBadSensNotify(BG_EV_DTVSV_BAD_SENS_NOTIFY event) {}

    /**
     * An icon of data broadcasting is to be shown or hidden.
     *
     * @param event the notification
     */
    default void onEvDtvsvBmlDispIconNotify(BG_EV_DTVSV_BML_DISP_ICON_NOTIFY event) {}

    /**
     * The data-broadcast document no longer waits for the text input.
     *
     * @param event the notification
     */
    default void onEvDtvsvBmlEndFepNotify(BG_EV_DTVSV_BML_END_FEP_NOTIFY event) {}

    /**
     * Data broadcasting has changed its state.
     *
     * @param event the notification
     */
    default void onEvDtvsvBmlStatusNotify(BG_EV_DTVSV_BML_STATUS_NOTIFY event) {}

    /**
     * Reception has failed permanently. The library writes such an error to its log and delivers no
     * event for it yet.
     *
     * @param event the notification
     */
    default void onEvDtvsvBroadcastFatalErrorNotify(
            BG_EV_DTVSV_BROADCAST_FATAL_ERROR_NOTIFY event) {}

    /**
     * The state of conditional access on a channel.
     *
     * @param event the notification
     */
    default void onEvDtvsvCaInfoNotify(BG_EV_DTVSV_CA_INFO_NOTIFY event) {}

    /**
     * The captions have changed their state.
     *
     * @param event the notification
     */
    default void onEvDtvsvCapStatusNotify(BG_EV_DTVSV_CAP_STATUS_NOTIFY event) {}

    /**
     * The captions have failed permanently. The library writes such an error to its log and
     * delivers no event for it yet.
     *
     * @param event the notification
     */
    default void onEvDtvsvCaptionFatalErrorNotify(BG_EV_DTVSV_CAPTION_FATAL_ERROR_NOTIFY event) {}

    /**
     * The sound was switched between main and sub.
     *
     * @param event the notification
     */
    default void onEvDtvsvChangeAudioMainSubNotify(
            BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY event) {}

    /**
     * Which components the programme of a channel carries.
     *
     * @param event the notification
     */
    default void onEvDtvsvComponentInfoNotify(BG_EV_DTVSV_COMPONENT_INFO_NOTIFY event) {}

    /**
     * What may be copied from a channel.
     *
     * @param event the notification
     */
    default void onEvDtvsvCopyControlInfoNotify(BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY event) {}

    /**
     * Caption data has arrived.
     *
     * @param event the notification
     */
    default void onEvDtvsvGetCaptionDataNotify(BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY event) {}

    /**
     * The reception has become good.
     *
     * @param event the notification
     */
    default void onEvDtvsvGoodSensNotify(BG_EV_DTVSV_GOOD_SENS_NOTIFY event) {}

    /**
     * The network that is being received.
     *
     * @param event the notification
     */
    default void onEvDtvsvNetworkInfoNotify(BG_EV_DTVSV_NETWORK_INFO_NOTIFY event) {}

    /**
     * The programme guide of a service.
     *
     * @param event the notification
     */
    default void onEvDtvsvReceiveEpgInfoNotify(BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY event) {}

    /**
     * How well a channel is received.
     *
     * @param event the notification
     */
    default void onEvDtvsvReceiveSensitivityNotify(BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY event) {}

    /**
     * What a channel scan has found on one channel.
     *
     * @param event the notification
     */
    default void onEvDtvsvScanNotify(BG_EV_DTVSV_SCAN_NOTIFY event) {}

    /**
     * A sound stream was chosen.
     *
     * @param event the notification
     */
    default void onEvDtvsvSelectAudioComponentNotify(
            BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY event) {}

    /**
     * The services of the transport stream that is being received.
     *
     * @param event the notification
     */
    default void onEvDtvsvServiceInfoNotify(BG_EV_DTVSV_SERVICE_INFO_NOTIFY event) {}

    /**
     * A channel search tries a channel.
     *
     * @param event the notification
     */
    default void onEvDtvsvStartSearchChannelNotify(BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY event) {}

    /**
     * A channel scan has ended.
     *
     * @param event the notification
     */
    default void onEvDtvsvTerminateScanNotify(BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY event) {}

    /**
     * A channel search has ended.
     *
     * @param event the notification
     */
    default void onEvDtvsvTerminateSearchChannelNotify(
            BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY event) {}

    /**
     * The sound of a channel has changed.
     *
     * @param event the notification
     */
    default void onEvDtvsvUpdateAudioInfoNotify(BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY event) {}

    /**
     * The picture of a channel has changed.
     *
     * @param event the notification
     */
    default void onEvDtvsvUpdateVideoInfoNotify(BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_BMLEndTvLinkReq}.
     *
     * @param event the reply
     */
    default void onEvDtvsvBmlEndTvlinkReply(BG_EV_DTVSV_BML_END_TVLINK_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_BMLRebootBrowserReq}.
     *
     * @param event the reply
     */
    default void onEvDtvsvBmlRebootBrowserReply(BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_BMLStartTvLinkReq}.
     *
     * @param event the reply
     */
    default void onEvDtvsvBmlStartTvlinkReply(BG_EV_DTVSV_BML_START_TVLINK_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ChangeAudioComponent}.
     *
     * @param event the reply
     */
    default void onEvDtvsvChangeAudioComponentReply(
            BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ChangeCapLang}.
     *
     * @param event the reply
     */
    default void onEvDtvsvChangeCapLangReply(BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ChangeSoundDualMono}.
     *
     * @param event the reply
     */
    default void onEvDtvsvChangeSoundDualMonoReply(BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ControlDisplayModeReq}.
     *
     * @param event the reply
     */
    default void onEvDtvsvControlDisplayModeReply(BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_Create}.
     *
     * @param event the reply
     */
    default void onEvDtvsvCreateReply(BG_EV_DTVSV_CREATE_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ReleaseDisplay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvReleaseDisplayReply(BG_EV_DTVSV_RELEASE_DISPLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_Release}.
     *
     * @param event the reply
     */
    default void onEvDtvsvReleaseReply(BG_EV_DTVSV_RELEASE_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SelectChannel}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSelectChannelReply(BG_EV_DTVSV_SELECT_CHANNEL_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SetBMLDisplay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSetBmlDisplayReply(BG_EV_DTVSV_SET_BML_DISPLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SetCapDisplay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSetCapDisplayReply(BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SetDisplayAll}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSetDisplayAllReply(BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SetScreenDisplay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSetScreenDisplayReply(BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SetSoundVideoDelay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSetSoundVideoDelayReply(BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_StartBroadcastReceiving}.
     *
     * @param event the reply
     */
    default void onEvDtvsvStartBroadcastReply(BG_EV_DTVSV_START_BROADCAST_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_StartScan}.
     *
     * @param event the reply
     */
    default void onEvDtvsvStartScanReply(BG_EV_DTVSV_START_SCAN_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_StartSearchChannel}.
     *
     * @param event the reply
     */
    default void onEvDtvsvStartSearchChannelReply(BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_TerminateBroadcastReceiving}.
     *
     * @param event the reply
     */
    default void onEvDtvsvTerminateBroadcastReply(BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ControlScreenDisplay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvControlScreenDisplayReply(
            BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ControlDecodeScreen}.
     *
     * @param event the reply
     */
    default void onEvDtvsvControlDecodeScreenReply(BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ControlDecodeAudio}.
     *
     * @param event the reply
     */
    default void onEvDtvsvControlDecodeAudioReply(BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY event) {}

    /**
     * A picture of a data-broadcast document was saved, or could not be.
     *
     * @param event the notification
     */
    default void onEvDtvsvBmlSavePictureNotify(BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ControlCap}.
     *
     * @param event the reply
     */
    default void onEvDtvsvControlCapReply(BG_EV_DTVSV_CONTROL_CAP_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ControlBML}.
     *
     * @param event the reply
     */
    default void onEvDtvsvControlBmlReply(BG_EV_DTVSV_CONTROL_BML_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ControlLNA}.
     *
     * @param event the reply
     */
    default void onEvDtvsvControlLNAReply(BG_EV_DTVSV_CONTROL_LNA_REPLY event) {}

    /**
     * What the tuner measures on a channel.
     *
     * @param event the notification
     */
    default void onEvDtvsvTunerSensitivityDataNotify(
            BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SetTunerLog}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSetTunerLogReply(BG_EV_DTVSV_SET_TUNER_LOG_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_GetTunerLogStatus}.
     *
     * @param event the reply
     */
    default void onEvDtvsvGetTunerLogStatusReply(BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_StartRec}.
     *
     * @param event the reply
     */
    default void onEvDtvsvStartRecReply(BG_EV_DTVSV_START_REC_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_TerminateRec}.
     *
     * @param event the reply
     */
    default void onEvDtvsvTerminateRecReply(BG_EV_DTVSV_TERMINATE_REC_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_StartPlay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvStartPlayReply(BG_EV_DTVSV_START_PLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ChangePlaySpeed}.
     *
     * @param event the reply
     */
    default void onEvDtvsvChangePlaySpeedReply(BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_PausePlay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvPausePlayReply(BG_EV_DTVSV_PAUSE_PLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_ReStartPlay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvRestartPlayReply(BG_EV_DTVSV_RESTART_PLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_SkipPlay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvSkipPlayReply(BG_EV_DTVSV_SKIP_PLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_FrameSlidePlay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvFrameSlidePlayReply(BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_TerminatePlay}.
     *
     * @param event the reply
     */
    default void onEvDtvsvTerminatePlayReply(BG_EV_DTVSV_TERMINATE_PLAY_REPLY event) {}

    /**
     * Answer to {@link DtvServerProxy#DtvSvLib_MovePausePosition}.
     *
     * @param event the reply
     */
    default void onEvDtvsvMovePausePositionReply(BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY event) {}

    /**
     * A recording has changed its state.
     *
     * @param event the notification
     */
    default void onEvDtvsvRecStatusNotify(BG_EV_DTVSV_REC_STATUS_NOTIFY event) {}

    /**
     * The progress of a recording.
     *
     * @param event the notification
     */
    default void onEvDtvsvRecInfoNotify(BG_EV_DTVSV_REC_INFO_NOTIFY event) {}

    /**
     * The state of playback.
     *
     * @param event the notification
     */
    default void onEvDtvsvPlayStatusNotify(BG_EV_DTVSV_PLAY_STATUS_NOTIFY event) {}

    /**
     * Playback has reached an event.
     *
     * @param event the notification
     */
    default void onEvDtvsvPlayEventNotify(BG_EV_DTVSV_PLAY_EVENT_NOTIFY event) {}

    /**
     * Playback has failed.
     *
     * @param event the notification
     */
    default void onEvDtvsvPlayErrorNotify(BG_EV_DTVSV_PLAY_ERROR_NOTIFY event) {}
}

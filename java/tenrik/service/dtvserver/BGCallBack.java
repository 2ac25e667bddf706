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
 * Receives the events of the native library, which finds these methods by name. An application
 * receives the events through a {@link DtvEventListener}.
 */
public final class BGCallBack {
    private static final DtvEventListener NOBODY = new DtvEventListener() {};

    private static volatile DtvEventListener receiver = NOBODY;

    private BGCallBack() {}

    /**
     * Sets who receives the events from now on.
     *
     * @param listener the receiver, or null when events are to be dropped
     */
    public static void setListener(DtvEventListener listener) {
        receiver = listener == null ? NOBODY : listener;
    }

    /**
     * Who receives the events.
     *
     * @return the listener, or null when there is none
     */
    public static DtvEventListener getListener() {
        DtvEventListener current = receiver;
        return current == NOBODY ? null : current;
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlAuthReq(BG_EV_DTVSV_BML_AUTH_REQ event) {
        receiver.onEvDtvsvBmlAuthReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlBrowserReq(BG_EV_DTVSV_BML_BROWSER_REQ event) {
        receiver.onEvDtvsvBmlBrowserReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlCallReq(BG_EV_DTVSV_BML_CALL_REQ event) {
        receiver.onEvDtvsvBmlCallReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlEnrolTvlinkReq(BG_EV_DTVSV_BML_ENROL_TVLINK_REQ event) {
        receiver.onEvDtvsvBmlEnrolTvlinkReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlMailReq(BG_EV_DTVSV_BML_MAIL_REQ event) {
        receiver.onEvDtvsvBmlMailReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlPermissionReq(BG_EV_DTVSV_BML_PERMISSION_REQ event) {
        receiver.onEvDtvsvBmlPermissionReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlPhoneBookReq(BG_EV_DTVSV_BML_PHONEBOOK_REQ event) {
        receiver.onEvDtvsvBmlPhoneBookReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlReadNvramReq(BG_EV_DTVSV_BML_READ_NVRAM_REQ event) {
        receiver.onEvDtvsvBmlReadNvramReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlSavePictureReq(BG_EV_DTVSV_BML_SAVE_PICTURE_REQ event) {
        receiver.onEvDtvsvBmlSavePictureReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlScheduleReq(BG_EV_DTVSV_BML_SCHEDULE_REQ event) {
        receiver.onEvDtvsvBmlScheduleReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlStartFepReq(BG_EV_DTVSV_BML_START_FEP_REQ event) {
        receiver.onEvDtvsvBmlStartFepReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlStartTvlinkReq(BG_EV_DTVSV_BML_START_TVLINK_REQ event) {
        receiver.onEvDtvsvBmlStartTvlinkReq(event);
    }

    /**
     * Passes the request to the listener.
     *
     * @param event the request
     */
    public static void onEvDtvsvBmlWriteNvramReq(BG_EV_DTVSV_BML_WRITE_NVRAM_REQ event) {
        receiver.onEvDtvsvBmlWriteNvramReq(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvAssignVideoAreaNotify(BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY event) {
        receiver.onEvDtvsvAssignVideoAreaNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvBadSensNotify(BG_EV_DTVSV_BAD_SENS_NOTIFY event) {
        receiver.onEvDtvsvBadSensNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvBmlDispIconNotify(BG_EV_DTVSV_BML_DISP_ICON_NOTIFY event) {
        receiver.onEvDtvsvBmlDispIconNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvBmlEndFepNotify(BG_EV_DTVSV_BML_END_FEP_NOTIFY event) {
        receiver.onEvDtvsvBmlEndFepNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvBmlStatusNotify(BG_EV_DTVSV_BML_STATUS_NOTIFY event) {
        receiver.onEvDtvsvBmlStatusNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvBroadcastFatalErrorNotify(
            BG_EV_DTVSV_BROADCAST_FATAL_ERROR_NOTIFY event) {
        receiver.onEvDtvsvBroadcastFatalErrorNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvCaInfoNotify(BG_EV_DTVSV_CA_INFO_NOTIFY event) {
        receiver.onEvDtvsvCaInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvCapStatusNotify(BG_EV_DTVSV_CAP_STATUS_NOTIFY event) {
        receiver.onEvDtvsvCapStatusNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvCaptionFatalErrorNotify(
            BG_EV_DTVSV_CAPTION_FATAL_ERROR_NOTIFY event) {
        receiver.onEvDtvsvCaptionFatalErrorNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvChangeAudioMainSubNotify(
            BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY event) {
        receiver.onEvDtvsvChangeAudioMainSubNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvComponentInfoNotify(BG_EV_DTVSV_COMPONENT_INFO_NOTIFY event) {
        receiver.onEvDtvsvComponentInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvCopyControlInfoNotify(BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY event) {
        receiver.onEvDtvsvCopyControlInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvGetCaptionDataNotify(BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY event) {
        receiver.onEvDtvsvGetCaptionDataNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvGoodSensNotify(BG_EV_DTVSV_GOOD_SENS_NOTIFY event) {
        receiver.onEvDtvsvGoodSensNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvNetworkInfoNotify(BG_EV_DTVSV_NETWORK_INFO_NOTIFY event) {
        receiver.onEvDtvsvNetworkInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvReceiveEpgInfoNotify(BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY event) {
        receiver.onEvDtvsvReceiveEpgInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvReceiveSensitivityNotify(
            BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY event) {
        receiver.onEvDtvsvReceiveSensitivityNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvScanNotify(BG_EV_DTVSV_SCAN_NOTIFY event) {
        receiver.onEvDtvsvScanNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvSelectAudioComponentNotify(
            BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY event) {
        receiver.onEvDtvsvSelectAudioComponentNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvServiceInfoNotify(BG_EV_DTVSV_SERVICE_INFO_NOTIFY event) {
        receiver.onEvDtvsvServiceInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvStartSearchChannelNotify(
            BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY event) {
        receiver.onEvDtvsvStartSearchChannelNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvTerminateScanNotify(BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY event) {
        receiver.onEvDtvsvTerminateScanNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvTerminateSearchChannelNotify(
            BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY event) {
        receiver.onEvDtvsvTerminateSearchChannelNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvUpdateAudioInfoNotify(BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY event) {
        receiver.onEvDtvsvUpdateAudioInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvUpdateVideoInfoNotify(BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY event) {
        receiver.onEvDtvsvUpdateVideoInfoNotify(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvBmlEndTvlinkReply(BG_EV_DTVSV_BML_END_TVLINK_REPLY event) {
        receiver.onEvDtvsvBmlEndTvlinkReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvBmlRebootBrowserReply(BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY event) {
        receiver.onEvDtvsvBmlRebootBrowserReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvBmlStartTvlinkReply(BG_EV_DTVSV_BML_START_TVLINK_REPLY event) {
        receiver.onEvDtvsvBmlStartTvlinkReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvChangeAudioComponentReply(
            BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY event) {
        receiver.onEvDtvsvChangeAudioComponentReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvChangeCapLangReply(BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY event) {
        receiver.onEvDtvsvChangeCapLangReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvChangeSoundDualMonoReply(
            BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY event) {
        receiver.onEvDtvsvChangeSoundDualMonoReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvControlDisplayModeReply(
            BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY event) {
        receiver.onEvDtvsvControlDisplayModeReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvCreateReply(BG_EV_DTVSV_CREATE_REPLY event) {
        receiver.onEvDtvsvCreateReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvReleaseDisplayReply(BG_EV_DTVSV_RELEASE_DISPLAY_REPLY event) {
        receiver.onEvDtvsvReleaseDisplayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvReleaseReply(BG_EV_DTVSV_RELEASE_REPLY event) {
        receiver.onEvDtvsvReleaseReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSelectChannelReply(BG_EV_DTVSV_SELECT_CHANNEL_REPLY event) {
        receiver.onEvDtvsvSelectChannelReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSetBmlDisplayReply(BG_EV_DTVSV_SET_BML_DISPLAY_REPLY event) {
        receiver.onEvDtvsvSetBmlDisplayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSetCapDisplayReply(BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY event) {
        receiver.onEvDtvsvSetCapDisplayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSetDisplayAllReply(BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY event) {
        receiver.onEvDtvsvSetDisplayAllReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSetScreenDisplayReply(BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY event) {
        receiver.onEvDtvsvSetScreenDisplayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSetSoundVideoDelayReply(
            BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY event) {
        receiver.onEvDtvsvSetSoundVideoDelayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvStartBroadcastReply(BG_EV_DTVSV_START_BROADCAST_REPLY event) {
        receiver.onEvDtvsvStartBroadcastReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvStartScanReply(BG_EV_DTVSV_START_SCAN_REPLY event) {
        receiver.onEvDtvsvStartScanReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvStartSearchChannelReply(
            BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY event) {
        receiver.onEvDtvsvStartSearchChannelReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvTerminateBroadcastReply(
            BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY event) {
        receiver.onEvDtvsvTerminateBroadcastReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvControlScreenDisplayReply(
            BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY event) {
        receiver.onEvDtvsvControlScreenDisplayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvControlDecodeScreenReply(
            BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY event) {
        receiver.onEvDtvsvControlDecodeScreenReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvControlDecodeAudioReply(
            BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY event) {
        receiver.onEvDtvsvControlDecodeAudioReply(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvBmlSavePictureNotify(BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY event) {
        receiver.onEvDtvsvBmlSavePictureNotify(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvControlCapReply(BG_EV_DTVSV_CONTROL_CAP_REPLY event) {
        receiver.onEvDtvsvControlCapReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvControlBmlReply(BG_EV_DTVSV_CONTROL_BML_REPLY event) {
        receiver.onEvDtvsvControlBmlReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvControlLNAReply(BG_EV_DTVSV_CONTROL_LNA_REPLY event) {
        receiver.onEvDtvsvControlLNAReply(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvTunerSensitivityDataNotify(
            BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY event) {
        receiver.onEvDtvsvTunerSensitivityDataNotify(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSetTunerLogReply(BG_EV_DTVSV_SET_TUNER_LOG_REPLY event) {
        receiver.onEvDtvsvSetTunerLogReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvGetTunerLogStatusReply(
            BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY event) {
        receiver.onEvDtvsvGetTunerLogStatusReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvStartRecReply(BG_EV_DTVSV_START_REC_REPLY event) {
        receiver.onEvDtvsvStartRecReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvTerminateRecReply(BG_EV_DTVSV_TERMINATE_REC_REPLY event) {
        receiver.onEvDtvsvTerminateRecReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvStartPlayReply(BG_EV_DTVSV_START_PLAY_REPLY event) {
        receiver.onEvDtvsvStartPlayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvChangePlaySpeedReply(BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY event) {
        receiver.onEvDtvsvChangePlaySpeedReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvPausePlayReply(BG_EV_DTVSV_PAUSE_PLAY_REPLY event) {
        receiver.onEvDtvsvPausePlayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvRestartPlayReply(BG_EV_DTVSV_RESTART_PLAY_REPLY event) {
        receiver.onEvDtvsvRestartPlayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvSkipPlayReply(BG_EV_DTVSV_SKIP_PLAY_REPLY event) {
        receiver.onEvDtvsvSkipPlayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvFrameSlidePlayReply(BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY event) {
        receiver.onEvDtvsvFrameSlidePlayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvTerminatePlayReply(BG_EV_DTVSV_TERMINATE_PLAY_REPLY event) {
        receiver.onEvDtvsvTerminatePlayReply(event);
    }

    /**
     * Passes the reply to the listener.
     *
     * @param event the reply
     */
    public static void onEvDtvsvMovePausePositionReply(
            BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY event) {
        receiver.onEvDtvsvMovePausePositionReply(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvRecStatusNotify(BG_EV_DTVSV_REC_STATUS_NOTIFY event) {
        receiver.onEvDtvsvRecStatusNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvRecInfoNotify(BG_EV_DTVSV_REC_INFO_NOTIFY event) {
        receiver.onEvDtvsvRecInfoNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvPlayStatusNotify(BG_EV_DTVSV_PLAY_STATUS_NOTIFY event) {
        receiver.onEvDtvsvPlayStatusNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvPlayEventNotify(BG_EV_DTVSV_PLAY_EVENT_NOTIFY event) {
        receiver.onEvDtvsvPlayEventNotify(event);
    }

    /**
     * Passes the notification to the listener.
     *
     * @param event the notification
     */
    public static void onEvDtvsvPlayErrorNotify(BG_EV_DTVSV_PLAY_ERROR_NOTIFY event) {
        receiver.onEvDtvsvPlayErrorNotify(event);
    }
}

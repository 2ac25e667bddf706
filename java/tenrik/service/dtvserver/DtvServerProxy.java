package tenrik.service.dtvserver;

import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_AUTH_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_START_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CANCEL_SCAN_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_COMPONENT_SETTING;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CONTROL_BML_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CONTROL_CAP_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CONTROL_DECODE_SCREEN_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_END_TVLINK_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_KEY_CODE_NOTIFY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PERMISSION_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_READ_NVRAM_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_RELEASE_REPLY_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SKIP_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SPECIAL_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_FEP_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_BROADCAST_RECEIVING_REPLY_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_PLAY_REPLY_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REQ;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO;

/**
 * The commands of the broadcast service.
 * <p>The native library must have been loaded before the first call, with {@link System#load} of
 * {@code libDtv_jni.so} from a class that the loader of this class has loaded: the library finds
 * this class through its caller's loader. Nothing is loaded here.
 * <p>A command returns as soon as it is sent: OK when the service has taken it, NG when it could
 * not be sent, PARAM_NG when an argument was refused and nothing was sent. The outcome comes as an
 * event, named with each command, which {@link BGCallBack} receives. The commands whose names end
 * in {@code _Sync} wait for the service and return its answer; no event follows them.
 * <p>The limits named here are upper ones unless a set of values is given: a negative number is
 * passed on, cut to the width of its field. Of a session handle the low 16 bits are sent. A null
 * result means that the answer object could not be built. An object with a null in it is refused,
 * unless the command says otherwise.
 */
public class DtvServerProxy {
    /**
     * Opens a session, whose handle every other command takes. The handle comes with {@link
     * DtvEventListener#onEvDtvsvCreateReply}. The longest delay given here bounds those of {@link
     * #DtvSvLib_SetSoundVideoDelay} until the next Create; before the first one the bound is 0.
     *
     * @param start_type how the service starts, at most 4
     * @param max_delay_time the longest delay of picture and sound, at most 999
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_Create(int start_type, int max_delay_time);

    /**
     * Closes the session. Answered by {@link DtvEventListener#onEvDtvsvReleaseReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_Release(int handle);

    /**
     * Starts a scan of the channels. Answered by {@link DtvEventListener#onEvDtvsvStartScanReply}.
     * {@link DtvEventListener#onEvDtvsvScanNotify} follows for the channels and {@link
     * DtvEventListener#onEvDtvsvTerminateScanNotify} at the end.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_StartScan(int handle);

    /**
     * Stops a scan. {@link DtvEventListener#onEvDtvsvTerminateScanNotify} reports when it has
     * ended.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_CancelScan(int handle);

    /**
     * Starts to receive a service. Answered by {@link
     * DtvEventListener#onEvDtvsvStartBroadcastReply}.
     *
     * @param handle the session
     * @param broadcast_info channel (at most 62) and service number (at most 2); not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_StartBroadcastReceiving(
            int handle, BG_TS_DTVSVLIB_BROADCAST_INFO broadcast_info);

    /**
     * Stops receiving. Answered by {@link DtvEventListener#onEvDtvsvTerminateBroadcastReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_TerminateBroadcastReceiving(int handle);

    /**
     * Changes to another service. Answered by {@link DtvEventListener#onEvDtvsvSelectChannelReply}.
     *
     * @param handle the session
     * @param broadcast_info channel (at most 62) and service number (at most 2); not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SelectChannel(
            int handle, BG_TS_DTVSVLIB_BROADCAST_INFO broadcast_info);

    /**
     * Searches for a channel that can be received. Answered by {@link
     * DtvEventListener#onEvDtvsvStartSearchChannelReply}. {@link
     * DtvEventListener#onEvDtvsvStartSearchChannelNotify} follows for the channels that are tried
     * and {@link DtvEventListener#onEvDtvsvTerminateSearchChannelNotify} at the end.
     *
     * @param handle the session
     * @param broadcast_info channel (at most 62) and service number (at most 2); not null
     * @param channel_operation how the search goes; the low byte is sent
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_StartSearchChannel(
            int handle, BG_TS_DTVSVLIB_BROADCAST_INFO broadcast_info, int channel_operation);

    /**
     * Stops a search. {@link DtvEventListener#onEvDtvsvTerminateSearchChannelNotify} reports when
     * it has ended.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_CancelSearchChannel(int handle);

    /**
     * Sets what is shown and heard first, and where. No event of its own follows.
     *
     * @param handle the session
     * @param component_setting the setting, its three planes included; not null; the start types at
     *     most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetFirstComponent(
            int handle, BG_TS_DTVSVLIB_COMPONENT_SETTING component_setting);

    /**
     * Sets where picture, captions and data broadcasting are drawn. Answered by {@link
     * DtvEventListener#onEvDtvsvSetDisplayAllReply}.
     *
     * @param handle the session
     * @param video_drawing_info plane of the picture; not null
     * @param cap_drawing_info plane of the captions; not null
     * @param bml_drawing_info plane of data broadcasting; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetDisplayAll(
            int handle, BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO video_drawing_info,
            BG_TS_DTVSVLIB_CAP_DRAWING_INFO cap_drawing_info,
            BG_TS_DTVSVLIB_BML_DRAWING_INFO bml_drawing_info);

    /**
     * Sets where the picture is drawn. Answered by {@link
     * DtvEventListener#onEvDtvsvSetScreenDisplayReply}.
     *
     * @param handle the session
     * @param drawing_info the plane; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetScreenDisplay(
            int handle, BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO drawing_info);

    /**
     * Sets where the captions are drawn. Answered by {@link
     * DtvEventListener#onEvDtvsvSetCapDisplayReply}.
     *
     * @param handle the session
     * @param drawing_info the plane; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetCapDisplay(
            int handle, BG_TS_DTVSVLIB_CAP_DRAWING_INFO drawing_info);

    /**
     * Sets where data broadcasting is drawn. Answered by {@link
     * DtvEventListener#onEvDtvsvSetBmlDisplayReply}.
     *
     * @param handle the session
     * @param drawing_info the plane; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetBMLDisplay(
            int handle, BG_TS_DTVSVLIB_BML_DRAWING_INFO drawing_info);

    /**
     * Releases a surface. Answered by {@link DtvEventListener#onEvDtvsvReleaseDisplayReply}.
     *
     * @param handle the session
     * @param drawing_destination which plane, at most 2
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ReleaseDisplay(
            int handle, int drawing_destination);

    /**
     * Changes how the picture fills its surface and how it is rotated. Answered by {@link
     * DtvEventListener#onEvDtvsvControlDisplayModeReply}.
     *
     * @param handle the session
     * @param screen_mode a number of {@code BG_TE_DTVSVLIB_SCREEN_MODE}, at most 3
     * @param screen_rotate a number of {@code BG_TE_DTVSVLIB_SCREEN_ROTATE}, at most 3
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlDisplayModeReq(
            int handle, int screen_mode, int screen_rotate);

    /**
     * Shows or hides the picture. Answered by {@link
     * DtvEventListener#onEvDtvsvControlScreenDisplayReply}.
     *
     * @param handle the session
     * @param onoff 0 for off, 1 for on; nothing above
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlScreenDisplay(int handle, int onoff);

    /**
     * Starts or stops the decoding of the picture. Answered by {@link
     * DtvEventListener#onEvDtvsvControlDecodeScreenReply}.
     *
     * @param handle the session
     * @param onoff 0 for off, 1 for on; nothing above
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlDecodeScreen(int handle, int onoff);

    /**
     * Chooses a sound stream. Answered by {@link
     * DtvEventListener#onEvDtvsvChangeAudioComponentReply}.
     *
     * @param handle the session
     * @param audio_component a number of {@code BG_TE_DTVSVLIB_AUDIO_COMPONENT}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ChangeAudioComponent(
            int handle, int audio_component);

    /**
     * Chooses what is heard of a dual mono sound. Answered by {@link
     * DtvEventListener#onEvDtvsvChangeSoundDualMonoReply}.
     *
     * @param handle the session
     * @param dualmono a number of {@code BG_TE_DTVSVLIB_DUALMONO}, at most 4
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ChangeSoundDualMono(int handle, int dualmono);

    /**
     * Delays picture and sound. Answered by {@link
     * DtvEventListener#onEvDtvsvSetSoundVideoDelayReply}.
     *
     * @param handle the session
     * @param video_viltime delay of the picture, at most what Create allowed
     * @param audio_viltime delay of the sound, at most what Create allowed; the low 16 bits count,
     *     with their sign
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetSoundVideoDelay(
            int handle, int video_viltime, int audio_viltime);

    /**
     * Starts or stops the decoding of the sound. Answered by {@link
     * DtvEventListener#onEvDtvsvControlDecodeAudioReply}.
     *
     * @param handle the session
     * @param onoff 0 for off, 1 for on; nothing above
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlDecodeAudio(int handle, int onoff);

    /**
     * Controls the captions. Answered by {@link DtvEventListener#onEvDtvsvControlCapReply}.
     *
     * @param handle the session
     * @param cap_control_type a number of {@code BG_TE_DTVSVLIB_CONTROL_TYPE}, at most 4, or 255
     * @param cap_lang a number of {@code BG_TE_DTVSVLIB_CAP_LANG}, at most 8
     * @param cap_drawing_info plane of the captions; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlCap(
            int handle, int cap_control_type, int cap_lang,
            BG_TS_DTVSVLIB_CAP_DRAWING_INFO cap_drawing_info);

    /**
     * Controls data broadcasting. Answered by {@link DtvEventListener#onEvDtvsvControlBmlReply}.
     *
     * @param handle the session
     * @param bml_control_type a number of {@code BG_TE_DTVSVLIB_CONTROL_TYPE}, at most 4, or 255
     * @param bml_drawing_info plane of data broadcasting; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlBML(
            int handle, int bml_control_type, BG_TS_DTVSVLIB_BML_DRAWING_INFO bml_drawing_info);

    /**
     * Chooses the language of the captions. Answered by {@link
     * DtvEventListener#onEvDtvsvChangeCapLangReply}.
     *
     * @param handle the session
     * @param cap_lang a number of {@code BG_TE_DTVSVLIB_CAP_LANG}, at most 8
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ChangeCapLang(int handle, int cap_lang);

    /**
     * Starts data broadcasting with a TV link. Answered by {@link
     * DtvEventListener#onEvDtvsvBmlStartTvlinkReply}.
     *
     * @param handle the session
     * @param bml_control_type a number of {@code BG_TE_DTVSVLIB_CONTROL_TYPE}, at most 4, or 255
     * @param bml_start_info the link and its plane; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLStartTvLinkReq(
            int handle, int bml_control_type, BG_TS_DTVSVLIB_BML_START_INFO bml_start_info);

    /**
     * Ends a TV link. Answered by {@link DtvEventListener#onEvDtvsvBmlEndTvlinkReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLEndTvLinkReq(int handle);

    /**
     * Passes a key or a touch to the data-broadcast document. No event of its own follows.
     *
     * @param handle the session
     * @param key_code_notify the key; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLKeyEventNotify(
            int handle, BG_TS_DTVSVLIB_KEY_CODE_NOTIFY key_code_notify);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlPermissionReq}. No event of its own follows.
     *
     * @param handle the session
     * @param permission_reply the choice; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLPermissionReply(
            int handle, BG_TS_DTVSVLIB_PERMISSION_REPLY permission_reply);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlAuthReq}. No event of its own follows.
     *
     * @param handle the session
     * @param auth_reply the choice with user and password; none of them null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLAuthReply(
            int handle, BG_TS_DTVSVLIB_AUTH_REPLY auth_reply);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlWriteNvramReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how the write ended; any value, the low byte is sent
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLWriteNvramReply(int handle, int bml_end_type);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlReadNvramReq}. No event of its own follows.
     *
     * @param handle the session
     * @param read_nvram_reply the block; neither it nor its name or data null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLReadNvramReply(
            int handle, BG_TS_DTVSVLIB_READ_NVRAM_REPLY read_nvram_reply);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlStartFepReq}. A null {@code end_type} is not
     * refused here: the low byte of {@code data_size} is sent in its place. No event of its own
     * follows.
     *
     * @param handle the session
     * @param start_fep_reply the text and how the input ended; neither it nor the text null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLFepReply(
            int handle, BG_TS_DTVSVLIB_START_FEP_REPLY start_fep_reply);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlMailReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how it ended: a number of {@code BG_TE_DTVSVLIB_BML_END_TYPE}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLMailReply(int handle, int bml_end_type);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlPhoneBookReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how it ended: a number of {@code BG_TE_DTVSVLIB_BML_END_TYPE}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLPhonebookReply(int handle, int bml_end_type);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlCallReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how it ended: a number of {@code BG_TE_DTVSVLIB_BML_END_TYPE}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLCallReply(int handle, int bml_end_type);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlScheduleReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how it ended: a number of {@code BG_TE_DTVSVLIB_BML_END_TYPE}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLScheduleReply(int handle, int bml_end_type);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlBrowserReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how it ended: a number of {@code BG_TE_DTVSVLIB_BML_END_TYPE}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLBrowserReply(int handle, int bml_end_type);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlSavePictureReq}. {@link
     * DtvEventListener#onEvDtvsvBmlSavePictureNotify} reports when the picture is saved.
     *
     * @param handle the session
     * @param save_picture_reply the choice and the file's name; neither it nor the name null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLSavePictureReply(
            int handle, BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY save_picture_reply);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlStartTvlinkReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how it ended: a number of {@code BG_TE_DTVSVLIB_BML_END_TYPE}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLStartTvlinkReply(int handle, int bml_end_type);

    /**
     * Answers {@link DtvEventListener#onEvDtvsvBmlEnrolTvlinkReq}. No event of its own follows.
     *
     * @param handle the session
     * @param bml_end_type how it ended: a number of {@code BG_TE_DTVSVLIB_BML_END_TYPE}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLEnrolTvlinkReply(int handle, int bml_end_type);

    /**
     * Restarts the data-broadcast browser. Answered by {@link
     * DtvEventListener#onEvDtvsvBmlRebootBrowserReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLRebootBrowserReq(int handle);

    /**
     * Starts a recording of what is received. Answered by {@link
     * DtvEventListener#onEvDtvsvStartRecReply}. {@link DtvEventListener#onEvDtvsvRecStatusNotify}
     * and {@link DtvEventListener#onEvDtvsvRecInfoNotify} report its progress.
     *
     * @param handle the session
     * @param medium a number of {@code BG_TE_DTVSVLIB_RECORDING_MEDIUM}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_StartRec(int handle, int medium);

    /**
     * Ends a recording. Answered by {@link DtvEventListener#onEvDtvsvTerminateRecReply}.
     *
     * @param handle the session
     * @param terminate_rec whether it is kept, and its title; neither null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_TerminateRec(
            int handle, BG_TS_DTVSVLIB_TERMINATE_REC_REQ terminate_rec);

    /**
     * Plays a recording. Answered by {@link DtvEventListener#onEvDtvsvStartPlayReply}. {@link
     * DtvEventListener#onEvDtvsvPlayStatusNotify}, {@link
     * DtvEventListener#onEvDtvsvPlayEventNotify} and {@link
     * DtvEventListener#onEvDtvsvPlayErrorNotify} report its progress.
     *
     * @param handle the session
     * @param start_play which recording, and how; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_StartPlay(
            int handle, BG_TS_DTVSVLIB_START_PLAY start_play);

    /**
     * Changes the speed of playback. Answered by {@link
     * DtvEventListener#onEvDtvsvChangePlaySpeedReply}.
     *
     * @param handle the session
     * @param special_play direction and speed; not null; the speed 2, 10, 30 or 120
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ChangePlaySpeed(
            int handle, BG_TS_DTVSVLIB_SPECIAL_PLAY special_play);

    /**
     * Pauses playback. Answered by {@link DtvEventListener#onEvDtvsvPausePlayReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_PausePlay(int handle);

    /**
     * Continues a paused playback. Answered by {@link DtvEventListener#onEvDtvsvRestartPlayReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ReStartPlay(int handle);

    /**
     * Skips a part of the recording. Answered by {@link DtvEventListener#onEvDtvsvSkipPlayReply}.
     *
     * @param handle the session
     * @param skip_play direction and seconds; not null
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SkipPlay(
            int handle, BG_TS_DTVSVLIB_SKIP_PLAY skip_play);

    /**
     * Moves a paused playback by a frame. Answered by {@link
     * DtvEventListener#onEvDtvsvFrameSlidePlayReply}.
     *
     * @param handle the session
     * @param direction a number of {@code BG_TE_DTVSVLIB_PLAY_DIRECTION}, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_FrameSlidePlay(int handle, int direction);

    /**
     * Ends playback. Answered by {@link DtvEventListener#onEvDtvsvTerminatePlayReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_TerminatePlay(int handle);

    /**
     * Moves the position at which playback is paused. Answered by {@link
     * DtvEventListener#onEvDtvsvMovePausePositionReply}.
     *
     * @param handle the session
     * @param move_pos which way, at most 1
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_MovePausePosition(int handle, int move_pos);

    /**
     * Sets the mode of the tuner's low-noise amplifier. Answered by {@link
     * DtvEventListener#onEvDtvsvControlLNAReply}.
     *
     * @param handle the session
     * @param lna_mode 0, 16 or 17
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlLNA(int handle, int lna_mode);

    /**
     * Starts or stops the log of the tuner. Answered by {@link
     * DtvEventListener#onEvDtvsvSetTunerLogReply}.
     *
     * @param handle the session
     * @param set_log 1 or 2
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetTunerLog(int handle, int set_log);

    /**
     * Asks whether the log of the tuner runs. Answered by {@link
     * DtvEventListener#onEvDtvsvGetTunerLogStatusReply}.
     *
     * @param handle the session
     * @return whether the command was delivered
     */
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_GetTunerLogStatus(int handle);

    /**
     * {@link #DtvSvLib_Release}, waiting for the answer.
     *
     * @param handle the session
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_RELEASE_REPLY_SYNC_INFO DtvSvLib_Release_Sync(int handle);

    /**
     * {@link #DtvSvLib_CancelScan}, waiting for the answer.
     *
     * @param handle the session
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_CANCEL_SCAN_SYNC_INFO DtvSvLib_CancelScan_Sync(int handle);

    /**
     * {@link #DtvSvLib_TerminateBroadcastReceiving}, waiting for the answer.
     *
     * @param handle the session
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_TERMINATE_BROADCAST_RECEIVING_REPLY_SYNC_INFO
            DtvSvLib_TerminateBroadcastReceiving_Sync(int handle);

    /**
     * {@link #DtvSvLib_ControlDecodeScreen}, waiting for the answer.
     * <p><b>Check {@code onoff} before the call.</b> When it is above 1 the library answers with
     * {@code BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG}, an object that is not of the declared
     * class, and compiled code that uses it as one may do anything. A caller that cannot check it
     * calls by reflection and takes the answer as an {@link Object}.
     *
     * @param handle the session
     * @param onoff 0 for off, 1 for on; nothing above
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_CONTROL_DECODE_SCREEN_SYNC_INFO DtvSvLib_ControlDecodeScreen_Sync(
            int handle, int onoff);

    /**
     * {@link #DtvSvLib_ControlDecodeAudio}, waiting for the answer.
     * <p><b>Check {@code onoff} before the call.</b> When it is above 1 the library answers with
     * {@code BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG}, an object that is not of the declared
     * class, and compiled code that uses it as one may do anything. A caller that cannot check it
     * calls by reflection and takes the answer as an {@link Object}.
     *
     * @param handle the session
     * @param onoff 0 for off, 1 for on; nothing above
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO DtvSvLib_ControlDecodeAudio_Sync(
            int handle, int onoff);

    /**
     * {@link #DtvSvLib_ControlCap}, waiting for the answer. A refused argument is reported by a
     * {@code return_value} of 5.
     *
     * @param handle the session
     * @param cap_control_type a number of {@code BG_TE_DTVSVLIB_CONTROL_TYPE}, at most 4, or 255
     * @param cap_lang a number of {@code BG_TE_DTVSVLIB_CAP_LANG}, at most 8
     * @param cap_drawing_info plane of the captions; not null
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_CONTROL_CAP_SYNC_INFO DtvSvLib_ControlCap_Sync(
            int handle, int cap_control_type, int cap_lang,
            BG_TS_DTVSVLIB_CAP_DRAWING_INFO cap_drawing_info);

    /**
     * {@link #DtvSvLib_ControlBML}, waiting for the answer. A refused argument is reported by a
     * {@code return_value} of 5.
     *
     * @param handle the session
     * @param bml_control_type a number of {@code BG_TE_DTVSVLIB_CONTROL_TYPE}, at most 4, or 255
     * @param bml_drawing_info plane of data broadcasting; not null
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_CONTROL_BML_SYNC_INFO DtvSvLib_ControlBML_Sync(
            int handle, int bml_control_type, BG_TS_DTVSVLIB_BML_DRAWING_INFO bml_drawing_info);

    /**
     * {@link #DtvSvLib_BMLEndTvLinkReq}, waiting for the answer.
     *
     * @param handle the session
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_END_TVLINK_SYNC_INFO DtvSvLib_BMLEndTvLink_Sync(int handle);

    /**
     * {@link #DtvSvLib_TerminateRec}, waiting for the answer. A refused argument is reported by a
     * {@code result} of 5.
     *
     * @param handle the session
     * @param terminate_rec whether it is kept, and its title; neither null
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO DtvSvLib_TerminateRec_Sync(
            int handle, BG_TS_DTVSVLIB_TERMINATE_REC_REQ terminate_rec);

    /**
     * {@link #DtvSvLib_TerminatePlay}, waiting for the answer.
     *
     * @param handle the session
     * @return the service's answer
     */
    public native BG_TS_DTVSVLIB_TERMINATE_PLAY_REPLY_SYNC_INFO DtvSvLib_TerminatePlay_Sync(
            int handle);
}

#include "events/programme/programme_cases.h"

namespace events {

const Case& componentCase() {
    static const Case made{"component_info",
                           0x10000092,
                           "dtvsv_msgid_lib_component_info_notify",
                           Record(16)
                               .u16(0, 0xFEDC)
                               .u32(4, 0xC4C3C2C1)
                               .u16(8, 0xB2B1)
                               .u8(10, 0xA1)
                               .u8(11, 0xA2)
                               .u8(12, 0xA3),
                           false,
                           "",
                           "DEBUG",
                           "DEBUG",
                           {"145 78", "91 23"},
                           23,
                           "onEvDtvsvComponentInfoNotify BG_EV_DTVSV_COMPONENT_INFO_NOTIFY(65244, "
                           "BG_TS_DTVSVLIB_COMPONENT_INFO(161, 162, 163), 3301163713L, 45745)"};
    return made;
}

const Case& videoCase() {
    static const Case made{
        "update_video_info",
        0x10000094,
        "dtvsv_msgid_lib_update_video_info_notify",
        Record(16).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1).u16(8, 0xB2B1).u16(10, 0xB4B3).u16(12, 0xB6B5),
        false,
        "",
        "DEBUG",
        "DEBUG",
        {"173 106", "105 37"},
        37,
        "onEvDtvsvUpdateVideoInfoNotify BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_VIDEO_INFO(46259, 46773), 3301163713L, 45745)"};
    return made;
}

const Case& audioCase() {
    static const Case made{
        "update_audio_info",
        0x10000095,
        "dtvsv_msgid_lib_update_audio_info_notify",
        Record(12).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1).u16(8, 0xB2B1).u8(10, 0xA1).u8(11, 0xA2),
        false,
        "",
        "DEBUG",
        "DEBUG",
        {"104 36"},
        36,
        "onEvDtvsvUpdateAudioInfoNotify BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY(65244, 161, "
        "162, 3301163713L, 45745)"};
    return made;
}

const Case& captionCase() {
    static const Case made{
        "get_caption_data",
        0x10000088,
        "dtvsv_msgid_lib_get_caption_data_notify",
        Record(4).u16(0, 0xFEDC).u8(2, 0xA1).u8(3, 0xA2),
        false,
        "",
        "DEBUG",
        "DEBUG",
        {"152 85", "93 25"},
        25,
        "onEvDtvsvGetCaptionDataNotify BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_GET_CAPTION_DATA_NOTIFY(161, 162))"};
    return made;
}

const Case& selectAudioCase() {
    static const Case made{
        "select_audio_component",
        0x10000084,
        "dtvsv_msgid_lib_select_audio_component_notify",
        Record(8).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1),
        false,
        "",
        "DEBUG",
        "DEBUG",
        {"99 31"},
        31,
        "onEvDtvsvSelectAudioComponentNotify BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY(65244, "
        "-993803583)"};
    return made;
}

const Case& startSearchCase() {
    static const Case made{"start_search_channel",
                           0x10000081,
                           "dtvsv_msgid_lib_start_search_channel_notify",
                           Record(8).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1),
                           false,
                           "",
                           "DEBUG",
                           "DEBUG",
                           {"101 33"},
                           33,
                           "onEvDtvsvStartSearchChannelNotify "
                           "BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY(65244, -993803583)"};
    return made;
}

const Case& terminateSearchCase() {
    static const Case made{
        "terminate_search_channel",
        0x10000082,
        "dtvsv_msgid_lib_terminate_search_channel_notify",
        Record(16).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1).u32(8, 0xD4D3D2D1).u16(12, 0xB2B1),
        true,
        "",
        "ERROR",
        "DEBUG",
        {"140 73", "103 35"},
        35,
        "onEvDtvsvTerminateSearchChannelNotify BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY(65244, "
        "-993803583, BG_TS_DTVSVLIB_BROADCAST_INFO(-724315439, 45745))"};
    return made;
}

const Case& terminateScanCase() {
    static const Case made{
        "terminate_scan",
        0x10000080,
        "dtvsv_msgid_lib_terminate_scan_notify",
        Record(8).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1),
        true,
        "",
        "ERROR",
        "DEBUG",
        {"102 34"},
        34,
        "onEvDtvsvTerminateScanNotify BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY(65244, -993803583)"};
    return made;
}

const Case& networkCase() {
    static const Case made{
        "network_info",
        0x10000090,
        "dtvsv_msgid_lib_network_info_notify",
        Record(124)
            .u16(0, 0xFEDC)
            .u32(4, 0xC4C3C2C1)
            .u16(8, 0xB2B1)
            .u16(10, 7)
            .text(12, "TS name")
            .u16(56, 0xB4B3)
            .u16(58, 12)
            .text(60, "Network name")
            .u8(104, 0xA1)
            .u16(106, 7)
            .u16(108, 0x8101)
            .u16(110, 0x8202)
            .u16(112, 0x8303)
            .u16(114, 0x8404)
            .u16(116, 0x8505)
            .u16(118, 0x8606)
            .u16(120, 0x8707),
        true,
        "DEBUG |handle = 65244\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = |TS name|, nw_id = "
        "46259, "
        "nw_name_size = 12, nw_name = |Network name|, remocon_id = 161, partialsvc_cnt = 7\n",
        "ERROR",
        "DEBUG",
        {"155 88", "95 27"},
        27,
        "onEvDtvsvNetworkInfoNotify BG_EV_DTVSV_NETWORK_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_NETWORK_INFO(45745, 7, \"TS name\", 46259, 12, \"Network name\", 161, 7, "
        "ints[33025, 33282, 33539, 33796, 34053, 34310, 34567]), 3301163713L)",
        {"ERROR |ERROR NewStringUTF\n", "ERROR |ERROR NewStringUTF\n"}};
    return made;
}

const Case& scanCase() {
    static const Case made{
        "scan",
        0x1000007f,
        "dtvsv_msgid_lib_scan_notify",
        Record(132)
            .u16(0, 0xFEDC)
            .u32(4, 0xC4C3C2C1)
            .u32(8, 0xD4D3D2D1)
            .u16(12, 0xB2B1)
            .u16(14, 7)
            .text(16, "TS name")
            .u16(60, 0xB4B3)
            .u16(62, 12)
            .text(64, "Network name")
            .u8(108, 0xA1)
            .u16(110, 8)
            .u16(112, 0x8101)
            .u16(114, 0x8202)
            .u16(116, 0x8303)
            .u16(118, 0x8404)
            .u16(120, 0x8505)
            .u16(122, 0x8606)
            .u16(124, 0x8707)
            .u16(126, 0x8808)
            .u16(128, 0xB6B5),
        false,
        "DEBUG |handle = 65244, result = -993803583, result_channnel_num = 46773\n"
        "DEBUG |SCAN_RESULT : channnel = -724315439\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = |TS name|, nw_id = "
        "46259, "
        "nw_name_size = 12, nw_name = |Network name|, remocon_id = 161, partialsvc_cnt = 8\n",
        "DEBUG",
        "DEBUG",
        {"155 88", "164 97", "98 30"},
        30,
        "onEvDtvsvScanNotify BG_EV_DTVSV_SCAN_NOTIFY(65244, -993803583, "
        "BG_TS_DTVSVLIB_SCAN_RESULT(-724315439, BG_TS_DTVSVLIB_NETWORK_INFO(45745, 7, \"TS name\", "
        "46259, 12, \"Network name\", 161, 8, ints[33025, 33282, 33539, 33796, 34053, 34310, "
        "34567, "
        "34824])), 46773)",
        {"ERROR |ERROR NewStringUTF\n", "ERROR |ERROR NewStringUTF\n"}};
    return made;
}

const Case& servicesCase() {
    static const Case made{
        "service_info",
        0x10000091,
        "dtvsv_msgid_lib_service_info_notify",
        Record(436)
            .u16(0, 0xFEDC)
            .u32(4, 0xC4C3C2C1)
            .u16(8, 0xB2B1)
            .u32(12, 0xD4D3D2D1)
            .u8(16, 2)
            .u32(20, 0xE1E2E3E4)
            .u32(24, 5)
            .text(28, "First")
            .u32(72, 0x01020304)
            .u32(76, 6)
            .text(80, "Second"),
        true,
        "DEBUG |handle = 65244\n"
        "DEBUG |STREAM_INFO ts_id = -724315439, svc_cnt = 2\n",
        nullptr,
        "DEBUG",
        {"167 100", "167 100", "171 104", "100 32"},
        32,
        "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_STREAM_INFO(-724315439, 2, [BG_TS_DTVSVLIB_SERVICE_INFO(-505224220, 5, "
        "\"First\"), BG_TS_DTVSVLIB_SERVICE_INFO(16909060, 6, \"Second\")]), 3301163713L, 45745)",
        {"", ""}};
    return made;
}

std::vector<Case> streamCases() {
    return {componentCase(),   videoCase(),       audioCase(),           captionCase(),
            selectAudioCase(), startSearchCase(), terminateSearchCase(), terminateScanCase()};
}

} // namespace events

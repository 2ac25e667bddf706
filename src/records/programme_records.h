// The records that describe the broadcast: networks, services, programmes, streams.
#pragma once

#include "records/layout.h"

#pragma pack(push, 1)

/// A network and the transport stream that was found in it.
struct NETWORK_INFO {
    uint16_t ts_id;
    uint16_t ts_name_size; ///< 0: no name
    char ts_name[44];
    uint16_t nw_id;
    uint16_t nw_name_size; ///< 0: no name
    char nw_name[44];
    uint8_t remocon_id;
    uint8_t reserved_97;
    uint16_t partialsvc_cnt;
    uint16_t partialsvc[8]; ///< ids of the partial-reception services
};

struct TS_NETWORK_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    NETWORK_INFO network;
};

struct TS_SCAN_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t result;
    uint32_t channnel;
    NETWORK_INFO network;
    uint16_t result_channnel_num;
    uint8_t reserved_130[2];
};

struct SERVICE_INFO {
    uint32_t service_id;
    uint32_t name_size; ///< 0: no name
    char name[44];
};

struct TS_SERVICE_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
    uint32_t ts_id;
    uint8_t svc_cnt;
    uint8_t reserved_17[3];
    SERVICE_INFO service[8];
};

struct DATE {
    uint16_t year;
    uint16_t month;
    uint16_t day;
};

struct TIME {
    uint16_t hour;
    uint16_t min;
    uint16_t sec;
    uint16_t mil_sec;
};

/// One programme of the guide. Its texts are UTF-16 units in the machine's byte order.
struct PRG_INFO {
    uint32_t evtId;
    DATE start_date;
    TIME start_time;
    uint8_t start_day_of_week;
    uint8_t reserved_19;
    TIME duration;
    uint8_t freeca;
    uint8_t nibble_cnt;
    uint8_t content_nibble[7];
    uint8_t user_nibble[7];
    uint32_t name_size; ///< units
    char name[196];
    uint32_t text_size; ///< units
    char text[388];
};

struct TS_RECEIVE_EPG_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
    uint16_t svc_id;
    uint8_t reserved_14[2];
    PRG_INFO current;
    PRG_INFO next;
    uint16_t after_prg_infoCnt;
    uint8_t reserved_1290[2];
    PRG_INFO after[8];
};

struct TS_COMPONENT_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t cap_exist_flg;
    uint8_t bml_exist_flg;
    uint8_t audio_es_num;
    uint8_t reserved_13[3];
};

struct TS_UPDATE_VIDEO_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint16_t size_h;
    uint16_t size_v;
    uint8_t reserved_14[2];
};

struct TS_UPDATE_AUDIO_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t dualmono;
    uint8_t audio_mode;
};

struct TS_GET_CAPTION_DATA_NOTIFY {
    uint16_t handle;
    uint8_t valid_lang_num;
    uint8_t cap_lang;
};

struct TS_SELECT_AUDIO_COMPONENT_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t result;
};

struct TS_START_SEARCH_CHANNEL_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
};

struct TS_TERMINATE_SEARCH_CHANNEL_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t result;
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_14[2];
};

struct TS_TERMINATE_SCAN_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t result;
};

#pragma pack(pop)

DTV_RECORD_SIZE(NETWORK_INFO, 116);
DTV_FIELD_AT(NETWORK_INFO, ts_id, 0);
DTV_FIELD_AT(NETWORK_INFO, ts_name_size, 2);
DTV_FIELD_AT(NETWORK_INFO, ts_name, 4);
DTV_FIELD_AT(NETWORK_INFO, nw_id, 48);
DTV_FIELD_AT(NETWORK_INFO, nw_name_size, 50);
DTV_FIELD_AT(NETWORK_INFO, nw_name, 52);
DTV_FIELD_AT(NETWORK_INFO, remocon_id, 96);
DTV_FIELD_AT(NETWORK_INFO, partialsvc_cnt, 98);
DTV_FIELD_AT(NETWORK_INFO, partialsvc, 100);

DTV_RECORD_SIZE(TS_NETWORK_INFO_NOTIFY, 124);
DTV_FIELD_AT(TS_NETWORK_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_NETWORK_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_NETWORK_INFO_NOTIFY, network, 8);

DTV_RECORD_SIZE(TS_SCAN_NOTIFY, 132);
DTV_FIELD_AT(TS_SCAN_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_SCAN_NOTIFY, result, 4);
DTV_FIELD_AT(TS_SCAN_NOTIFY, channnel, 8);
DTV_FIELD_AT(TS_SCAN_NOTIFY, network, 12);
DTV_FIELD_AT(TS_SCAN_NOTIFY, result_channnel_num, 128);

DTV_RECORD_SIZE(SERVICE_INFO, 52);
DTV_FIELD_AT(SERVICE_INFO, service_id, 0);
DTV_FIELD_AT(SERVICE_INFO, name_size, 4);
DTV_FIELD_AT(SERVICE_INFO, name, 8);

DTV_RECORD_SIZE(TS_SERVICE_INFO_NOTIFY, 436);
DTV_FIELD_AT(TS_SERVICE_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_SERVICE_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_SERVICE_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_SERVICE_INFO_NOTIFY, ts_id, 12);
DTV_FIELD_AT(TS_SERVICE_INFO_NOTIFY, svc_cnt, 16);
DTV_FIELD_AT(TS_SERVICE_INFO_NOTIFY, service, 20);

DTV_RECORD_SIZE(DATE, 6);
DTV_FIELD_AT(DATE, year, 0);
DTV_FIELD_AT(DATE, month, 2);
DTV_FIELD_AT(DATE, day, 4);

DTV_RECORD_SIZE(TIME, 8);
DTV_FIELD_AT(TIME, hour, 0);
DTV_FIELD_AT(TIME, min, 2);
DTV_FIELD_AT(TIME, sec, 4);
DTV_FIELD_AT(TIME, mil_sec, 6);

DTV_RECORD_SIZE(PRG_INFO, 636);
DTV_FIELD_AT(PRG_INFO, evtId, 0);
DTV_FIELD_AT(PRG_INFO, start_date, 4);
DTV_FIELD_AT(PRG_INFO, start_time, 10);
DTV_FIELD_AT(PRG_INFO, start_day_of_week, 18);
DTV_FIELD_AT(PRG_INFO, duration, 20);
DTV_FIELD_AT(PRG_INFO, freeca, 28);
DTV_FIELD_AT(PRG_INFO, nibble_cnt, 29);
DTV_FIELD_AT(PRG_INFO, content_nibble, 30);
DTV_FIELD_AT(PRG_INFO, user_nibble, 37);
DTV_FIELD_AT(PRG_INFO, name_size, 44);
DTV_FIELD_AT(PRG_INFO, name, 48);
DTV_FIELD_AT(PRG_INFO, text_size, 244);
DTV_FIELD_AT(PRG_INFO, text, 248);

DTV_RECORD_SIZE(TS_RECEIVE_EPG_INFO_NOTIFY, 6380);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, svc_id, 12);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, current, 16);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, next, 652);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, after_prg_infoCnt, 1288);
DTV_FIELD_AT(TS_RECEIVE_EPG_INFO_NOTIFY, after, 1292);

DTV_RECORD_SIZE(TS_COMPONENT_INFO_NOTIFY, 16);
DTV_FIELD_AT(TS_COMPONENT_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_COMPONENT_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_COMPONENT_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_COMPONENT_INFO_NOTIFY, cap_exist_flg, 10);
DTV_FIELD_AT(TS_COMPONENT_INFO_NOTIFY, bml_exist_flg, 11);
DTV_FIELD_AT(TS_COMPONENT_INFO_NOTIFY, audio_es_num, 12);

DTV_RECORD_SIZE(TS_UPDATE_VIDEO_INFO_NOTIFY, 16);
DTV_FIELD_AT(TS_UPDATE_VIDEO_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_UPDATE_VIDEO_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_UPDATE_VIDEO_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_UPDATE_VIDEO_INFO_NOTIFY, size_h, 10);
DTV_FIELD_AT(TS_UPDATE_VIDEO_INFO_NOTIFY, size_v, 12);

DTV_RECORD_SIZE(TS_UPDATE_AUDIO_INFO_NOTIFY, 12);
DTV_FIELD_AT(TS_UPDATE_AUDIO_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_UPDATE_AUDIO_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_UPDATE_AUDIO_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_UPDATE_AUDIO_INFO_NOTIFY, dualmono, 10);
DTV_FIELD_AT(TS_UPDATE_AUDIO_INFO_NOTIFY, audio_mode, 11);

DTV_RECORD_SIZE(TS_GET_CAPTION_DATA_NOTIFY, 4);
DTV_FIELD_AT(TS_GET_CAPTION_DATA_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_GET_CAPTION_DATA_NOTIFY, valid_lang_num, 2);
DTV_FIELD_AT(TS_GET_CAPTION_DATA_NOTIFY, cap_lang, 3);

DTV_RECORD_SIZE(TS_SELECT_AUDIO_COMPONENT_NOTIFY, 8);
DTV_FIELD_AT(TS_SELECT_AUDIO_COMPONENT_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_SELECT_AUDIO_COMPONENT_NOTIFY, result, 4);

DTV_RECORD_SIZE(TS_START_SEARCH_CHANNEL_NOTIFY, 8);
DTV_FIELD_AT(TS_START_SEARCH_CHANNEL_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_START_SEARCH_CHANNEL_NOTIFY, physical_channel, 4);

DTV_RECORD_SIZE(TS_TERMINATE_SEARCH_CHANNEL_NOTIFY, 16);
DTV_FIELD_AT(TS_TERMINATE_SEARCH_CHANNEL_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_TERMINATE_SEARCH_CHANNEL_NOTIFY, result, 4);
DTV_FIELD_AT(TS_TERMINATE_SEARCH_CHANNEL_NOTIFY, physical_channel, 8);
DTV_FIELD_AT(TS_TERMINATE_SEARCH_CHANNEL_NOTIFY, service_no, 12);

DTV_RECORD_SIZE(TS_TERMINATE_SCAN_NOTIFY, 8);
DTV_FIELD_AT(TS_TERMINATE_SCAN_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_TERMINATE_SCAN_NOTIFY, result, 4);

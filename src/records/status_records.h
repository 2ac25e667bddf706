// The records of the status notifications.
#pragma once

#include "records/layout.h"

#pragma pack(push, 1)

/// How far a recording has been played.
struct PLAY_STATUS_INFO {
    uint8_t status;
    uint8_t reserved_1[3];
    uint32_t current_time;
    uint8_t eof_flag;
    uint8_t reserved_9[3];
};

/// A notification of nothing but itself.
struct TS_HANDLE_NOTIFY {
    uint16_t handle;
};

struct TS_TUNER_SENSITIVITY_DATA_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
    uint32_t lna_mode;
    uint32_t cn_value;
    uint32_t ber;
    uint16_t ifagc;
    uint16_t rfagc;
    uint16_t lnag;
    uint16_t bpfg;
};

struct TS_PLAY_ERROR_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t play_error;
};

struct TS_PLAY_EVENT_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    PLAY_STATUS_INFO play_status;
    int32_t play_event;
    uint8_t bml_http_flg;
    uint8_t reserved_21[3];
};

struct TS_PLAY_STATUS_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    PLAY_STATUS_INFO play_status;
};

struct TS_REC_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
    uint32_t rec_time;
    uint8_t rec_cap;
    uint8_t reserved_17[3];
};

struct TS_REC_STATUS_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
    uint32_t rec_status;
};

struct TS_RECEIVE_SENSITIVITY_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
    uint32_t ber;
    uint32_t cn;
};

/// Reception turned bad or good again; a good one leaves the level unused.
struct TS_SENS_NOTIFY {
    uint16_t handle;
    uint16_t sensitivity_level;
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
};

struct TS_CA_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t ca_status;
    uint8_t reserved_11;
};

struct TS_BML_DISP_ICON_NOTIFY {
    uint16_t handle;
    uint8_t icon_type;
    uint8_t disp_permit;
};

struct TS_COPY_CONTROL_INFO_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t copy_mode;
    uint8_t reserved_11;
};

/// A notification of one 32-bit result.
struct TS_RESULT_NOTIFY {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t result;
};

/// A caption or BML status.
struct TS_CHANGE_STATUS_NOTIFY {
    uint16_t handle;
    uint8_t change_status;
    uint8_t reserved_3;
};

struct TS_ASSIGN_VIDEO_AREA_NOTIFY {
    uint16_t handle;
    uint8_t drawing_destination;
    uint8_t reserved_3;
    uint32_t result;
};

#pragma pack(pop)

DTV_RECORD_SIZE(PLAY_STATUS_INFO, 12);
DTV_FIELD_AT(PLAY_STATUS_INFO, status, 0);
DTV_FIELD_AT(PLAY_STATUS_INFO, current_time, 4);
DTV_FIELD_AT(PLAY_STATUS_INFO, eof_flag, 8);

DTV_RECORD_SIZE(TS_HANDLE_NOTIFY, 2);
DTV_FIELD_AT(TS_HANDLE_NOTIFY, handle, 0);

DTV_RECORD_SIZE(TS_TUNER_SENSITIVITY_DATA_NOTIFY, 32);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, lna_mode, 12);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, cn_value, 16);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, ber, 20);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, ifagc, 24);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, rfagc, 26);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, lnag, 28);
DTV_FIELD_AT(TS_TUNER_SENSITIVITY_DATA_NOTIFY, bpfg, 30);

DTV_RECORD_SIZE(TS_PLAY_ERROR_NOTIFY, 8);
DTV_FIELD_AT(TS_PLAY_ERROR_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_PLAY_ERROR_NOTIFY, play_error, 4);

DTV_RECORD_SIZE(TS_PLAY_EVENT_NOTIFY, 24);
DTV_FIELD_AT(TS_PLAY_EVENT_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_PLAY_EVENT_NOTIFY, play_status, 4);
DTV_FIELD_AT(TS_PLAY_EVENT_NOTIFY, play_event, 16);
DTV_FIELD_AT(TS_PLAY_EVENT_NOTIFY, bml_http_flg, 20);

DTV_RECORD_SIZE(TS_PLAY_STATUS_NOTIFY, 16);
DTV_FIELD_AT(TS_PLAY_STATUS_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_PLAY_STATUS_NOTIFY, play_status, 4);

DTV_RECORD_SIZE(TS_REC_INFO_NOTIFY, 20);
DTV_FIELD_AT(TS_REC_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_REC_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_REC_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_REC_INFO_NOTIFY, rec_time, 12);
DTV_FIELD_AT(TS_REC_INFO_NOTIFY, rec_cap, 16);

DTV_RECORD_SIZE(TS_REC_STATUS_NOTIFY, 16);
DTV_FIELD_AT(TS_REC_STATUS_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_REC_STATUS_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_REC_STATUS_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_REC_STATUS_NOTIFY, rec_status, 12);

DTV_RECORD_SIZE(TS_RECEIVE_SENSITIVITY_NOTIFY, 20);
DTV_FIELD_AT(TS_RECEIVE_SENSITIVITY_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_RECEIVE_SENSITIVITY_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_RECEIVE_SENSITIVITY_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_RECEIVE_SENSITIVITY_NOTIFY, ber, 12);
DTV_FIELD_AT(TS_RECEIVE_SENSITIVITY_NOTIFY, cn, 16);

DTV_RECORD_SIZE(TS_SENS_NOTIFY, 12);
DTV_FIELD_AT(TS_SENS_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_SENS_NOTIFY, sensitivity_level, 2);
DTV_FIELD_AT(TS_SENS_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_SENS_NOTIFY, service_no, 8);

DTV_RECORD_SIZE(TS_CA_INFO_NOTIFY, 12);
DTV_FIELD_AT(TS_CA_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_CA_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_CA_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_CA_INFO_NOTIFY, ca_status, 10);

DTV_RECORD_SIZE(TS_BML_DISP_ICON_NOTIFY, 4);
DTV_FIELD_AT(TS_BML_DISP_ICON_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_BML_DISP_ICON_NOTIFY, icon_type, 2);
DTV_FIELD_AT(TS_BML_DISP_ICON_NOTIFY, disp_permit, 3);

DTV_RECORD_SIZE(TS_COPY_CONTROL_INFO_NOTIFY, 12);
DTV_FIELD_AT(TS_COPY_CONTROL_INFO_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_COPY_CONTROL_INFO_NOTIFY, physical_channel, 4);
DTV_FIELD_AT(TS_COPY_CONTROL_INFO_NOTIFY, service_no, 8);
DTV_FIELD_AT(TS_COPY_CONTROL_INFO_NOTIFY, copy_mode, 10);

DTV_RECORD_SIZE(TS_RESULT_NOTIFY, 8);
DTV_FIELD_AT(TS_RESULT_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_RESULT_NOTIFY, result, 4);

DTV_RECORD_SIZE(TS_CHANGE_STATUS_NOTIFY, 4);
DTV_FIELD_AT(TS_CHANGE_STATUS_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_CHANGE_STATUS_NOTIFY, change_status, 2);

DTV_RECORD_SIZE(TS_ASSIGN_VIDEO_AREA_NOTIFY, 8);
DTV_FIELD_AT(TS_ASSIGN_VIDEO_AREA_NOTIFY, handle, 0);
DTV_FIELD_AT(TS_ASSIGN_VIDEO_AREA_NOTIFY, drawing_destination, 2);
DTV_FIELD_AT(TS_ASSIGN_VIDEO_AREA_NOTIFY, result, 4);

// The records of the BML browser's requests. Texts end at their first zero byte or with their
// field.
#pragma once

#include "records/layout.h"

#pragma pack(push, 1)

struct BML_TIME {
    uint16_t date_year;
    uint16_t date_month;
    uint16_t date_day;
    uint16_t date_dow;
    uint16_t date_hour;
    uint16_t date_min;
    uint16_t date_sec;
};

/// Opens a browser or, with the same record, a TV link.
struct TS_BROWSER_REQ {
    uint16_t handle;
    uint8_t app_id;
    uint8_t permit_av;
    uint8_t browser_info;
    uint8_t full_screen;
    char return_uri[1025];
    char combrowser_uri[1025];
};

struct TS_START_FEP_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint8_t input_type;
    uint8_t reserved_5[3];
    uint32_t input_max;
    uint8_t password_flg;
    char data[1927];
};

struct TS_MAIL_REQ {
    uint16_t handle;
    char title[124];
    char send_address[400];
    char data[2004];
};

struct TS_WRITE_NVRAM_REQ {
    uint16_t handle;
    uint8_t affiliation_id;
    uint8_t reserved_3;
    uint16_t network_id;
    char ts_name[44];
    uint8_t block_no;
    uint8_t data[64];
    uint8_t reserved_115;
};

struct TS_READ_NVRAM_REQ {
    uint16_t handle;
    uint8_t affiliation_id;
    uint8_t reserved_3;
    uint16_t network_id;
    uint8_t block_no;
    uint8_t reserved_7;
};

struct TS_PERMISSION_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint8_t permit_type;
    uint8_t reserved_5[3];
    uint32_t task_id;
};

struct TS_AUTH_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t task_id;
};

struct TS_PHONEBOOK_REQ {
    uint16_t handle;
    char name[260];
    char name_kana[516];
    char phone_number[132];
    char mail_address[400];
};

struct TS_CALL_REQ {
    uint16_t handle;
    char phone_number[100];
};

struct TS_SCHEDULE_REQ {
    uint16_t handle;
    BML_TIME time;
    char title[496];
    char text[976];
    uint8_t alarm_flag;
    uint8_t reserved_1489;
};

/// The expire date runs from the second to the year, unlike BML_TIME.
struct TS_ENROL_TVLINK_REQ {
    uint16_t handle;
    char title[164];
    char uri[244];
    char description[524];
    uint8_t cpro_bmtype;
    uint8_t reserved_935;
    uint16_t expire_date[7];
    uint16_t network_id;
    uint16_t service_id;
    uint8_t affiliation_id[6];
};

struct TS_SAVE_PICTURE_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint32_t src_resource_size;
    uint32_t filename_size;
    char src_resource[780];
    char filename[780];
    uint32_t image_data_size;
    uint8_t overwrite;
    uint8_t reserved_1577[3];
};

#pragma pack(pop)

DTV_RECORD_SIZE(BML_TIME, 14);
DTV_FIELD_AT(BML_TIME, date_year, 0);
DTV_FIELD_AT(BML_TIME, date_month, 2);
DTV_FIELD_AT(BML_TIME, date_day, 4);
DTV_FIELD_AT(BML_TIME, date_dow, 6);
DTV_FIELD_AT(BML_TIME, date_hour, 8);
DTV_FIELD_AT(BML_TIME, date_min, 10);
DTV_FIELD_AT(BML_TIME, date_sec, 12);

DTV_RECORD_SIZE(TS_BROWSER_REQ, 2056);
DTV_FIELD_AT(TS_BROWSER_REQ, handle, 0);
DTV_FIELD_AT(TS_BROWSER_REQ, app_id, 2);
DTV_FIELD_AT(TS_BROWSER_REQ, permit_av, 3);
DTV_FIELD_AT(TS_BROWSER_REQ, browser_info, 4);
DTV_FIELD_AT(TS_BROWSER_REQ, full_screen, 5);
DTV_FIELD_AT(TS_BROWSER_REQ, return_uri, 6);
DTV_FIELD_AT(TS_BROWSER_REQ, combrowser_uri, 1031);

DTV_RECORD_SIZE(TS_START_FEP_REQ, 1940);
DTV_FIELD_AT(TS_START_FEP_REQ, handle, 0);
DTV_FIELD_AT(TS_START_FEP_REQ, input_type, 4);
DTV_FIELD_AT(TS_START_FEP_REQ, input_max, 8);
DTV_FIELD_AT(TS_START_FEP_REQ, password_flg, 12);
DTV_FIELD_AT(TS_START_FEP_REQ, data, 13);

DTV_RECORD_SIZE(TS_MAIL_REQ, 2530);
DTV_FIELD_AT(TS_MAIL_REQ, handle, 0);
DTV_FIELD_AT(TS_MAIL_REQ, title, 2);
DTV_FIELD_AT(TS_MAIL_REQ, send_address, 126);
DTV_FIELD_AT(TS_MAIL_REQ, data, 526);

DTV_RECORD_SIZE(TS_WRITE_NVRAM_REQ, 116);
DTV_FIELD_AT(TS_WRITE_NVRAM_REQ, handle, 0);
DTV_FIELD_AT(TS_WRITE_NVRAM_REQ, affiliation_id, 2);
DTV_FIELD_AT(TS_WRITE_NVRAM_REQ, network_id, 4);
DTV_FIELD_AT(TS_WRITE_NVRAM_REQ, ts_name, 6);
DTV_FIELD_AT(TS_WRITE_NVRAM_REQ, block_no, 50);
DTV_FIELD_AT(TS_WRITE_NVRAM_REQ, data, 51);

DTV_RECORD_SIZE(TS_READ_NVRAM_REQ, 8);
DTV_FIELD_AT(TS_READ_NVRAM_REQ, handle, 0);
DTV_FIELD_AT(TS_READ_NVRAM_REQ, affiliation_id, 2);
DTV_FIELD_AT(TS_READ_NVRAM_REQ, network_id, 4);
DTV_FIELD_AT(TS_READ_NVRAM_REQ, block_no, 6);

DTV_RECORD_SIZE(TS_PERMISSION_REQ, 12);
DTV_FIELD_AT(TS_PERMISSION_REQ, handle, 0);
DTV_FIELD_AT(TS_PERMISSION_REQ, permit_type, 4);
DTV_FIELD_AT(TS_PERMISSION_REQ, task_id, 8);

DTV_RECORD_SIZE(TS_AUTH_REQ, 8);
DTV_FIELD_AT(TS_AUTH_REQ, handle, 0);
DTV_FIELD_AT(TS_AUTH_REQ, task_id, 4);

DTV_RECORD_SIZE(TS_PHONEBOOK_REQ, 1310);
DTV_FIELD_AT(TS_PHONEBOOK_REQ, handle, 0);
DTV_FIELD_AT(TS_PHONEBOOK_REQ, name, 2);
DTV_FIELD_AT(TS_PHONEBOOK_REQ, name_kana, 262);
DTV_FIELD_AT(TS_PHONEBOOK_REQ, phone_number, 778);
DTV_FIELD_AT(TS_PHONEBOOK_REQ, mail_address, 910);

DTV_RECORD_SIZE(TS_CALL_REQ, 102);
DTV_FIELD_AT(TS_CALL_REQ, handle, 0);
DTV_FIELD_AT(TS_CALL_REQ, phone_number, 2);

DTV_RECORD_SIZE(TS_SCHEDULE_REQ, 1490);
DTV_FIELD_AT(TS_SCHEDULE_REQ, handle, 0);
DTV_FIELD_AT(TS_SCHEDULE_REQ, time, 2);
DTV_FIELD_AT(TS_SCHEDULE_REQ, title, 16);
DTV_FIELD_AT(TS_SCHEDULE_REQ, text, 512);
DTV_FIELD_AT(TS_SCHEDULE_REQ, alarm_flag, 1488);

DTV_RECORD_SIZE(TS_ENROL_TVLINK_REQ, 960);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, handle, 0);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, title, 2);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, uri, 166);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, description, 410);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, cpro_bmtype, 934);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, expire_date, 936);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, network_id, 950);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, service_id, 952);
DTV_FIELD_AT(TS_ENROL_TVLINK_REQ, affiliation_id, 954);

DTV_RECORD_SIZE(TS_SAVE_PICTURE_REQ, 1580);
DTV_FIELD_AT(TS_SAVE_PICTURE_REQ, handle, 0);
DTV_FIELD_AT(TS_SAVE_PICTURE_REQ, src_resource_size, 4);
DTV_FIELD_AT(TS_SAVE_PICTURE_REQ, filename_size, 8);
DTV_FIELD_AT(TS_SAVE_PICTURE_REQ, src_resource, 12);
DTV_FIELD_AT(TS_SAVE_PICTURE_REQ, filename, 792);
DTV_FIELD_AT(TS_SAVE_PICTURE_REQ, image_data_size, 1572);
DTV_FIELD_AT(TS_SAVE_PICTURE_REQ, overwrite, 1576);

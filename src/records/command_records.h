// The records of the commands. Each begins with the session handle, but for the one that opens a
// session. Reserved bytes are sent as zero. Texts end at their first zero byte or with their field.
#pragma once

#include "records/drawing_info_records.h"
#include "records/layout.h"

#pragma pack(push, 1)

/// Opens a session.
struct TS_CREATE_REQ {
    uint8_t start_type;
    uint8_t reserved_1;
    uint16_t max_delay_time; ///< upper bound of the delays set later
};

/// A command without arguments.
struct TS_HANDLE_REQ {
    uint16_t handle;
};

/// A command with one small value.
struct TS_ONE_VALUE_REQ {
    uint16_t handle;
    uint8_t value;
    uint8_t reserved_3;
};

/// How the video is scaled and turned.
struct TS_DISPLAY_MODE_REQ {
    uint16_t handle;
    uint8_t screen_mode;
    uint8_t screen_rotate;
};

/// How far video and sound are held back.
struct TS_SOUND_VIDEO_DELAY_REQ {
    uint16_t handle;
    uint16_t video_viltime;
    int16_t audio_viltime;
};

/// Names a service: its physical channel and its number there.
struct TS_BROADCAST_INFO_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
};

/// Searches onward from a service.
struct TS_SEARCH_CHANNEL_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_10[2];
    uint8_t channel_operation;
    uint8_t reserved_13[3];
};

/// Places the video.
struct TS_SCREEN_DISPLAY_REQ {
    uint16_t handle;
    SCREEN_DRAWING_INFO screen;
};

/// Places the captions.
struct TS_CAP_DISPLAY_REQ {
    uint16_t handle;
    CAP_DRAWING_INFO cap;
};

/// Places the BML browser.
struct TS_BML_DISPLAY_REQ {
    uint16_t handle;
    BML_DRAWING_INFO bml;
};

/// Places all three planes.
struct TS_DISPLAY_ALL_REQ {
    uint16_t handle;
    SCREEN_DRAWING_INFO screen;
    CAP_DRAWING_INFO cap;
    BML_DRAWING_INFO bml;
};

/// Controls the captions.
struct TS_CONTROL_CAP_REQ {
    uint16_t handle;
    uint8_t cap_control_type;
    uint8_t cap_lang;
    CAP_DRAWING_INFO cap;
};

/// Controls the BML browser.
struct TS_CONTROL_BML_REQ {
    uint16_t handle;
    uint8_t bml_control_type;
    uint8_t reserved_3;
    BML_DRAWING_INFO bml;
};

/// What is presented when reception starts, and where.
struct TS_COMPONENT_SETTING_REQ {
    uint16_t handle;
    uint8_t cap_lang;
    uint8_t dualmono;
    uint8_t audio_component;
    uint8_t cap_start_type;
    uint8_t bml_start_type;
    uint8_t reserved_7;
    SCREEN_DRAWING_INFO screen;
    CAP_DRAWING_INFO cap;
    BML_DRAWING_INFO bml;
};

/// Plays a recorded programme.
struct TS_START_PLAY_REQ {
    uint16_t handle;
    uint8_t medium;
    uint8_t reserved_3;
    uint16_t program_number;
    uint8_t resume;
    uint8_t reserved_7;
    uint16_t interval;
    uint8_t pause;
    uint8_t reserved_11;
};

/// Plays faster or backwards; the ratio stays as it was given.
struct TS_SPECIAL_PLAY_REQ {
    uint16_t handle;
    uint8_t direction;
    uint8_t reserved_3;
    uint16_t numerator;
    uint16_t denominator;
};

/// Skips within a recording.
struct TS_SKIP_PLAY_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint8_t direction;
    uint8_t reserved_5[3];
    int32_t skipsec; ///< seconds
};

/// Ends a recording.
struct TS_TERMINATE_REC_REQ {
    uint16_t handle;
    uint8_t save_data;
    uint8_t reserved_3;
    uint16_t title_size;  ///< bytes of the title in modified UTF-8
    char title_name[196]; ///< ends with its field when it fills it
};

/// Hands a key or a touch to the BML browser.
struct TS_KEY_EVENT_REQ {
    uint16_t handle;
    uint8_t key_code;
    uint8_t key_type;
    uint16_t touch_x; ///< pixels
    uint16_t touch_y; ///< pixels
};

/// Answers a permission request.
struct TS_PERMISSION_REPLY_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint8_t select_type;
    uint8_t reserved_5[3];
    int32_t task_id;
};

/// Answers an authentication request.
struct TS_AUTH_REPLY_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint8_t select_type;
    char pass[260];
    char user[132];
    uint8_t reserved_397[3];
    int32_t task_id;
};

/// Answers a request to save a picture.
struct TS_SAVE_PICTURE_REPLY_REQ {
    uint16_t handle;
    uint8_t save_flag;
    uint8_t medium;
    uint8_t change_filename;
    uint8_t reserved_5;
    char filename[780];
};

/// Answers a request for text input.
struct TS_FEP_REPLY_REQ {
    uint16_t handle;
    uint8_t reserved_2[2];
    uint8_t end_type;
    uint8_t reserved_5[3];
    int32_t data_size;
    char data[1924];
};

/// Answers a request to read a block of the broadcaster's memory.
struct TS_READ_NVRAM_REPLY_REQ {
    uint16_t handle;
    uint8_t bml_end_type;
    char ts_name[44];
    uint8_t nvram_data[65]; ///< 64 bytes at most are used
};

/// Opens a TV link in the BML browser.
struct TS_START_TV_LINK_REQ {
    uint16_t handle;
    uint8_t bml_control_type;
    uint8_t reserved_3;
    uint16_t network_id;
    uint16_t service_id;
    uint8_t affiliation_id[6];
    char bookmark_url[260];
    BML_DRAWING_INFO bml;
};

#pragma pack(pop)

DTV_RECORD_SIZE(TS_CREATE_REQ, 4);
DTV_FIELD_AT(TS_CREATE_REQ, start_type, 0);
DTV_FIELD_AT(TS_CREATE_REQ, max_delay_time, 2);

DTV_RECORD_SIZE(TS_HANDLE_REQ, 2);
DTV_FIELD_AT(TS_HANDLE_REQ, handle, 0);

DTV_RECORD_SIZE(TS_ONE_VALUE_REQ, 4);
DTV_FIELD_AT(TS_ONE_VALUE_REQ, handle, 0);
DTV_FIELD_AT(TS_ONE_VALUE_REQ, value, 2);

DTV_RECORD_SIZE(TS_DISPLAY_MODE_REQ, 4);
DTV_FIELD_AT(TS_DISPLAY_MODE_REQ, handle, 0);
DTV_FIELD_AT(TS_DISPLAY_MODE_REQ, screen_mode, 2);
DTV_FIELD_AT(TS_DISPLAY_MODE_REQ, screen_rotate, 3);

DTV_RECORD_SIZE(TS_SOUND_VIDEO_DELAY_REQ, 6);
DTV_FIELD_AT(TS_SOUND_VIDEO_DELAY_REQ, handle, 0);
DTV_FIELD_AT(TS_SOUND_VIDEO_DELAY_REQ, video_viltime, 2);
DTV_FIELD_AT(TS_SOUND_VIDEO_DELAY_REQ, audio_viltime, 4);

DTV_RECORD_SIZE(TS_BROADCAST_INFO_REQ, 12);
DTV_FIELD_AT(TS_BROADCAST_INFO_REQ, handle, 0);
DTV_FIELD_AT(TS_BROADCAST_INFO_REQ, physical_channel, 4);
DTV_FIELD_AT(TS_BROADCAST_INFO_REQ, service_no, 8);

DTV_RECORD_SIZE(TS_SEARCH_CHANNEL_REQ, 16);
DTV_FIELD_AT(TS_SEARCH_CHANNEL_REQ, handle, 0);
DTV_FIELD_AT(TS_SEARCH_CHANNEL_REQ, physical_channel, 4);
DTV_FIELD_AT(TS_SEARCH_CHANNEL_REQ, service_no, 8);
DTV_FIELD_AT(TS_SEARCH_CHANNEL_REQ, channel_operation, 12);

DTV_RECORD_SIZE(TS_SCREEN_DISPLAY_REQ, 8);
DTV_FIELD_AT(TS_SCREEN_DISPLAY_REQ, handle, 0);
DTV_FIELD_AT(TS_SCREEN_DISPLAY_REQ, screen, 2);

DTV_RECORD_SIZE(TS_CAP_DISPLAY_REQ, 18);
DTV_FIELD_AT(TS_CAP_DISPLAY_REQ, handle, 0);
DTV_FIELD_AT(TS_CAP_DISPLAY_REQ, cap, 2);

DTV_RECORD_SIZE(TS_BML_DISPLAY_REQ, 8);
DTV_FIELD_AT(TS_BML_DISPLAY_REQ, handle, 0);
DTV_FIELD_AT(TS_BML_DISPLAY_REQ, bml, 2);

DTV_RECORD_SIZE(TS_DISPLAY_ALL_REQ, 30);
DTV_FIELD_AT(TS_DISPLAY_ALL_REQ, handle, 0);
DTV_FIELD_AT(TS_DISPLAY_ALL_REQ, screen, 2);
DTV_FIELD_AT(TS_DISPLAY_ALL_REQ, cap, 8);
DTV_FIELD_AT(TS_DISPLAY_ALL_REQ, bml, 24);

DTV_RECORD_SIZE(TS_CONTROL_CAP_REQ, 20);
DTV_FIELD_AT(TS_CONTROL_CAP_REQ, handle, 0);
DTV_FIELD_AT(TS_CONTROL_CAP_REQ, cap_control_type, 2);
DTV_FIELD_AT(TS_CONTROL_CAP_REQ, cap_lang, 3);
DTV_FIELD_AT(TS_CONTROL_CAP_REQ, cap, 4);

DTV_RECORD_SIZE(TS_CONTROL_BML_REQ, 10);
DTV_FIELD_AT(TS_CONTROL_BML_REQ, handle, 0);
DTV_FIELD_AT(TS_CONTROL_BML_REQ, bml_control_type, 2);
DTV_FIELD_AT(TS_CONTROL_BML_REQ, bml, 4);

DTV_RECORD_SIZE(TS_COMPONENT_SETTING_REQ, 36);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, handle, 0);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, cap_lang, 2);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, dualmono, 3);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, audio_component, 4);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, cap_start_type, 5);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, bml_start_type, 6);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, screen, 8);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, cap, 14);
DTV_FIELD_AT(TS_COMPONENT_SETTING_REQ, bml, 30);

DTV_RECORD_SIZE(TS_START_PLAY_REQ, 12);
DTV_FIELD_AT(TS_START_PLAY_REQ, handle, 0);
DTV_FIELD_AT(TS_START_PLAY_REQ, medium, 2);
DTV_FIELD_AT(TS_START_PLAY_REQ, program_number, 4);
DTV_FIELD_AT(TS_START_PLAY_REQ, resume, 6);
DTV_FIELD_AT(TS_START_PLAY_REQ, interval, 8);
DTV_FIELD_AT(TS_START_PLAY_REQ, pause, 10);

DTV_RECORD_SIZE(TS_SPECIAL_PLAY_REQ, 8);
DTV_FIELD_AT(TS_SPECIAL_PLAY_REQ, handle, 0);
DTV_FIELD_AT(TS_SPECIAL_PLAY_REQ, direction, 2);
DTV_FIELD_AT(TS_SPECIAL_PLAY_REQ, numerator, 4);
DTV_FIELD_AT(TS_SPECIAL_PLAY_REQ, denominator, 6);

DTV_RECORD_SIZE(TS_SKIP_PLAY_REQ, 12);
DTV_FIELD_AT(TS_SKIP_PLAY_REQ, handle, 0);
DTV_FIELD_AT(TS_SKIP_PLAY_REQ, direction, 4);
DTV_FIELD_AT(TS_SKIP_PLAY_REQ, skipsec, 8);

DTV_RECORD_SIZE(TS_TERMINATE_REC_REQ, 202);
DTV_FIELD_AT(TS_TERMINATE_REC_REQ, handle, 0);
DTV_FIELD_AT(TS_TERMINATE_REC_REQ, save_data, 2);
DTV_FIELD_AT(TS_TERMINATE_REC_REQ, title_size, 4);
DTV_FIELD_AT(TS_TERMINATE_REC_REQ, title_name, 6);

DTV_RECORD_SIZE(TS_KEY_EVENT_REQ, 8);
DTV_FIELD_AT(TS_KEY_EVENT_REQ, handle, 0);
DTV_FIELD_AT(TS_KEY_EVENT_REQ, key_code, 2);
DTV_FIELD_AT(TS_KEY_EVENT_REQ, key_type, 3);
DTV_FIELD_AT(TS_KEY_EVENT_REQ, touch_x, 4);
DTV_FIELD_AT(TS_KEY_EVENT_REQ, touch_y, 6);

DTV_RECORD_SIZE(TS_PERMISSION_REPLY_REQ, 12);
DTV_FIELD_AT(TS_PERMISSION_REPLY_REQ, handle, 0);
DTV_FIELD_AT(TS_PERMISSION_REPLY_REQ, select_type, 4);
DTV_FIELD_AT(TS_PERMISSION_REPLY_REQ, task_id, 8);

DTV_RECORD_SIZE(TS_AUTH_REPLY_REQ, 404);
DTV_FIELD_AT(TS_AUTH_REPLY_REQ, handle, 0);
DTV_FIELD_AT(TS_AUTH_REPLY_REQ, select_type, 4);
DTV_FIELD_AT(TS_AUTH_REPLY_REQ, pass, 5);
DTV_FIELD_AT(TS_AUTH_REPLY_REQ, user, 265);
DTV_FIELD_AT(TS_AUTH_REPLY_REQ, task_id, 400);

DTV_RECORD_SIZE(TS_SAVE_PICTURE_REPLY_REQ, 786);
DTV_FIELD_AT(TS_SAVE_PICTURE_REPLY_REQ, handle, 0);
DTV_FIELD_AT(TS_SAVE_PICTURE_REPLY_REQ, save_flag, 2);
DTV_FIELD_AT(TS_SAVE_PICTURE_REPLY_REQ, medium, 3);
DTV_FIELD_AT(TS_SAVE_PICTURE_REPLY_REQ, change_filename, 4);
DTV_FIELD_AT(TS_SAVE_PICTURE_REPLY_REQ, filename, 6);

DTV_RECORD_SIZE(TS_FEP_REPLY_REQ, 1936);
DTV_FIELD_AT(TS_FEP_REPLY_REQ, handle, 0);
DTV_FIELD_AT(TS_FEP_REPLY_REQ, end_type, 4);
DTV_FIELD_AT(TS_FEP_REPLY_REQ, data_size, 8);
DTV_FIELD_AT(TS_FEP_REPLY_REQ, data, 12);

DTV_RECORD_SIZE(TS_READ_NVRAM_REPLY_REQ, 112);
DTV_FIELD_AT(TS_READ_NVRAM_REPLY_REQ, handle, 0);
DTV_FIELD_AT(TS_READ_NVRAM_REPLY_REQ, bml_end_type, 2);
DTV_FIELD_AT(TS_READ_NVRAM_REPLY_REQ, ts_name, 3);
DTV_FIELD_AT(TS_READ_NVRAM_REPLY_REQ, nvram_data, 47);

DTV_RECORD_SIZE(TS_START_TV_LINK_REQ, 280);
DTV_FIELD_AT(TS_START_TV_LINK_REQ, handle, 0);
DTV_FIELD_AT(TS_START_TV_LINK_REQ, bml_control_type, 2);
DTV_FIELD_AT(TS_START_TV_LINK_REQ, network_id, 4);
DTV_FIELD_AT(TS_START_TV_LINK_REQ, service_id, 6);
DTV_FIELD_AT(TS_START_TV_LINK_REQ, affiliation_id, 8);
DTV_FIELD_AT(TS_START_TV_LINK_REQ, bookmark_url, 14);
DTV_FIELD_AT(TS_START_TV_LINK_REQ, bml, 274);

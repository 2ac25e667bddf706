// The records of the service's answers: replies to synchronous commands, and the reply events.
#pragma once

#include "records/layout.h"

#pragma pack(push, 1)

/// The answer to a synchronous command.
struct TS_COMMON_SYNC_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t return_value;
};

/// The same 8 bytes as the trace of the synchronous commands takes them.
struct TS_TRACED_SYNC_REPLY {
    int32_t return_value;
    uint16_t handle;
    uint8_t reserved_6[2];
};

/// The answer to the synchronous end of a recording.
struct TS_TERMINATE_REC_SYNC_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t result;
    uint16_t program_no;
    uint16_t object_no;
};

/// What every reply event begins with.
struct TS_COMMON_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t result;
};

/// The reply to the start of a TV link carries its result in one byte.
struct TS_BML_START_TVLINK_REPLY {
    uint16_t handle;
    uint8_t result;
};

struct TS_START_SCAN_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t result;
    uint16_t channel_num; ///< number of channels
    uint8_t reserved_10[2];
};

/// Start of reception, selection of a service, start of a recording.
struct TS_SERVICE_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t result;
    uint32_t physical_channel;
    uint16_t service_no;
    uint8_t reserved_14[2];
};

struct TS_RELEASE_DISPLAY_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t result;
    uint8_t drawing_destination;
    uint8_t reserved_9[3];
};

struct TS_TUNER_LOG_STATUS_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t result;
    uint8_t log_status;
    uint8_t reserved_9[3];
};

struct TS_TERMINATE_REC_REPLY {
    uint16_t handle;
    uint8_t reserved_2[2];
    int32_t result;
    uint16_t program_no;
    uint16_t object_no;
};

#pragma pack(pop)

DTV_RECORD_SIZE(TS_COMMON_SYNC_REPLY, 8);
DTV_FIELD_AT(TS_COMMON_SYNC_REPLY, handle, 0);
DTV_FIELD_AT(TS_COMMON_SYNC_REPLY, return_value, 4);

DTV_RECORD_SIZE(TS_TRACED_SYNC_REPLY, 8);
DTV_FIELD_AT(TS_TRACED_SYNC_REPLY, return_value, 0);
DTV_FIELD_AT(TS_TRACED_SYNC_REPLY, handle, 4);

DTV_RECORD_SIZE(TS_TERMINATE_REC_SYNC_REPLY, 12);
DTV_FIELD_AT(TS_TERMINATE_REC_SYNC_REPLY, handle, 0);
DTV_FIELD_AT(TS_TERMINATE_REC_SYNC_REPLY, result, 4);
DTV_FIELD_AT(TS_TERMINATE_REC_SYNC_REPLY, program_no, 8);
DTV_FIELD_AT(TS_TERMINATE_REC_SYNC_REPLY, object_no, 10);

DTV_RECORD_SIZE(TS_COMMON_REPLY, 8);
DTV_FIELD_AT(TS_COMMON_REPLY, handle, 0);
DTV_FIELD_AT(TS_COMMON_REPLY, result, 4);

DTV_RECORD_SIZE(TS_BML_START_TVLINK_REPLY, 3);
DTV_FIELD_AT(TS_BML_START_TVLINK_REPLY, handle, 0);
DTV_FIELD_AT(TS_BML_START_TVLINK_REPLY, result, 2);

DTV_RECORD_SIZE(TS_START_SCAN_REPLY, 12);
DTV_FIELD_AT(TS_START_SCAN_REPLY, handle, 0);
DTV_FIELD_AT(TS_START_SCAN_REPLY, result, 4);
DTV_FIELD_AT(TS_START_SCAN_REPLY, channel_num, 8);

DTV_RECORD_SIZE(TS_SERVICE_REPLY, 16);
DTV_FIELD_AT(TS_SERVICE_REPLY, handle, 0);
DTV_FIELD_AT(TS_SERVICE_REPLY, result, 4);
DTV_FIELD_AT(TS_SERVICE_REPLY, physical_channel, 8);
DTV_FIELD_AT(TS_SERVICE_REPLY, service_no, 12);

DTV_RECORD_SIZE(TS_RELEASE_DISPLAY_REPLY, 12);
DTV_FIELD_AT(TS_RELEASE_DISPLAY_REPLY, handle, 0);
DTV_FIELD_AT(TS_RELEASE_DISPLAY_REPLY, result, 4);
DTV_FIELD_AT(TS_RELEASE_DISPLAY_REPLY, drawing_destination, 8);

DTV_RECORD_SIZE(TS_TUNER_LOG_STATUS_REPLY, 12);
DTV_FIELD_AT(TS_TUNER_LOG_STATUS_REPLY, handle, 0);
DTV_FIELD_AT(TS_TUNER_LOG_STATUS_REPLY, result, 4);
DTV_FIELD_AT(TS_TUNER_LOG_STATUS_REPLY, log_status, 8);

DTV_RECORD_SIZE(TS_TERMINATE_REC_REPLY, 12);
DTV_FIELD_AT(TS_TERMINATE_REC_REPLY, handle, 0);
DTV_FIELD_AT(TS_TERMINATE_REC_REPLY, result, 4);
DTV_FIELD_AT(TS_TERMINATE_REC_REPLY, program_no, 8);
DTV_FIELD_AT(TS_TERMINATE_REC_REPLY, object_no, 10);

// Where the service draws each plane, and how large: parts of the display and BML records.
#pragma once

#include "records/layout.h"

#pragma pack(push, 1)

/// The video plane.
struct SCREEN_DRAWING_INFO {
    uint16_t surface_width;  ///< pixels
    uint16_t surface_height; ///< pixels
    uint8_t screen_rotate;
    uint8_t screen_mode;
};

/// The layout of the captions within their plane.
struct CAP_DISPLAY_INFO {
    uint8_t font_size;
    uint8_t characters_num; ///< characters in a line
    uint8_t lines_num;
    uint8_t separator_size;
    uint16_t position_x; ///< pixels
    uint16_t position_y; ///< pixels
    uint8_t background_color;
    uint8_t background_alpha;
};

/// The caption plane.
struct CAP_DRAWING_INFO {
    uint16_t surface_width;  ///< pixels
    uint16_t surface_height; ///< pixels
    uint8_t screen_rotate;
    uint8_t reserved;
    CAP_DISPLAY_INFO cap_info;
};

/// The plane of the BML browser.
struct BML_DRAWING_INFO {
    uint16_t surface_width;  ///< pixels
    uint16_t surface_height; ///< pixels
    uint8_t screen_rotate;
    uint8_t reserved;
};

#pragma pack(pop)

DTV_RECORD_SIZE(SCREEN_DRAWING_INFO, 6);
DTV_FIELD_AT(SCREEN_DRAWING_INFO, surface_width, 0);
DTV_FIELD_AT(SCREEN_DRAWING_INFO, surface_height, 2);
DTV_FIELD_AT(SCREEN_DRAWING_INFO, screen_rotate, 4);
DTV_FIELD_AT(SCREEN_DRAWING_INFO, screen_mode, 5);

DTV_RECORD_SIZE(CAP_DISPLAY_INFO, 10);
DTV_FIELD_AT(CAP_DISPLAY_INFO, font_size, 0);
DTV_FIELD_AT(CAP_DISPLAY_INFO, characters_num, 1);
DTV_FIELD_AT(CAP_DISPLAY_INFO, lines_num, 2);
DTV_FIELD_AT(CAP_DISPLAY_INFO, separator_size, 3);
DTV_FIELD_AT(CAP_DISPLAY_INFO, position_x, 4);
DTV_FIELD_AT(CAP_DISPLAY_INFO, position_y, 6);
DTV_FIELD_AT(CAP_DISPLAY_INFO, background_color, 8);
DTV_FIELD_AT(CAP_DISPLAY_INFO, background_alpha, 9);

DTV_RECORD_SIZE(CAP_DRAWING_INFO, 16);
DTV_FIELD_AT(CAP_DRAWING_INFO, surface_width, 0);
DTV_FIELD_AT(CAP_DRAWING_INFO, surface_height, 2);
DTV_FIELD_AT(CAP_DRAWING_INFO, screen_rotate, 4);
DTV_FIELD_AT(CAP_DRAWING_INFO, cap_info, 6);

DTV_RECORD_SIZE(BML_DRAWING_INFO, 6);
DTV_FIELD_AT(BML_DRAWING_INFO, surface_width, 0);
DTV_FIELD_AT(BML_DRAWING_INFO, surface_height, 2);
DTV_FIELD_AT(BML_DRAWING_INFO, screen_rotate, 4);

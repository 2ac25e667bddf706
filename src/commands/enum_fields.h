// Enumerations that more than one family of commands reads.
#pragma once

#include "commands/fields.h"

/// Off is 0.
constexpr jint kLastOnOff = 1;

constexpr EnumField onOffField(const char* name) {
    return {name, VALUE_TYPE(BG_TE_DTVSVLIB_ONOFF), "getOnOffValue"};
}

constexpr EnumField kMediumField = {"medium", VALUE_TYPE(BG_TE_DTVSVLIB_RECORDING_MEDIUM),
                                    "getMediumValue"};

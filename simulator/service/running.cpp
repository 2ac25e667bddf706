#include "service/running.h"

namespace simulator {

bool isControlType(uint8_t value) {
    return value <= kRestart || value == kUnchanged;
}

std::optional<Running> controlled(Running state, uint8_t control_type) {
    switch (control_type) {
    case kUnchanged:
        return state;
    case kTurnOff:
        return state != Running::kOff ? std::optional(Running::kOff) : std::nullopt;
    case kTurnOn:
        return state == Running::kOff ? std::optional(Running::kOn) : std::nullopt;
    case kSuspend:
        return state == Running::kOn ? std::optional(Running::kSuspended) : std::nullopt;
    case kResume:
        return state == Running::kSuspended ? std::optional(Running::kOn) : std::nullopt;
    case kRestart:
        return state != Running::kOff ? std::optional(Running::kOn) : std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace simulator

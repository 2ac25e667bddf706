// Captions and the browser: off, on or suspended, and the control types that switch them.
#pragma once

#include <cstdint>
#include <optional>

namespace simulator {

enum class Running : uint8_t {
    kOff = 0,
    kOn = 1,
    kSuspended = 2,
};

/// The control types of a command.
enum ControlType : uint8_t {
    kTurnOff = 0,
    kTurnOn = 1,
    kSuspend = 2,
    kResume = 3,
    kRestart = 4,
    kUnchanged = 255, ///< changes the plane alone
};

bool isControlType(uint8_t value);

/// The state that a control type leads to from `state`; empty when the control type makes no sense
/// in that state.
std::optional<Running> controlled(Running state, uint8_t control_type);

} // namespace simulator

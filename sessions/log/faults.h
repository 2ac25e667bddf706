// What lines of the trace say went wrong.
#pragma once

#include "sessions/log/trace_lines.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace sessions {

enum class Fault : uint8_t {
    kNone,
    // While the library is loaded.
    kLoadFailed,
    kNativesMissing, ///< the VM refused the native methods
    kClassMissing,
    kMethodMissing,
    // A native method.
    kArgumentRefused,
    kFieldMissing, ///< a Java class that an argument is read of lacks a field or a method
    kSurfaceRefused,
    kEnumNotRead,   ///< why an enumeration's constant could not be read; the refusal follows
    kResultNotMade, ///< the Java object that the native answers could not be made
    // An event.
    kAttachFailed,
    kThreadTableFull,
    kNoEnvironment, ///< of the thread: a consequence of the two before it
    kRecordSize,
    kRecordCount,
    kRecordText,
    kObjectNotMade,
    kCallFailed, ///< a consequence of an object that was not made
};

/// What a line says went wrong; kNone for a line that says nothing of the kind.
Fault faultOf(const TraceLine& line);

} // namespace sessions

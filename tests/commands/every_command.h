// Each native method once, with arguments that it accepts.
#pragma once

#include "commands/drawing_places.h"

#include <string>
#include <vector>

namespace commands {

struct EveryCommand {
    std::string name; ///< without "DtvSvLib_"
    std::vector<harness::Value> arguments;
};

/// All natives. Their objects are local references; each plane is drawn on its Java surface.
std::vector<EveryCommand> everyCommand(jobject video, jobject caption, jobject bml);

} // namespace commands

// Plays records in this process: those that libFuzzer makes, or one.
#pragma once

#include "records/progress.h"

#include <cstdint>
#include <string>
#include <vector>

namespace hostile {

/// Makes the VM, loads the bridge, and plays what libFuzzer makes until `most` records are played
/// or the progress says to stop. `arguments` are libFuzzer's, its folders included. Ends the
/// process.
[[noreturn]] void playFuzzed(Progress& progress, uint64_t most, std::vector<std::string> arguments);

/// The same with one input. Ends the process.
[[noreturn]] void playOne(Progress& progress, const std::vector<uint8_t>& data);

/// libFuzzer as its own command line has it, for those who keep the corpus:
///
///     campaign_records -merge=1 build/fuzz/campaigns/records/merged
///     build/fuzz/campaigns/records/found-0
int runFuzzer(Progress& progress, int argc, char** argv);

/// libFuzzer's options for a process that holds a Java VM.
std::vector<std::string> fuzzerOptions();

} // namespace hostile

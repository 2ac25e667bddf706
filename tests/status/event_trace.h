// The trace that every event leaves around its handler's own lines.
#pragma once

#include "harness/harness.h"

#include <string>
#include <vector>

namespace status {

/// Loads the bridge and has the main thread own the first environment slot, as it does for the rest
/// of the process.
void prepare();

/// The lines before the handler's own, of an event on the main thread after prepare().
std::string received(int event_id, int size);
/// The same and the lines behind them: of an event that was delivered, and of one that was not.
std::string delivered(int event_id, int size, const std::string& handler_lines);
std::string refused(int event_id, int size, const std::string& handler_lines);

/// One line each, with a line break.
std::string functionStart(const std::string& function, const std::string& message = "");
std::string functionEnd(const std::string& function, const std::string& message = "");
std::string debug(const std::string& function, const std::string& message);
std::string error(const std::string& function, const std::string& message);

/// CallMethod's lines: an object built, an object that could not be built, a callback called.
std::string built(int method_id, int class_id);
std::string notBuilt(int method_id, int class_id);
std::string called(int method_id);

/// What an ERROR line leaves on standard output.
std::string onStandardOutput(const harness::TraceLine& line);

/// The ERROR lines among them, as they stand on standard output.
std::string copiesOfErrors(const std::vector<harness::TraceLine>& lines);

/// Counts the watched library's calls of one JNI function from here on.
class Calls {
public:
    explicit Calls(std::string name)
        : function(std::move(name)), before(harness::StrictJni::calls(function)) {}
    int made() const { return harness::StrictJni::calls(function) - before; }

private:
    std::string function;
    int before;
};

} // namespace status

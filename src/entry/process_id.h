// The process id that lines show. Asked of the system, it is the dearest part of an event; so it is
// kept, as long as it is certain that the child of a fork shows its own.
#pragma once

namespace trace {

/// The id of this process.
int processId();

/// Keeps the id from now on. To be called once the load has succeeded, as the library stays then:
/// what keeps the id right is a handler that runs in the child of a fork. Where that cannot be
/// registered nothing is kept, and the system is asked each time.
void keepProcessId();

} // namespace trace

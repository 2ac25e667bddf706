// The memory that the bridge asks for: the program's own malloc, free and operator new take the
// place of the C and C++ libraries'. Calls from other code than the bridge's are passed on.
#pragma once

namespace torture {

class Memory {
public:
    /// Counts the bridge's allocations from 0, and fails number `failing` (-1: none), once or from
    /// there on.
    static void begin(int failing, bool on);
    /// Ends that: allocations succeed. How many there were.
    static int end();
    /// Blocks that the bridge has taken and not given back since the process began.
    static long held();
};

} // namespace torture

// Expected trace lines, written short: the one notation of commands and events.
//
//     START |hdl = 3            a line of the function that the trace is about; the level word is
//                               START, END, DEBUG, INFO or ERROR. "START" alone has no message.
//     DEBUG setSurface|text     a line of another function of the same module
//     *INFO getJNIEnv|text      a line of the listener in the trace of a native method
//     RESULT 5                  both lines of getRetCode
//     COPY                      both lines of a string's copy into its field
//     NEW 209 128               the lines of a construction by method row 209 of class 128
//     NEWFAIL 209 128           the lines of one that fails
//     STATIC 5                  the lines of a call of static callback row 5
//     NOTEXT OrgNewString       the line of a text that cannot be made
//
// One line each; blanks before a line and empty lines do not count. The answers are literals as
// EXPECT_TRACE takes them. A line that is none of these fails the test.
#pragma once

#include <string>

namespace harness {

/// Of a native method and the functions that serve it.
std::string nativeTrace(const std::string& function, const std::string& lines);

/// Of a member function of the listener.
std::string listenerTrace(const std::string& function, const std::string& lines);

} // namespace harness

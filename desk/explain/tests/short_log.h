// Logs written short, and what is found in them.
#pragma once

#include "desk/explain/explained.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace explain::tests {

/// The lines of logcat's form "threadtime" that a text in short form means. Of each line of
/// it:
///
///     @1.5                                   the lines after it are of 22:00:01.500
///     desk START dtvSvLibStartScan:129|hdl = 1
///                                            a line of the bridge: thread, level, function, source
///                                            line, message. The levels are ERROR, START, END, INFO
///                                            and DEBUG.
///     =--------- beginning of main           a line as it is, after the "="
///     java.lang.Error: no                    any other: a line of another program
///
/// Blanks at the start of a line and empty lines are left out.
std::string logOf(std::string_view short_lines);

/// The library is loaded: six lines.
std::string load();
/// A command that the service takes: five lines, of the thread "desk".
std::string command(const std::string& name, const std::string& begin, const std::string& sent);
/// A command that only names its session.
std::string command(const std::string& name, int handle);
/// An event: six lines and those of its handler, of the thread "Event".
std::string event(const std::string& id, int size, const std::string& handler);
/// A reply event that gives a session and a result: thirteen lines.
std::string reply(const std::string& id, int handle, int result = 0);
/// Create and its reply: eighteen lines.
std::string session(int handle);
/// load() and session(1): 24 lines. What comes after them begins at line 25.
std::string opened();
/// Release of session 1, and its reply: eighteen lines.
std::string released();

/// Explains the bytes of a file, "evening.log" by name.
std::unique_ptr<Explained> explain(const std::string& bytes, double slow_seconds = 1);

/// The findings, each as
///     "1 error no-reply StartScan, session 1, desk, lines 25, dtvSvLibStartScan:128, TEXT"
/// and, when it follows from another, " <- 2: RELATION".
std::vector<std::string> findingsOf(const Explained& explained);
std::vector<std::string> findingsIn(std::string_view short_lines);

/// What lines are said to be missing: "gap, line 7, 3 times: TEXT".
std::vector<std::string> lossesOf(const Explained& explained);
std::vector<std::string> lossesIn(std::string_view short_lines);

} // namespace explain::tests

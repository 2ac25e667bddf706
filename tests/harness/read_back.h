// Holds each line that the bridge writes against what the desk's reader of logs makes of it.
#pragma once

#include <dtv/exchange.h>

namespace harness {

/// Fails the test when the reader of logs does not know the line, knows it as another, or reads
/// other values than it shows. In a build without the desk there is no reader, and nothing is
/// checked.
///
/// When DTV_WRITTEN_LINES names a file, each line that the bridge can write is added to it once for
/// each process that wrote it: "level|function|format". When DTV_TEST_READ_BACK is "off", nothing
/// is checked.
void checkReadBack(const dtv::LogLine& line);

} // namespace harness

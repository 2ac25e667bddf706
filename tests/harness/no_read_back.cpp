// In place of read_back.cpp in a build without the desk's reader of logs.
#include "harness/read_back.h"

namespace harness {

void checkReadBack(const dtv::LogLine& /*line*/) {}

} // namespace harness

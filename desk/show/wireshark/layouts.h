// The layouts of all messages, for what describes them to other programs.
#pragma once

#include "records/catalogue.h"

#include <map>
#include <string>

namespace layouts {

/// The records of the messages and of their answers, and those within them, by name.
std::map<std::string, const catalogue::Record*> all();

/// "unsigned", "signed", "bytes", "text", "utf16" or "record".
const char* nameOf(catalogue::Kind kind);

} // namespace layouts

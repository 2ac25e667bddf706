// Messages as JSON.
#pragma once

#include "sessions/message.h"
#include "sessions/pairing.h"

#include "records/catalogue.h"

#include <string>
#include <string_view>

namespace show {

/// A text in double quotes. What is not UTF-8 becomes U+FFFD, byte by byte.
std::string jsonText(std::string_view text);

/// The fields of a record as an object: whole numbers, arrays of them, bytes as hexadecimal digits,
/// texts, and objects for the records in it. A number of which the record has not all bytes is left
/// out, and so is what follows it.
std::string jsonFields(const catalogue::Record& layout, sessions::Bytes record);

/// A message as an object on one line. `offset` is that of its packet in the file, in bytes.
/// docs/capture.md describes the keys.
std::string jsonMessage(const sessions::Message& message, const sessions::Link& link,
                        uint64_t offset);

/// A command that waits at the end of a capture, as an object.
std::string jsonOpenCommand(const sessions::OpenCommand& command);

} // namespace show

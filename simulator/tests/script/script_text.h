// Scripts that tests write down.
#pragma once

#include "script/script_reader.h"

#include <string>

/// The script of this text, which must be valid.
simulator::Script scriptOf(const std::string& text);

/// What is wrong with the script of this text, without the file's name: "LINE: what is wrong".
/// Empty when nothing is.
std::string errorOf(const std::string& text);

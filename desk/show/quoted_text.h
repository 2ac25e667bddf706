// Texts of unknown content as lines for a terminal: nothing that they contain acts on it.
#pragma once

#include "sessions/bytes.h"

#include <string>
#include <vector>

namespace show {

/// What is shown for one character, or for one byte or unit that is none.
struct Glyph {
    std::string text; ///< UTF-8
    size_t columns = 1;
};

/// UTF-8, to the last byte. Bytes that are not UTF-8 and control characters are shown as \xNN, byte
/// by byte.
std::vector<Glyph> utf8Glyphs(sessions::Bytes text);

/// UTF-16LE, to the last byte. Control characters below U+0080 are shown as \xNN, those above and
/// surrogates without their other half as \uNNNN, half a unit at the end as \xNN.
std::vector<Glyph> utf16Glyphs(sessions::Bytes text);

/// The glyphs in double quotes, on lines of `columns` at most, each with quotes of its own. Quotes
/// and backslashes in the text have a backslash before them. One line at least.
std::vector<std::string> quotedLines(const std::vector<Glyph>& glyphs, size_t columns);

/// The words on lines of `columns` at most; one that is longer has a line of its own. A word is
/// whatever has no blank around it in the list: it may contain some.
std::vector<std::string> wrappedWords(const std::vector<std::string>& words, size_t columns);

/// How many columns an UTF-8 text takes that has been made by this file's functions.
size_t columnsOf(const std::string& text);

} // namespace show

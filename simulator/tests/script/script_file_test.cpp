// Files that are no JSON, or no files.
#include "script/script_text.h"

#include <gtest/gtest.h>

namespace {

using simulator::readScript;

std::string errorOfFile(const std::string& path) {
    std::string error;
    EXPECT_FALSE(readScript(path, error).has_value());
    return error;
}

/// `count` brackets of a kind.
std::string brackets(size_t count, char bracket) {
    return std::string(count, bracket);
}

TEST(ScriptFileTest, HasToBeReadable) {
    EXPECT_EQ("/nowhere/at-all.json: No such file or directory",
              errorOfFile("/nowhere/at-all.json"));
    EXPECT_EQ("/tmp: Is a directory", errorOfFile("/tmp"));
    EXPECT_EQ(": No such file or directory", errorOfFile(""));
    EXPECT_EQ("/dev/zero: larger than 1048576 bytes", errorOfFile("/dev/zero"));
}

TEST(ScriptFileTest, MayBeOfAMebibyte) {
    const std::string script = R"({"version": 1})";
    EXPECT_EQ("", errorOf(script + brackets(1048576 - script.size(), ' ')));
}

TEST(ScriptFileTest, HasToBeJson) {
    const std::string nothing = "Syntax error: value, object or array expected.";
    EXPECT_EQ("1: " + nothing, errorOf(""));
    EXPECT_EQ("3: " + nothing, errorOf(" \n\n"));
    EXPECT_EQ("1: " + nothing, errorOf("\xEF\xBB\xBF"));
    EXPECT_EQ("2: Missing ',' or '}' in object declaration", errorOf("{\"version\": 1\n"));
    EXPECT_EQ("2: Missing '}' or object member name", errorOf("{\"version\": 1,\n}"));
    EXPECT_EQ("3: Missing ',' or ']' in array declaration",
              errorOf("{\"version\": 1,\n\"events\": [1\n2]}"));
    EXPECT_EQ("2: Missing ':' after object member name", errorOf("{\n\"version\" 1}"));
    EXPECT_EQ("2: Extra non-whitespace after JSON value.", errorOf("{\"version\": 1}\n{}"));
    EXPECT_EQ("2: Duplicate key: 'version'", errorOf("{\"version\": 1,\n\"version\": 1}"));
    EXPECT_EQ(
        "1: Duplicate key: '" + std::string(384, 'k') + "...",
        errorOf("{\"" + std::string(9999, 'k') + "\": 1, \"" + std::string(9999, 'k') + "\": 1}"));
    EXPECT_EQ("1: Bad escape sequence in string", errorOf(R"({"version": "\q"})"));
    EXPECT_EQ("2: " + nothing, errorOf("{\n\"version\": NaN}"));
    EXPECT_EQ("2: '1e999' is not a number.", errorOf("{\n\"version\": 1e999}"));
}

TEST(ScriptFileTest, HasLinesOfAnyKind) {
    for (const char* end : {"\n", "\r\n", "\r"}) {
        const std::string begin = std::string("{") + end + end + "\"version\": 1,";
        EXPECT_EQ("4: Missing '}' or object member name", errorOf(begin + end + "}"));
        EXPECT_EQ("4: an object is wanted here", errorOf(begin + end + "\"stop\": 1}"));
    }
}

TEST(ScriptFileTest, HasToBeStrictJson) {
    EXPECT_EQ("2: JSON has no comments", errorOf("{\n// one\n\"version\": 1}"));
    EXPECT_EQ("1: JSON has no comments", errorOf("{/* one */}"));
    for (const char* number : {"-", "01", "+1", ".5", "1.", "1e", "1e+", "--1", "1.2.3", "0x1"}) {
        EXPECT_EQ("2: this is no number of JSON",
                  errorOf("{\n\"version\": " + std::string(number) + "}"))
            << number;
    }
    for (const char* number : {"-0", "0.5", "1E5", "1e-5", "2.25e+10", "-10"}) {
        EXPECT_EQ("2: \"version\" has to be 1",
                  errorOf("{\n\"version\": " + std::string(number) + "}"))
            << number;
    }
    EXPECT_EQ("1: a control character in a text has to be written as \\n, \\t or \\u001b",
              errorOf("{\"version\n\": 1}"));
}

TEST(ScriptFileTest, HasToBeAnObject) {
    EXPECT_EQ("3: an object is wanted here", errorOf("\n\n[]"));
    EXPECT_EQ("1: an object is wanted here", errorOf("5"));
    EXPECT_EQ("2: an object is wanted here", errorOf("\r\n\"{}\""));
    EXPECT_EQ("1: an object is wanted here", errorOf("What is this?"));
}

TEST(ScriptFileTest, HasToBeText) {
    EXPECT_EQ("2: a zero byte has no place in JSON",
              errorOf("{\"version\": 1}\n" + std::string(1, '\0') + "{"));
    EXPECT_EQ("1: a zero byte has no place in JSON", errorOf(std::string(1000, '\0')));
    const auto with = [](const std::string& character) {
        return errorOf("{\"version\": 1,\n\"" + character + "\": 1}");
    };
    const std::string known =
        "2: \"%\" is not known here; known are: version, commands, events, records, stop";
    const auto unknown = [&](const std::string& name) {
        return std::string(known).replace(known.find('%'), 1, name);
    };
    for (const char* character :
         {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBD",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xE3\x81\x82"}) {
        EXPECT_EQ(unknown(character), with(character));
    }
    for (const char* character : {"\x80", "\xC1\xBF", "\xC2", "\xC2\x7F", "\xE0\x9F\xBF",
                                  "\xE3\x81", "\xE3\x81\xC0", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
                                  "\xF0\x90\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_EQ("2: this is not UTF-8", with(character));
    }
}

TEST(ScriptFileTest, MayNotBeTooDeep) {
    const std::string too_deep = "objects and lists lie too deep in one another";
    const std::string begin = "{\"version\":\n";
    EXPECT_EQ("2: \"version\" has to be 1",
              errorOf(begin + brackets(15, '[') + brackets(15, ']') + "}"));
    EXPECT_EQ("2: " + too_deep, errorOf(begin + brackets(16, '[') + brackets(16, ']') + "}"));
    EXPECT_EQ("2: " + too_deep, errorOf(begin + brackets(1000000, '[')));
    std::string objects = "{";
    for (int count = 0; count < 100000; ++count) {
        objects += "\"a\":\n{";
    }
    EXPECT_EQ("17: " + too_deep, errorOf(objects));
    // Brackets inside a text do not count.
    EXPECT_EQ("2: \"version\" has to be 1",
              errorOf(begin + "\"" + brackets(100, '{') + "\\\"" + brackets(100, '[') + "\"}"));
}

} // namespace

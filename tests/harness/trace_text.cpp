#include "harness/trace_text.h"

#include <gtest/gtest.h>

#include <sstream>

namespace harness {
namespace {

constexpr const char* kNative = "Dtv_jni";
constexpr const char* kListener = "JNIDtvSvLibListener";

/// The first lines of CallMethod.
std::string methodTaken(const std::string& method, const std::string& of, const char* attribute) {
    return "*DEBUG CallMethod|CallMethod, method_id = " + method + ", class_id = " + of +
           ", attr_id = " + attribute + "\n";
}

/// The lines that a short form such as COPY expands to; every other line is returned as it is.
std::string expand(const std::string& line) {
    std::istringstream words(line);
    std::string word;
    std::string first;
    std::string second;
    words >> word >> first >> second;
    if (word == "RESULT") {
        return "START getRetCode|(param)ret = " + first + "\nEND getRetCode|";
    }
    if (word == "COPY") {
        return "*START convJStringToChar|\n*END convJStringToChar|";
    }
    if (word == "NEW") {
        return methodTaken(first, second, "0") +
               "*INFO CallMethod|CallMethod, NewObject\n*INFO setJavaMethod|setJavaMethod";
    }
    if (word == "NEWFAIL") {
        return methodTaken(first, second, "0") +
               "*INFO CallMethod|CallMethod, NewObject\n*DEBUG CallMethod|CallMethod, NewObject "
               "error!";
    }
    if (word == "STATIC") {
        return methodTaken(first, "0", "1") +
               "*DEBUG CallMethod|CallMethod, CallStaticMethod, type_id = 0";
    }
    if (word == "NOTEXT") {
        return "*DEBUG " + first + "|Failure, ret is NULL";
    }
    return line;
}

/// One literal from one line with a level.
std::string literalOf(const std::string& module, const std::string& function,
                      const std::string& line) {
    struct Level {
        const char* word;
        const char* literal;
    };
    static const Level levels[] = {{"START", "128|5|FUNCSTART"},
                                   {"END", "256|5|FUNCEND  "},
                                   {"INFO", "512|5|INFO     "},
                                   {"DEBUG", "1024|5|DEBUG    "},
                                   {"ERROR", "2|6|ERROR    "}};
    const bool listener = line[0] == '*';
    const size_t blank = line.find(' ');
    const std::string word = line.substr(0, blank).substr(listener ? 1 : 0);
    const std::string rest = blank == std::string::npos ? "|" : line.substr(blank + 1);
    for (const Level& level : levels) {
        if (word == level.word && rest.find('|') != std::string::npos) {
            return (listener ? kListener : module) + "|" + level.literal + "|" +
                   (rest[0] == '|' ? function : "") + rest + "\n";
        }
    }
    ADD_FAILURE() << "no trace line: " << line;
    return "";
}

std::string wholeTrace(const std::string& module, const std::string& function,
                       const std::string& lines) {
    std::string text;
    std::istringstream input(lines);
    for (std::string line; std::getline(input, line);) {
        const size_t begin = line.find_first_not_of(' ');
        if (begin == std::string::npos) {
            continue;
        }
        std::istringstream expanded(expand(line.substr(begin)));
        for (std::string single; std::getline(expanded, single);) {
            text += literalOf(module, function, single);
        }
    }
    return text;
}

} // namespace

std::string nativeTrace(const std::string& function, const std::string& lines) {
    return wholeTrace(kNative, function, lines);
}

std::string listenerTrace(const std::string& function, const std::string& lines) {
    return wholeTrace(kListener, function, lines);
}

} // namespace harness

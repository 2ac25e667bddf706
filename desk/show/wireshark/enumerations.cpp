#include "enumerations.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

namespace enumerations {
namespace {

/// How many characters of `text` from `begin` on are among `characters`.
size_t spanOf(const std::string& text, size_t begin, const char* characters) {
    const size_t end = text.find_first_not_of(characters, begin);
    return (end == std::string::npos ? text.size() : end) - begin;
}

/// NAME(NUMBER) alone on a line, followed by a comma or a semicolon; false for another line.
bool readConstant(const std::string& line, Constant& constant) {
    const size_t name = spanOf(line, 0, " ");
    const size_t name_size = spanOf(line, name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_");
    const size_t number = name + name_size + 1;
    if (name_size == 0 || number >= line.size() || line[number - 1] != '(') {
        return false;
    }
    const size_t number_size = spanOf(line, number, "0123456789");
    const std::string rest = line.substr(number + number_size);
    constant = {line.substr(name, name_size), line.substr(number, number_size)};
    return number_size > 0 && (rest == ")," || rest == ");");
}

} // namespace

const std::map<std::string, std::string>& places() {
    static const std::map<std::string, std::string> enumerations = {
#define ENUMERATED(record, field, enumeration) {#record "." #field, #enumeration},
#define ENUMERATED_VALUE(message, enumeration) {#message ".value", #enumeration},
#include "enumerations.def"
    };
    return enumerations;
}

std::set<std::string> names() {
    std::set<std::string> names;
    for (const auto& [place, name] : places()) {
        names.insert(name);
    }
    return names;
}

std::vector<Constant> constantsOf(const std::string& folder, const std::string& name) {
    const std::string file = folder + "/BG_TE_DTVSVLIB_" + name + ".java";
    std::ifstream source(file);
    std::vector<Constant> constants;
    Constant constant;
    for (std::string line; std::getline(source, line);) {
        if (readConstant(line, constant)) {
            constants.push_back(constant);
        }
    }
    if (constants.empty()) {
        std::cerr << "no constants in " << file << '\n';
        std::exit(1);
    }
    return constants;
}

} // namespace enumerations

// Prints the dissector for Wireshark: what the catalogue has about the messages, as Lua tables, and
// after it the Lua code that uses them. The names of the numbers come from the Java enumerations.
//
// usage: dtv-dissector FOLDER_OF_THE_ENUMERATIONS CODE...
#include "records/catalogue.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Message;
using catalogue::Record;

struct Constant {
    std::string name;
    std::string number; ///< decimal digits
};

/// The name of an enumeration by what it is of: a record and a field, as
/// "TS_KEY_EVENT_REQ.key_code", or the one value of a message, as "StartRec.value".
const std::map<std::string, std::string>& enumerated() {
    static const std::map<std::string, std::string> enumerations = {
#define ENUMERATED(record, field, enumeration) {#record "." #field, #enumeration},
#define ENUMERATED_VALUE(message, enumeration) {#message ".value", #enumeration},
#include "enumerations.def"
    };
    return enumerations;
}

/// What cannot be made into a dissector ends the program.
[[noreturn]] void fail(const std::string& what) {
    std::cerr << "dtv-dissector: " << what << '\n';
    std::exit(1);
}

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

/// The constants that a Java source declares.
std::vector<Constant> constantsOf(const std::string& file) {
    std::ifstream source(file);
    std::vector<Constant> constants;
    Constant constant;
    for (std::string line; std::getline(source, line);) {
        if (readConstant(line, constant)) {
            constants.push_back(constant);
        }
    }
    if (constants.empty()) {
        fail("no constants in " + file);
    }
    return constants;
}

void printEnumerations(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& [place, name] : enumerated()) {
        names.insert(name);
    }
    std::printf("local enumerations = {\n");
    for (const std::string& name : names) {
        std::printf("    %s = {", name.c_str());
        const char* before = "";
        for (const Constant& constant : constantsOf(folder + "/BG_TE_DTVSVLIB_" + name + ".java")) {
            std::printf("%s[%s] = \"%s\"", before, constant.number.c_str(), constant.name.c_str());
            before = ", ";
        }
        std::printf("},\n");
    }
    std::printf("}\n\n");
}

using Records = std::map<std::string, const Record*>;

const char* nameOf(Kind kind) {
    switch (kind) {
    case Kind::kUnsigned:
        return "unsigned";
    case Kind::kSigned:
        return "signed";
    case Kind::kBytes:
        return "bytes";
    case Kind::kText:
        return "text";
    case Kind::kUtf16Text:
        return "utf16";
    case Kind::kRecord:
        break;
    }
    return "record";
}

void collect(const Record* record, Records& records) {
    if (record == nullptr || !records.emplace(record->name, record).second) {
        return;
    }
    for (const Field& field : record->fields) {
        collect(field.record, records);
    }
}

Records allRecords() {
    Records records;
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const Message& message : *messages) {
            collect(message.record, records);
            collect(message.reply, records);
        }
    }
    return records;
}

/// The places of which the table has an enumeration, and that are there.
std::set<std::string> used_enumerations;

void printEnumeration(const std::string& place) {
    const auto found = enumerated().find(place);
    if (found != enumerated().end()) {
        std::printf(", enumeration = \"%s\"", found->second.c_str());
        used_enumerations.insert(place);
    }
}

void printRecord(const Record& record) {
    std::printf("    %s = {name = \"%s\", size = %zu, fields = {\n", record.name.c_str(),
                record.name.c_str(), record.size);
    for (const Field& field : record.fields) {
        std::printf("        {name = \"%s\", offset = %zu, size = %zu, count = %zu, kind = \"%s\"",
                    field.name.c_str(), field.offset, field.size, field.count, nameOf(field.kind));
        if (field.record != nullptr) {
            std::printf(", record = \"%s\"", field.record->name.c_str());
        }
        printEnumeration(record.name + '.' + field.name);
        std::printf("},\n");
    }
    std::printf("    }},\n");
}

void printMessage(const Message& message) {
    std::printf("    [0x%08x] = {name = \"%s\", record = \"%s\"", static_cast<unsigned>(message.id),
                std::string(message.name).c_str(), message.record->name.c_str());
    if (message.reply != nullptr) {
        std::printf(", answer = \"%s\"", message.reply->name.c_str());
    }
    if (message.reply_event != 0) {
        std::printf(", reply_event = 0x%08x", static_cast<unsigned>(message.reply_event));
    }
    if (message.record->name == "TS_ONE_VALUE_REQ") {
        printEnumeration(std::string(message.name) + ".value");
    }
    std::printf("},\n");
}

void printTables() {
    std::printf("local records = {\n");
    for (const auto& [name, record] : allRecords()) {
        printRecord(*record);
    }
    std::printf("}\n\nlocal messages = {\n");
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const Message& message : *messages) {
            printMessage(message);
        }
    }
    std::printf("}\n\n");
    for (const auto& [place, name] : enumerated()) {
        if (used_enumerations.count(place) == 0) {
            fail("there is no " + place);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: dtv-dissector FOLDER_OF_THE_ENUMERATIONS CODE...\n";
        return 2;
    }
    std::printf("-- Made while building. Shows the captures of the DTV service in Wireshark:\n"
                "-- wireshark -X lua_script:dtv.lua FILE\n\n");
    printEnumerations(argv[1]);
    printTables();
    std::fflush(stdout);
    for (int i = 2; i < argc; ++i) {
        std::ifstream code(argv[i], std::ios::binary);
        if (!code) {
            fail(std::string("cannot open ") + argv[i]);
        }
        std::cout << code.rdbuf() << '\n' << std::flush;
    }
    if (!std::cout || std::ferror(stdout) != 0) {
        std::cerr << "dtv-dissector: cannot write\n";
        return 1;
    }
    return 0;
}

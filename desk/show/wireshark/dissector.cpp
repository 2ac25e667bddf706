// Prints the dissector for Wireshark: what the catalogue has about the messages, as Lua tables, and
// after it the Lua code that uses them. The names of the numbers come from the Java enumerations.
//
// usage: dtv-dissector FOLDER_OF_THE_ENUMERATIONS CODE...
#include "enumerations.h"
#include "layouts.h"

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
using catalogue::Message;
using catalogue::Record;

void printEnumerations(const std::string& folder) {
    std::printf("local enumerations = {\n");
    for (const std::string& name : enumerations::names()) {
        std::printf("    %s = {", name.c_str());
        const char* before = "";
        for (const auto& constant : enumerations::constantsOf(folder, name)) {
            std::printf("%s[%s] = \"%s\"", before, constant.number.c_str(), constant.name.c_str());
            before = ", ";
        }
        std::printf("},\n");
    }
    std::printf("}\n\n");
}

/// What cannot be made into a dissector ends the program.
[[noreturn]] void fail(const std::string& what) {
    std::cerr << "dtv-dissector: " << what << '\n';
    std::exit(1);
}

/// The places of which the table has an enumeration, and that are there.
std::set<std::string> used_enumerations;

void printEnumeration(const std::string& place) {
    const auto found = enumerations::places().find(place);
    if (found != enumerations::places().end()) {
        std::printf(", enumeration = \"%s\"", found->second.c_str());
        used_enumerations.insert(place);
    }
}

void printRecord(const Record& record) {
    std::printf("    %s = {name = \"%s\", size = %zu, fields = {\n", record.name.c_str(),
                record.name.c_str(), record.size);
    for (const Field& field : record.fields) {
        std::printf("        {name = \"%s\", offset = %zu, size = %zu, count = %zu, kind = \"%s\"",
                    field.name.c_str(), field.offset, field.size, field.count,
                    layouts::nameOf(field.kind));
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
    for (const auto& [name, record] : layouts::all()) {
        printRecord(*record);
    }
    std::printf("}\n\nlocal messages = {\n");
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const Message& message : *messages) {
            printMessage(message);
        }
    }
    std::printf("}\n\n");
    for (const auto& [place, name] : enumerations::places()) {
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

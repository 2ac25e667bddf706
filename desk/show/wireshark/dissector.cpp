// Prints the dissector for Wireshark: what the catalogue has about the messages, as Lua tables, and
// after it the Lua code that uses them.
//
// usage: dtv-dissector CODE
#include "records/catalogue.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <string>

namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Message;
using catalogue::Record;

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

void printRecord(const Record& record) {
    std::printf("    %s = {name = \"%s\", size = %zu, fields = {\n", record.name.c_str(),
                record.name.c_str(), record.size);
    for (const Field& field : record.fields) {
        std::printf("        {name = \"%s\", offset = %zu, size = %zu, count = %zu, kind = \"%s\"",
                    field.name.c_str(), field.offset, field.size, field.count, nameOf(field.kind));
        if (field.record != nullptr) {
            std::printf(", record = \"%s\"", field.record->name.c_str());
        }
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
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: dtv-dissector CODE\n";
        return 2;
    }
    std::ifstream code(argv[1], std::ios::binary);
    if (!code) {
        std::cerr << "dtv-dissector: cannot open " << argv[1] << '\n';
        return 2;
    }
    std::printf("-- Made while building. Shows the captures of the DTV service in Wireshark:\n"
                "-- wireshark -X lua_script:dtv.lua FILE\n\n");
    printTables();
    std::fflush(stdout);
    std::cout << code.rdbuf() << std::flush;
    if (!std::cout || std::ferror(stdout) != 0) {
        std::cerr << "dtv-dissector: cannot write\n";
        return 1;
    }
    return 0;
}

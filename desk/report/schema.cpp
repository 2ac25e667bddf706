// Prints what the page knows of the messages, as JSON: records, messages, and the names of numbers.
//
// usage: dtv-schema FOLDER_OF_THE_ENUMERATIONS
#include "desk/show/wireshark/enumerations.h"
#include "desk/show/wireshark/layouts.h"

#include "records/catalogue.h"

#include <cstdio>
#include <iostream>
#include <map>
#include <string>

namespace {

using catalogue::Field;
using catalogue::Message;
using catalogue::Record;

/// `,"enumeration":"NAME"` for a place that has one.
void printEnumeration(const std::string& place) {
    const auto found = enumerations::places().find(place);
    if (found != enumerations::places().end()) {
        std::printf(",\"enumeration\":\"%s\"", found->second.c_str());
    }
}

void printRecord(const Record& record) {
    std::printf("\"%s\":{\"size\":%zu,\"fields\":[", record.name.c_str(), record.size);
    const char* before = "\n";
    for (const Field& field : record.fields) {
        std::printf("%s{\"name\":\"%s\",\"offset\":%zu,\"size\":%zu,\"count\":%zu,\"kind\":\"%s\"",
                    before, field.name.c_str(), field.offset, field.size, field.count,
                    layouts::nameOf(field.kind));
        if (field.record != nullptr) {
            std::printf(",\"record\":\"%s\"", field.record->name.c_str());
        }
        printEnumeration(record.name + '.' + field.name);
        std::printf("}");
        before = ",\n";
    }
    std::printf("]}");
}

void printMessage(const Message& message, bool is_event) {
    std::printf("\"%d\":{\"name\":\"%s\",\"record\":\"%s\",\"event\":%s", message.id,
                std::string(message.name).c_str(), message.record->name.c_str(),
                is_event ? "true" : "false");
    if (message.reply != nullptr) {
        std::printf(",\"answer\":\"%s\"", message.reply->name.c_str());
    }
    if (message.reply_event != 0) {
        std::printf(",\"reply_event\":%d", message.reply_event);
    }
    if (message.record->name == "TS_ONE_VALUE_REQ") {
        printEnumeration(std::string(message.name) + ".value");
    }
    std::printf("}");
}

void printEnumerations(const std::string& folder) {
    const char* before = "\n";
    for (const std::string& name : enumerations::names()) {
        std::printf("%s\"%s\":{", before, name.c_str());
        const char* comma = "";
        for (const auto& constant : enumerations::constantsOf(folder, name)) {
            std::printf("%s\"%s\":\"%s\"", comma, constant.number.c_str(), constant.name.c_str());
            comma = ",";
        }
        std::printf("}");
        before = ",\n";
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: dtv-schema FOLDER_OF_THE_ENUMERATIONS\n";
        return 2;
    }
    std::printf("{\"records\":{");
    const char* before = "\n";
    for (const auto& [name, record] : layouts::all()) {
        std::printf("%s", before);
        printRecord(*record);
        before = ",\n";
    }
    std::printf("},\n\"messages\":{");
    before = "\n";
    for (const bool is_event : {false, true}) {
        for (const Message& message : is_event ? catalogue::events() : catalogue::commands()) {
            std::printf("%s", before);
            printMessage(message, is_event);
            before = ",\n";
        }
    }
    std::printf("},\n\"enumerations\":{");
    printEnumerations(argv[1]);
    std::printf("}}\n");
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::cerr << "dtv-schema: cannot write\n";
        return 1;
    }
    return 0;
}

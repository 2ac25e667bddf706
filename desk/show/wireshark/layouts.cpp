#include "layouts.h"

namespace layouts {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Message;
using catalogue::Record;

namespace {

void collect(const Record* record, std::map<std::string, const Record*>& records) {
    if (record == nullptr || !records.emplace(record->name, record).second) {
        return;
    }
    for (const Field& field : record->fields) {
        collect(field.record, records);
    }
}

} // namespace

std::map<std::string, const Record*> all() {
    std::map<std::string, const Record*> records;
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const Message& message : *messages) {
            collect(message.record, records);
            collect(message.reply, records);
        }
    }
    return records;
}

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

} // namespace layouts

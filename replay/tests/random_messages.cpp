#include "replay/tests/random_messages.h"

#include "records/catalogue.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace replay {
namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;

constexpr int kCreate = 0x10000000;
constexpr int kSetFirstComponent = 0x1000000a;
constexpr int kDisplayAll = 0x1000000b;
constexpr int kControlDisplayMode = 0x10000010;
constexpr int kSoundVideoDelay = 0x10000015;
constexpr int kControlLna = 0x1000001a;
constexpr int kSetTunerLog = 0x1000001b;
constexpr int kChangePlaySpeed = 0x10000031;
constexpr int kTerminateRecSync = 0x10000040;

/// How many constants the Java enumerations of these fields have, from 0 on.
const std::map<std::string, uint32_t>& constants() {
    static const std::map<std::string, uint32_t> counts{
        {"screen_rotate", 4},    {"screen_mode", 4},    {"background_color", 9},
        {"background_alpha", 2}, {"cap_lang", 9},       {"dualmono", 5},
        {"audio_component", 2},  {"cap_start_type", 2}, {"bml_start_type", 2},
        {"key_code", 25},        {"key_type", 3},       {"medium", 2},
        {"resume", 2},           {"pause", 2},          {"direction", 2},
        {"save_data", 2},        {"save_flag", 2},      {"change_filename", 2},
        {"bml_end_type", 2},     {"end_type", 2},       {"select_type", 2}};
    return counts;
}

void put(std::vector<uint8_t>& record, size_t offset, size_t size, uint64_t value) {
    for (size_t i = 0; i < size; ++i) {
        record[offset + i] = static_cast<uint8_t>(value >> (8 * i));
    }
}

/// How many planes a command places.
int surfacesOf(int id) {
    if (id == kSetFirstComponent || id == kDisplayAll) {
        return 3;
    }
    // SetScreenDisplay, SetCapDisplay, SetBMLDisplay, ControlCap, ControlBML, BMLStartTvLinkReq,
    // ControlCap_Sync, ControlBML_Sync
    constexpr int kOnePlane[] = {0x1000000c, 0x1000000d, 0x1000000e, 0x10000017,
                                 0x10000018, 0x1000001d, 0x1000003d, 0x1000003e};
    return std::count(std::begin(kOnePlane), std::end(kOnePlane), id) != 0 ? 1 : 0;
}

} // namespace

std::vector<uint8_t> Random::bytes(size_t count) {
    std::vector<uint8_t> bytes(count);
    std::generate(bytes.begin(), bytes.end(), [this] { return byte(); });
    return bytes;
}

RandomCommand RandomCommands::makeCreate() {
    // A delay of 999 at most, or a negative one: its lower half is sent.
    const uint32_t delay = random_.once(3) ? random_.below(65536) : random_.below(1000);
    longest_delay_ = delay <= 999 ? static_cast<int>(delay) : static_cast<int>(delay) - 65536;
    RandomCommand command{kCreate, {random_.byte(), 0, 0, 0}, 0, 0};
    put(command.record, 2, 2, delay);
    return command;
}

RandomCommand RandomCommands::make() {
    const std::vector<catalogue::Message>& all = catalogue::commands();
    const catalogue::Message& message = all[random_.below(static_cast<uint32_t>(all.size()))];
    // A sound that is delayed by less than -32768 cannot be sent.
    if (message.id == kCreate || (message.id == kSoundVideoDelay && longest_delay_ < -32768)) {
        return makeCreate();
    }
    RandomCommand command{message.id, std::vector<uint8_t>(message.record->size, 0),
                          surfacesOf(message.id), 0};
    if (message.reply != nullptr) {
        command.reply_capacity = message.id == kTerminateRecSync ? 12 : 8;
    }
    struct Place {
        const Record* layout;
        size_t offset;
    };
    std::vector<Place> places{{message.record, 0}};
    for (size_t at = 0; at < places.size(); ++at) {
        const Place place = places[at];
        for (const Field& field : place.layout->fields) {
            const size_t offset = place.offset + field.offset;
            if (field.kind == Kind::kRecord) {
                places.push_back({field.record, offset});
            } else if (field.kind == Kind::kText) {
                // A file name keeps its end; the name of a stream is cut.
                const size_t most = field.name == "filename" ? field.size - 1 : field.size;
                putText(command.record, offset, field.size, most, field.name == "ts_name");
            } else if (field.kind == Kind::kBytes) {
                const std::vector<uint8_t> bytes = random_.bytes(std::min<size_t>(field.size, 64));
                std::copy(bytes.begin(), bytes.end(),
                          command.record.begin() + static_cast<long>(offset));
            } else {
                const size_t size = field.size * field.count;
                put(command.record, offset, size, numberFor(field.name, size, message.id));
            }
        }
    }
    if (message.id == kChangePlaySpeed) {
        putPlaySpeed(command.record);
    }
    if (message.record->name == "TS_TERMINATE_REC_REQ") {
        const auto title = command.record.begin() + 6;
        put(command.record, 4, 2,
            static_cast<uint64_t>(std::find(title, command.record.end(), 0) - title));
    }
    return command;
}

uint64_t RandomCommands::numberFor(const std::string& name, size_t size, int id) {
    const bool given_as_int = id == kControlDisplayMode || name == "value" ||
                              (name == "cap_lang" && id != kSetFirstComponent);
    if (id == kControlLna && name == "value") {
        constexpr uint8_t kModes[] = {0, 16, 17};
        return kModes[random_.below(3)];
    }
    if (id == kSetTunerLog && name == "value") {
        return 1 + random_.below(2);
    }
    const auto constant = constants().find(name);
    if (constant != constants().end() && !given_as_int) {
        return random_.below(constant->second);
    }
    if (name == "physical_channel") {
        return random_.once(4) ? 0x80000000u | random_.below(0x80000000u) : random_.below(63);
    }
    if (name == "audio_viltime") {
        const int longest = std::min(longest_delay_, 32767);
        return static_cast<uint64_t>(
            longest - static_cast<int>(random_.below(static_cast<uint32_t>(longest + 32769))));
    }
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i) {
        value = value << 8 | random_.byte();
    }
    // Low numbers are what is sent most.
    return size < 4 && !random_.once(3) ? value % 4 : value;
}

/// Characters of one, two and three bytes in modified UTF-8, zeros and halves of pairs among them.
void RandomCommands::putText(std::vector<uint8_t>& record, size_t offset, size_t size, size_t most,
                             bool may_cut) {
    const size_t length = random_.once(3) ? most : random_.below(static_cast<uint32_t>(most + 1));
    std::vector<uint8_t> text;
    for (;;) {
        std::vector<uint8_t> character;
        switch (random_.below(4)) {
        case 0:
            character = {0xc0, 0x80};
            break;
        case 1:
            character = {static_cast<uint8_t>(0xc2 + random_.below(30)),
                         static_cast<uint8_t>(0x80 + random_.below(64))};
            break;
        case 2:
            character = {static_cast<uint8_t>(0xe1 + random_.below(15)),
                         static_cast<uint8_t>(0x80 + random_.below(64)),
                         static_cast<uint8_t>(0x80 + random_.below(64))};
            break;
        default:
            character = {static_cast<uint8_t>(1 + random_.below(127))};
            break;
        }
        if (text.size() + character.size() > length) {
            if (may_cut && length == size) {
                text.insert(text.end(), character.begin(),
                            character.begin() + static_cast<long>(length - text.size()));
            }
            break;
        }
        text.insert(text.end(), character.begin(), character.end());
    }
    std::copy(text.begin(), text.end(), record.begin() + static_cast<long>(offset));
}

/// The lower halves of two numbers that divide out to a speed.
void RandomCommands::putPlaySpeed(std::vector<uint8_t>& record) {
    constexpr uint32_t kSpeeds[] = {2, 10, 30, 120};
    const uint32_t denominator = random_.once(4) ? random_.below(65536) : 1 + random_.below(9);
    put(record, 4, 2, kSpeeds[random_.below(4)] * denominator);
    put(record, 6, 2, denominator);
}

namespace {

/// The replies of a handle and a result: the bridge takes them whatever their size says.
bool isCommonReply(const catalogue::Message& event) {
    return event.record->name == "TS_COMMON_REPLY" ||
           event.record->name == "TS_BML_START_TVLINK_REPLY";
}

/// Events that are counted and have no callback: BroadcastFatalErrorNotify,
/// CaptionFatalErrorNotify.
bool isFatalError(int id) {
    return id == 0x10000097 || id == 0x10000099;
}

/// A count in a record, and the largest one that the bridge takes.
struct Count {
    int id;
    size_t offset;
    size_t size;
    uint64_t most;
};

/// In ScanNotify, NetworkInfoNotify, ServiceInfoNotify and ReceiveEpgInfoNotify.
constexpr Count kCounts[] = {
    {0x1000007f, 0, 2, 8}, {0x10000090, 0, 2, 7}, {0x10000091, 16, 1, 8}, {0x10000093, 1288, 2, 8}};

size_t offsetOfCount(const Count& count, const catalogue::Message& event) {
    if (count.offset != 0) {
        return count.offset;
    }
    // The network is a record in the event's.
    for (const Field& field : event.record->fields) {
        if (field.kind == Kind::kRecord && field.record->name == "NETWORK_INFO") {
            return field.offset + 98;
        }
    }
    return 0;
}

/// Writes a count about its limit. Whether it is accepted, when all of it was sent.
bool putCount(const catalogue::Message& event, std::vector<uint8_t>& record, Random& random) {
    for (const Count& count : kCounts) {
        if (count.id != event.id) {
            continue;
        }
        const size_t offset = offsetOfCount(count, event);
        const uint64_t value = random.below(12);
        uint64_t sent = 0;
        for (size_t i = 0; i < count.size; ++i) {
            if (offset + i < record.size()) {
                record[offset + i] = static_cast<uint8_t>(value >> (8 * i));
                sent |= uint64_t{record[offset + i]} << (8 * i);
            }
        }
        return sent <= count.most;
    }
    return true;
}

} // namespace

RandomEvent makeEvent(Random& random) {
    const std::vector<catalogue::Message>& all = catalogue::events();
    const catalogue::Message& message = all[random.below(static_cast<uint32_t>(all.size()))];
    const auto whole = static_cast<int>(message.record->size);
    RandomEvent event{message.id, {}, whole, false, !isFatalError(message.id)};
    bool is_null = false;
    switch (random.below(12)) {
    case 0:
        event.size = static_cast<int>(random.below(static_cast<uint32_t>(whole)));
        break;
    case 1:
        event.size = whole + 1 + static_cast<int>(random.below(300));
        break;
    case 2:
        event.size = -static_cast<int>(random.below(1000));
        break;
    case 3:
        is_null = true;
        event.size = static_cast<int>(random.below(2000)) - 1000;
        break;
    case 4:
        event.id = 0x10000075 + static_cast<int>(random.below(10)); // not used
        break;
    default:
        break;
    }
    if (!is_null) {
        event.record = random.bytes(static_cast<size_t>(std::max(event.size, 0)));
    }
    const bool known = event.id == message.id;
    const bool any_size = isCommonReply(message) || message.name == "ServiceInfoNotify";
    const bool counted = putCount(message, event.record, random);
    event.refused = is_null || !known || (!any_size && event.size != whole) || !counted;
    event.has_callback = event.has_callback && !event.refused;
    return event;
}

} // namespace replay

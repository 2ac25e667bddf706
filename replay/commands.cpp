#include "replay/commands.h"

#include "replay/here.h"

#include <algorithm>
#include <cstring>

namespace replay {
namespace {

using sessions::Message;

int surfacesOf(const dtv::Command& command) {
    const int count = command.references != nullptr ? command.references->surface_count : 0;
    return std::clamp(count, 0, 255);
}

sessions::Bytes recordOf(const dtv::Command& command) {
    const bool has_bytes = command.data != nullptr && command.size > 0;
    return {static_cast<const uint8_t*>(command.data),
            has_bytes ? static_cast<size_t>(command.size) : 0};
}

} // namespace

bool isSame(const Message& recorded, const dtv::Command& command) {
    const sessions::Bytes record = recordOf(command);
    return recorded.id == command.message_id && recorded.size == command.size &&
           recorded.surfaces == surfacesOf(command) && recorded.record.size() == record.size &&
           knownPartOf(recorded, {record.data, record.data + record.size}) == recorded.record;
}

std::vector<uint8_t> knownPartOf(const Message& recorded, std::vector<uint8_t> record) {
    const size_t size = std::min({record.size(), recorded.record.size(), recorded.known.size()});
    for (size_t i = 0; i < size; ++i) {
        if (!recorded.known[i]) {
            record[i] = recorded.record[i];
        }
    }
    return record;
}

Given givenOf(const dtv::Command& command) {
    const sessions::Bytes record = recordOf(command);
    Given given;
    given.id = command.message_id;
    given.size = command.size;
    given.surfaces = surfacesOf(command);
    given.record.assign(record.data, record.data + record.size);
    given.thread = here::threadName();
    return given;
}

void writeReply(const Message& answer, const dtv::Reply& reply) {
    const auto room = static_cast<size_t>(std::max(reply.capacity, 0));
    const size_t size = std::min(answer.record.size(), room);
    if (reply.data != nullptr && size > 0) {
        std::memcpy(reply.data, answer.record.data(), size);
    }
    if (reply.size != nullptr) {
        *reply.size = answer.size;
    }
}

} // namespace replay

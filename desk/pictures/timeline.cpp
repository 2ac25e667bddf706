#include "desk/pictures/timeline.h"

#include "desk/show/names.h"

namespace pictures {

int64_t nanoseconds(const sessions::Moment& moment) {
    return moment.seconds * 1000000000 + moment.nanoseconds;
}

std::string nameOf(const sessions::Message& message) {
    const catalogue::Message* const known = catalogue::find(message.id);
    return known != nullptr ? std::string(known->name) : show::idText(message.id);
}

} // namespace pictures

#include "desk/show/filter.h"

namespace show {
namespace {

template <class Value>
bool has(const std::set<Value>& wanted, const Value& value) {
    return wanted.empty() || wanted.count(value) > 0;
}

} // namespace

bool Filter::takesAll() const {
    return ids.empty() && kinds.empty() && sessions.empty() && threads.empty() && !times.first &&
           !times.last;
}

bool Filter::takes(const sessions::Message& message, const sessions::Link& link) const {
    if (!has(ids, static_cast<int>(message.id)) || !has(kinds, message.kind)) {
        return false;
    }
    if (!sessions.empty() && (!link.session || sessions.count(*link.session) == 0)) {
        return false;
    }
    if (!has(threads, message.thread_name) && !has(threads, std::to_string(message.thread_id))) {
        return false;
    }
    return times.contains(message.time);
}

} // namespace show

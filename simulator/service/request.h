// A command while it is carried out, and what becomes of it.
#pragma once

#include "messages/reply_record.h"

#include <DtvSvLibListener.h>

#include <chrono>
#include <cstdint>
#include <functional>

namespace simulator {

struct Session;

/// What replies and notifications carry as their result; 0 is the only good one.
enum Result : int32_t {
    kDone = 0,
    kNotNow = 1,         ///< makes no sense in the state of the session
    kNoSuchThing = 5,    ///< names a channel, a recording or a value that does not exist
    kUnknownHandle = -1, ///< there is no such session
};

struct Request {
    const void* data;              ///< the request record, of the length that its command needs
    const TS_DTVSV_SP* references; ///< the surfaces beside the record; null for none

    template <class Record>
    const Record& as() const {
        return *static_cast<const Record*>(data);
    }
};

/// The outcome of a command.
struct Answer {
    ReplyValues reply;
    /// How long the service takes to carry the command out, beside the time for any message.
    std::chrono::milliseconds duration{0};
    /// What is done after the reply was sent, if the session still exists then. May be empty.
    std::function<void(Session&)> then{};
};

/// An answer that carries nothing but a result.
inline Answer answerWith(Result result) {
    Answer answer;
    answer.reply.result = result;
    return answer;
}

} // namespace simulator

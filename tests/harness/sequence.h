// What happens at the bridge's interfaces, in one order: its trace lines, its JNI calls, what it
// sends.
#pragma once

#include "harness/harness.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace harness {

/// While it lives, it serves as libDtv's log and as the service (which answers every send with 0),
/// and observes the watched library's JNI calls. Steps are texts:
///
///     FUNCEND dtvSvLibCreate|ret = 0   a trace line: its level word, its function and its message
///     JNI DeleteLocalRef               a JNI or invocation call
///     send 10000000                    a message arrives at the service
///
/// and what the test adds itself.
class Sequence {
public:
    Sequence();
    ~Sequence();
    Sequence(const Sequence&) = delete;
    Sequence& operator=(const Sequence&) = delete;

    void add(const std::string& step);

    /// The steps since the last call.
    std::vector<std::string> take();

    /// What the service does in addition with every command; on the sender's thread.
    void onSend(std::function<void(const dtv::Command&)> work);
    /// What the service answers from now on to a command that waits: as many bytes as fit.
    void setReply(std::vector<uint8_t> bytes);

    struct Shared;

private:
    std::shared_ptr<Shared> shared;
    std::unique_ptr<ObservedJni> observed;
};

/// The place of the first step from `from` on that begins with `text`; the number of steps when
/// there is none, which fails the test.
size_t placeOf(const std::vector<std::string>& steps, const std::string& text, size_t from = 0);

} // namespace harness

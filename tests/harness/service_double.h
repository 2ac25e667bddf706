// A DTV service that keeps the commands it receives and answers as the test has set.
#pragma once

#include <dtv/exchange.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace harness {

/// One surface slot of a command's references, as it was during the send.
struct SurfaceSlot {
    const android::Surface* surface; ///< null when the slot was empty
    int strong_count;                ///< references held at that moment, the slot's own included
};

/// One command that was sent.
struct Message {
    int message_id;
    std::vector<uint8_t> bytes;
    bool sync;           ///< it waited for an answer
    int reply_capacity;  ///< bytes; 0 when it did not wait
    bool had_references; ///< it came through the overload with strong references
    int surface_count;   ///< as TS_DTVSV_SP states
    int object_count;    ///< as TS_DTVSV_SP states
    SurfaceSlot surfaces[3];

    /// "10000006: 03 00 0a 00", "10000038 sync: 03 00", "1000000c surfaces=1: 03 00 ..." (the last
    /// form whenever there was a references).
    std::string text() const;
};

class ServiceDouble : public dtv::ServiceEndpoint {
public:
    /// Connects a new double to libDtv.
    static std::shared_ptr<ServiceDouble> serve();

    /// What sends return from now on; 0 at first.
    void setResult(int result);

    /// What synchronous commands are answered with from now on: `bytes` are written to the reply
    /// record (as many as fit) and `size` to the reply size; without a size the reply size is not
    /// written.
    void setReply(std::vector<uint8_t> bytes, std::optional<int> size);
    /// The same with the number of bytes as the size.
    void setReply(std::vector<uint8_t> bytes);

    /// What was sent since the last call.
    std::vector<Message> take();
    /// The same as texts.
    std::vector<std::string> takeTexts();

    int onCommand(const dtv::Command& command) override;
    int onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) override;

private:
    void keep(const dtv::Command& command, const dtv::Reply* reply);

    std::mutex mutex;
    std::vector<Message> messages;
    int result = 0;
    std::vector<uint8_t> reply_bytes;
    std::optional<int> reply_size;
};

/// "03 00 0a 00"
std::string hex(const std::vector<uint8_t>& bytes);

/// Bytes from hexadecimal text with or without blanks: "0300 0a00". Fails the test when it is none.
std::vector<uint8_t> fromHex(const std::string& text);

} // namespace harness

// The capture of the messages: a pcapng file with everything that passes through libDtv, in both
// directions. docs/capture.md describes it byte by byte.
#pragma once

#include "exchange.h"
#include "write_tally.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dtv {

/// Writes messages to the file named by DTV_CAPTURE_FILE, whose old contents are dropped. Any
/// number of threads may write at once. No error reaches the caller: the first one is printed on
/// standard error, nothing more is written, and the end of the process reports how many messages
/// are kept.
class Capture {
public:
    /// The capture of this process, or null when there is none. The variable is read once, by the
    /// first call.
    static Capture* instance();

    /// What the section header says of the session. False when it has been written, or when the
    /// text is too long for it.
    static bool describe(std::string_view lines);

    /// A command, before the service sees it.
    void command(const Command& command);

    /// What a send returned. `reply` is the answer to a synchronous command, or null; `reply_size`
    /// is the number of bytes that the service says it wrote there, `capacity` how many there are.
    void answer(int message_id, int result, const void* reply, int reply_size, int capacity);

    /// An event, before the listener sees it. A record that is not null is `size` bytes long.
    void event(int event_id, const void* data, int size);

    /// What the listener returned for an event that it refused.
    void refusedEvent(int event_id, int result);

private:
    /// What a message is. Part of the file's format.
    enum class Kind : uint8_t {
        command = 1,
        answer = 2,
        event = 3,
        refused_event = 4
    };

    struct Message {
        Kind kind;
        uint8_t surfaces;
        int id;
        int value;
        int size;           ///< as it was given
        const void* record; ///< may be null
        size_t length;      ///< bytes of the record
    };

    Capture(int descriptor, std::string path);
    static Capture* open();
    void writeStart();
    void write(const Message& message);
    bool writeBlocks(const struct iovec* parts, int count);

    const int descriptor_;
    WriteTally& tally_;
};

} // namespace dtv

// The other side of libDtv.so at the desk: the service that takes the commands, the threads that
// deliver the events, and the sink that takes the log lines. A simulator or a test's double uses
// this; the bridge does not know it.
#pragma once

#include <DtvSvLibListener.h>

#include <chrono>
#include <cstdarg>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#define DTV_EXPORT __attribute__((visibility("default")))

namespace dtv {

/// One command as the bridge sent it. What it points to is valid during the call only.
struct Command {
    int message_id;
    const void* data; ///< the request record
    int size;         ///< its length in bytes
    /// The strong references sent beside it; null for the overload without them. They are the
    /// sender's: copy an sp<> to keep what it points to.
    const TS_DTVSV_SP* references;
};

/// The place for the answer to a synchronous command.
struct Reply {
    void* data;   ///< the caller's reply record, zeroed
    int capacity; ///< bytes that fit: as the command's reply record is long
    int* size;    ///< the number of bytes written goes here; may be left alone
};

/// The DTV service as libDtv.so sees it. Its operations run on the sender's thread, several at once
/// when several threads send.
class DTV_EXPORT ServiceEndpoint {
public:
    virtual ~ServiceEndpoint();

    /// Takes an asynchronous command. Returns what sendEventToServer returns: 0 when taken. Must
    /// not wait for anything.
    virtual int onCommand(const Command& command) = 0;

    /// Takes a synchronous command and answers it before it returns. 0 when answered.
    virtual int onSynchronousCommand(const Command& command, const Reply& reply) = 0;

    /// The command that this thread sent last is about to return to its sender; the capture has
    /// what it returned. For a service that keeps an order over several threads. Does nothing by
    /// default.
    virtual void onReturned(int message_id);
};

/// Sets the service that takes the commands. Null removes it: sends return -1 then. A call that is
/// under way keeps the old endpoint alive until it ends.
DTV_EXPORT void setServiceEndpoint(std::shared_ptr<ServiceEndpoint> endpoint);

/// Queues an event for the delivery threads, in order. The record is copied. False when there is no
/// listener or delivery has been stopped.
DTV_EXPORT bool postEvent(int event_id, const void* data, int size);

/// Delivers an event on the calling thread and returns what the listener returned, or noListener
/// (also when delivery has been stopped). The caller's record must be at least 8 bytes long, as
/// libDtv's own are, or null.
DTV_EXPORT int deliverEvent(int event_id, void* data, int size);
constexpr int noListener = -1000;

/// The steps of a delivery, on the thread that delivers.
class DTV_EXPORT DeliverySteps {
public:
    virtual ~DeliverySteps();
    /// The capture has the event, and the listener gets it next.
    virtual void begins() = 0;
    /// The listener has returned `result`. A refusal is captured after this.
    virtual void ended(int result) = 0;
};

/// The same, and says when each step is reached. None is when the answer is noListener.
DTV_EXPORT int deliverEvent(int event_id, void* data, int size, DeliverySteps& steps);

/// Sets the number of threads that deliver events; 1 at first. It only grows, because the bridge
/// never forgets a thread.
DTV_EXPORT void setDeliveryThreads(int count);

/// The first event that a thread delivers to a listener comes alone: it begins when no other event
/// is under way, and no other event begins before its callback returns, on any thread. The bridge
/// learns the thread with that event, in a table that has no lock. An event that is delivered
/// inside a callback, on the thread of that callback, begins at once.
///
/// A callback may wait for an event of another thread. So a first event waits no longer than this
/// time for the events under way before it, and the other events wait no longer than this time for
/// each first event.
constexpr std::chrono::milliseconds firstEventLimit{1000};

/// Waits until every event posted so far has been delivered. False when `limit` has passed before.
DTV_EXPORT bool waitUntilDelivered(std::chrono::milliseconds limit);

/// How many posted events have waited for a delivery thread at most, since the process began. It
/// tells how slow the listener was: more than a few mean that events come faster than it takes
/// them.
DTV_EXPORT size_t mostWaiting();

/// Lets no further event begin, waits for those under way, and ends the delivery threads (which
/// detach from the VM as they end). Final: nothing is delivered afterwards. To be called before the
/// VM is destroyed.
DTV_EXPORT void stopDelivery();

/// Sets what the capture's section header says of the session, in lines of the form `key=value`:
/// docs/capture.md has the keys. To be called before the first listener is made. False, and nothing
/// is changed, when the capture has begun, or when the text is longer than 2000 bytes.
DTV_EXPORT bool describeCapture(std::string_view lines);

/// One log line, as it was handed to DtvSvCom_Log.
struct LogLine {
    int category;
    short kind;
    const char* module;
    unsigned long level_mask;
    const char* format; ///< the format as given
    const char* text;   ///< the formatted line
};

/// Takes log lines, on the threads that write them.
class DTV_EXPORT LogSink {
public:
    virtual ~LogSink();
    virtual void write(const LogLine& line) = 0;
};

/// Sends the log lines that pass the level mask to `sink`; null brings back the default, which
/// writes to the file named by DTV_LOG_FILE or to standard error.
DTV_EXPORT void setLogSink(std::shared_ptr<LogSink> sink);

/// Lets lines through whose level bit is set in `mask`. The default is ERROR alone (2), or the
/// number in DTV_LOG_MASK.
DTV_EXPORT void setLogLevelMask(unsigned long mask);

} // namespace dtv

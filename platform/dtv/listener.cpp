// The client's side of the exchange: commands on their way to the service endpoint.
#pragma GCC visibility push(default)
#include <DtvSvLibListener.h>
#pragma GCC visibility pop

#include "capture.h"
#include "delivery.h"
#include "exchange.h"
#include "records/messages.h"

#include <mutex>
#include <utility>

namespace dtv {
namespace {

/// Never destroyed: commands may be sent for as long as the process lasts.
struct EndpointSlot {
    std::mutex mutex;
    std::shared_ptr<ServiceEndpoint> endpoint;
};

EndpointSlot& slot() {
    static EndpointSlot& instance = *new EndpointSlot;
    return instance;
}

std::shared_ptr<ServiceEndpoint> currentEndpoint() {
    const std::lock_guard<std::mutex> lock(slot().mutex);
    return slot().endpoint;
}

/// The length of the reply record of a command, in bytes. A command that no table knows gets the
/// room of the common reply.
int replyCapacity(int message_id) {
    const CommandRow* const row = messages::findCommand(message_id);
    return row != nullptr && row->isSynchronous() ? row->reply_size
                                                  : static_cast<int>(sizeof(TS_COMMON_SYNC_REPLY));
}

int handOver(ServiceEndpoint* endpoint, const Command& command, void* reply, int* reply_size) {
    if (endpoint == nullptr) {
        return -1;
    }
    if (reply == nullptr) {
        return endpoint->onCommand(command);
    }
    return endpoint->onSynchronousCommand(
        command, Reply{reply, replyCapacity(command.message_id), reply_size});
}

int send(const Command& command, void* reply, int* reply_size) {
    Capture* const capture = Capture::instance();
    if (capture != nullptr) {
        capture->command(command);
    }
    // A reference of its own, so that an endpoint that is taken away lives until its call has
    // ended.
    const std::shared_ptr<ServiceEndpoint> endpoint = currentEndpoint();
    const int result = handOver(endpoint.get(), command, reply, reply_size);
    if (capture != nullptr && (reply != nullptr || result != 0)) {
        // A service that leaves the size alone leaves there what the sender had put: 0.
        const int size = reply != nullptr && reply_size != nullptr ? *reply_size : 0;
        capture->answer(command.message_id, result, reply, size, replyCapacity(command.message_id));
    }
    if (endpoint != nullptr) {
        endpoint->onReturned(command.message_id);
    }
    return result;
}

} // namespace

ServiceEndpoint::~ServiceEndpoint() = default;

void ServiceEndpoint::onReturned(int) {}

void setServiceEndpoint(std::shared_ptr<ServiceEndpoint> endpoint) {
    {
        const std::lock_guard<std::mutex> lock(slot().mutex);
        slot().endpoint.swap(endpoint);
    }
    // The old endpoint goes here, outside the lock: its destructor may do what it likes.
}

} // namespace dtv

DtvSvLibListener::DtvSvLibListener() {
    // The file of an earlier process is gone from now on, even if no message follows.
    dtv::Capture::instance();
    dtv::registerListener(this);
}

DtvSvLibListener::~DtvSvLibListener() {
    dtv::unregisterListener(this);
}

int DtvSvLibListener::sendEventToServer(int message_id, void* data, int size, void* reply,
                                        int* reply_size) {
    return dtv::send(dtv::Command{message_id, data, size, nullptr}, reply, reply_size);
}

int DtvSvLibListener::sendEventToServer(int message_id, void* data, int size, TS_DTVSV_SP* sp,
                                        void* reply, int* reply_size) {
    return dtv::send(dtv::Command{message_id, data, size, sp}, reply, reply_size);
}

// The client's side of the exchange: commands on their way to the service endpoint.
#pragma GCC visibility push(default)
#include <DtvSvLibListener.h>
#pragma GCC visibility pop

#include "delivery.h"
#include "exchange.h"

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

constexpr int terminate_recording_sync = 0x10000040;

/// How long a reply record is: its command decides.
constexpr int replyCapacity(int message_id) {
    return message_id == terminate_recording_sync ? 12 : 8;
}

int send(const Command& command, void* reply, int* reply_size) {
    // A reference of its own, so that an endpoint that is taken away lives until its call has
    // ended.
    const std::shared_ptr<ServiceEndpoint> endpoint = currentEndpoint();
    if (endpoint == nullptr) {
        return -1;
    }
    if (reply == nullptr) {
        return endpoint->onCommand(command);
    }
    return endpoint->onExchange(command,
                                Reply{reply, replyCapacity(command.message_id), reply_size});
}

} // namespace

ServiceEndpoint::~ServiceEndpoint() = default;

void setServiceEndpoint(std::shared_ptr<ServiceEndpoint> endpoint) {
    {
        const std::lock_guard<std::mutex> lock(slot().mutex);
        slot().endpoint.swap(endpoint);
    }
    // The old endpoint goes here, outside the lock: its destructor may do what it likes.
}

} // namespace dtv

DtvSvLibListener::DtvSvLibListener() {
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

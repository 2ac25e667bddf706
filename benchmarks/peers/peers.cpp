#include "peers/peers.h"

#include <DtvSvLibListener.h>

#include <cstdint>

namespace {

PeerOnEvent on_event_now = nullptr;
PeerOnInts on_ints_now = nullptr;

/// Sends; no event comes to it.
class Sender final : public DtvSvLibListener {
public:
    int recvEventFromServer(int, void*, int) override { return 1; }
};

Sender& sender() {
    static Sender& only = []() -> Sender& {
        auto* const made = new Sender;
        made->incStrong(made);
        return *made;
    }();
    return only;
}

android::Surface* surfaceAt(int address) {
    return reinterpret_cast<android::Surface*>(
        static_cast<uintptr_t>(static_cast<uint32_t>(address)));
}

} // namespace

int peer_sum(int a, int b) {
    return a + b;
}

int peer_send(int id, void* record, int size) {
    return sender().sendEventToServer(id, record, size, nullptr, nullptr);
}

int peer_send_with_surfaces(int id, void* record, int size, int first, int second, int third) {
    TS_DTVSV_SP surfaces;
    for (const int address : {first, second, third}) {
        surfaces.surface[surfaces.surface_count++] = surfaceAt(address);
    }
    return sender().sendEventToServer(id, record, size, &surfaces, nullptr, nullptr);
}

int peer_exchange(int id, void* record, int size, void* reply) {
    int reply_size = 0;
    return sender().sendEventToServer(id, record, size, reply, &reply_size);
}

int peer_listen(PeerOnEvent on_event, PeerOnInts on_ints) {
    on_event_now = on_event;
    on_ints_now = on_ints;
    return 0;
}

namespace peers {

PeerOnEvent onEvent() {
    return on_event_now;
}

PeerOnInts onInts() {
    return on_ints_now;
}

} // namespace peers

// Sends and delivers a few messages through libDtv, and does nothing else: the program whose
// messages are captured.
#include <dtv/exchange.h>

#include <pthread.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

class Service : public dtv::ServiceEndpoint {
public:
    int onCommand(const dtv::Command& command) override {
        return command.message_id == 0x10000006 ? 0 : -1;
    }
    int onSynchronousCommand(const dtv::Command&, const dtv::Reply& reply) override {
        const unsigned char answer[8] = {3, 0, 0, 0, 0xfb, 0xff, 0xff, 0xff};
        std::memcpy(reply.data, answer, sizeof answer);
        *reply.size = sizeof answer;
        return 0;
    }
};

class Listener : public DtvSvLibListener {
public:
    int recvEventFromServer(int event_id, void*, int) override {
        return event_id == 0x10000054 ? 0 : 1;
    }
};

} // namespace

int main() {
    pthread_setname_np(pthread_self(), "sample");
    dtv::setServiceEndpoint(std::make_shared<Service>());
    android::sp<Listener> listener = new Listener;

    unsigned char select[] = {3, 0, 0, 0, 32, 0, 0, 0, 1, 0, 0, 0};
    listener->sendEventToServer(0x10000006, select, 12, nullptr, nullptr);
    unsigned char handle[] = {3, 0};
    unsigned char answer[8] = {};
    int size = 0;
    listener->sendEventToServer(0x10000038, handle, 2, answer, &size);
    TS_DTVSV_SP references;
    references.surface_count = 1;
    unsigned char screen[] = {3, 0, 64, 1, 180, 0, 0, 0};
    listener->sendEventToServer(0x1000000c, screen, 8, &references, nullptr, nullptr);

    const unsigned char selected[] = {3, 0, 0, 0, 0, 0, 0, 0, 32, 0, 0, 0, 1, 0, 0, 0};
    dtv::postEvent(0x10000054, selected, 16);
    dtv::postEvent(0x10000042, nullptr, -1);
    if (!dtv::waitUntilDelivered(std::chrono::seconds(20))) {
        std::fprintf(stderr, "the events were not delivered\n");
        return 1;
    }
    dtv::stopDelivery();
    return 0;
}

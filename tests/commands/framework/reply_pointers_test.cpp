// What the bridge passes to libDtv with each command. This program's own sendEventToServer is found
// before libDtv's by the bridge; it checks the arguments and passes them on.
#include "commands/every_command.h"

#include <DtvSvLibListener.h>
#include <dlfcn.h>

namespace {

struct Sent {
    bool with_references;
    int message_id;
    bool reply;
    bool reply_size;
    bool null_references;
};
std::vector<Sent> sent;

void* next(const char* symbol) {
    void* found = dlsym(RTLD_NEXT, symbol);
    if (found == nullptr) {
        std::abort();
    }
    return found;
}

} // namespace

__attribute__((visibility("default"))) int DtvSvLibListener::sendEventToServer(int message_id,
                                                                               void* data, int size,
                                                                               void* reply,
                                                                               int* reply_size) {
    using Function = int (*)(DtvSvLibListener*, int, void*, int, void*, int*);
    sent.push_back({false, message_id, reply != nullptr, reply_size != nullptr, true});
    return reinterpret_cast<Function>(next("_ZN16DtvSvLibListener17sendEventToServerEiPviS0_Pi"))(
        this, message_id, data, size, reply, reply_size);
}

__attribute__((visibility("default"))) int
DtvSvLibListener::sendEventToServer(int message_id, void* data, int size, TS_DTVSV_SP* references,
                                    void* reply, int* reply_size) {
    using Function = int (*)(DtvSvLibListener*, int, void*, int, TS_DTVSV_SP*, void*, int*);
    sent.push_back(
        {true, message_id, reply != nullptr, reply_size != nullptr, references == nullptr});
    return reinterpret_cast<Function>(
        next("_ZN16DtvSvLibListener17sendEventToServerEiPviP11TS_DTVSV_SPS0_Pi"))(
        this, message_id, data, size, references, reply, reply_size);
}

namespace {

using namespace commands;
using namespace harness;

/// Commands that are sent with references, by their numbers.
bool carriesReferences(int message_id) {
    switch (message_id) {
    case 0x1000000a:
    case 0x1000000b:
    case 0x1000000c:
    case 0x1000000d:
    case 0x1000000e:
    case 0x10000017:
    case 0x10000018:
    case 0x1000001d:
    case 0x1000003d:
    case 0x1000003e:
        return true;
    default:
        return false;
    }
}

TEST(ReplyPointers, AreNullUnlessTheCommandWaits) {
    ASSERT_EQ(Product::load(), "");
    auto service = ServiceDouble::serve();
    NativeSurface surface;
    int waiting = 0;
    int carrying = 0;
    for (const EveryCommand& command :
         everyCommand(surface.java(), surface.java(), surface.java())) {
        SCOPED_TRACE(command.name);
        LocalFrame frame;
        sent.clear();
        callNative("DtvSvLib_" + command.name, command.arguments);
        ASSERT_EQ(sent.size(), 1U);
        const bool waits = sent[0].message_id >= 0x10000038;
        EXPECT_EQ(sent[0].reply, waits);
        EXPECT_EQ(sent[0].reply_size, waits);
        EXPECT_EQ(sent[0].with_references, carriesReferences(sent[0].message_id));
        EXPECT_EQ(sent[0].null_references, !sent[0].with_references);
        waiting += waits ? 1 : 0;
        carrying += sent[0].with_references ? 1 : 0;
    }
    EXPECT_EQ(waiting, 10);
    EXPECT_EQ(carrying, 10);
}

} // namespace

// The client side of the DTV service, as libDtv offers it.
#pragma once

#include <binder/Binder.h>
#include <gui/Surface.h>
#include <utils/StrongPointer.h>

#include <cstdint>

/// Strong references that travel beside a command record. Destroying the references drops them,
/// each group from its last slot to its first, the second group before the surfaces.
struct TS_DTVSV_SP {
    int32_t surface_count = 0;                ///< surface slots filled, from the front
    android::sp<android::Surface> surface[3]; ///< the drawing surfaces of the command
    int32_t object_count = 0;                 ///< object slots filled, from the front
    android::sp<android::IBinder> object[3];  ///< other objects; no command of ours uses them
};
static_assert(sizeof(void*) != 4 || sizeof(TS_DTVSV_SP) == 32,
              "the references is 32 bytes where pointers are 4 bytes wide");

/// The object through which a client talks to the DTV service: commands leave through
/// sendEventToServer, events arrive at recvEventFromServer on threads of libDtv. It holds no data
/// of its own, so that a derived class has the same layout with every libDtv.
class DtvSvLibListener : public android::BBinder {
public:
    ~DtvSvLibListener() override;

    /// Sends one command of `size` bytes. With `reply` null the call returns when the message is
    /// handed over; otherwise it waits for the answer, writes it to `reply` and its length to
    /// `reply_size`. 0 when the service took the message, any other value when it did not.
    int sendEventToServer(int message_id, void* data, int size, void* reply, int* reply_size);

    /// The same with strong references beside the record. The service takes references of its own
    /// to what it keeps; `sp` stays the caller's.
    int sendEventToServer(int message_id, void* data, int size, TS_DTVSV_SP* sp, void* reply,
                          int* reply_size);

    /// Called for every event, on a thread of libDtv. `data` is libDtv's, at least 8 bytes long
    /// whatever `size` says, and valid during the call only.
    virtual int recvEventFromServer(int event_id, void* data, int size) = 0;

protected:
    DtvSvLibListener();
};

// The C library that the other technologies call, and that calls them. It sends what they hand it
// as a listener of libDtv sends.
#pragma once

#define PEER_EXPORT __attribute__((visibility("default")))

extern "C" {

/// Takes an event; `record` is valid during the call.
typedef void (*PeerOnEvent)(int id, const void* record, int size);
/// Takes two ints.
typedef void (*PeerOnInts)(int a, int b);

PEER_EXPORT int peer_sum(int a, int b);

/// Sends a record. 0 when it was taken.
PEER_EXPORT int peer_send(int id, void* record, int size);
/// The same beside three surfaces, by their addresses.
PEER_EXPORT int peer_send_with_surfaces(int id, void* record, int size, int first, int second,
                                        int third);
/// The same, and waits for the reply.
PEER_EXPORT int peer_exchange(int id, void* record, int size, void* reply);

/// Sets who is called from now on. Always 0.
PEER_EXPORT int peer_listen(PeerOnEvent on_event, PeerOnInts on_ints);

} // extern "C"

namespace peers {

/// Who is called.
PEER_EXPORT PeerOnEvent onEvent();
PEER_EXPORT PeerOnInts onInts();

} // namespace peers

#pragma once

#include "hand/ids.h"
#include "hand/policy.h"

#include <DtvSvLibListener.h>
#include <jni.h>

namespace hand {

/// The VM, set before the first event.
extern JavaVM* vm;

/// Takes the events of one variant.
template <class Policy>
class Listener final : public DtvSvLibListener {
public:
    int recvEventFromServer(int event_id, void* data, int size) override;
};

/// The one listener of a variant; its commands leave through it.
template <class Policy>
Listener<Policy>& listenerOf() {
    static Listener<Policy>& only = [&]() -> Listener<Policy>& {
        auto* const made = new Listener<Policy>;
        made->incStrong(made);
        return *made;
    }();
    return only;
}

} // namespace hand

#include "receiver/activity.h"

#include "receiver/browser.h"
#include "receiver/captions.h"
#include "service/service.h"

namespace simulator {

uint64_t startActivity(Service& service, Session& session, Activity activity) {
    endCaptions(service, session);
    if (!session.browser.tv_link) {
        endBrowser(service, session);
    }
    session.activity = activity;
    session.station = nullptr;
    return ++session.generation;
}

bool canTune(const Session& session) {
    const bool free =
        session.activity == Activity::kIdle || session.activity == Activity::kReceiving;
    return free && !session.recording;
}

} // namespace simulator

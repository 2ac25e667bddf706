#include "simulator/activity.h"

#include "simulator/browser.h"
#include "simulator/captions.h"

namespace simulator {

uint64_t takeUp(Service& service, Session& session, Activity activity) {
    endCaptions(service, session);
    if (!session.browser.tv_link) {
        endBrowser(service, session);
    }
    session.activity = activity;
    session.station = nullptr;
    return ++session.work;
}

bool canTune(const Session& session) {
    const bool free =
        session.activity == Activity::kIdle || session.activity == Activity::kReceiving;
    return free && !session.recording;
}

} // namespace simulator

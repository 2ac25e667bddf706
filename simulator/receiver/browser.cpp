#include "receiver/browser.h"

#include "receiver/browser_requests.h"
#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/status_records.h"
#include "service/planes.h"
#include "service/service.h"

#include <algorithm>
#include <chrono>

namespace simulator {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLoading{200};     ///< from a document's start to its first request
constexpr milliseconds kThinking{100};    ///< from an answer to the next request
constexpr milliseconds kSaving{50};       ///< to write a picture
constexpr uint8_t kEndedWithoutError = 0; ///< the end type of an answer
constexpr uint8_t kDocumentIcon = 1;
constexpr uint8_t kMayBeShown = 1;

void notifyState(Service& service, const Session& session) {
    TS_CHANGE_STATUS_NOTIFY status{};
    status.handle = session.handle;
    status.change_status = static_cast<uint8_t>(session.browser.running);
    service.send(event_id::kBmlStatusNotify, status);
}

/// Sends the next request after `delay`, unless an answer is awaited or all were sent.
void sendNextRequest(Service& service, Session& session, milliseconds delay) {
    service.later(session, delay, [&service, document = session.browser.document](Session& now) {
        Browser& browser = now.browser;
        if (browser.document != document || browser.running != Running::kOn ||
            browser.awaits_answer || browser.next_request == kBrowserRequests) {
            return;
        }
        browser.awaits_answer = true;
        sendBrowserRequest(service, now.handle, browser.next_request++);
    });
}

void show(Service& service, Session& session) {
    Browser& browser = session.browser;
    browser.running = Running::kOn;
    browser.next_request = 0;
    browser.awaits_answer = false;
    ++browser.document;
    notifyState(service, session);
    TS_BML_DISP_ICON_NOTIFY icon{};
    icon.handle = session.handle;
    icon.icon_type = kDocumentIcon;
    icon.disp_permit = kMayBeShown;
    service.send(event_id::kBmlDispIconNotify, icon);
    sendNextRequest(service, session, kLoading);
}

/// The step after the reply: it shows the document, unless one was shown or ended since.
std::function<void(Session&)> showing(Service& service, const Session& session) {
    return [&service, document = session.browser.document](Session& now) {
        if (now.browser.document == document && now.browser.running == Running::kOn) {
            show(service, now);
        }
    };
}

NvramContents contentsOf(const TS_READ_NVRAM_REPLY_REQ& reply) {
    NvramContents contents{};
    std::copy_n(reply.ts_name, contents.owner.size(), contents.owner.begin());
    std::copy_n(reply.nvram_data, contents.data.size(), contents.data.begin());
    return contents;
}

/// Takes the answer to `request`, if that was the last request sent.
Answer answerTo(BrowserRequest request, Service& service, Session& session) {
    Browser& browser = session.browser;
    if (!browser.awaits_answer || browser.next_request != static_cast<size_t>(request) + 1) {
        return answerWith(kNotNow);
    }
    browser.awaits_answer = false;
    sendNextRequest(service, session, kThinking);
    return {};
}

} // namespace

Answer controlBrowser(Service& service, Session& session, const Request& request) {
    const uint8_t type = request.as<TS_CONTROL_BML_REQ>().bml_control_type;
    if (!isControlType(type)) {
        return answerWith(kNoSuchThing);
    }
    Browser& browser = session.browser;
    const std::optional<Running> state = controlled(browser.running, type);
    if (!session.presents() || browser.tv_link || !state) {
        return answerWith(kNotNow);
    }
    if (!storeSurfaces(session, request, {kBml}) && session.surfaces[kBml] == nullptr &&
        *state != Running::kOff) {
        return answerWith(kNoSuchThing);
    }
    Answer answer;
    if (type == kUnchanged) {
        return answer;
    }
    if (*state == Running::kOff) {
        answer.then = [&service](Session& now) { endBrowser(service, now); };
        return answer;
    }
    const bool reload = browser.running == Running::kOff || type == kRestart;
    browser.running = *state;
    if (reload) {
        answer.then = showing(service, session);
        return answer;
    }
    answer.then = [&service](Session& now) {
        notifyState(service, now);
        sendNextRequest(service, now, kThinking);
    };
    return answer;
}

Answer rebootBrowser(Service& service, Session& session, const Request&) {
    if (session.browser.running == Running::kOff) {
        return answerWith(kNotNow);
    }
    session.browser.running = Running::kOn;
    Answer answer;
    answer.then = showing(service, session);
    return answer;
}

Answer startTvLink(Service& service, Session& session, const Request& request) {
    const auto& link = request.as<TS_START_TV_LINK_REQ>();
    if ((link.bml_control_type != kTurnOn && link.bml_control_type != kUnchanged) ||
        link.bookmark_url[0] == '\0') {
        return answerWith(kNoSuchThing);
    }
    Browser& browser = session.browser;
    if (browser.running != Running::kOff) {
        return answerWith(kNotNow);
    }
    if (!storeSurfaces(session, request, {kBml}) && session.surfaces[kBml] == nullptr) {
        return answerWith(kNoSuchThing);
    }
    browser.running = Running::kOn;
    browser.tv_link = true;
    Answer answer;
    answer.then = showing(service, session);
    return answer;
}

Answer endTvLink(Service& service, Session& session, const Request&) {
    if (!session.browser.tv_link) {
        return answerWith(kNotNow);
    }
    Answer answer;
    answer.then = [&service](Session& now) { endBrowser(service, now); };
    return answer;
}

Answer keyEvent(Service&, Session& session, const Request&) {
    return answerWith(session.browser.running == Running::kOn ? kDone : kNotNow);
}

Answer answerPermission(Service& service, Session& session, const Request& request) {
    return request.as<TS_PERMISSION_REPLY_REQ>().task_id == kPermissionTask
               ? answerTo(BrowserRequest::kPermission, service, session)
               : answerWith(kNoSuchThing);
}

Answer answerAuth(Service& service, Session& session, const Request& request) {
    return request.as<TS_AUTH_REPLY_REQ>().task_id == kAuthTask
               ? answerTo(BrowserRequest::kAuth, service, session)
               : answerWith(kNoSuchThing);
}

Answer answerWriteNvram(Service& service, Session& session, const Request& request) {
    Answer answer = answerTo(BrowserRequest::kWriteNvram, service, session);
    if (answer.reply.result == kDone &&
        request.as<TS_ONE_VALUE_REQ>().value == kEndedWithoutError) {
        service.nvram().write(documentBlock(), documentMemory());
    }
    return answer;
}

Answer answerReadNvram(Service& service, Session& session, const Request& request) {
    const auto& reply = request.as<TS_READ_NVRAM_REPLY_REQ>();
    const std::optional<NvramContents> written = service.nvram().read(documentBlock());
    if (reply.bml_end_type == kEndedWithoutError && written && !(contentsOf(reply) == *written)) {
        return answerWith(kNoSuchThing);
    }
    return answerTo(BrowserRequest::kReadNvram, service, session);
}

Answer answerFep(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kFep, service, session);
}

Answer answerMail(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kMail, service, session);
}

Answer answerPhonebook(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kPhonebook, service, session);
}

Answer answerCall(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kCall, service, session);
}

Answer answerSchedule(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kSchedule, service, session);
}

Answer answerBrowser(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kBrowser, service, session);
}

Answer answerSavePicture(Service& service, Session& session, const Request& request) {
    Answer answer = answerTo(BrowserRequest::kSavePicture, service, session);
    if (answer.reply.result == kDone && request.as<TS_SAVE_PICTURE_REPLY_REQ>().save_flag != 0) {
        service.later(session, kSaving, [&service](Session& now) {
            TS_RESULT_NOTIFY saved{};
            saved.handle = now.handle;
            saved.result = kDone;
            service.send(event_id::kBmlSavePictureNotify, saved);
        });
    }
    return answer;
}

Answer answerStartTvLink(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kStartTvLink, service, session);
}

Answer answerEnrolTvLink(Service& service, Session& session, const Request&) {
    return answerTo(BrowserRequest::kEnrolTvLink, service, session);
}

void beginBrowser(Service& service, Session& session) {
    if (session.first_component.bml && session.browser.running == Running::kOff) {
        show(service, session);
    }
}

void endBrowser(Service& service, Session& session) {
    Browser& browser = session.browser;
    if (browser.running == Running::kOff) {
        return;
    }
    if (browser.awaits_answer &&
        browser.next_request == static_cast<size_t>(BrowserRequest::kFep) + 1) {
        // The text that is being entered is not needed any more.
        TS_HANDLE_NOTIFY end{};
        end.handle = session.handle;
        service.send(event_id::kBmlEndFepNotify, end);
    }
    browser.running = Running::kOff;
    browser.tv_link = false;
    browser.awaits_answer = false;
    ++browser.document;
    notifyState(service, session);
}

} // namespace simulator

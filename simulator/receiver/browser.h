// The browser of data broadcasting: it shows the station's document, or a bookmarked page. Either
// sends thirteen requests to the application, one after the other.
#pragma once

#include "service/request.h"

namespace simulator {

class Service;
struct Session;

/// Switches the browser: off 0, on 1, suspend 2, resume 3, restart 4; 255 leaves it and changes its
/// plane alone. Refused when nothing is received or played, without a plane, and when it is in that
/// state already.
Answer controlBrowser(Service& service, Session& session, const Request& request);
/// Loads the document again; refused when none is shown.
Answer rebootBrowser(Service& service, Session& session, const Request& request);

/// Shows a bookmarked page (control type 1, or 255). Refused while the browser runs.
Answer startTvLink(Service& service, Session& session, const Request& request);
/// Refused when no bookmarked page is shown.
Answer endTvLink(Service& service, Session& session, const Request& request);

/// A key or a touch; not taken when nothing is shown.
Answer keyEvent(Service& service, Session& session, const Request& request);

// Answers to the requests of the document. Not taken when the last request was another one or had
// another task number, or when the contents of a block differ from those that were written to it.
Answer answerPermission(Service& service, Session& session, const Request& request);
Answer answerAuth(Service& service, Session& session, const Request& request);
Answer answerWriteNvram(Service& service, Session& session, const Request& request);
Answer answerReadNvram(Service& service, Session& session, const Request& request);
Answer answerFep(Service& service, Session& session, const Request& request);
Answer answerMail(Service& service, Session& session, const Request& request);
Answer answerPhonebook(Service& service, Session& session, const Request& request);
Answer answerCall(Service& service, Session& session, const Request& request);
Answer answerSchedule(Service& service, Session& session, const Request& request);
Answer answerBrowser(Service& service, Session& session, const Request& request);
Answer answerSavePicture(Service& service, Session& session, const Request& request);
Answer answerStartTvLink(Service& service, Session& session, const Request& request);
Answer answerEnrolTvLink(Service& service, Session& session, const Request& request);

/// Shows the station's document if that was set for the beginning of reception.
void beginBrowser(Service& service, Session& session);
void endBrowser(Service& service, Session& session);

} // namespace simulator

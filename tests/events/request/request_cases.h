// The thirteen requests of a BML document, each with one record.
#pragma once

#include "events/event_case.h"

#include <vector>

namespace events {

const Case& permissionCase();
const Case& authCase();
const Case& writeNvramCase();
const Case& readNvramCase();
const Case& startFepCase();
const Case& mailCase();
const Case& phonebookCase();
const Case& callCase();
const Case& scheduleCase();
const Case& browserCase();
const Case& savePictureCase();
const Case& startTvlinkCase();
const Case& enrolTvlinkCase();
std::vector<Case> requestCases();

} // namespace events

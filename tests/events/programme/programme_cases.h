// The twelve events about the broadcast, each with one record.
#pragma once

#include "events/event_case.h"

#include <array>
#include <string>
#include <vector>

namespace events {

const Case& componentCase();
const Case& videoCase();
const Case& audioCase();
const Case& captionCase();
const Case& selectAudioCase();
const Case& startSearchCase();
const Case& terminateSearchCase();
const Case& terminateScanCase();
/// All eight of the cases above.
std::vector<Case> streamCases();

const Case& networkCase();
const Case& scanCase();
const Case& servicesCase(); ///< two services
const Case& guideCase();    ///< one programme after the next one
inline const Case& guide = guideCase();

struct Programme {
    uint32_t evt_id;
    std::array<unsigned, 3> date;
    std::array<unsigned, 4> time;
    unsigned day_of_week;
    std::array<unsigned, 4> duration;
    unsigned freeca;
    unsigned nibbles;
    std::string content;
    std::string user;
    std::u16string name;
    std::u16string text;
};
/// Writes a programme's 636 bytes; the sizes are those of the texts.
void putProgramme(Record& record, size_t at, const Programme& programme);
/// A size at this offset, then the units and one more of 0.
void putText(Record& record, size_t at, const std::u16string& text);

/// A guide with this many following programmes, of service 101 on channel 62, of handle 3.
Record guideRecord(unsigned following);
/// Its programmes as they reach Java.
extern const char* const currentTree;
extern const char* const nextTree;
std::string followingTree(unsigned index);

} // namespace events

// The eight events of one small record: streams, captions, audio selection, search and scan ends.
#include "events/programme/programme_cases.h"

namespace {

using namespace events;
using harness::FailJni;

const Case& component = componentCase();
const Case& video = videoCase();
const Case& audio = audioCase();
const Case& startSearch = startSearchCase();

class Stream : public EveryEvent {};
INSTANTIATE_TEST_SUITE_P(Event, Stream, testing::ValuesIn(streamCases()), nameOf);

TEST_P(Stream, IsDelivered) {
    isDelivered();
}

TEST_P(Stream, OneByteShortOrLongIsRefused) {
    oneByteShortOrLong();
}

TEST_P(Stream, AnyLengthIsSafe) {
    anyLengthIsSafe();
}

TEST_P(Stream, ObjectThatCannotBeBuilt) {
    constructionFails(FailJni::Leaves::exception);
    constructionFails(FailJni::Leaves::nothing);
}

TEST_P(Stream, CallbackThatThrowsWasCalled) {
    callbackThrows();
}

class Widening : public EventTest {};

TEST_F(Widening, ChannelIsALongOrAnInt) {
    expectDelivered(component, Record(component.record).u32(4, 0xFFFFFFFF),
                    "onEvDtvsvComponentInfoNotify BG_EV_DTVSV_COMPONENT_INFO_NOTIFY(65244, "
                    "BG_TS_DTVSVLIB_COMPONENT_INFO(161, 162, 163), 4294967295L, 45745)",
                    component.delivered());
    expectDelivered(startSearch, Record(startSearch.record).u32(4, 0xFFFFFFFF),
                    "onEvDtvsvStartSearchChannelNotify "
                    "BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY(65244, -1)",
                    startSearch.delivered());
}

TEST_F(Widening, SmallAndGreatestValues) {
    expectDelivered(audio, Record(12).fill(0, 12, 0),
                    "onEvDtvsvUpdateAudioInfoNotify BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY(0, 0, 0, "
                    "0L, 0)",
                    audio.delivered());
    expectDelivered(audio, Record(12).fill(0, 12, 0xFF),
                    "onEvDtvsvUpdateAudioInfoNotify BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY(65535, "
                    "255, 255, 4294967295L, 65535)",
                    audio.delivered());
    expectDelivered(video, Record(16).fill(0, 16, 0xFF),
                    "onEvDtvsvUpdateVideoInfoNotify BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY(65535, "
                    "BG_TS_DTVSVLIB_VIDEO_INFO(65535, 65535), 4294967295L, 65535)",
                    video.delivered());
}

} // namespace

// The progress of recording and playback.
#include "events/record_event.h"

namespace events {

using namespace harness;

const RecordEvent record_and_play_status[] = {
    {"rec_status_notify",
     0x10000098,
     "0380 eeee 04030281 0685 eeee a1a2a3a4",
     "",
     {"handle = 32771, rec_status = -1532779871"},
     {{202, 120}},
     187,
     "onEvDtvsvRecStatusNotify BG_EV_DTVSV_REC_STATUS_NOTIFY(32771, -1532779871, 2164392708L, "
     "34054)",
     false,
     {{15, {"handle = 32771, rec_status = 10724001"}},
      {12, {"handle = 32771, rec_status = 0"}},
      {1, {"handle = 3, rec_status = 0"}},
      {0, {"handle = 0, rec_status = 0"}}}},
    {"rec_info_notify",
     0x1000009a,
     "0380 eeee 04030281 0685 eeee a1a2a3a4 f7 eeeeee",
     "",
     {"handle = 32771, rec_time = -1532779871, rec_cap = 247"},
     {{203, 121}},
     188,
     "onEvDtvsvRecInfoNotify BG_EV_DTVSV_REC_INFO_NOTIFY(32771, 2762187425L, 247, 2164392708L, "
     "34054)",
     false,
     {{19, {"handle = 32771, rec_time = -1532779871, rec_cap = 247"}},
      {16, {"handle = 32771, rec_time = -1532779871, rec_cap = 0"}},
      {14, {"handle = 32771, rec_time = 41633, rec_cap = 0"}},
      {0, {"handle = 0, rec_time = 0, rec_cap = 0"}}}},
    {"play_status_notify",
     0x1000009b,
     "0380 eeee f1 eeeeee 04030281 f2 eeeeee",
     "",
     {"handle = 32771",
      "PLAY_STATUS_INFO : status = 241, current_time = -2130574588, eof_flag = 242"},
     {{207, 125}, {204, 122}},
     189,
     "onEvDtvsvPlayStatusNotify BG_EV_DTVSV_PLAY_STATUS_NOTIFY(32771, "
     "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(241, 2164392708L, 242))",
     false,
     {{15,
       {"handle = 32771",
        "PLAY_STATUS_INFO : status = 241, current_time = -2130574588, eof_flag = 242"}},
      {12,
       {"handle = 32771",
        "PLAY_STATUS_INFO : status = 241, current_time = -2130574588, eof_flag = 0"}},
      {10, {"handle = 32771", "PLAY_STATUS_INFO : status = 241, current_time = 772, eof_flag = 0"}},
      {4, {"handle = 32771", "PLAY_STATUS_INFO : status = 0, current_time = 0, eof_flag = 0"}},
      {0, {"handle = 0", "PLAY_STATUS_INFO : status = 0, current_time = 0, eof_flag = 0"}}}},
    {"play_event_notify",
     0x1000009c,
     "0380 eeee f1 eeeeee 04030281 f2 eeeeee f4f5f6f7 f3 eeeeee",
     "",
     {"handle = 32771, play_event = -134810124, bml_http_flg = 243",
      "PLAY_STATUS_INFO : status = 241, current_time = -2130574588, eof_flag = 242"},
     {{207, 125}, {205, 123}},
     190,
     "onEvDtvsvPlayEventNotify BG_EV_DTVSV_PLAY_EVENT_NOTIFY(32771, "
     "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(241, 2164392708L, 242), -134810124L, 243)",
     false,
     {{23,
       {"handle = 32771, play_event = -134810124, bml_http_flg = 243",
        "PLAY_STATUS_INFO : status = 241, current_time = -2130574588, eof_flag = 242"}},
      {20,
       {"handle = 32771, play_event = -134810124, bml_http_flg = 0",
        "PLAY_STATUS_INFO : status = 241, current_time = -2130574588, eof_flag = 242"}},
      {18,
       {"handle = 32771, play_event = 62964, bml_http_flg = 0",
        "PLAY_STATUS_INFO : status = 241, current_time = -2130574588, eof_flag = 242"}},
      {11,
       {"handle = 32771, play_event = 0, bml_http_flg = 0",
        "PLAY_STATUS_INFO : status = 241, current_time = 131844, eof_flag = 0"}},
      {0,
       {"handle = 0, play_event = 0, bml_http_flg = 0",
        "PLAY_STATUS_INFO : status = 0, current_time = 0, eof_flag = 0"}}}},
    {"play_error_notify",
     0x1000009d,
     "0380 eeee 04030281",
     "",
     {"handle = 32771, play_error = -2130574588"},
     {{206, 124}},
     191,
     "onEvDtvsvPlayErrorNotify BG_EV_DTVSV_PLAY_ERROR_NOTIFY(32771, -2130574588)",
     false,
     {{7, {"handle = 32771, play_error = 131844"}},
      {4, {"handle = 32771, play_error = 0"}},
      {1, {"handle = 3, play_error = 0"}},
      {0, {"handle = 0, play_error = 0"}}}},
};

INSTANTIATE_TEST_SUITE_P(RecordAndPlay, RecordEvents, testing::ValuesIn(record_and_play_status),
                         recordEventName);

namespace {

using Texts = std::vector<std::string>;

TEST(RecordAndPlayStatus, PlayEventAloneIsSigned) {
    prepareEvents();
    EXPECT_EQ(
        afterDelivering(0x1000009c, "ffff 0000 ff 000000 ffffffff ff 000000 ffffffff ff 000000"),
        Texts{"onEvDtvsvPlayEventNotify BG_EV_DTVSV_PLAY_EVENT_NOTIFY(65535, "
              "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(255, 4294967295L, 255), -1L, 255)"});
    EXPECT_EQ(
        afterDelivering(0x1000009c, "0000 0000 00 000000 00000080 00 000000 00000080 00 000000"),
        Texts{"onEvDtvsvPlayEventNotify BG_EV_DTVSV_PLAY_EVENT_NOTIFY(0, "
              "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(0, 2147483648L, 0), -2147483648L, 0)"});
    EXPECT_EQ(
        afterDelivering(0x1000009c, "0000 ffff 01 ffffff ffffff7f 02 ffffff ffffff7f 03 ffffff"),
        Texts{"onEvDtvsvPlayEventNotify BG_EV_DTVSV_PLAY_EVENT_NOTIFY(0, "
              "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(1, 2147483647L, 2), 2147483647L, 3)"});
    EXPECT_EQ(afterDelivering(0x1000009b, "ffff 0000 ff 000000 ffffffff ff 000000"),
              Texts{"onEvDtvsvPlayStatusNotify BG_EV_DTVSV_PLAY_STATUS_NOTIFY(65535, "
                    "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(255, 4294967295L, 255))"});
}

TEST(RecordAndPlayStatus, LongsAreNeverNegative) {
    prepareEvents();
    EXPECT_EQ(afterDelivering(0x1000009a, "0300 0000 ffffffff ffff 0000 ffffffff ff 000000"),
              Texts{"onEvDtvsvRecInfoNotify "
                    "BG_EV_DTVSV_REC_INFO_NOTIFY(3, 4294967295L, 255, 4294967295L, 65535)"});
    EXPECT_EQ(afterDelivering(0x10000098, "0300 0000 ffffffff ffff 0000 ffffffff"),
              Texts{"onEvDtvsvRecStatusNotify "
                    "BG_EV_DTVSV_REC_STATUS_NOTIFY(3, -1, 4294967295L, 65535)"});
    EXPECT_EQ(afterDelivering(0x1000009d, "0300 0000 ffffffff"),
              Texts{"onEvDtvsvPlayErrorNotify BG_EV_DTVSV_PLAY_ERROR_NOTIFY(3, -1)"});
}

} // namespace
} // namespace events

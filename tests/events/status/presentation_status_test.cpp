// What is shown and heard: captions, data broadcasting, sound, video area, copy control.
#include "events/record_event.h"

namespace events {

const RecordEvent presentation_status[] = {
    {"change_audio_main_sub_notify",
     0x10000083,
     "0380 eeee 04030281",
     says_size,
     {"handle = 32771, result = -2130574588"},
     {{90, 22}},
     22,
     "onEvDtvsvChangeAudioMainSubNotify "
     "BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY(32771, -2130574588)",
     true,
     {{7, {"handle = 32771, result = 131844"}},
      {4, {"handle = 32771, result = 0"}},
      {1, {"handle = 3, result = 0"}},
      {0, {"handle = 0, result = 0"}}}},
    {"bml_status_notify",
     0x10000085,
     "0380 f1 ee",
     says_size,
     {"handle = 32771, change_status = 241"},
     {{85, 17}},
     17,
     "onEvDtvsvBmlStatusNotify BG_EV_DTVSV_BML_STATUS_NOTIFY(32771, 241)",
     true,
     {{3, {"handle = 32771, change_status = 241"}},
      {2, {"handle = 32771, change_status = 0"}},
      {1, {"handle = 3, change_status = 0"}},
      {0, {"handle = 0, change_status = 0"}}}},
    {"cap_status_notify",
     0x10000086,
     "0380 f1 ee",
     says_size,
     {"handle = 32771, change_status = 241"},
     {{88, 20}},
     20,
     "onEvDtvsvCapStatusNotify BG_EV_DTVSV_CAP_STATUS_NOTIFY(32771, 241)",
     true,
     {{3, {"handle = 32771, change_status = 241"}},
      {2, {"handle = 32771, change_status = 0"}},
      {1, {"handle = 3, change_status = 0"}},
      {0, {"handle = 0, change_status = 0"}}}},
    {"assign_video_area_notify",
     0x10000087,
     "0380 f1 ee 04030281",
     says_size,
     {"handle = 32771, drawing_destination = 241, result = -2130574588"},
     {{81, 14}},
     13,
     "onEvDtvsvAssignVideoAreaNotify "
     "BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY(32771, 241, -2130574588)",
     true,
     {{7, {"handle = 32771, drawing_destination = 241, result = 131844"}},
      {4, {"handle = 32771, drawing_destination = 241, result = 0"}},
      {2, {"handle = 32771, drawing_destination = 0, result = 0"}},
      {1, {"handle = 3, drawing_destination = 0, result = 0"}},
      {0, {"handle = 0, drawing_destination = 0, result = 0"}}}},
    {"bml_disp_icon_notify",
     0x10000089,
     "0380 f1 f2",
     "",
     {"handle = 32771, icon_type = 241, disp_permit = 242"},
     {{83, 38}},
     15,
     "onEvDtvsvBmlDispIconNotify BG_EV_DTVSV_BML_DISP_ICON_NOTIFY(32771, 241, 242)",
     false,
     {{3, {"handle = 32771, icon_type = 241, disp_permit = 0"}},
      {2, {"handle = 32771, icon_type = 0, disp_permit = 0"}},
      {1, {"handle = 3, icon_type = 0, disp_permit = 0"}},
      {0, {"handle = 0, icon_type = 0, disp_permit = 0"}}}},
    {"bml_end_fep_notify",
     0x1000008a,
     "0380",
     says_size,
     {"handle = 32771"},
     {{84, 16}},
     16,
     "onEvDtvsvBmlEndFepNotify BG_EV_DTVSV_BML_END_FEP_NOTIFY(32771)",
     true,
     {{1, {"handle = 3"}}, {0, {"handle = 0"}}}},
    {"copy_control_info_notify",
     0x10000096,
     "0380 eeee 04030281 0685 f7 ee",
     says_size,
     {"handle = 32771, copy_mode = 247"},
     {{92, 24}},
     24,
     "onEvDtvsvCopyControlInfoNotify "
     "BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY(32771, 247, 2164392708L, 34054)",
     true,
     {{11, {"handle = 32771, copy_mode = 247"}},
      {10, {"handle = 32771, copy_mode = 0"}},
      {1, {"handle = 3, copy_mode = 0"}},
      {0, {"handle = 0, copy_mode = 0"}}}},
};

INSTANTIATE_TEST_SUITE_P(Presentation, RecordEvents, testing::ValuesIn(presentation_status),
                         recordEventName);

namespace {

using namespace harness;

using Texts = std::vector<std::string>;

TEST(PresentationStatus, EdgesOfItsFields) {
    prepareEvents();
    EXPECT_EQ(afterDelivering(0x10000083, "ffff 0000 ffffffff"),
              Texts{"onEvDtvsvChangeAudioMainSubNotify "
                    "BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY(65535, -1)"});
    EXPECT_EQ(afterDelivering(0x10000085, "ffff ff 00"),
              Texts{"onEvDtvsvBmlStatusNotify BG_EV_DTVSV_BML_STATUS_NOTIFY(65535, 255)"});
    EXPECT_EQ(afterDelivering(0x10000086, "0080 80 00"),
              Texts{"onEvDtvsvCapStatusNotify BG_EV_DTVSV_CAP_STATUS_NOTIFY(32768, 128)"});
    EXPECT_EQ(afterDelivering(0x10000087, "ffff ff 00 ffffffff"),
              Texts{"onEvDtvsvAssignVideoAreaNotify "
                    "BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY(65535, 255, -1)"});
    EXPECT_EQ(afterDelivering(0x10000089, "ffff ff 80"),
              Texts{"onEvDtvsvBmlDispIconNotify BG_EV_DTVSV_BML_DISP_ICON_NOTIFY(65535, 255, "
                    "128)"});
    EXPECT_EQ(afterDelivering(0x1000008a, "ffff"),
              Texts{"onEvDtvsvBmlEndFepNotify BG_EV_DTVSV_BML_END_FEP_NOTIFY(65535)"});
    EXPECT_EQ(afterDelivering(0x10000096, "0000 ffff ffffffff ffff ff ff"),
              Texts{"onEvDtvsvCopyControlInfoNotify "
                    "BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY(0, 255, 4294967295L, 65535)"});
}

// One refusal spelled out, with what an ERROR line leaves on standard output.
TEST(PresentationStatus, WrongSizeIsAnErrorOnStandardOutputToo) {
    prepareEvents();
    auto log = LogRecorder::install();
    StdoutCapture output;
    EXPECT_EQ(deliver(0x10000086, fromHex("0380 f1")), 1);
    std::vector<TraceLine> lines = log->take();
    EXPECT_TRACE(lines, "JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|pid = <pid>, "
                        "threadid = <tid>, event_id = 10000086, recv_size = 3\n"
                        "JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|\n"
                        "JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv already got! "
                        "index=0 threadid=<tid> env=<ptr> \n"
                        "JNIDtvSvLibListener|128|5|FUNCSTART|DoListenerEvent|\n"
                        "JNIDtvSvLibListener|128|5|FUNCSTART|dtvsv_msgid_lib_cap_status_notify|"
                        "recv_size = 3\n"
                        "JNIDtvSvLibListener|1024|5|DEBUG    |dtvsv_msgid_lib_cap_status_notify|"
                        "handle = 32771, change_status = 241\n"
                        "JNIDtvSvLibListener|2|6|ERROR    |dtvsv_msgid_lib_cap_status_notify|"
                        "recv_size err!, recv_size = 3\n"
                        "JNIDtvSvLibListener|256|5|FUNCEND  |recvEventFromServer|\n");
    ASSERT_EQ(lines.size(), 8U);
    std::string copy = output.take();
    EXPECT_EQ(copy, onStandardOutput(lines[6]));
    EXPECT_EQ(copy.find("JNIDtvSvLibListener("), 0U);
    EXPECT_NE(copy.find(">ERROR     [dtvsv_msgid_lib_cap_status_notify():"), std::string::npos);
    EXPECT_NE(copy.find("] recv_size err!, recv_size = 3\n"), std::string::npos);
}

} // namespace
} // namespace events

// How well the receiver receives: quality of reception and conditional access.
#include "events/record_event.h"

namespace events {

using namespace harness;

const RecordEvent reception_status[] = {
    {"tuner_sensitivity_data_notify",
     0x1000009e,
     "0380 eeee 04030281 0685 eeee a1a2a3a4 b1b2b3b4 c1c2c3c4 d1d2 d3d4 d5d6 d7d8",
     "",
     {"handle = 32771, physical_channel = -2130574588, service_no = 34054",
      "TUNER_SENSITIVITY_DATA_INFO : lna_mode = -1532779871, cn_value = -1263291727, "
      "ber = -993803583, ifagc = 53969, rfagc = 54483, lnag = 54997, bpfg = 55511"},
     {{176, 109}, {106, 39}},
     65,
     "onEvDtvsvTunerSensitivityDataNotify BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY(32771, "
     "2164392708L, 34054, BG_TS_DTVSVLIB_TUNER_SENS_DATA(-1532779871, -1263291727, -993803583, "
     "53969, 54483, 54997, 55511))",
     false,
     {{31,
       {"handle = 32771, physical_channel = -2130574588, service_no = 34054",
        "TUNER_SENSITIVITY_DATA_INFO : lna_mode = -1532779871, cn_value = -1263291727, "
        "ber = -993803583, ifagc = 53969, rfagc = 54483, lnag = 54997, bpfg = 215"}},
      {27,
       {"handle = 32771, physical_channel = -2130574588, service_no = 34054",
        "TUNER_SENSITIVITY_DATA_INFO : lna_mode = -1532779871, cn_value = -1263291727, "
        "ber = -993803583, ifagc = 53969, rfagc = 211, lnag = 0, bpfg = 0"}},
      {18,
       {"handle = 32771, physical_channel = -2130574588, service_no = 34054",
        "TUNER_SENSITIVITY_DATA_INFO : lna_mode = -1532779871, cn_value = 45745, ber = 0, "
        "ifagc = 0, rfagc = 0, lnag = 0, bpfg = 0"}},
      {9,
       {"handle = 32771, physical_channel = -2130574588, service_no = 6",
        "TUNER_SENSITIVITY_DATA_INFO : lna_mode = 0, cn_value = 0, ber = 0, ifagc = 0, rfagc = 0, "
        "lnag = 0, bpfg = 0"}},
      {5,
       {"handle = 32771, physical_channel = 4, service_no = 0",
        "TUNER_SENSITIVITY_DATA_INFO : lna_mode = 0, cn_value = 0, ber = 0, ifagc = 0, rfagc = 0, "
        "lnag = 0, bpfg = 0"}},
      {0,
       {"handle = 0, physical_channel = 0, service_no = 0",
        "TUNER_SENSITIVITY_DATA_INFO : lna_mode = 0, cn_value = 0, ber = 0, ifagc = 0, rfagc = 0, "
        "lnag = 0, bpfg = 0"}}}},
    {"receive_sensitivity_notify",
     0x1000008f,
     "0380 eeee 04030281 0685 eeee a1a2a3a4 b1b2b3b4",
     "",
     {"handle = 32771, ber = -1532779871, cn = -1263291727"},
     {{97, 29}},
     29,
     "onEvDtvsvReceiveSensitivityNotify BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY(32771, "
     "2762187425L, 3031675569L, 2164392708L, 34054)",
     false,
     {{19, {"handle = 32771, ber = -1532779871, cn = 11776689"}},
      {16, {"handle = 32771, ber = -1532779871, cn = 0"}},
      {13, {"handle = 32771, ber = 161, cn = 0"}},
      {12, {"handle = 32771, ber = 0, cn = 0"}},
      {0, {"handle = 0, ber = 0, cn = 0"}}}},
    {"bad_sens_notify",
     0x1000008c,
     "0380 f1f2 04030281 0685 eeee",
     "",
     {},
     {{82, 15}},
     14,
     "onEvDtvsvBadSensNotify BG_EV_DTVSV_BAD_SENS_NOTIFY(32771, 2164392708L, 34054, 62193)",
     false,
     {{11, {}}, {10, {}}, {1, {}}, {0, {}}}},
    {"good_sens_notify",
     0x1000008b,
     "0380 eeee 04030281 0685 eeee",
     "",
     {},
     {{94, 26}},
     26,
     "onEvDtvsvGoodSensNotify BG_EV_DTVSV_GOOD_SENS_NOTIFY(32771, -2130574588, 34054)",
     false,
     {{11, {}}, {10, {}}, {1, {}}, {0, {}}}},
    {"ca_info_notify",
     0x1000008e,
     "0380 eeee 04030281 0685 f7 ee",
     "",
     {"handle = 32771, ca_status = 247"},
     {{87, 19}},
     19,
     "onEvDtvsvCaInfoNotify BG_EV_DTVSV_CA_INFO_NOTIFY(32771, 247, 2164392708L, 34054)",
     false,
     {{11, {"handle = 32771, ca_status = 247"}},
      {10, {"handle = 32771, ca_status = 0"}},
      {1, {"handle = 3, ca_status = 0"}},
      {0, {"handle = 0, ca_status = 0"}}}},
};

INSTANTIATE_TEST_SUITE_P(Reception, RecordEvents, testing::ValuesIn(reception_status),
                         recordEventName);

namespace {

using Texts = std::vector<std::string>;

TEST(ReceptionStatus, ChannelIsALongInOneAndAnIntInTheOther) {
    prepareEvents();
    EXPECT_EQ(afterDelivering(0x1000008c, "ffff ffff ffffffff ffff 0000"),
              Texts{"onEvDtvsvBadSensNotify "
                    "BG_EV_DTVSV_BAD_SENS_NOTIFY(65535, 4294967295L, 65535, 65535)"});
    EXPECT_EQ(afterDelivering(0x1000008b, "ffff ffff ffffffff ffff 0000"),
              Texts{"onEvDtvsvGoodSensNotify BG_EV_DTVSV_GOOD_SENS_NOTIFY(65535, -1, 65535)"});
    EXPECT_EQ(afterDelivering(0x1000008c, "0100 0000 ffffff7f 0100 ffff"),
              Texts{"onEvDtvsvBadSensNotify BG_EV_DTVSV_BAD_SENS_NOTIFY(1, 2147483647L, 1, 0)"});
    EXPECT_EQ(afterDelivering(0x1000008b, "0100 ffff ffffff7f 0100 ffff"),
              Texts{"onEvDtvsvGoodSensNotify BG_EV_DTVSV_GOOD_SENS_NOTIFY(1, 2147483647, 1)"});
}

TEST(ReceptionStatus, LongsAreNeverNegative) {
    prepareEvents();
    EXPECT_EQ(afterDelivering(0x1000008f, "0300 0000 ffffffff 0100 0000 ffffffff ffffffff"),
              Texts{"onEvDtvsvReceiveSensitivityNotify "
                    "BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY(3, 4294967295L, 4294967295L, "
                    "4294967295L, 1)"});
    EXPECT_EQ(afterDelivering(0x1000008e, "0300 0000 ffffffff 0100 ff 00"),
              Texts{"onEvDtvsvCaInfoNotify BG_EV_DTVSV_CA_INFO_NOTIFY(3, 255, 4294967295L, 1)"});
    EXPECT_EQ(afterDelivering(0x1000009e, "ffff 0000 ffffffff ffff 0000 ffffffff ffffffff ffffffff "
                                          "ffff ffff ffff ffff"),
              Texts{"onEvDtvsvTunerSensitivityDataNotify "
                    "BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY(65535, 4294967295L, 65535, "
                    "BG_TS_DTVSVLIB_TUNER_SENS_DATA(-1, -1, -1, 65535, 65535, 65535, 65535))"});
}

} // namespace
} // namespace events

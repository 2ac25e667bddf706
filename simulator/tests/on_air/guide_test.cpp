#include "on_air/guide.h"

#include "xmltv_moment.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

namespace {

using namespace simulator;

/// The guide of an XMLTV text.
std::optional<Guide> guideOf(const std::string& xml, std::string& error) {
    const std::string path = testing::TempDir() + "/guide_test.xml";
    std::ofstream(path) << xml;
    std::optional<Guide> guide = readGuide(path, error);
    std::remove(path.c_str());
    return guide;
}

TEST(GuideTest, ReadsChannelsAndProgrammes) {
    std::string error;
    const std::optional<Guide> guide = guideOf(
        "<tv><channel id='b'><display-name>B</display-name></channel>"
        "<channel id='a'><display-name>A</display-name><display-name>Um</display-name></channel>"
        "<channel id='silent'/>"
        "<programme channel='a' start='20260401120000 +0000'><title>late</title></programme>"
        "<programme channel='a' start='20260401100000 +0000' stop='20260401110000 +0000'>"
        "<title>early &amp; late</title><desc>text</desc><category>news</category>"
        "<category>unheard of</category><category>Movie</category></programme>"
        "<programme channel='b' start='20260401100000 +0000'><title>alone</title></programme>"
        "<programme channel='nobody' start='20260401100000 +0000'><title>x</title></programme>"
        "<programme channel='a' start='some day'><title>x</title></programme></tv>",
        error);
    ASSERT_TRUE(guide.has_value()) << error;
    ASSERT_EQ(2U, guide->channels.size());
    EXPECT_EQ("B", guide->channels[0].names.at(0)) << "in the order of the file";
    const std::vector<Programme>& programmes = guide->channels[1].programmes;
    ASSERT_EQ(2U, programmes.size());
    EXPECT_EQ("early & late", programmes[0].title);
    EXPECT_EQ("text", programmes[0].text);
    EXPECT_EQ(std::vector<uint8_t>{0x0F}, programmes[0].genres);
    EXPECT_EQ(timeOf("20260401110000 +0000"), programmes[0].stop);
    EXPECT_EQ(timeOf("20260401130000 +0000"), programmes[1].stop) << "the last: one hour";
}

TEST(GuideTest, ReportsWhyItCannotRead) {
    std::string error;
    EXPECT_FALSE(readGuide("/no/such/guide.xml", error).has_value());
    EXPECT_EQ("/no/such/guide.xml: File was not found", error);
    EXPECT_FALSE(guideOf("<tv><channel", error).has_value());
    EXPECT_FALSE(guideOf("<html/>", error).has_value());
    EXPECT_NE(std::string::npos, error.find("not an XMLTV file")) << error;
    EXPECT_FALSE(guideOf("<tv/>", error).has_value());
}

class OnAirTest : public testing::Test {
protected:
    OnAirTest() {
        const auto add = [this](const char* start, const char* stop, const char* title) {
            channel_.programmes.push_back({timeOf(start), timeOf(stop), 0, title, "", {}});
        };
        add("20260401060000", "20260401120000", "A");
        add("20260401120000", "20260401180000", "B");
        add("20260401200000", "20260402060000", "C"); // after a gap of two hours
    }

    std::string currentAt(const char* now) {
        const NowAndNext on_air = onAir(channel_, timeOf(now), 2);
        following_ = on_air.following;
        return on_air.current ? on_air.current->title : "";
    }

    GuideChannel channel_;
    std::vector<Programme> following_;
};

TEST_F(OnAirTest, FindsTheCurrentProgrammeAndTheNext) {
    EXPECT_EQ("A", currentAt("20260401060000"));
    ASSERT_EQ(2U, following_.size());
    EXPECT_EQ("B", following_[0].title);
    EXPECT_EQ("C", following_[1].title);
    EXPECT_EQ("A", currentAt("20260401115959"));
    EXPECT_EQ("B", currentAt("20260401120000"));
    EXPECT_EQ("", currentAt("20260401190000"));
    EXPECT_EQ("C", following_[0].title);
}

TEST_F(OnAirTest, RepeatsItsDays) {
    EXPECT_EQ("C", currentAt("20260402000000"));
    EXPECT_EQ("A", following_[0].title);
    EXPECT_EQ(timeOf("20260402060000"), following_[0].start) << "the repetition's time";
    EXPECT_EQ("B", currentAt("20301224150000"));
    EXPECT_EQ(timeOf("20301224200000"), following_[0].start);
    EXPECT_EQ("B", currentAt("20250101150000"));
    EXPECT_EQ("C", currentAt("20260401055959"));
}

TEST(GuideOfStationTest, IsFoundByNameOrInTurn) {
    ChannelPlan plan;
    plan.stations = {{20, 0, 0, "Um, Dois"}, {21, 0, 0, "X"}, {22, 0, 0, "Y"}};
    Guide guide;
    EXPECT_EQ(nullptr, guide.channelOf(plan.stations[0], plan));
    guide.channels = {{{"first"}, {}}, {{"Um"}, {}}};
    EXPECT_EQ(&guide.channels[1], guide.channelOf(plan.stations[0], plan));
    EXPECT_EQ(&guide.channels[1], guide.channelOf(plan.stations[1], plan));
    EXPECT_EQ(&guide.channels[0], guide.channelOf(plan.stations[2], plan));
}

} // namespace

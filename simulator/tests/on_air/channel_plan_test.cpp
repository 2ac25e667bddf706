#include "on_air/channel_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using simulator::ChannelNumber;
using simulator::channelNumber;
using simulator::ChannelPlan;
using simulator::readChannelTable;
using simulator::Station;
using Band = simulator::ChannelNumber::Band;

/// A channel table that is removed after the test.
class TableFile {
public:
    TableFile(const std::string& name, const std::string& text)
        : folder_(testing::TempDir() + "/channel_plan_XXXXXX") {
        if (mkdtemp(folder_.data()) == nullptr) {
            throw std::runtime_error("no folder for the test's table");
        }
        path_ = folder_ + "/" + name;
        std::ofstream(path_) << text;
    }
    ~TableFile() {
        std::remove(path_.c_str());
        std::remove(folder_.c_str());
    }
    TableFile(const TableFile&) = delete;
    TableFile& operator=(const TableFile&) = delete;
    const std::string& path() const { return path_; }

private:
    std::string folder_;
    std::string path_;
};

std::string entry(const std::string& name, const std::string& frequency) {
    return "[" + name + "]\n\tDELIVERY_SYSTEM = ISDBT\n\tFREQUENCY = " + frequency + "\n\n";
}

ChannelPlan read(const std::string& path) {
    std::string error;
    const std::optional<ChannelPlan> plan = readChannelTable(path, error);
    EXPECT_TRUE(plan.has_value()) << error;
    return plan.value_or(ChannelPlan{});
}

void expectUhf(int number, const ChannelNumber& channel) {
    EXPECT_EQ(Band::kUhf, channel.band);
    EXPECT_EQ(number, channel.number);
}

TEST(ChannelNumberTest, NumbersTheRasterAsEachCountryDoes) {
    expectUhf(14, channelNumber(473142857, "br"));
    expectUhf(15, channelNumber(479142857, "br"));
    expectUhf(62, channelNumber(761142857, "br"));
    expectUhf(69, channelNumber(803142857, "ar"));
    expectUhf(13, channelNumber(473142857, "jp"));
    expectUhf(62, channelNumber(767142857, "jp"));
}

TEST(ChannelNumberTest, TakesTheNearestChannelWithinHalfAMegahertz) {
    expectUhf(14, channelNumber(473000000, "br"));
    expectUhf(15, channelNumber(479642857, "br"));
    EXPECT_EQ(Band::kNone, channelNumber(479642858, "br").band);
    EXPECT_EQ(Band::kNone, channelNumber(476142857, "br").band);
}

TEST(ChannelNumberTest, FindsTheEndsOfTheBands) {
    EXPECT_EQ(Band::kVhf, channelNumber(213142857, "br").band);
    EXPECT_EQ(Band::kVhf, channelNumber(1, "br").band);
    EXPECT_EQ(Band::kNone, channelNumber(300000000, "br").band);
    EXPECT_EQ(Band::kNone, channelNumber(467142857, "br").band);
    EXPECT_EQ(Band::kUhf, channelNumber(809142857, "br").band);
    EXPECT_EQ(Band::kNone, channelNumber(815142857, "br").band);
    EXPECT_EQ(Band::kNone, channelNumber(4294967295, "br").band);
}

TEST(ChannelTableTest, ReadsTheStationsAndCountsWhatItLeavesOut) {
    const TableFile table("br-xx-Nowhere",
                          entry("Second", "479142857") + entry("Seven", "177142857") +
                              entry("Só Um", "473142857") + entry("Beyond", "767142857") +
                              entry("Between", "476142857") +
                              "[Other]\n\tDELIVERY_SYSTEM = DVBT\n"
                              "\tFREQUENCY = 485142857\n");
    const ChannelPlan plan = read(table.path());
    ASSERT_EQ(2U, plan.stations.size());
    EXPECT_EQ(14, plan.stations[0].physical_channel);
    EXPECT_EQ(0, plan.stations[0].service_no);
    EXPECT_EQ(473142857U, plan.stations[0].frequency_hz);
    EXPECT_EQ("Só Um", plan.stations[0].name);
    EXPECT_EQ(15, plan.stations[1].physical_channel);
    EXPECT_EQ(1, plan.vhf_entries);
    EXPECT_EQ(1, plan.beyond_entries);
    EXPECT_EQ(2, plan.unusable_entries);
}

TEST(ChannelTableTest, GivesAChannelThreeServicesAtMost) {
    const TableFile table("br-xx-Crowded", entry("A", "473142857") + entry("B", "473142857") +
                                               entry("C", "473142857") + entry("D", "473142857"));
    const ChannelPlan plan = read(table.path());
    EXPECT_EQ(3U, plan.stations.size());
    EXPECT_EQ(1, plan.occupiedChannels());
    EXPECT_EQ(1, plan.unusable_entries);
    ASSERT_NE(nullptr, plan.find(14, 2));
    EXPECT_EQ("C", plan.find(14, 2)->name);
    EXPECT_EQ(nullptr, plan.find(14, 3));
    EXPECT_EQ(nullptr, plan.find(15, 0));
}

TEST(ChannelTableTest, NumbersAJapaneseTableAsJapanDoes) {
    const TableFile table("jp-Nowhere", entry("NHK", "473142857"));
    EXPECT_NE(nullptr, read(table.path()).find(13, 0));
}

TEST(ChannelTableTest, ReadsTheTablesOfDebian) {
    const ChannelPlan plan = read("/usr/share/dvb/isdb-t/br-sp-SaoPaulo");
    EXPECT_EQ(35U, plan.stations.size());
    EXPECT_EQ(2, plan.vhf_entries);
    EXPECT_EQ(0, plan.beyond_entries);
    EXPECT_EQ(0, plan.unusable_entries);
    ASSERT_NE(nullptr, plan.find(14, 0));
    EXPECT_EQ("RBI TV", plan.find(14, 0)->name);
}

TEST(ChannelTableTest, CountsEveryEntryOfDebiansTables) {
    int tables = 0;
    int largest = 0;
    for (const auto& file : std::filesystem::directory_iterator("/usr/share/dvb/isdb-t")) {
        std::ifstream lines(file.path());
        int entries = 0;
        for (std::string line; std::getline(lines, line);) {
            entries += !line.empty() && line.front() == '[' ? 1 : 0;
        }
        const ChannelPlan plan = read(file.path());
        const int stations = static_cast<int>(plan.stations.size());
        EXPECT_EQ(entries, stations + plan.vhf_entries + plan.beyond_entries) << file.path();
        EXPECT_EQ(0, plan.unusable_entries) << file.path();
        ++tables;
        largest = std::max(largest, stations);
    }
    EXPECT_LT(2000, tables);
    EXPECT_EQ(48, largest) << "Argentina: 14 to 62 without 37";
}

TEST(ChannelTableTest, ReportsWhyItCannotRead) {
    std::string error;
    EXPECT_FALSE(readChannelTable("/no/such/table", error).has_value());
    EXPECT_EQ("/no/such/table: No such file or directory", error);
    EXPECT_FALSE(readChannelTable("/usr/share/dvb", error).has_value());
    EXPECT_EQ("/usr/share/dvb: Is a directory", error);
    const TableFile table("br-xx-Broken", "no table at all\n");
    EXPECT_FALSE(readChannelTable(table.path(), error).has_value());
    EXPECT_NE(std::string::npos, error.find("br-xx-Broken: ")) << error;
}

TEST(ChannelPlanTest, GoesAroundToTheNextStation) {
    ChannelPlan plan;
    plan.stations = {{20, 0, 0, ""}, {40, 0, 0, ""}, {62, 0, 0, ""}};
    EXPECT_EQ(40, plan.next(20, 1)->physical_channel);
    EXPECT_EQ(20, plan.next(62, 1)->physical_channel);
    EXPECT_EQ(62, plan.next(20, -1)->physical_channel);
    EXPECT_EQ(20, plan.next(13, 1)->physical_channel);
    EXPECT_EQ(nullptr, ChannelPlan{}.next(20, 1));
    plan.stations = {{20, 0, 0, ""}};
    EXPECT_EQ(20, plan.next(20, 1)->physical_channel);
}

} // namespace

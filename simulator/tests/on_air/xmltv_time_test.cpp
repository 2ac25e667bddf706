#include "on_air/xmltv_time.h"

#include "xmltv_moment.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;

TEST(XmltvTimeTest, ReadsTheFormsThatFilesUse) {
    EXPECT_EQ(0, timeOf("19700101000000 +0000"));
    EXPECT_EQ(0, timeOf("19700101090000 +0900"));
    EXPECT_EQ(0, timeOf("19691231210000 -0300"));
    EXPECT_EQ(0, timeOf("19700101000000"));
    EXPECT_EQ(0, timeOf("197001010000 UTC"));
    EXPECT_EQ(86400, timeOf("19700102"));
    EXPECT_EQ(19800, parseXmltvTime("20260401000000 +0530")->utc_offset);
    for (const char* text :
         {"", "2026", "202604", "20261301000000", "20260432000000", "yesterday", "20260401250000",
          "20260401000000 +09", "20260401000000 JST", "20260401000000 +0900x", "2026040100000"}) {
        EXPECT_FALSE(parseXmltvTime(text).has_value()) << text;
    }
}

} // namespace

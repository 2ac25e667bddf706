#include "messages/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

using namespace simulator;

TEST(TextTest, CutsBetweenCharacters) {
    char field[4];
    EXPECT_EQ(4U, writeText(field, "abcd"));
    EXPECT_EQ(3U, writeText(field, "abcç")) << "half a character does not fit";
    EXPECT_EQ('\0', field[3]);
    EXPECT_EQ(3U, writeText(field, "あい"));
    EXPECT_EQ(4U, writeText(field, "𠮷野"));
}

TEST(TextTest, WritesUtf16) {
    char field[8];
    const auto unit = [&](size_t index) {
        uint16_t value = 0;
        std::memcpy(&value, field + 2 * index, sizeof value);
        return value;
    };
    EXPECT_EQ(4U, writeUtf16(field, 4, "a\xC3\xA9\xE3\x81\x82z"));
    EXPECT_EQ(0x61, unit(0));
    EXPECT_EQ(0xE9, unit(1));
    EXPECT_EQ(0x3042, unit(2));
    EXPECT_EQ(2U, writeUtf16(field, 4, "\xF0\xA0\xAE\xB7"));
    EXPECT_EQ(0xD842, unit(0));
    EXPECT_EQ(0xDFB7, unit(1));
    EXPECT_EQ(0, unit(2));
    EXPECT_EQ(3U, writeUtf16(field, 4, "abc\xF0\xA0\xAE\xB7")) << "half a pair does not fit";
    EXPECT_EQ(2U, writeUtf16(field, 4, "\xFFz"));
    EXPECT_EQ(0xFFFD, unit(0));
    EXPECT_EQ(1U, writeUtf16(field, 4, "\xE3")) << "cut short";
}

} // namespace

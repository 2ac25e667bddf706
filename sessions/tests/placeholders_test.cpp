// Placeholders: as long as the value, equal for equal values, different for others.
#include "sessions/placeholders.h"

#include "sessions/tests/hex.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>
#include <string>
#include <vector>

namespace {

using sessions::Bytes;
using sessions::HashKey;
using sessions::keyedHash;
using sessions::Placeholders;

constexpr HashKey kKey{0x0706050403020100, 0x0f0e0d0c0b0a0908};
constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

Bytes bytesOf(const std::string& text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

std::string digits(int number, size_t count) {
    const std::string text = std::to_string(number);
    return std::string(count - text.size(), '0') + text;
}

/// As UTF-16LE.
std::string wide(const std::string& ascii) {
    std::string units;
    for (const char c : ascii) {
        units += {c, '\0'};
    }
    return units;
}

TEST(KeyedHash, IsSipHash) {
    std::vector<uint8_t> data(15);
    std::iota(data.begin(), data.end(), uint8_t{0});
    EXPECT_EQ(keyedHash(kKey, {}), 0x726fdb47dd0e0e31u);
    EXPECT_EQ(keyedHash(kKey, view(data)), 0xa129ca6149be45e5u);
}

TEST(KeyedHash, TakesAnotherKeyEachTime) {
    std::set<uint64_t> words;
    for (int i = 0; i < 100; ++i) {
        const auto key = sessions::randomHashKey();
        ASSERT_TRUE(key.has_value());
        words.insert(key->low);
        words.insert(key->high);
    }
    EXPECT_EQ(words.size(), 200u);
}

TEST(Placeholders, AreAsLongAsTheValueAndOfLetters) {
    Placeholders placeholders(kKey);
    for (const size_t size : {0u, 1u, 7u, 11u, 12u, 13u, 2003u}) {
        const std::string made = placeholders.letters(bytesOf(std::string(size, '\xe6')));
        EXPECT_EQ(made.size(), size);
        EXPECT_EQ(made.find_first_not_of(kAlphabet), std::string::npos) << made;
    }
}

TEST(Placeholders, AreTheSameForTheSameValueAndKey) {
    Placeholders placeholders(kKey);
    Placeholders others(kKey);
    Placeholders other_key(HashKey{kKey.low, kKey.high + 1});
    for (const std::string& value : {std::string("1234"), std::string("maria@example.org")}) {
        const std::string made = placeholders.letters(bytesOf(value));
        EXPECT_EQ(placeholders.letters(bytesOf(value)), made);
        EXPECT_EQ(others.letters(bytesOf(value)), made);
        EXPECT_NE(other_key.letters(bytesOf(value)), made);
        EXPECT_NE(placeholders.bytes(bytesOf(value)), made);
    }
}

TEST(Placeholders, DependOnEachByteOfALongValue) {
    Placeholders placeholders(kKey);
    std::set<std::string> made{placeholders.letters(bytesOf(std::string(300, 'a')))};
    for (size_t i = 0; i < 300; ++i) {
        std::string value(300, 'a');
        value[i] = 'b';
        made.insert(placeholders.letters(bytesOf(value)).substr(0, 20));
    }
    EXPECT_EQ(made.size(), 301u);
}

TEST(Placeholders, DifferForAllValuesOfFourDigits) {
    Placeholders placeholders(kKey);
    std::set<std::string> made;
    for (int i = 0; i < 10000; ++i) {
        made.insert(placeholders.letters(bytesOf(digits(i, 4))));
    }
    EXPECT_EQ(made.size(), 10000u);
}

TEST(Placeholders, DifferAsLongAsThereAreAny) {
    Placeholders placeholders(kKey);
    std::set<std::string> letters;
    std::set<std::string> bytes;
    for (int i = 1; i < 256; ++i) {
        const std::string value(1, static_cast<char>(i));
        letters.insert(placeholders.letters(bytesOf(value)));
        bytes.insert(placeholders.bytes(bytesOf(value)));
    }
    EXPECT_EQ(letters.size(), 52u);
    EXPECT_EQ(bytes.size(), 255u);
    EXPECT_EQ(bytes.count(std::string(1, '\0')), 0u);
    std::set<std::string> pairs;
    for (int i = 0; i < 2704; ++i) {
        pairs.insert(placeholders.letters(
            bytesOf(digits(i, 4).substr(0, 2) + digits(i, 4).substr(2)))); // four letters
        pairs.insert(placeholders.letters(
            bytesOf({static_cast<char>(1 + i / 52), static_cast<char>(1 + i % 52)})));
    }
    EXPECT_EQ(pairs.size(), 2u * 2704);
}

TEST(Placeholders, StayTheSameWhenMoreValuesComeThanAreKept) {
    Placeholders placeholders(kKey);
    std::vector<std::string> made;
    for (int i = 0; i < 120000; ++i) {
        made.push_back(placeholders.letters(bytesOf(digits(i, 6))));
    }
    EXPECT_EQ(std::set<std::string>(made.begin(), made.begin() + 100000).size(), 100000u);
    for (int i = 0; i < 120000; i += 1000) {
        EXPECT_EQ(placeholders.letters(bytesOf(digits(i, 6))), made[static_cast<size_t>(i)]);
    }
}

TEST(Placeholders, AreTheSameForAnAsciiTextInBothEncodings) {
    Placeholders placeholders(kKey);
    EXPECT_EQ(placeholders.wideLetters(bytesOf(wide("Maria"))),
              wide(placeholders.letters(bytesOf("Maria"))));
    const std::vector<uint8_t> other = fromHex("4d00 6101 7200");
    EXPECT_NE(placeholders.wideLetters(view(other)), wide(placeholders.letters(bytesOf("Mar"))));
    EXPECT_EQ(placeholders.wideLetters(view(other)).size(), 6u);
}

} // namespace

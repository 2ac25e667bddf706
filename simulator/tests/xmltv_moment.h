// Times of day in tests.
#pragma once

#include "on_air/xmltv_time.h"

#include <gtest/gtest.h>

#include <ctime>
#include <optional>

/// The moment of an XMLTV time, which must be valid.
inline std::time_t timeOf(const char* text) {
    const std::optional<simulator::XmltvTime> time = simulator::parseXmltvTime(text);
    EXPECT_TRUE(time.has_value()) << text;
    return time ? time->time : 0;
}

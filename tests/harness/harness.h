// Tests of the bridge from outside: a real Java VM above it, a double of the DTV service below.
//
//     #include "harness/harness.h"
//     using namespace harness;
//
//     TEST(SelectChannel, PacksChannelAndService) {
//         ASSERT_EQ(Product::load(), "");
//         auto service = ServiceDouble::serve();
//         auto log = LogRecorder::install();
//         jobject info = newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {62, 2});
//         EXPECT_EQ(call("DtvSvLib_SelectChannel", {3, info}),
//                   "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK");
//         EXPECT_EQ(service->takeTexts(), (std::vector<std::string>{"10000006: 03 00 3e 00 ..."}));
//         EXPECT_TRACE(log->takeOf("dtvSvLibSelectChannel"), R"(
//             Dtv_jni|128|5|FUNCSTART|dtvSvLibSelectChannel|hdl = 3
//             ...)");
//     }
//
// Events: a CallbackRecorder keeps what reaches Java; dtv::postEvent has libDtv deliver, and
// deliver(id, fromHex("0300 ...")) delivers on the calling thread. StrictJni counts references and
// calls, FailJni makes one fail. Expectations are literals; nothing here uses the bridge's tables.
// In tests/CMakeLists.txt: dtv_add_test(select_channel_test SOURCES select_channel_test.cpp), with
// FRESH where each test needs a process in which nothing has happened yet. Every test runs in a
// frame of local references of its own and fails when it leaves a Java exception pending.
#pragma once

#include "harness/callback_recorder.h"
#include "harness/java_objects.h"
#include "harness/log_recorder.h"
#include "harness/product.h"
#include "harness/service_double.h"
#include "harness/stdout_capture.h"
#include "harness/virtual_machine.h"
#include "strict_jni/strict_jni.h"

#include <gtest/gtest.h>

namespace harness {

/// Delivers an event on the calling thread and returns what the listener returned. The record is a
/// heap block of its own, of `bytes.size()` bytes but at least 8 (the rest zero): what is read
/// beyond it is found by the address sanitizer. `size` is given to the bridge instead of the number
/// of bytes.
int deliver(int event_id, const std::vector<uint8_t>& bytes);
int deliver(int event_id, const std::vector<uint8_t>& bytes, int size);

} // namespace harness

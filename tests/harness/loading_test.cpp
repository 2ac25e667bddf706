// The bridge can be loaded as a Java service loads it, whole or with a part of the Java side
// missing.
#include "harness/harness.h"

#include <gmock/gmock.h>

namespace {

using namespace harness;
using testing::HasSubstr;

TEST(Loading, FromTheApplicationsClassLoader) {
    EXPECT_EQ(Product::load(), "");
    EXPECT_EQ(Product::load(), "") << "the second time it is already loaded";
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST(Loading, WithoutAnEventClass) {
    EXPECT_EQ(
        Product::loadWithout({"tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY"}),
        "");
    EXPECT_NE(Product::findClass("tenrik/service/dtvserver/BGCallBack"), nullptr);
    EXPECT_EQ(
        Product::findClass("tenrik/service/dtvserver/events/response/BG_EV_DTVSV_CREATE_REPLY"),
        nullptr);
    EXPECT_THAT(takeException(), HasSubstr("BG_EV_DTVSV_CREATE_REPLY"));
}

TEST(Loading, IsRefusedWithoutTheProxy) {
    EXPECT_THAT(Product::loadWithout({"tenrik.service.dtvserver.DtvServerProxy"}),
                HasSubstr("DtvServerProxy"));
}

} // namespace

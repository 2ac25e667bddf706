// getRetCode: the Java constant for every code, and what it logs when there is none.
#include "helpers_fixture.h"

namespace {

using namespace harness;
using namespace commands;

constexpr int result_class_id = 127;
constexpr const char* result_class = "tenrik/service/dtvserver/type/BG_TE_DTVSVLIB_RESULT";

class ResultConstant : public Helpers {
protected:
    void use(const char* class_name) {
        ASSERT_EQ(registerClass(env(), result_class_id, class_name), 0);
        log->clear();
        StrictJni::forgetLocals();
    }

    void expectNull(int code, const std::string& lines) {
        EXPECT_EQ(retCode(env(), code), nullptr);
        EXPECT_EQ(takeException(), "");
        EXPECT_TRACE(log->take(), lines);
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
};

TEST_F(ResultConstant, OfEveryCode) {
    use(result_class);
    struct {
        int code;
        const char* constant;
        const char* start;
    } const rows[] = {{0, "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK", "(param)ret = 0"},
                      {1, "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG", "(param)ret = 1"},
                      {2, "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_CANCEL", "(param)ret = 2"},
                      {3, "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_ADD_NG", "(param)ret = 3"},
                      {4, "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_DELETE_NG", "(param)ret = 4"},
                      {5, "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG", "(param)ret = 5"}};
    for (const auto& row : rows) {
        jobject found = retCode(env(), row.code);
        EXPECT_EQ(tree(found), row.constant);
        EXPECT_EQ(env()->GetObjectRefType(found), JNILocalRefType);
        EXPECT_EQ(StrictJni::liveLocals(), 1) << "only the answer";
        EXPECT_TRACE(log->take(), std::string("Dtv_jni|128|5|FUNCSTART|getRetCode|") + row.start +
                                      "\nDtv_jni|256|5|FUNCEND  |getRetCode|");
        StrictJni::forgetLocals();
    }
}

TEST_F(ResultConstant, OfNoOtherCode) {
    use(result_class);
    int look_ups = StrictJni::calls("GetStaticFieldID");
    expectNull(6, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 6
        Dtv_jni|1024|5|DEBUG    |getRetCode|(param)ret err, ret = 6)");
    expectNull(16, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 16
        Dtv_jni|1024|5|DEBUG    |getRetCode|(param)ret err, ret = 16)");
    expectNull(-1, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = -1
        Dtv_jni|1024|5|DEBUG    |getRetCode|(param)ret err, ret = -1)");
    expectNull(256, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 256
        Dtv_jni|1024|5|DEBUG    |getRetCode|(param)ret err, ret = 256)");
    expectNull(2147483647, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 2147483647
        Dtv_jni|1024|5|DEBUG    |getRetCode|(param)ret err, ret = 2147483647)");
    expectNull(-2147483647 - 1, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = -2147483648
        Dtv_jni|1024|5|DEBUG    |getRetCode|(param)ret err, ret = -2147483648)");
    EXPECT_EQ(StrictJni::calls("GetStaticFieldID"), look_ups);
}

TEST_F(ResultConstant, ClassMissing) {
    expectNull(0, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 0
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL)");
    expectNull(5, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 5
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL)");
}

TEST_F(ResultConstant, ClassIsCheckedBeforeTheCode) {
    expectNull(6, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 6
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL)");
}

TEST_F(ResultConstant, OtherEntriesOfTheRegistryDoNotCount) {
    ASSERT_EQ(registerClass(env(), 126, result_class), 0);
    ASSERT_EQ(registerClass(env(), 128, result_class), 0);
    StrictJni::forgetLocals();
    log->clear();
    expectNull(1, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 1
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL)");
}

TEST_F(ResultConstant, ConstantMissing) {
    use("java/lang/Object");
    expectNull(0, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 0
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field_id is NULL, ret = 0)");
    expectNull(4, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 4
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field_id is NULL, ret = 0)");
}

TEST_F(ResultConstant, ConstantMissingWithoutAnException) {
    use(result_class);
    FailJni fail("GetStaticFieldID", 0, FailJni::Leaves::nothing);
    expectNull(3, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 3
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field_id is NULL, ret = 0)");
}

TEST_F(ResultConstant, ConstantNull) {
    use(result_class);
    FailJni fail("GetStaticObjectField", 0, FailJni::Leaves::nothing);
    expectNull(2, R"(
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 2
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field's object NULL, ret = 0)");
}

} // namespace

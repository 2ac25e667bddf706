// The field operations, whose registry nothing fills: they fail, and ask nothing of the VM.
#include "binding/listener.h"

namespace {

using namespace harness;

class Field : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
        allocated = StrictJni::calls("AllocObject");
    }
    void TearDown() override {
        EXPECT_EQ(StrictJni::calls("AllocObject"), allocated);
        EXPECT_FALSE(env()->ExceptionCheck());
    }
    /// That of the load, or a new one.
    static Listener listener() { return GetParam() ? Listener::loaded() : Listener::made(); }

    std::shared_ptr<LogRecorder> log;
    int allocated = 0;
};

TEST_P(Field, ObjectCannotBeAllocated) {
    jobject object = nullptr;
    jfieldID field = nullptr;
    EXPECT_EQ(listener().NewFieldObject(0, object, field), 1);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(field, nullptr);
    EXPECT_TRACE(log->takeOf("NewFieldObject"),
                 "JNIDtvSvLibListener|1024|5|DEBUG    |NewFieldObject|NewFieldObject, AllocObject "
                 "error!, field_id = 0");
}

TEST_P(Field, ObjectFieldCannotBeSet) {
    jobject object = nullptr;
    jobject value = adopt<jobject>(env()->NewStringUTF("value"));
    Listener of = listener();
    log->clear();
    EXPECT_EQ(of.SetObjectField(0, object, value), 1);
    EXPECT_EQ(object, nullptr);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |NewFieldObject|NewFieldObject, AllocObject error!, field_id = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |SetObjectField|SetObjectField, NewFieldObject error!, field_id = 0
    )");
    EXPECT_EQ(StrictJni::calls("SetObjectField"), 0);
}

TEST_P(Field, IntFieldCannotBeSet) {
    jobject object = nullptr;
    Listener of = listener();
    log->clear();
    EXPECT_EQ(of.SetIntField(0, object, 7), 1);
    EXPECT_EQ(object, nullptr);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |NewFieldObject|NewFieldObject, AllocObject error!, field_id = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |SetIntField|SetIntField, NewFieldObject error!, field_id = 0
    )");
    EXPECT_EQ(StrictJni::calls("SetIntField"), 0);
}

INSTANTIATE_TEST_SUITE_P(Listeners, Field, testing::Bool(),
                         [](const auto& test) { return test.param ? "Loaded" : "Made"; });

} // namespace

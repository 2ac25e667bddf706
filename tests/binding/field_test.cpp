// The field operations. Only these tests fill their registry. While it is empty, the operations
// fail and make no JNI call.
#include "binding/listener.h"
#include "harness/trace_text.h"

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
    /// The listener of the load, or a new one.
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
    Calls set("SetObjectField");
    EXPECT_EQ(of.SetObjectField(0, object, value), 1);
    EXPECT_EQ(object, nullptr);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |NewFieldObject|NewFieldObject, AllocObject error!, field_id = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |SetObjectField|SetObjectField, NewFieldObject error!, field_id = 0
    )");
    EXPECT_EQ(set.made(), 0);
}

TEST_P(Field, IntFieldCannotBeSet) {
    jobject object = nullptr;
    Listener of = listener();
    log->clear();
    Calls set("SetIntField");
    EXPECT_EQ(of.SetIntField(0, object, 7), 1);
    EXPECT_EQ(object, nullptr);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |NewFieldObject|NewFieldObject, AllocObject error!, field_id = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |SetIntField|SetIntField, NewFieldObject error!, field_id = 0
    )");
    EXPECT_EQ(set.made(), 0);
}

INSTANTIATE_TEST_SUITE_P(Listeners, Field, testing::Bool(),
                         [](const auto& test) { return test.param ? "Loaded" : "Made"; });

/// With a registry whose only entry is filled.
class FilledField : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
    }

    /// A field of harness/FieldSample.
    void fill(const char* name, const char* signature) {
        ASSERT_EQ(listener.setJavaClass(20, "harness/FieldSample"), 0);
        TS_DTVSV_FIELDINFO info{};
        info.cls = listener.getJavaClass(20);
        info.field = bindingProbe().findField(env(), info.cls, name, signature);
        ASSERT_NE(info.field, nullptr);
        wanted = info.field;
        listener.storeJavaField(0, info);
        log->clear();
    }

    Listener listener = Listener::made();
    std::shared_ptr<LogRecorder> log;
    jfieldID wanted = nullptr;
};

TEST_F(FilledField, ObjectIsAllocatedWithoutItsConstructor) {
    fill("number", "I");
    jobject object = nullptr;
    jfieldID field = nullptr;
    Calls constructed("NewObjectV");
    EXPECT_EQ(listener.NewFieldObject(0, object, field), 0);
    EXPECT_EQ(field, wanted);
    EXPECT_EQ(tree(object), "FieldSample(0, null)");
    EXPECT_EQ(constructed.made(), 0);
    EXPECT_TRACE(log->take(), "");
}

TEST_F(FilledField, IntFieldIsSetInANewObject) {
    fill("number", "I");
    jobject object = nullptr;
    EXPECT_EQ(listener.SetIntField(0, object, -7), 0);
    EXPECT_EQ(tree(object), "FieldSample(-7, null)");
    jobject other = object;
    EXPECT_EQ(listener.SetIntField(0, other, 8), 0);
    EXPECT_EQ(tree(other), "FieldSample(8, null)");
    EXPECT_EQ(tree(object), "FieldSample(-7, null)") << "each call has an object of its own";
    EXPECT_TRACE(log->take(), "");
}

TEST_F(FilledField, ObjectFieldIsSetInANewObject) {
    fill("object", "Ljava/lang/Object;");
    jobject value = adopt<jobject>(env()->NewStringUTF("value"));
    jobject object = nullptr;
    EXPECT_EQ(listener.SetObjectField(0, object, value), 0);
    EXPECT_EQ(tree(object), "FieldSample(0, \"value\")");
    EXPECT_EQ(listener.SetObjectField(0, object, nullptr), 0);
    EXPECT_EQ(tree(object), "FieldSample(0, null)");
    EXPECT_TRACE(log->take(), "");
}

TEST_F(FilledField, WithoutAFieldTheNewObjectStaysAsItIs) {
    fill("number", "I");
    TS_DTVSV_FIELDINFO info{};
    info.cls = listener.getJavaClass(20);
    listener.storeJavaField(0, info);
    Calls of_int("SetIntField");
    Calls of_object("SetObjectField");
    jobject object = nullptr;
    EXPECT_EQ(listener.SetIntField(0, object, 7), 0);
    EXPECT_EQ(tree(object), "FieldSample(0, null)");
    jobject other = nullptr;
    EXPECT_EQ(listener.SetObjectField(0, other, object), 0);
    EXPECT_EQ(tree(other), "FieldSample(0, null)");
    EXPECT_EQ(of_int.made() + of_object.made(), 0);
    EXPECT_TRACE(log->take(), "");
}

TEST_F(FilledField, ObjectThatCannotBeAllocatedIsLogged) {
    fill("number", "I");
    int mark = 0;
    jobject object = reinterpret_cast<jobject>(&mark);
    FailJni fail("AllocObject");
    EXPECT_EQ(listener.SetIntField(0, object, 7), 1);
    EXPECT_EQ(takeException(), "java.lang.OutOfMemoryError: as if the VM had no memory left");
    EXPECT_EQ(object, reinterpret_cast<jobject>(&mark));
    EXPECT_TRACE(log->take(), listenerTrace("SetIntField", R"(
        DEBUG NewFieldObject|NewFieldObject, AllocObject error!, field_id = 0
        DEBUG |SetIntField, NewFieldObject error!, field_id = 0)"));
}

} // namespace

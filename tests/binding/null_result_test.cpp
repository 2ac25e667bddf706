// CallMethod through rows whose method returns an object: the object is not kept, and a null
// reference is not passed to the VM. Also constructors that throw although the VM returns the
// object.
#include "binding/listener.h"
#include "harness/trace_text.h"

namespace {

using namespace harness;

class NullResult : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
        StrictJni::forgetLocals();
    }

    static void resolve(Listener& listener, int attr_id, const char* name) {
        ASSERT_EQ(listener.setJavaClass(20, "harness/NullAnswers"), 0);
        ASSERT_EQ(listener.setJavaMethod(20, 20, attr_id, 1, name, "(I)Ljava/lang/Object;"), 0);
        if (attr_id == 0) {
            TS_DTVSV_METHODINFO info = listener.getJavaMethodInfo(20);
            info.cached_object = adopt(newObject("harness/NullAnswers", "()V", {}));
            listener.storeJavaMethod(20, info);
        }
    }

    void expectNothingDeleted(int attr_id, const char* name, const std::string& thrown) {
        Listener listener = Listener::made();
        resolve(listener, attr_id, name);
        Calls deleted("DeleteLocalRef");
        EXPECT_EQ(listener.CallMethod(20, nullptr, 7), 0);
        EXPECT_EQ(takeException(), thrown);
        EXPECT_EQ(deleted.made(), 0);
    }

    std::shared_ptr<LogRecorder> log;
};

TEST_F(NullResult, OfAStaticMethodIsNotDeleted) {
    expectNothingDeleted(1, "none", "");
}

TEST_F(NullResult, OfAStaticMethodThatThrows) {
    expectNothingDeleted(1, "thrown", "java.lang.IllegalStateException: on purpose");
}

TEST_F(NullResult, OfAnInstanceMethodIsNotDeleted) {
    expectNothingDeleted(0, "noneOfMine", "");
}

TEST_F(NullResult, OfAnInstanceMethodThatThrows) {
    expectNothingDeleted(0, "thrownByMe", "java.lang.IllegalStateException: on purpose");
}

/// An instance row that has an object and no method.
TEST_F(NullResult, NoMethodIsNotCalled) {
    Listener listener = Listener::made();
    resolve(listener, 0, "noneOfMine");
    TS_DTVSV_METHODINFO info = listener.getJavaMethodInfo(20);
    info.method = nullptr;
    listener.storeJavaMethod(20, info);
    Calls called("CallObjectMethodV");
    EXPECT_EQ(listener.CallMethod(20, nullptr, 7), 0);
    EXPECT_EQ(called.made(), 0);
    EXPECT_EQ(takeException(), "");
}

TEST_F(NullResult, ConstructorThatThrowsFailsAlsoWhereTheVmReturnsTheObject) {
    Listener listener = Listener::loaded();
    const TS_DTVSV_METHODINFO before = listener.getJavaMethodInfo(140);
    log->clear();
    int mark = 0;
    jobject out = reinterpret_cast<jobject>(&mark);
    const int live = StrictJni::liveLocals();
    {
        FailJni thrown("NewObjectV", 0, FailJni::Leaves::result);
        EXPECT_EQ(listener.CallMethod(140, &out, 62, 2), 1);
    }
    EXPECT_EQ(StrictJni::liveLocals(), live) << "the object is dropped";
    EXPECT_EQ(takeException(), "java.lang.OutOfMemoryError: as if the VM had no memory left");
    EXPECT_EQ(out, reinterpret_cast<jobject>(&mark));
    EXPECT_EQ(listener.getJavaMethodInfo(140).cached_object, before.cached_object);
    EXPECT_TRACE(log->take(), listenerTrace("CallMethod", "NEWFAIL 140 73"));
}

} // namespace

// CallMethod: construction, the calls that the return type selects, and rows that are empty.
#include "binding/listener.h"

#include <functional>

namespace {

using namespace harness;

class Invocation : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
    }

    /// Resolves a row of a class that is looked up again, class id and method id 20.
    static void resolve(Listener& listener, const char* class_name, int attr_id, int type_id,
                        const char* name, const char* signature) {
        ASSERT_EQ(listener.setJavaClass(20, class_name), 0);
        ASSERT_EQ(listener.setJavaMethod(20, 20, attr_id, type_id, name, signature), 0);
    }

    std::shared_ptr<LogRecorder> log;
};

TEST_F(Invocation, ConstructsThroughARow) {
    Listener listener = Listener::loaded();
    jobject out = nullptr;
    EXPECT_EQ(listener.CallMethod(140, &out, 62, 2), 0);
    EXPECT_EQ(tree(out), "BG_TS_DTVSVLIB_BROADCAST_INFO(62, 2)");
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 140, class_id = 73, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|512|5|INFO     |setJavaMethod|setJavaMethod
    )");
    TS_DTVSV_METHODINFO info = listener.getJavaMethodInfo(140);
    EXPECT_EQ(info.cached_object, out);
    EXPECT_EQ(info.tid, pthread_self());
    EXPECT_EQ(info.class_id, 73);
    EXPECT_EQ(info.cls, listener.getJavaClass(73));
    EXPECT_NE(info.method, nullptr);
}

TEST_F(Invocation, PassesEveryKindOfArgumentInOrder) {
    Listener listener = Listener::loaded();
    jobject out = nullptr;
    EXPECT_EQ(listener.CallMethod(192, &out, 3, 0, static_cast<jlong>(4294967295LL), 65535), 0);
    EXPECT_EQ(tree(out), "BG_EV_DTVSV_START_REC_REPLY(3, 0, 4294967295L, 65535)");
    EXPECT_EQ(listener.CallMethod(97, &out, 1, static_cast<jlong>(-2), static_cast<jlong>(3),
                                  static_cast<jlong>(1LL << 40), -5),
              0);
    EXPECT_EQ(tree(out), "BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY(1, -2L, 3L, 1099511627776L, -5)");
    EXPECT_EQ(listener.CallMethod(208, &out, 7, 9), 0);
    jobject inner = out;
    EXPECT_EQ(listener.CallMethod(193, &out, 3, 1, inner), 0);
    EXPECT_EQ(tree(out), "BG_EV_DTVSV_TERMINATE_REC_REPLY(3, 1, "
                         "BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(7, 9))");
    EXPECT_EQ(listener.CallMethod(174, &out), 0);
    EXPECT_EQ(tree(out), "BG_TS_DTVSVLIB_VIEW_FATAL_ERROR()");
}

TEST_F(Invocation, CallsACallbackAndIgnoresOut) {
    Listener listener = Listener::loaded();
    CallbackRecorder callbacks;
    jobject event = nullptr;
    ASSERT_EQ(listener.CallMethod(114, &event, 3, 0), 0);
    log->clear();
    int mark = 0;
    jobject untouched = reinterpret_cast<jobject>(&mark);
    jobject out = untouched;
    EXPECT_EQ(listener.CallMethod(45, &out, event), 0);
    EXPECT_FALSE(env()->ExceptionCheck());
    EXPECT_EQ(out, untouched);
    EXPECT_EQ(listener.CallMethod(45, nullptr, event), 0);
    EXPECT_FALSE(env()->ExceptionCheck());
    const std::string once = R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 45, class_id = 0, attr_id = 1
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, CallStaticMethod, type_id = 0
)";
    EXPECT_TRACE(log->take(), once + once);
    EXPECT_EQ(callbacks.take(),
              (std::vector<std::string>{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)",
                                        "onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)"}));
    EXPECT_EQ(listener.getJavaMethodInfo(45).cached_object, nullptr);
}

TEST_F(Invocation, CallbackThatThrowsCountsAsCalled) {
    Listener listener = Listener::loaded();
    CallbackRecorder callbacks;
    jobject event = nullptr;
    ASSERT_EQ(listener.CallMethod(114, &event, 3, 0), 0);
    callbacks.throwNext();
    EXPECT_EQ(listener.CallMethod(45, nullptr, event), 0);
    EXPECT_EQ(takeException(), "java.lang.IllegalStateException: thrown by the test");
}

TEST_F(Invocation, ConstructorThatThrowsIsAFailedConstruction) {
    Listener listener = Listener::made();
    resolve(listener, "java/lang/StringBuilder", 0, 0, "<init>", "(I)V");
    log->clear();
    int mark = 0;
    jobject untouched = reinterpret_cast<jobject>(&mark);
    jobject out = untouched;
    EXPECT_EQ(listener.CallMethod(20, &out, -1), 1);
    // The rest of its text differs between VMs.
    EXPECT_EQ(takeException().substr(0, 36), "java.lang.NegativeArraySizeException");
    EXPECT_EQ(out, untouched);
    EXPECT_EQ(listener.getJavaMethodInfo(20).cached_object, nullptr);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 20, class_id = 20, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, NewObject error!
    )");
}

TEST_F(Invocation, EmptyRowFailsToConstructWithoutAJniCall) {
    Listener listener = Listener::made();
    int made = StrictJni::calls("NewObjectV");
    jobject out = nullptr;
    EXPECT_EQ(listener.CallMethod(45, nullptr, nullptr), 1);
    EXPECT_EQ(listener.CallMethod(218, &out, 3, 0), 1);
    EXPECT_EQ(out, nullptr);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 45, class_id = 0, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, NewObject error!
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 218, class_id = 0, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, NewObject error!
    )");
    // The same holds for a class without its method, and for a method without its class.
    ASSERT_EQ(listener.setJavaClass(0, "java/lang/StringBuilder"), 0);
    EXPECT_EQ(listener.CallMethod(218, &out, 3, 0), 1);
    TS_DTVSV_METHODINFO row{};
    row.class_id = 30;
    row.method = Listener::loaded().getJavaMethodID(140);
    listener.storeJavaMethod(30, row);
    EXPECT_EQ(listener.CallMethod(30, &out, 3, 0), 1);
    EXPECT_EQ(StrictJni::calls("NewObjectV"), made);
    EXPECT_EQ(out, nullptr);
    EXPECT_FALSE(env()->ExceptionCheck());
}

TEST_F(Invocation, WithoutOutTheFirstConstructsAndTheSecondCallsTheConstructor) {
    Listener listener = Listener::made();
    resolve(listener, "java/lang/Integer", 0, 0, "<init>", "(I)V");
    log->clear();
    int made = StrictJni::calls("NewObjectV");
    int called = StrictJni::calls("CallVoidMethodV");
    EXPECT_EQ(listener.CallMethod(20, nullptr, 7), 0);
    jobject cached = listener.getJavaMethodInfo(20).cached_object;
    ASSERT_NE(cached, nullptr);
    EXPECT_EQ(tree(cached), "7");
    EXPECT_EQ(listener.CallMethod(20, nullptr, 8), 0);
    EXPECT_FALSE(env()->ExceptionCheck());
    EXPECT_EQ(StrictJni::calls("NewObjectV"), made + 1);
    EXPECT_EQ(StrictJni::calls("CallVoidMethodV"), called + 1);
    EXPECT_EQ(listener.getJavaMethodInfo(20).cached_object, cached);
    EXPECT_EQ(tree(cached), "8");
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 20, class_id = 20, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|512|5|INFO     |setJavaMethod|setJavaMethod
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 20, class_id = 20, attr_id = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, CallMethod type_id = 0
    )");
    // With out it constructs whatever is cached.
    jobject out = nullptr;
    EXPECT_EQ(listener.CallMethod(20, &out, 9), 0);
    EXPECT_EQ(StrictJni::calls("NewObjectV"), made + 2);
    EXPECT_FALSE(env()->IsSameObject(out, cached));
    EXPECT_EQ(listener.getJavaMethodInfo(20).cached_object, out);
}

TEST_F(Invocation, ObjectOfAnotherThreadIsNotUsed) {
    Listener listener = Listener::loaded();
    jobject out = nullptr;
    ASSERT_EQ(listener.CallMethod(140, &out, 1, 1), 0);
    EventThread thread;
    pthread_t id{};
    thread.run([&] {
        void* attached = nullptr;
        ASSERT_EQ(VirtualMachine::instance().vm()->AttachCurrentThread(&attached, nullptr), JNI_OK);
        log->clear();
        int made = StrictJni::calls("NewObjectV");
        EXPECT_EQ(listener.CallMethod(140, nullptr, 2, 2), 0);
        EXPECT_EQ(StrictJni::calls("NewObjectV"), made + 1);
        EXPECT_EQ(tree(listener.getJavaMethodInfo(140).cached_object),
                  "BG_TS_DTVSVLIB_BROADCAST_INFO(2, 2)");
        id = pthread_self();
    });
    EXPECT_EQ(listener.getJavaMethodInfo(140).tid, id);
    EXPECT_NE(listener.getJavaMethodInfo(140).cached_object, out);
}

TEST_F(Invocation, StaticRowWithoutAClassOrAMethodMakesNoCall) {
    Listener listener = Listener::made();
    resolve(listener, "java/lang/Thread", 1, 0, "yield", "()V");
    const TS_DTVSV_METHODINFO whole = listener.getJavaMethodInfo(20);
    TS_DTVSV_METHODINFO without_class = whole;
    without_class.cls = nullptr;
    TS_DTVSV_METHODINFO without_method = whole;
    without_method.method = nullptr;
    Calls called("CallStaticVoidMethodV");
    for (TS_DTVSV_METHODINFO& info : {std::ref(without_class), std::ref(without_method)}) {
        listener.storeJavaMethod(20, info);
        log->clear();
        EXPECT_EQ(listener.CallMethod(20, nullptr), 0);
        EXPECT_TRACE(log->take(), R"(
            JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 20, class_id = 20, attr_id = 1
            JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, CallStaticMethod, type_id = 0
        )");
    }
    EXPECT_EQ(called.made(), 0);
}

struct TypedCall {
    int type_id;
    const char* class_name;
    const char* name;
    const char* signature;
    const char* function; ///< of JNI; null: none is called
};

class StaticCall : public Invocation, public testing::WithParamInterface<TypedCall> {};

const char* const allStatic[] = {"CallStaticVoidMethodV",    "CallStaticObjectMethodV",
                                 "CallStaticBooleanMethodV", "CallStaticByteMethodV",
                                 "CallStaticCharMethodV",    "CallStaticShortMethodV",
                                 "CallStaticIntMethodV",     "CallStaticLongMethodV",
                                 "CallStaticFloatMethodV",   "CallStaticDoubleMethodV"};

TEST_P(StaticCall, IsChosenByTheTypeId) {
    const TypedCall& row = GetParam();
    Listener listener = Listener::made();
    resolve(listener, row.class_name, 1, row.type_id, row.name, row.signature);
    jobject text = adopt<jobject>(env()->NewStringUTF("7"));
    log->clear();
    std::vector<int> before;
    for (const char* function : allStatic) {
        before.push_back(StrictJni::calls(function));
    }
    std::string kind = row.signature;
    int result = -1;
    if (kind.compare(0, 3, "(J)") == 0) {
        result = listener.CallMethod(20, nullptr, static_cast<jlong>(5));
    } else if (kind.compare(0, 2, "(L") == 0) {
        result = listener.CallMethod(20, nullptr, text);
    } else {
        result = listener.CallMethod(20, nullptr, 5);
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(takeException(), "");
    for (size_t i = 0; i < before.size(); ++i) {
        bool wanted = row.function != nullptr && std::string(allStatic[i]) == row.function;
        EXPECT_EQ(StrictJni::calls(allStatic[i]) - before[i], wanted ? 1 : 0) << allStatic[i];
    }
    EXPECT_TRACE(log->take(),
                 "JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 20, "
                 "class_id = 20, attr_id = 1\n"
                 "JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, CallStaticMethod, "
                 "type_id = " +
                     std::to_string(row.type_id));
}

INSTANTIATE_TEST_SUITE_P(
    Types, StaticCall,
    testing::Values(
        TypedCall{0, "java/lang/Thread", "yield", "()V", "CallStaticVoidMethodV"},
        TypedCall{1, "java/lang/String", "valueOf", "(I)Ljava/lang/String;",
                  "CallStaticObjectMethodV"},
        TypedCall{2, "java/lang/Character", "isDigit", "(I)Z", "CallStaticBooleanMethodV"},
        TypedCall{3, "java/lang/Byte", "parseByte", "(Ljava/lang/String;)B",
                  "CallStaticByteMethodV"},
        TypedCall{4, "java/lang/Character", "reverseBytes", "(C)C", "CallStaticCharMethodV"},
        TypedCall{5, "java/lang/Short", "reverseBytes", "(S)S", "CallStaticShortMethodV"},
        TypedCall{6, "java/lang/Integer", "bitCount", "(I)I", "CallStaticIntMethodV"},
        TypedCall{7, "java/lang/Long", "reverse", "(J)J", "CallStaticLongMethodV"},
        TypedCall{8, "java/lang/Float", "intBitsToFloat", "(I)F", "CallStaticFloatMethodV"},
        TypedCall{9, "java/lang/Double", "longBitsToDouble", "(J)D", "CallStaticDoubleMethodV"},
        TypedCall{10, "java/lang/Thread", "yield", "()V", nullptr},
        TypedCall{2147483647, "java/lang/Thread", "yield", "()V", nullptr}),
    [](const auto& test) { return "Type" + std::to_string(test.param.type_id); });

class InstanceCall : public Invocation, public testing::WithParamInterface<TypedCall> {};

const char* const allInstance[] = {"CallVoidMethodV",  "CallObjectMethodV", "CallBooleanMethodV",
                                   "CallByteMethodV",  "CallCharMethodV",   "CallShortMethodV",
                                   "CallIntMethodV",   "CallLongMethodV",   "CallFloatMethodV",
                                   "CallDoubleMethodV"};

TEST_P(InstanceCall, IsChosenByTheTypeId) {
    const TypedCall& row = GetParam();
    Listener listener = Listener::made();
    resolve(listener, row.class_name, 0, row.type_id, row.name, row.signature);
    std::string of = row.class_name;
    jobject object = of == "java/lang/Integer"  ? newObject("java/lang/Integer", "(I)V", {7})
                     : of == "java/lang/String" ? env()->NewStringUTF("sevenfold")
                                                : newObject("java/lang/StringBuilder", "()V", {});
    TS_DTVSV_METHODINFO info = listener.getJavaMethodInfo(20);
    info.cached_object = adopt(object);
    listener.storeJavaMethod(20, info);
    log->clear();
    std::vector<int> before;
    for (const char* function : allInstance) {
        before.push_back(StrictJni::calls(function));
    }
    EXPECT_EQ(listener.CallMethod(20, nullptr, 3), 0);
    EXPECT_EQ(takeException(), "");
    for (size_t i = 0; i < before.size(); ++i) {
        bool wanted = row.function != nullptr && std::string(allInstance[i]) == row.function;
        EXPECT_EQ(StrictJni::calls(allInstance[i]) - before[i], wanted ? 1 : 0) << allInstance[i];
    }
    EXPECT_TRACE(
        log->take(),
        "JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 20, "
        "class_id = 20, attr_id = 0\n"
        "JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, CallMethod type_id = " +
            std::to_string(row.type_id));
    EXPECT_EQ(listener.getJavaMethodInfo(20).cached_object, info.cached_object);
}

INSTANTIATE_TEST_SUITE_P(
    Types, InstanceCall,
    testing::Values(TypedCall{0, "java/lang/StringBuilder", "setLength", "(I)V", "CallVoidMethodV"},
                    TypedCall{1, "java/lang/Integer", "toString", "()Ljava/lang/String;",
                              "CallObjectMethodV"},
                    TypedCall{2, "java/lang/String", "isEmpty", "()Z", "CallBooleanMethodV"},
                    TypedCall{3, "java/lang/Integer", "byteValue", "()B", "CallByteMethodV"},
                    TypedCall{4, "java/lang/String", "charAt", "(I)C", "CallCharMethodV"},
                    TypedCall{5, "java/lang/Integer", "shortValue", "()S", "CallShortMethodV"},
                    TypedCall{6, "java/lang/Integer", "intValue", "()I", "CallIntMethodV"},
                    TypedCall{7, "java/lang/Integer", "longValue", "()J", "CallLongMethodV"},
                    TypedCall{8, "java/lang/Integer", "floatValue", "()F", "CallFloatMethodV"},
                    TypedCall{9, "java/lang/Integer", "doubleValue", "()D", "CallDoubleMethodV"},
                    TypedCall{10, "java/lang/Integer", "intValue", "()I", nullptr},
                    TypedCall{2147483647, "java/lang/Integer", "intValue", "()I", nullptr}),
    [](const auto& test) { return "Type" + std::to_string(test.param.type_id); });

} // namespace

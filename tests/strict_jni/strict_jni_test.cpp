// Every rule of the strict table is reported when it is broken, and none when it is kept.
#include "harness/harness.h"

#include <gtest/gtest-spi.h>

#include <dlfcn.h>

namespace {

using namespace harness;

void* library() {
    static void* const loaded = [] {
        env(); // the table is installed before the library is loaded
        StrictJni::watch(STRICT_PROBE);
        return dlopen(STRICT_PROBE, RTLD_NOW);
    }();
    return loaded;
}

template <typename Function>
Function* probe(const char* name) {
    void* found = dlsym(library(), name);
    if (found == nullptr) {
        ADD_FAILURE() << "no probe " << name;
        std::abort();
    }
    return reinterpret_cast<Function*>(found);
}

using Breach = void(JNIEnv*);

struct Case {
    const char* breach;
    const char* complaint;

    friend std::ostream& operator<<(std::ostream& out, const Case& shown) {
        return out << shown.breach;
    }
};

class Rule : public testing::TestWithParam<Case> {};

TEST_P(Rule, IsReportedWhenBroken) {
    JNIEnv* jni = env();
    Breach* breach = probe<Breach>(GetParam().breach);
    int before = StrictJni::violations();
    int unreleased = StrictJni::unreleased();
    EXPECT_NONFATAL_FAILURE(breach(jni), GetParam().complaint);
    EXPECT_EQ(StrictJni::violations(), before + 1);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_EQ(StrictJni::unreleased(), unreleased);
}

const Case cases[] = {
    {"pendingException", "FindClass: called with an exception pending"},
    {"nullClass", "GetMethodID: null object, class, string or array"},
    {"nullString", "GetStringUTFLength: null object, class, string or array"},
    {"nullArray", "GetArrayLength: null object, class, string or array"},
    {"nullObjectClass", "GetObjectClass: null object, class, string or array"},
    {"nullMethod", "CallStaticVoidMethodV: null method or field id"},
    {"nullField", "GetIntField: null method or field id"},
    {"nullFieldObject", "GetIntField: null object, class, string or array"},
    {"dottedName", "FindClass: class name is not of the form package/Class: java.lang.String"},
    {"descriptorName", "FindClass: class name is not of the form package/Class: Ljava/lang/Str"},
    {"deleteTwice", "DeleteLocalRef: local reference was deleted before or never made"},
    {"useDeleted", "GetSuperclass: reference is deleted, or of another thread, or never was"},
    {"passDeleted", "CallStaticVoidMethodV: reference is deleted, or of another thread"},
    {"deleteOuter", "DeleteLocalRef: local reference belongs to an outer frame"},
    {"globalAsLocal", "DeleteLocalRef: local reference was deleted before or never made"},
    {"deleteGlobalTwice", "DeleteGlobalRef: global reference was deleted before or never made"},
    {"memberIdForStatic", "CallStaticIntMethodV: id of an instance member: one ()I"},
    {"staticIdForMember", "CallIntMethodV: id of a static member: two ()I"},
    {"staticFieldForMember", "GetIntField: id of a static member: shared I"},
    {"inventedId", "CallStaticVoidMethodV: id was never looked up"},
    {"otherReturnType", "CallStaticVoidMethodV: member is of another type: two ()I"},
    {"otherFieldType", "GetLongField: member is of another type: number I"},
    {"otherObjectClass", "GetIntField: object of another class than the member's: number I"},
    {"otherConstructor", "NewObjectV: constructor of another class: <init> ()V"},
    {"negativeLength", "NewByteArray: negative length"},
    {"emptyFrame", "PushLocalFrame: capacity is not positive"},
    {"popTooMuch", "PopLocalFrame: no frame was pushed"},
    {"tooManyLocals", "FindClass: more than 256 local references live on one thread"},
    {"releaseTwice", "ReleaseByteArrayElements: memory was released before or never taken"},
    {"releaseAsOther", "ReleaseStringChars: memory was taken with GetStringUTFChars"},
    {"callInCritical", "GetArrayLength: called between a critical get and its release"},
    {"variadicTable", "CallStaticIntMethodV: member is of another type: take"},
};
INSTANTIATE_TEST_SUITE_P(Strict, Rule, testing::ValuesIn(cases),
                         [](const auto& info) { return std::string(info.param.breach); });

TEST(Strict, CorrectCallsPass) {
    int before = StrictJni::violations();
    EXPECT_TRUE(probe<bool(JNIEnv*)>("lawful")(env()));
    EXPECT_EQ(StrictJni::violations(), before);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST(Strict, TextsMustBeModifiedUtf8) {
    auto* text = probe<void(JNIEnv*, const char*)>("text");
    for (const char* good : {"", "a", "\xC2\x80", "\xC0\x80", "\xE3\x81\x82", "\xED\xA0\x80"}) {
        text(env(), good);
    }
    for (const char* bad : {"\xF0\x9F\x98\x80", "\xC1\x81", "\xC0\x81", "\xE0\x80\x80",
                            "\xE0\x9F\xBF", "\x80", "\xFF", "\xC2", "\xE3\x81", "\xE3",
                            "\xC2"
                            "A",
                            "\xE3\x81"
                            "A"}) {
        SCOPED_TRACE(testing::PrintToString(bad));
        EXPECT_NONFATAL_FAILURE(text(env(), bad), "NewStringUTF: text is not modified UTF-8");
    }
}

TEST(Strict, EnvironmentOfAnotherThread) {
    JNIEnv* mine = env();
    auto* version = probe<void(JNIEnv*)>("version");
    EventThread thread;
    EXPECT_NONFATAL_FAILURE_ON_ALL_THREADS(
        thread.run([&] { version(mine); }),
        "GetVersion: called on a thread that is not attached to the VM");
    thread.run([&] {
        void* own = nullptr;
        VirtualMachine::instance().vm()->AttachCurrentThread(&own, nullptr);
    });
    EXPECT_NONFATAL_FAILURE_ON_ALL_THREADS(
        thread.run([&] { version(mine); }),
        "GetVersion: called with the environment of another thread");
    thread.run([&] { version(env()); });
}

TEST(Strict, ReferencesOfTheTestAreNotTheLibrarys) {
    jobject foreign = env()->NewStringUTF("made by the test");
    auto* remove = probe<void(JNIEnv*, jobject)>("deleteForeign");
    EXPECT_NONFATAL_FAILURE(remove(env(), foreign), "deleted before or never made");
}

TEST(Strict, CountsLocalReferences) {
    StrictJni::forgetLocals();
    StrictJni::resetPeakLocals();
    auto* make = probe<jstring(JNIEnv*, const char*)>("makeText");
    int calls = StrictJni::calls("NewStringUTF");
    make(env(), "one");
    probe<jint(JNIEnv*)>("makeFrame")(env());
    make(env(), "two");
    make(env(), "three");
    EXPECT_EQ(StrictJni::liveLocals(), 3);
    probe<Breach>("popTooMuch")(env()); // not too much here: it ends the frame
    EXPECT_EQ(StrictJni::liveLocals(), 1);
    EXPECT_EQ(StrictJni::peakLocals(), 3);
    EXPECT_EQ(StrictJni::calls("NewStringUTF"), calls + 3);
    StrictJni::forgetLocals();
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    StrictJni::resetPeakLocals();
    EXPECT_EQ(StrictJni::peakLocals(), 0);
}

TEST(Strict, CountsGlobalReferences) {
    int made = StrictJni::globalsMade();
    int deleted = StrictJni::globalsDeleted();
    jstring text = probe<jstring(JNIEnv*, const char*)>("makeText")(env(), "one");
    jobject global = probe<jobject(JNIEnv*, jobject)>("makeGlobal")(env(), text);
    EXPECT_EQ(StrictJni::globalsMade(), made + 1);
    EXPECT_EQ(StrictJni::globalsDeleted(), deleted);
    probe<void(JNIEnv*, jobject)>("dropGlobal")(env(), global);
    EXPECT_EQ(StrictJni::globalsDeleted(), deleted + 1);
    StrictJni::forgetLocals();
}

TEST(Strict, CallsOfOthersAreNotChecked) {
    library();
    int before = StrictJni::violations();
    jstring text = env()->NewStringUTF("\xF0\x9F\x98\x80");
    EXPECT_NE(text, nullptr);
    EXPECT_EQ(StrictJni::violations(), before);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

// Natives of the watched library, called from Java.

jint bindToProbe(const JNINativeMethod* methods, jint count) {
    return env()->RegisterNatives(findClass("harness/StrictProbe"), methods, count);
}

class Native : public testing::Test {
protected:
    static void SetUpTestSuite() {
        probe<void(jint(*)(const JNINativeMethod*, jint))>("bindNatives")(&bindToProbe);
    }
    jobject object = newObject("harness/StrictProbe", {});
    jclass of = env()->GetObjectClass(object);
    jmethodID method(const char* name, const char* signature) {
        return env()->GetMethodID(of, name, signature);
    }
};

TEST_F(Native, ReturnsWhatItMade) {
    jmethodID give = method("give", "(Ljava/lang/Object;)Ljava/lang/Object;");
    jobject given = env()->CallObjectMethod(object, give, object);
    EXPECT_TRUE(env()->IsSameObject(given, object));
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(Native, WhatItMadeEndsWithIt) {
    StrictJni::resetPeakLocals();
    env()->CallVoidMethod(object, method("makeMany", "(I)V"), 12);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_EQ(StrictJni::peakLocals(), 12);
}

TEST_F(Native, MayNotReturnADeletedReference) {
    jmethodID give = method("giveDeleted", "(Ljava/lang/Object;)Ljava/lang/Object;");
    EXPECT_NONFATAL_FAILURE(env()->CallObjectMethod(object, give, object),
                            "giveDeleted: returned a reference that is deleted or never was");
}

TEST_F(Native, MayNotLeaveAFrame) {
    EXPECT_NONFATAL_FAILURE(env()->CallVoidMethod(object, method("keepFrame", "()V")),
                            "keepFrame: returned with a local frame still pushed");
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(Native, MayNotKeepCharacters) {
    jstring text = env()->NewStringUTF("text");
    int unreleased = StrictJni::unreleased();
    EXPECT_NONFATAL_FAILURE(
        env()->CallVoidMethod(object, method("keepText", "(Ljava/lang/String;)V"), text),
        "keepText: returned without releasing what it took");
    EXPECT_EQ(StrictJni::unreleased(), unreleased + 1);
}

TEST_F(Native, TakesAnyNumberOfArgumentsOfAnyType) {
    jmethodID mix = method("mix", "(ZBCSIJFDLjava/lang/Object;[II)D");
    jvalue arguments[11];
    arguments[0].z = JNI_TRUE;
    arguments[1].b = -2;
    arguments[2].c = 65535;
    arguments[3].s = -32768;
    arguments[4].i = 2147483647;
    arguments[5].j = 1LL << 40;
    arguments[6].f = 0.5F;
    arguments[7].d = 0.25;
    arguments[8].l = object;
    arguments[9].l = nullptr;
    arguments[10].i = -4;
    EXPECT_EQ(env()->CallDoubleMethodA(object, mix, arguments), 1101659145185.75);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(Native, AnyNumberCanBeBound) {
    for (int i = 0; i < 50; ++i) {
        probe<void(jint(*)(const JNINativeMethod*, jint))>("bindNatives")(&bindToProbe);
    }
    StrictJni::resetPeakLocals();
    env()->CallVoidMethod(object, method("makeMany", "(I)V"), 5);
    EXPECT_EQ(StrictJni::peakLocals(), 5);
}

// Calls that are observed.

TEST(ObservedJni, NamesEachCallOfTheLibraryInOrder) {
    auto* make = probe<jstring(JNIEnv*, const char*)>("makeText");
    auto* frame = probe<jint(JNIEnv*)>("makeFrame");
    auto* pop = probe<Breach>("popTooMuch");
    auto* ask = probe<jint(JavaVM*, void**)>("askEnv");
    std::vector<std::string> names;
    std::vector<std::vector<long long>> numbers;
    {
        ObservedJni observed([&](const JniCall& call) {
            names.emplace_back(call.function);
            numbers.push_back(call.numbers);
        });
        void* own = nullptr;
        ask(VirtualMachine::instance().vm(), &own);
        frame(env());
        make(env(), "one");
        env()->GetVersion();
        pop(env());
    }
    make(env(), "two");
    EXPECT_EQ(names, (std::vector<std::string>{"GetEnv", "PushLocalFrame", "NewStringUTF",
                                               "PopLocalFrame"}));
    EXPECT_EQ(numbers, (std::vector<std::vector<long long>>{{0x10004}, {4}, {}, {}}));
    StrictJni::forgetLocals();
}

// Calls that are made to fail.

// Calls that fail by their number.

using Nth = std::vector<FailNth::Call>;
constexpr auto throws = FailJni::Leaves::exception;
constexpr auto no_throw = FailJni::Leaves::nothing;

TEST(FailNth, CountsTheCallsThatCanFail) {
    FailNth none;
    EXPECT_TRUE(probe<bool(JNIEnv*)>("lawful")(env()));
    // The frame, the object (a class, a constructor, an object), its class, a global reference, two
    // fields, a text and its characters, two methods, a third, the calls of all, an array and its
    // elements, what it throws (a class, an exception), and a text. Not: what reads an int or a
    // length, what releases or deletes, what asks for or clears an exception.
    int counted = none.counted();
    EXPECT_EQ(none.failed(), 0);
    EXPECT_EQ(counted, 23);
    probe<void(JNIEnv*)>("version")(env());
    EXPECT_EQ(none.counted(), counted) << "GetVersion cannot fail";
}

TEST(FailNth, FailsOneCallOfAnyFunction) {
    auto* make = probe<jstring(JNIEnv*, const char*)>("makeText");
    auto* ask = probe<jint(JavaVM*, void**)>("askEnv");
    void* own = nullptr;
    FailNth fail(Nth{{1, no_throw}, {3, throws}});
    EXPECT_NE(make(env(), "one"), nullptr);
    EXPECT_EQ(ask(VirtualMachine::instance().vm(), &own), JNI_EDETACHED);
    EXPECT_EQ(own, nullptr);
    EXPECT_NE(make(env(), "two"), nullptr);
    EXPECT_EQ(make(env(), "three"), nullptr);
    EXPECT_EQ(takeException(), "java.lang.OutOfMemoryError: as if the VM had no memory left");
    EXPECT_NE(make(env(), "four"), nullptr);
    EXPECT_EQ(fail.counted(), 5);
    EXPECT_EQ(fail.failed(), 2);
    StrictJni::forgetLocals();
}

TEST(FailNth, FailsFromACallOn) {
    auto* make = probe<jstring(JNIEnv*, const char*)>("makeText");
    {
        FailNth fail(Nth{{1, no_throw}}, FailNth::Span::fromThereOn);
        EXPECT_NE(make(env(), "one"), nullptr);
        EXPECT_EQ(make(env(), "two"), nullptr);
        EXPECT_EQ(make(env(), "three"), nullptr);
        EXPECT_EQ(fail.failed(), 2);
        EXPECT_EQ(takeException(), "");
    }
    EXPECT_NE(make(env(), "four"), nullptr) << "until its end";
    StrictJni::forgetLocals();
}

TEST(FailNth, FailsInTheUsualWayOfTheFunction) {
    void* own = nullptr;
    FailNth fail(Nth{{0, throws}});
    EXPECT_EQ(probe<jint(JavaVM*, void**)>("askEnv")(VirtualMachine::instance().vm(), &own),
              JNI_EDETACHED);
    EXPECT_EQ(takeException(), "") << "the invocation interface throws nothing";
}

TEST(FailNth, HoldsACallThatFailsAgainstTheRules) {
    auto* make = probe<jstring(JNIEnv*, const char*)>("makeText");
    FailNth fail(Nth{{0, throws}}, FailNth::Span::fromThereOn);
    EXPECT_EQ(make(env(), "one"), nullptr);
    EXPECT_NONFATAL_FAILURE(make(env(), "two"), "NewStringUTF: called with an exception pending");
    EXPECT_NE(takeException(), "");
}

TEST(FailNth, KnowsHowFunctionsFail) {
    EXPECT_TRUE(waysToFail("GetIntField").empty());
    EXPECT_TRUE(waysToFail("DeleteLocalRef").empty());
    EXPECT_TRUE(waysToFail("ReleaseByteArrayElements").empty());
    EXPECT_TRUE(waysToFail("SetByteArrayRegion").empty()) << "when it keeps to the array's bounds";
    EXPECT_TRUE(waysToFail("ExceptionCheck").empty());
    using Ways = std::vector<FailJni::Leaves>;
    EXPECT_EQ(waysToFail("CallStaticVoidMethodV"), (Ways{throws, FailJni::Leaves::result}));
    EXPECT_EQ(waysToFail("NewObjectV"), (Ways{throws, no_throw, FailJni::Leaves::result}));
    EXPECT_EQ(waysToFail("NewByteArray"), (Ways{throws, no_throw}));
    EXPECT_EQ(waysToFail("GetEnv"), (Ways{no_throw}));
}

TEST(FailJni, FailsOneCallAndThrows) {
    auto* make = probe<jstring(JNIEnv*, const char*)>("makeText");
    jstring made[3];
    {
        FailJni fail("NewStringUTF", 1);
        made[0] = make(env(), "first");
        EXPECT_FALSE(fail.fired());
        made[1] = make(env(), "second");
        EXPECT_TRUE(fail.fired());
        EXPECT_EQ(takeException(), "java.lang.OutOfMemoryError: as if the VM had no memory left");
        made[2] = make(env(), "third");
    }
    EXPECT_NE(made[0], nullptr);
    EXPECT_EQ(made[1], nullptr);
    EXPECT_NE(made[2], nullptr);
    StrictJni::forgetLocals();
}

TEST(FailJni, LeavesNoExceptionWhenSoRequested) {
    FailJni fail("PushLocalFrame", 0, FailJni::Leaves::nothing);
    EXPECT_EQ(probe<jint(JNIEnv*)>("makeFrame")(env()), JNI_ERR);
    EXPECT_FALSE(env()->ExceptionCheck());
}

TEST(FailJni, AnswersTheResultWithAnExceptionPending) {
    FailJni fail("NewStringUTF", 0, FailJni::Leaves::result);
    jstring made = probe<jstring(JNIEnv*, const char*)>("makeText")(env(), "text");
    EXPECT_EQ(takeException(), "java.lang.OutOfMemoryError: as if the VM had no memory left");
    EXPECT_EQ(toText(made), "text");
    StrictJni::forgetLocals();
}

TEST(FailJni, FailsTheInvocationInterface) {
    JavaVM* vm = VirtualMachine::instance().vm();
    void* own = &own;
    {
        FailJni fail("GetEnv");
        EXPECT_EQ(probe<jint(JavaVM*, void**)>("askEnv")(vm, &own), JNI_EDETACHED);
        EXPECT_EQ(own, nullptr);
    }
    {
        FailJni fail("AttachCurrentThread");
        EXPECT_EQ(probe<jint(JavaVM*, void**)>("attach")(vm, &own), JNI_ERR);
    }
    EXPECT_EQ(probe<jint(JavaVM*, void**)>("askEnv")(vm, &own), JNI_OK);
    EXPECT_EQ(own, env());
}

TEST(FailJni, ReportsACallThatNeverCame) {
    library();
    EXPECT_NONFATAL_FAILURE({ FailJni fail("MonitorEnter"); },
                            "the call of MonitorEnter that was to fail never came");
    EXPECT_NONFATAL_FAILURE(StrictJni::calls("NoSuchFunction"), "no JNI function NoSuchFunction");
}

TEST(Invocation, CountsAttachments) {
    JavaVM* vm = VirtualMachine::instance().vm();
    auto* attach = probe<jint(JavaVM*, void**)>("attach");
    auto* detach = probe<jint(JavaVM*)>("detach");
    int attached = StrictJni::calls("AttachCurrentThread");
    int detached = StrictJni::calls("DetachCurrentThread");
    EventThread thread;
    thread.run([&] {
        void* own = nullptr;
        EXPECT_EQ(attach(vm, &own), JNI_OK);
        EXPECT_EQ(detach(vm), JNI_OK);
    });
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), attached + 1);
    EXPECT_EQ(StrictJni::calls("DetachCurrentThread"), detached + 1);
}

} // namespace

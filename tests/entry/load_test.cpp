// A load that finds everything: what it registers, looks up, holds and logs.
#include "entry/java_reflection.h"
#include "entry/java_tables.h"
#include "entry/vm_probes.h"

#include "harness/harness.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace {

using namespace harness;

std::string classLine(size_t id) {
    return "setJavaClass, threadid = <tid>, class_id = " + std::to_string(id) +
           ", class_name = " + expected::classes[id];
}

std::string methodLine(const expected::Method& row) {
    return "setJavaMethod, class_id = " + std::to_string(row.class_id) +
           ", method_id = " + std::to_string(row.method_id) +
           ", attr_id = " + std::to_string(row.attr_id) +
           ", type_id = 0, method_name = " + row.name + ", signature = " + row.signature;
}

TEST(Tables, AreWhole) {
    EXPECT_EQ(expected::classes.size(), size_t{expected::classCount});
    EXPECT_EQ(expected::methods.size(), size_t{expected::methodCount});
    EXPECT_EQ(std::count_if(expected::methods.begin(), expected::methods.end(),
                            [](const expected::Method& row) { return row.attr_id == 1; }),
              expected::callbackCount);
    EXPECT_EQ(expected::natives.size(), size_t{expected::nativeCount});
    EXPECT_EQ(expected::classes[0], "tenrik/service/dtvserver/BGCallBack");
    EXPECT_EQ(expected::classes[127], "tenrik/service/dtvserver/type/BG_TE_DTVSVLIB_RESULT");
    EXPECT_EQ(expected::classes[138], "android/view/Surface");
    EXPECT_EQ(expected::methods[68].class_id, 1);
    EXPECT_EQ(expected::methods[68].signature, "(II)V");
    EXPECT_EQ(expected::methods[218].class_id, 137);
    EXPECT_EQ(std::count_if(expected::methods.begin(), expected::methods.end(),
                            [](const expected::Method& row) {
                                return row.name == "<init>" && row.signature == "(II)V";
                            }),
              56);
}

TEST(JavaSide, HasEveryClassAndMethodOfTheTables) {
    JNIEnv* jni = env();
    for (const std::string& name : expected::classes) {
        LocalFrame frame;
        EXPECT_NE(Product::findClass(name), nullptr) << name << ": " << takeException();
    }
    for (const expected::Method& row : expected::methods) {
        LocalFrame frame;
        jclass of = Product::findClass(expected::classes[static_cast<size_t>(row.class_id)]);
        ASSERT_NE(of, nullptr) << takeException();
        jmethodID id = row.attr_id == 1
                           ? jni->GetStaticMethodID(of, row.name.c_str(), row.signature.c_str())
                           : jni->GetMethodID(of, row.name.c_str(), row.signature.c_str());
        EXPECT_NE(id, nullptr) << row.method_id << ": " << takeException();
    }
}

TEST(JavaSide, DeclaresTheSixtyFiveNativesAndNoOther) {
    std::vector<std::string> wanted;
    for (const expected::Native& row : expected::natives) {
        wanted.push_back(row.name + " " + row.signature);
    }
    std::sort(wanted.begin(), wanted.end());
    EXPECT_EQ(declaredMethods("tenrik/service/dtvserver/DtvServerProxy", nativeModifier), wanted);
}

TEST(JavaSide, DeclaresTheCallbacksAndNoOther) {
    std::vector<std::string> wanted;
    for (const expected::Method& row : expected::methods) {
        if (row.attr_id == 1) {
            wanted.push_back(row.name + " " + row.signature);
        }
    }
    std::sort(wanted.begin(), wanted.end());
    std::vector<std::string> declared;
    for (const std::string& method :
         declaredMethods("tenrik/service/dtvserver/BGCallBack", staticModifier)) {
        if (method.compare(0, 9, "onEvDtvsv") == 0) {
            declared.push_back(method);
        }
    }
    EXPECT_EQ(declared, wanted);
}

TEST(Load, RegistersTheNativesInOrder) {
    RegistrationRecorder registered;
    ASSERT_EQ(Product::load(), "");
    ASSERT_EQ(registered.kept().size(), 1U);
    const Registration& only = registered.kept()[0];
    EXPECT_EQ(only.class_name, "tenrik.service.dtvserver.DtvServerProxy");
    ASSERT_EQ(only.names.size(), expected::natives.size());
    for (size_t i = 0; i < expected::natives.size(); ++i) {
        EXPECT_EQ(only.names[i], expected::natives[i].name) << i;
        EXPECT_EQ(only.signatures[i], expected::natives[i].signature) << i;
    }
    EXPECT_EQ(only.names[0], "DtvSvLib_Create");
    EXPECT_EQ(only.names.back(), "DtvSvLib_TerminatePlay_Sync");
    std::set<const void*> functions(only.functions.begin(), only.functions.end());
    EXPECT_EQ(functions.size(), expected::natives.size())
        << "each native has a function of its own";
    EXPECT_EQ(functions.count(nullptr), 0U);
}

TEST(Load, AsksForVersion1_4) {
    VersionProbe version(false);
    ASSERT_EQ(Product::load(), "");
    EXPECT_EQ(version.asked(), 1);
}

TEST(Load, WritesItsLinesInOrder) {
    auto log = LogRecorder::install();
    ASSERT_EQ(Product::load(), "");
    std::vector<TraceLine> lines = log->take();
    std::string wanted = R"(
        Dtv_jni|128|5|FUNCSTART|JNI_OnLoad|
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|pid = <pid>, threadid = <tid>
        Dtv_jni|128|5|FUNCSTART|registerNatives|
        Dtv_jni|256|5|FUNCEND  |registerNatives|ret = 0
        Dtv_jni|1024|5|DEBUG    |DtvSvLibListenerInit|env = <ptr>
        Dtv_jni|1024|5|DEBUG    |DtvSvLibListenerInit|env = <ptr>
)";
    const std::string found = "setJavaClass, clazz = <ptr>, m_class_info[class_id].cls = <ptr>";
    const std::string class_head = "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|";
    for (size_t id = 0; id < expected::classes.size(); ++id) {
        wanted += class_head + classLine(id) + "\n" + class_head + found + "\n";
    }
    for (const expected::Method& row : expected::methods) {
        wanted += "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|" + methodLine(row) + "\n";
    }
    wanted += "Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|\n";
    EXPECT_TRACE(lines, wanted);
    ASSERT_EQ(lines.size(), 6U + 2 * expected::classes.size() + expected::methods.size() + 1);
    // The values in the lines that only this thread can determine.
    char own[48];
    std::snprintf(own, sizeof own, "threadid = %x", static_cast<unsigned>(pthread_self()));
    EXPECT_EQ(lines[1].message, "pid = " + std::to_string(getpid()) + ", " + own);
    std::snprintf(own, sizeof own, "env = %p", static_cast<void*>(env()));
    EXPECT_EQ(lines[4].message, own);
    EXPECT_EQ(lines[5].message, own);
    EXPECT_EQ(lines[4].text.substr(0, 8), ",TENRIK,");
    EXPECT_EQ(lines[0].format, ",TENRIK,%-8s,%s,%s(),%4d,");
    EXPECT_EQ(lines[1].format, ",TENRIK,%-8s,%s,%s(),%4d,pid = %d, threadid = %x");
}

TEST(Load, LooksUpEachRowOnceAndKeepsNoLocalReference) {
    ASSERT_EQ(Product::load(), "");
    EXPECT_EQ(StrictJni::calls("FindClass"), expected::classCount);
    EXPECT_EQ(StrictJni::calls("GetStaticMethodID"), expected::callbackCount);
    EXPECT_EQ(StrictJni::calls("GetMethodID"), expected::constructorCount);
    EXPECT_EQ(StrictJni::calls("NewGlobalRef"), expected::classCount);
    EXPECT_EQ(StrictJni::globalsMade(), expected::classCount);
    EXPECT_EQ(StrictJni::globalsDeleted(), 0);
    EXPECT_EQ(StrictJni::calls("PushLocalFrame"), 1);
    EXPECT_EQ(StrictJni::calls("PopLocalFrame"), 1);
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 0);
    EXPECT_EQ(StrictJni::calls("DetachCurrentThread"), 0);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_LE(StrictJni::peakLocals(), 256);
    EXPECT_EQ(StrictJni::violations(), 0);
    EXPECT_FALSE(env()->ExceptionCheck());
}

TEST(Load, GivesTheServiceItsListener) {
    uint8_t record[8] = {3, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(dtv::deliverEvent(0x1000004f, record, 8), dtv::noListener);
    ASSERT_EQ(Product::load(), "");
    CallbackRecorder callbacks;
    EXPECT_EQ(dtv::deliverEvent(0x1000004f, record, 8), 0);
    EXPECT_EQ(callbacks.take(),
              (std::vector<std::string>{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)"}));
}

TEST(Load, BindsEveryNativeToItsOwnFunction) {
    ASSERT_EQ(Product::load(), "");
    auto service = ServiceDouble::serve();
    EXPECT_EQ(call("DtvSvLib_Create", {1, 2}), "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK");
    EXPECT_EQ(call("DtvSvLib_Release", {1}), "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK");
    ASSERT_NE(callNative("DtvSvLib_TerminatePlay_Sync", {1}), nullptr);
    EXPECT_EQ(service->take().size(), 3U);
}

} // namespace

// The class, method and field registries: what a load fills in, what the setters store and log, and
// what the destructor releases.
#include "binding/listener.h"
#include "entry/java_tables.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace {

using namespace harness;
using testing::HasSubstr;

template <typename Record>
bool isZero(const Record& record) {
    const Record zero = Record();
    return std::memcmp(&record, &zero, sizeof record) == 0;
}

class Registry : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
    }
    std::shared_ptr<LogRecorder> log;
};

/// Offsets in words, as on a 32-bit receiver; on other machines only the order is the same.
TEST(RegistryEntry, HasItsFieldsInOrder) {
    const std::vector<size_t> class_fields = {offsetof(TS_DTVSV_CLASSINFO, cls),
                                              offsetof(TS_DTVSV_CLASSINFO, object),
                                              offsetof(TS_DTVSV_CLASSINFO, tid)};
    const std::vector<size_t> method_fields = {
        offsetof(TS_DTVSV_METHODINFO, class_id),      offsetof(TS_DTVSV_METHODINFO, cls),
        offsetof(TS_DTVSV_METHODINFO, tid),           offsetof(TS_DTVSV_METHODINFO, method),
        offsetof(TS_DTVSV_METHODINFO, cached_object), offsetof(TS_DTVSV_METHODINFO, attr_id),
        offsetof(TS_DTVSV_METHODINFO, type_id)};
    const std::vector<size_t> field_fields = {offsetof(TS_DTVSV_FIELDINFO, cls),
                                              offsetof(TS_DTVSV_FIELDINFO, field)};
    const std::vector<size_t> slot_fields = {offsetof(TS_DTVSV_ENVINFO, env),
                                             offsetof(TS_DTVSV_ENVINFO, attach),
                                             offsetof(TS_DTVSV_ENVINFO, tid)};
    for (const auto* fields : {&class_fields, &method_fields, &field_fields, &slot_fields}) {
        EXPECT_TRUE(std::is_sorted(fields->begin(), fields->end()));
    }
    EXPECT_EQ(class_fields.front(), 0U);
    EXPECT_EQ(method_fields.front(), 0U);
    EXPECT_EQ(slot_fields.front(), 0U);
    const size_t word = sizeof(void*);
    EXPECT_EQ(field_fields, (std::vector<size_t>{word, 2 * word}));
    EXPECT_EQ(sizeof(TS_DTVSV_FIELDINFO), 5 * word);
    EXPECT_EQ(sizeof(TS_DTVSV_CLASSINFO), 3 * word);
    if (word == 4) {
        EXPECT_EQ(class_fields, (std::vector<size_t>{0, 4, 8}));
        EXPECT_EQ(method_fields, (std::vector<size_t>{0, 4, 8, 12, 16, 20, 24}));
        EXPECT_EQ(slot_fields, (std::vector<size_t>{0, 4, 8}));
        EXPECT_EQ(sizeof(TS_DTVSV_METHODINFO), 28U);
        EXPECT_EQ(sizeof(TS_DTVSV_ENVINFO), 12U);
    }
}

TEST_F(Registry, HoldsEveryClassOfTheLoad) {
    Listener listener = Listener::loaded();
    for (size_t i = 0; i < expected::classes.size(); ++i) {
        int id = static_cast<int>(i);
        jclass of = Product::findClass(expected::classes[i]);
        ASSERT_NE(of, nullptr) << expected::classes[i] << takeException();
        EXPECT_TRUE(env()->IsSameObject(listener.getJavaClass(id), of)) << id;
        EXPECT_EQ(listener.getJavaClassObject(id), nullptr);
        TS_DTVSV_CLASSINFO info = listener.getJavaClassInfo(id);
        EXPECT_EQ(info.cls, listener.getJavaClass(id));
        EXPECT_EQ(info.object, nullptr);
        EXPECT_EQ(info.tid, pthread_self());
        EXPECT_EQ(env()->GetObjectRefType(info.cls), JNIGlobalRefType);
        env()->DeleteLocalRef(of);
    }
}

TEST_F(Registry, HoldsEveryMethodOfTheLoad) {
    Listener listener = Listener::loaded();
    for (const expected::Method& row : expected::methods) {
        jclass of = listener.getJavaClass(row.class_id);
        jmethodID id = row.attr_id == 1
                           ? env()->GetStaticMethodID(of, row.name.c_str(), row.signature.c_str())
                           : env()->GetMethodID(of, row.name.c_str(), row.signature.c_str());
        ASSERT_NE(id, nullptr) << row.method_id << takeException();
        EXPECT_EQ(listener.getJavaMethodID(row.method_id), id) << row.method_id;
        EXPECT_EQ(listener.getJavaClassForMethodid(row.method_id), of) << row.method_id;
        TS_DTVSV_METHODINFO info = listener.getJavaMethodInfo(row.method_id);
        EXPECT_EQ(info.class_id, row.class_id) << row.method_id;
        EXPECT_EQ(info.cls, of);
        EXPECT_EQ(info.tid, pthread_self());
        EXPECT_EQ(info.method, id);
        EXPECT_EQ(info.cached_object, nullptr);
        EXPECT_EQ(info.attr_id, row.attr_id);
        EXPECT_EQ(info.type_id, 0);
    }
}

TEST_F(Registry, HasOneEmptyField) {
    EXPECT_TRUE(isZero(Listener::loaded().getJavaFieldInfo(0)));
    EXPECT_TRUE(isZero(Listener::made().getJavaFieldInfo(0)));
    EXPECT_EQ(sizeof(TS_DTVSV_FIELDINFO), 5 * sizeof(void*));
}

TEST_F(Registry, IsZeroWhenMadeAndItsGettersLogNothing) {
    Listener listener = Listener::made();
    for (int id = 0; id < expected::classCount; ++id) {
        EXPECT_TRUE(isZero(listener.getJavaClassInfo(id))) << id;
        EXPECT_EQ(listener.getJavaClass(id), nullptr);
        EXPECT_EQ(listener.getJavaClassObject(id), nullptr);
    }
    for (int id = 0; id < expected::methodCount; ++id) {
        TS_DTVSV_METHODINFO info = listener.getJavaMethodInfo(id);
        EXPECT_TRUE(info.class_id == 0 && info.cls == nullptr && info.tid == 0 &&
                    info.method == nullptr && info.cached_object == nullptr && info.attr_id == 0 &&
                    info.type_id == 0)
            << id;
        EXPECT_EQ(listener.getJavaMethodID(id), nullptr);
        EXPECT_EQ(listener.getJavaClassForMethodid(id), nullptr);
    }
    EXPECT_TRACE(log->take(), "");
}

TEST_F(Registry, TakesAClassByName) {
    Listener listener = Listener::made();
    int locals = StrictJni::liveLocals();
    EXPECT_EQ(listener.setJavaClass(138, "java/lang/String"), 0);
    EXPECT_LE(StrictJni::liveLocals(), locals + 1)
        << "the looked-up class stays until the frame ends";
    std::vector<TraceLine> lines = log->take();
    EXPECT_TRACE(lines, R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, threadid = <tid>, class_id = 138, class_name = java/lang/String
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, clazz = <ptr>, m_class_info[class_id].cls = <ptr>
    )");
    EXPECT_THAT(lines[1].message,
                HasSubstr("m_class_info[class_id].cls = " + pointer(listener.getJavaClass(138))));
    EXPECT_EQ(lines[1].message.find("clazz = " + pointer(listener.getJavaClass(138))),
              std::string::npos)
        << "the first is the local reference";
    TS_DTVSV_CLASSINFO info = listener.getJavaClassInfo(138);
    EXPECT_TRUE(env()->IsSameObject(info.cls, env()->FindClass("java/lang/String")));
    EXPECT_EQ(info.object, nullptr);
    EXPECT_EQ(info.tid, pthread_self());
    EXPECT_TRUE(isZero(listener.getJavaClassInfo(137)));
}

TEST_F(Registry, LeavesTheEntryWhenThereIsNoSuchClass) {
    Listener listener = Listener::made();
    EXPECT_EQ(listener.setJavaClass(5, "no/such/Name"), 1);
    EXPECT_THAT(takeException(), HasSubstr("no/such/Name")) << "it stays pending";
    EXPECT_TRUE(isZero(listener.getJavaClassInfo(5)));
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, threadid = <tid>, class_id = 5, class_name = no/such/Name
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, Can't find class : no/such/Name
    )");
    ASSERT_EQ(listener.setJavaClass(5, "java/lang/String"), 0);
    TS_DTVSV_CLASSINFO before = listener.getJavaClassInfo(5);
    EXPECT_EQ(listener.setJavaClass(5, "no/such/Name"), 1);
    takeException();
    EXPECT_EQ(listener.getJavaClassInfo(5).cls, before.cls);
}

TEST_F(Registry, LogsThatAClassCannotBeKept) {
    Listener listener = Listener::made();
    FailJni fail("NewGlobalRef");
    EXPECT_EQ(listener.setJavaClass(6, "java/lang/String"), 1);
    takeException();
    EXPECT_TRUE(isZero(listener.getJavaClassInfo(6)));
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, threadid = <tid>, class_id = 6, class_name = java/lang/String
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, NewGlobalRef error! : class_id = 6
    )");
}

TEST_F(Registry, TakesAClassFromAnObject) {
    Listener listener = Listener::made();
    jobject object = adopt(newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", {62, 2}));
    int made = StrictJni::globalsMade();
    EXPECT_EQ(listener.setJavaClassOf(73, object), 0);
    EXPECT_EQ(StrictJni::globalsMade(), made + 2);
    EXPECT_TRACE(log->take(), "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, "
                              "class_id = 73");
    TS_DTVSV_CLASSINFO info = listener.getJavaClassInfo(73);
    EXPECT_EQ(info.object, listener.getJavaClassObject(73));
    EXPECT_TRUE(env()->IsSameObject(info.object, object));
    EXPECT_EQ(env()->GetObjectRefType(info.object), JNIGlobalRefType);
    EXPECT_TRUE(env()->IsSameObject(info.cls, Product::findClass("tenrik/service/dtvserver/type/"
                                                                 "BG_TS_DTVSVLIB_BROADCAST_INFO")));
    EXPECT_EQ(env()->GetObjectRefType(info.cls), JNIGlobalRefType);
    EXPECT_EQ(info.tid, 0U) << "only the form that takes a name sets it";
}

TEST_F(Registry, TakesNothingFromANullObject) {
    Listener listener = Listener::made();
    int asked = StrictJni::calls("GetObjectClass");
    EXPECT_EQ(listener.setJavaClassOf(73, nullptr), 0);
    EXPECT_EQ(StrictJni::calls("GetObjectClass"), asked);
    EXPECT_TRUE(isZero(listener.getJavaClassInfo(73)));
}

TEST_F(Registry, ResolvesMethodsByTheirAttribute) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.setJavaClass(9, "java/lang/Integer"), 0);
    log->clear();
    int of_class = StrictJni::calls("GetStaticMethodID");
    int of_object = StrictJni::calls("GetMethodID");
    EXPECT_EQ(listener.setJavaMethod(9, 10, 1, 6, "bitCount", "(I)I"), 0);
    EXPECT_EQ(StrictJni::calls("GetStaticMethodID"), of_class + 1);
    EXPECT_EQ(listener.setJavaMethod(9, 11, 0, 7, "longValue", "()J"), 0);
    EXPECT_EQ(listener.setJavaMethod(9, 218, 2, 10, "<init>", "(I)V"), 0);
    EXPECT_EQ(StrictJni::calls("GetMethodID"), of_object + 2);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, class_id = 9, method_id = 10, attr_id = 1, type_id = 6, method_name = bitCount, signature = (I)I
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, class_id = 9, method_id = 11, attr_id = 0, type_id = 7, method_name = longValue, signature = ()J
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, class_id = 9, method_id = 218, attr_id = 2, type_id = 10, method_name = <init>, signature = (I)V
    )");
    TS_DTVSV_METHODINFO info = listener.getJavaMethodInfo(218);
    EXPECT_EQ(info.class_id, 9);
    EXPECT_EQ(info.cls, listener.getJavaClass(9));
    EXPECT_EQ(info.tid, pthread_self());
    EXPECT_EQ(info.method, env()->GetMethodID(listener.getJavaClass(9), "<init>", "(I)V"));
    EXPECT_EQ(info.cached_object, nullptr);
    EXPECT_EQ(info.attr_id, 2);
    EXPECT_EQ(info.type_id, 10);
    EXPECT_EQ(listener.getJavaMethodInfo(10).attr_id, 1);
    EXPECT_EQ(listener.getJavaMethodInfo(10).type_id, 6);
    EXPECT_EQ(listener.getJavaMethodInfo(11).attr_id, 0);
}

TEST_F(Registry, LeavesTheRowWhenThereIsNoSuchMethod) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.setJavaClass(9, "java/lang/Integer"), 0);
    ASSERT_EQ(listener.setJavaMethod(9, 10, 1, 6, "bitCount", "(I)I"), 0);
    TS_DTVSV_METHODINFO before = listener.getJavaMethodInfo(10);
    log->clear();
    EXPECT_EQ(listener.setJavaMethod(9, 10, 1, 0, "longValue", "()J"), 1);
    EXPECT_FALSE(env()->ExceptionCheck());
    EXPECT_EQ(listener.setJavaMethod(9, 10, 0, 0, "bitCount", "(I)I"), 1);
    EXPECT_FALSE(env()->ExceptionCheck());
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, class_id = 9, method_id = 10, attr_id = 1, type_id = 0, method_name = longValue, signature = ()J
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID error!, class_id = 9, method_id = 10, attr_id = 1, type_id = 0, method_name = longValue, signature = ()J
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, class_id = 9, method_id = 10, attr_id = 0, type_id = 0, method_name = bitCount, signature = (I)I
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID error!, class_id = 9, method_id = 10, attr_id = 0, type_id = 0, method_name = bitCount, signature = (I)I
    )");
    TS_DTVSV_METHODINFO after = listener.getJavaMethodInfo(10);
    EXPECT_EQ(after.method, before.method);
    EXPECT_EQ(after.attr_id, 1);
    EXPECT_EQ(after.type_id, 6);
}

TEST_F(Registry, LooksUpNothingInAMissingClass) {
    Listener listener = Listener::made();
    int of_class = StrictJni::calls("GetStaticMethodID");
    int of_object = StrictJni::calls("GetMethodID");
    EXPECT_EQ(listener.setJavaMethod(8, 3, 1, 0, "a", "()V"), 1);
    EXPECT_EQ(listener.setJavaMethod(8, 4, 0, 0, "b", "()V"), 1);
    EXPECT_EQ(StrictJni::calls("GetStaticMethodID"), of_class);
    EXPECT_EQ(StrictJni::calls("GetMethodID"), of_object);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, class_id = 8, method_id = 3, attr_id = 1, type_id = 0, method_name = a, signature = ()V
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID error!, class_id = 8, method_id = 3, attr_id = 1, type_id = 0, method_name = a, signature = ()V
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, class_id = 8, method_id = 4, attr_id = 0, type_id = 0, method_name = b, signature = ()V
        JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID error!, class_id = 8, method_id = 4, attr_id = 0, type_id = 0, method_name = b, signature = ()V
    )");
}

TEST_F(Registry, StoresAWholeRow) {
    Listener listener = Listener::made();
    int mark[3] = {};
    TS_DTVSV_METHODINFO row{};
    row.class_id = 77;
    row.cls = reinterpret_cast<jclass>(&mark[0]);
    row.tid = pthread_self() + 1;
    row.method = reinterpret_cast<jmethodID>(&mark[1]);
    row.cached_object = reinterpret_cast<jobject>(&mark[2]);
    row.attr_id = 5;
    row.type_id = 6;
    listener.storeJavaMethod(218, row);
    EXPECT_TRACE(log->take(), "JNIDtvSvLibListener|512|5|INFO     |setJavaMethod|setJavaMethod");
    TS_DTVSV_METHODINFO held = listener.getJavaMethodInfo(218);
    EXPECT_EQ(held.class_id, 77);
    EXPECT_EQ(held.cls, row.cls);
    EXPECT_EQ(held.tid, row.tid);
    EXPECT_EQ(held.method, row.method);
    EXPECT_EQ(held.cached_object, row.cached_object);
    EXPECT_EQ(held.attr_id, 5);
    EXPECT_EQ(held.type_id, 6);
    row.class_id = 1;
    held.class_id = 2;
    EXPECT_EQ(listener.getJavaMethodInfo(218).class_id, 77)
        << "it stores a copy and returns a copy";

    // Resolving again leaves the cached object unchanged.
    ASSERT_EQ(listener.setJavaClass(9, "java/lang/Integer"), 0);
    ASSERT_EQ(listener.setJavaMethod(9, 218, 0, 7, "longValue", "()J"), 0);
    held = listener.getJavaMethodInfo(218);
    EXPECT_EQ(held.cached_object, row.cached_object);
    EXPECT_EQ(held.class_id, 9);
    EXPECT_EQ(held.attr_id, 0);
    EXPECT_EQ(held.type_id, 7);
    EXPECT_EQ(held.tid, pthread_self());
}

TEST_F(Registry, IsReleasedWithTheListener) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.setJavaClass(0, "java/lang/String"), 0);
    ASSERT_EQ(listener.setJavaClass(138, "java/lang/Integer"), 0);
    jobject object = adopt(newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", {62, 2}));
    ASSERT_EQ(listener.setJavaClassOf(73, object), 0);
    int deleted = StrictJni::globalsDeleted();
    log->clear();
    listener.drop();
    EXPECT_EQ(StrictJni::globalsDeleted(), deleted + 3) << "the classes, and not the object";
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|Got JNIEnv! threadid=<tid> env=<ptr>
        JNIDtvSvLibListener|128|5|FUNCSTART|freeJNIEnv|
        JNIDtvSvLibListener|1024|5|DEBUG    |freeJNIEnv|free env=<ptr> index=<int> tid=<tid> attach=0
        JNIDtvSvLibListener|256|5|FUNCEND  |freeJNIEnv|
    )");
}

} // namespace

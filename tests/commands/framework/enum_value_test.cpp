// getEnumValue: the number of an object's enum-typed field, and what it logs when it finds none.
#include "helpers_fixture.h"

#include <cstdlib>

namespace {

using namespace harness;
using namespace commands;

/// The samples are on the VM's boot class path.
const bool samples_found = [] {
    const char* options = std::getenv("DTV_TEST_VM_OPTIONS");
    std::string all = options != nullptr ? options : "";
    return ::setenv("DTV_TEST_VM_OPTIONS", (all + " -Xbootclasspath/a:" ENUM_SAMPLES).c_str(), 1) ==
           0;
}();

constexpr const char* gauge_type = "Lharness/EnumSamples$Gauge;";
constexpr int untouched = 123456789;

class EnumField : public Helpers {
protected:
    static jobject holder(const char* constant_name, const char* class_name = "EnumSamples") {
        JNIEnv* jni = env();
        jclass gauges = jni->FindClass("harness/EnumSamples$Gauge");
        jobject gauge = nullptr;
        if (constant_name != nullptr) {
            gauge = jni->GetStaticObjectField(
                gauges, jni->GetStaticFieldID(gauges, constant_name, gauge_type));
        }
        return newObject(std::string("harness/") + class_name, std::string("(") + gauge_type + ")V",
                         {gauge});
    }

    static void hold(jobject holder) {
        LocalFrame frame;
        jclass samples = findClass("harness/EnumSamples");
        jfieldID held = env()->GetStaticFieldID(samples, "held", "Lharness/EnumSamples;");
        env()->SetStaticObjectField(samples, held, holder);
    }

    void expectValue(jobject of, int expected) {
        hold(of);
        int value = untouched;
        EXPECT_EQ(enumValue(env(), "gauge", gauge_type, "getGaugeValue", &value), 0);
        EXPECT_EQ(value, expected);
        EXPECT_EQ(takeException(), "");
        EXPECT_TRACE(log->take(), "");
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }

    void expectFailure(jobject of, const char* name, const char* type, const char* getter,
                       const std::string& line) {
        hold(of);
        int value = untouched;
        EXPECT_EQ(enumValue(env(), name, type, getter, &value), 1);
        EXPECT_EQ(value, untouched);
        EXPECT_EQ(takeException(), "");
        EXPECT_TRACE(log->take(), "Dtv_jni|1024|5|DEBUG    |getEnumValue|" + line);
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
};

TEST_F(EnumField, HasItsGettersValue) {
    ASSERT_TRUE(samples_found);
    expectValue(holder("LOW"), -2147483647 - 1);
    expectValue(holder("ZERO"), 0);
    expectValue(holder("HIGH"), 2147483647);
}

TEST_F(EnumField, MayHoldAConstantOfAClassOfItsOwn) {
    expectValue(holder("ODD"), -7);
}

TEST_F(EnumField, MayBeInherited) {
    expectValue(holder("ODD", "EnumSamples$Heir"), -7);
}

/// A longer descriptor is cut, and so has no getter. None of the service is longer than 62.
TEST_F(EnumField, DescriptorOfUpTo252Characters) {
    const std::string longest = "Lharness/EnumSamples$" + std::string(230, 'N') + ";";
    ASSERT_EQ(longest.size(), 252U);
    hold(holder("HIGH"));
    int value = untouched;
    EXPECT_EQ(enumValue(env(), "longest", longest.c_str(), "getLength", &value), 0);
    EXPECT_EQ(takeException(), "");
    EXPECT_EQ(value, 252);
    const std::string too_long = "Lharness/EnumSamples$" + std::string(231, 'N') + ";";
    expectFailure(holder("HIGH"), "tooLong", too_long.c_str(), "getLength", "enum method is NULL");
}

TEST_F(EnumField, HolderNull) {
    int asked = StrictJni::calls("GetObjectClass");
    expectFailure(nullptr, "gauge", gauge_type, "getGaugeValue", "orgObj's clazz is NULL");
    EXPECT_EQ(StrictJni::calls("GetObjectClass"), asked) << "GetObjectClass is not called for null";
}

TEST_F(EnumField, HolderWithoutClass) {
    jobject of = holder("HIGH");
    FailJni fail("GetObjectClass", 0, FailJni::Leaves::nothing);
    expectFailure(of, "gauge", gauge_type, "getGaugeValue", "orgObj's clazz is NULL");
}

TEST_F(EnumField, FieldMissing) {
    jobject of = holder("HIGH");
    expectFailure(of, "gauges", gauge_type, "getGaugeValue", "enum field ID is NULL");
    // Another type, and a static field.
    expectFailure(of, "gauge", "Lharness/EnumSamples$Bare;", "getGaugeValue",
                  "enum field ID is NULL");
    expectFailure(of, "number", gauge_type, "getGaugeValue", "enum field ID is NULL");
    expectFailure(of, "shared", gauge_type, "getGaugeValue", "enum field ID is NULL");
}

TEST_F(EnumField, FieldMissingWithoutAnException) {
    jobject of = holder("HIGH");
    FailJni fail("GetFieldID", 0, FailJni::Leaves::nothing);
    expectFailure(of, "gauge", gauge_type, "getGaugeValue", "enum field ID is NULL");
}

TEST_F(EnumField, HoldsNull) {
    expectFailure(holder(nullptr), "gauge", gauge_type, "getGaugeValue", "enum object is NULL");
}

TEST_F(EnumField, ConstantWithoutClass) {
    jobject of = holder("HIGH");
    FailJni fail("GetObjectClass", 1, FailJni::Leaves::nothing);
    expectFailure(of, "gauge", gauge_type, "getGaugeValue", "enum class is NULL");
}

TEST_F(EnumField, GetterMissing) {
    jobject of = holder("HIGH");
    expectFailure(of, "gauge", gauge_type, "getNothing", "enum method is NULL");
    expectFailure(of, "bare", "Lharness/EnumSamples$Bare;", "getGaugeValue", "enum method is NULL");
    // One that returns another type, takes another, or is no static method.
    expectFailure(of, "gauge", gauge_type, "getWide", "enum method is NULL");
    expectFailure(of, "gauge", gauge_type, "getAny", "enum method is NULL");
    expectFailure(of, "gauge", gauge_type, "getOwn", "enum method is NULL");
}

TEST_F(EnumField, GetterMissingWithoutAnException) {
    jobject of = holder("HIGH");
    FailJni fail("GetStaticMethodID", 0, FailJni::Leaves::nothing);
    expectFailure(of, "gauge", gauge_type, "getGaugeValue", "enum method is NULL");
}

TEST_F(EnumField, GetterThrows) {
    hold(holder("HIGH"));
    int value = untouched;
    EXPECT_EQ(enumValue(env(), "gauge", gauge_type, "getThrowing", &value), 0);
    EXPECT_EQ(takeException(), "java.lang.IllegalStateException: no value of HIGH");
    EXPECT_TRACE(log->take(), "");
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(EnumField, LeavesNothingHoweverOftenItIsRead) {
    jobject of = holder("ODD");
    StrictJni::resetPeakLocals();
    for (int i = 0; i < 100; ++i) {
        expectValue(of, -7);
    }
    EXPECT_LE(StrictJni::peakLocals(), 4) << "the holder, its class, the constant and its class";
}

} // namespace

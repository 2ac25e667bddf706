// Strings of UTF-16 units toward Java, and Java strings into fixed fields.
#include "binding/listener.h"

#include <cstring>

namespace {

using namespace harness;

jstring javaString(const std::vector<jchar>& units) {
    static const jchar none = 0;
    return adopt(
        env()->NewString(units.empty() ? &none : units.data(), static_cast<jsize>(units.size())));
}

jstring javaString(const char* ascii) {
    return adopt(env()->NewStringUTF(ascii));
}

class Strings : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
        taken = StrictJni::unreleased();
    }
    void TearDown() override { EXPECT_EQ(StrictJni::unreleased(), taken); }

    /// The field of `size` bytes that the conversion fills, after it one byte that must stay
    /// unchanged.
    template <typename Convert>
    static std::string filled(int size, Convert convert) {
        std::vector<char> field(static_cast<size_t>(size) + 1, '\x5a');
        convert(field.data());
        EXPECT_EQ(field.back(), '\x5a') << "written beyond the field";
        return hex({field.begin(), field.end() - 1});
    }
    static std::string toChar(jstring text, int size) {
        return filled(size,
                      [&](char* to) { Listener::loaded().convJStringToChar(text, to, size); });
    }
    static std::string toUtf16(jstring text, int size) {
        return filled(size,
                      [&](char* to) { Listener::loaded().convJStringToUTF16(text, to, size); });
    }

    std::shared_ptr<LogRecorder> log;
    int taken = 0;
};

TEST_F(Strings, OrgNewStringTakesUnitsAsTheyAre) {
    Listener listener = Listener::loaded();
    const unsigned char units[] = {0x42, 0x30, 0x00, 0x00, 0x3d, 0xd8, 0x00,
                                   0xde, 0x00, 0xdc, 0xff, 0xff, 0x41, 0x00};
    std::unique_ptr<char[]> text(new char[sizeof units]);
    std::memcpy(text.get(), units, sizeof units);
    EXPECT_EQ(tree(listener.OrgNewString(text.get(), 7)),
              R"("\u3042\u0000\ud83d\ude00\udc00\uffffA")");
    EXPECT_EQ(tree(listener.OrgNewString(text.get(), 1)), R"("\u3042")");
    EXPECT_EQ(tree(listener.OrgNewString(text.get(), 3)), R"("\u3042\u0000\ud83d")");
    EXPECT_EQ(tree(listener.OrgNewString(text.get(), 0)), R"("")");
    EXPECT_TRACE(log->take(), "");
}

TEST_F(Strings, OrgNewStringReadsFromAnyAddress) {
    Listener listener = Listener::loaded();
    std::unique_ptr<char[]> text(new char[5]);
    std::memcpy(text.get(), "\x5a\x41\x00\x42\x30", 5);
    EXPECT_EQ(tree(listener.OrgNewString(text.get() + 1, 2)), R"("A\u3042")");
}

TEST_F(Strings, OrgNewStringTakesLongTextsWhole) {
    Listener listener = Listener::loaded();
    for (int length : {255, 256, 257, 5000}) {
        std::string units;
        std::string expected = "\"";
        for (int i = 0; i < length; ++i) {
            char letter = static_cast<char>('a' + i % 26);
            units += {letter, '\0'};
            expected += letter;
        }
        std::unique_ptr<char[]> text(new char[units.size()]);
        std::memcpy(text.get(), units.data(), units.size());
        EXPECT_EQ(tree(listener.OrgNewString(text.get(), length)), expected + "\"");
    }
    EXPECT_TRACE(log->take(), "");
}

TEST_F(Strings, OrgNewStringOfNullIsEmpty) {
    EXPECT_EQ(tree(Listener::loaded().OrgNewString(nullptr, 5)), R"("")");
    EXPECT_EQ(tree(Listener::loaded().OrgNewString(nullptr, 0)), R"("")");
    EXPECT_TRACE(log->take(), "");
}

TEST_F(Strings, OrgNewStringOfANegativeLengthFailsWithoutAJniCall) {
    for (int length : {-1, -2147483647 - 1}) {
        Calls made("NewString");
        EXPECT_EQ(Listener::loaded().OrgNewString("a\0", length), nullptr);
        EXPECT_EQ(made.made(), 0);
        EXPECT_TRACE(log->take(),
                     "JNIDtvSvLibListener|1024|5|DEBUG    |OrgNewString|Failure, ret is NULL");
    }
}

TEST_F(Strings, OrgNewStringLogsItsFailure) {
    for (const char* text : {"a\0", static_cast<const char*>(nullptr)}) {
        FailJni fail("NewString");
        EXPECT_EQ(Listener::loaded().OrgNewString(text, 1), nullptr);
        takeException();
        EXPECT_TRACE(log->take(),
                     "JNIDtvSvLibListener|1024|5|DEBUG    |OrgNewString|Failure, ret is NULL");
    }
}

TEST_F(Strings, CharFieldHoldsATextThatFits) {
    EXPECT_EQ(toChar(javaString("abc"), 8), "61 62 63 00 00 00 00 00");
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|convJStringToChar|
        JNIDtvSvLibListener|256|5|FUNCEND  |convJStringToChar|
    )");
    EXPECT_EQ(toChar(javaString(""), 4), "00 00 00 00");
    EXPECT_EQ(toChar(javaString("abcdefg"), 8), "61 62 63 64 65 66 67 00");
}

TEST_F(Strings, CharFieldIsFilledByALongText) {
    EXPECT_EQ(toChar(javaString("abcdefgh"), 8), "61 62 63 64 65 66 67 68");
    EXPECT_EQ(toChar(javaString("abcdefghi"), 8), "61 62 63 64 65 66 67 68");
    EXPECT_EQ(toChar(javaString(std::string(5000, 'x').c_str()), 3), "78 78 78");
    EXPECT_EQ(toChar(javaString("a"), 1), "61");
    EXPECT_EQ(toChar(javaString(""), 1), "00");
    EXPECT_EQ(toChar(javaString("a"), 0), "");
    EXPECT_EQ(toChar(javaString(""), 0), "");
}

TEST_F(Strings, CharFieldHoldsModifiedUtf8) {
    EXPECT_EQ(toChar(javaString({0x3042, 0x00e9}), 6), "e3 81 82 c3 a9 00");
    EXPECT_EQ(toChar(javaString({'a', 0, 'b'}), 5), "61 c0 80 62 00");
    EXPECT_EQ(toChar(javaString({0xd83d, 0xde00}), 8), "ed a0 bd ed b8 80 00 00");
    EXPECT_EQ(toChar(javaString({0x3042, 0x3044}), 4), "e3 81 82 e3") << "cut within a character";
    EXPECT_EQ(toChar(javaString({0x3042, 0x3044}), 6), "e3 81 82 e3 81 84");
}

TEST_F(Strings, CharFieldIsZeroForNull) {
    EXPECT_EQ(toChar(nullptr, 4), "00 00 00 00");
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|convJStringToChar|
        JNIDtvSvLibListener|256|5|FUNCEND  |convJStringToChar|
    )");
}

TEST_F(Strings, CharFieldIsZeroWhenTheCharactersCannotBeRead) {
    jstring text = javaString("abc");
    FailJni fail("GetStringUTFChars");
    EXPECT_EQ(toChar(text, 4), "00 00 00 00");
    takeException();
}

TEST_F(Strings, Utf16FieldHoldsTheUnitsThatFit) {
    EXPECT_EQ(toUtf16(javaString({'a', 0x3042, 'c'}), 6), "61 00 42 30 63 00");
    EXPECT_EQ(toUtf16(javaString({'a', 0x3042, 'c'}), 8), "61 00 42 30 63 00 00 00");
    EXPECT_EQ(toUtf16(javaString({'a', 0x3042, 'c'}), 4), "61 00 42 30");
    EXPECT_EQ(toUtf16(javaString({'a', 0x3042, 'c'}), 5), "61 00 42 30 63") << "by bytes";
    EXPECT_EQ(toUtf16(javaString({'a', 0x3042, 'c'}), 3), "61 00 42");
    EXPECT_EQ(toUtf16(javaString({'a', 0x3042, 'c'}), 7), "61 00 42 30 63 00 00");
    EXPECT_EQ(toUtf16(javaString({'a'}), 1), "61");
    EXPECT_EQ(toUtf16(javaString({'a'}), 0), "");
    EXPECT_TRACE(log->take(), "");
}

TEST_F(Strings, Utf16FieldHoldsAnyUnit) {
    EXPECT_EQ(toUtf16(javaString({0, 0xd83d, 0xde00, 0xdc00, 0xffff}), 12),
              "00 00 3d d8 00 de 00 dc ff ff 00 00");
}

TEST_F(Strings, Utf16FieldIsZeroAfterAShortText) {
    EXPECT_EQ(toUtf16(javaString(std::vector<jchar>{}), 4), "00 00 00 00");
    EXPECT_EQ(
        toUtf16(javaString({'a'}), 1400), "61" + [] {
            std::string zeros;
            for (int i = 1; i < 1400; ++i) {
                zeros += " 00";
            }
            return zeros;
        }());
    EXPECT_EQ(toUtf16(nullptr, 4), "00 00 00 00");
    EXPECT_TRACE(log->take(), "");
}

TEST_F(Strings, Utf16FieldIsZeroWhenTheUnitsCannotBeRead) {
    jstring text = javaString("abc");
    FailJni fail("GetStringChars");
    EXPECT_EQ(toUtf16(text, 4), "00 00 00 00");
    takeException();
}

} // namespace

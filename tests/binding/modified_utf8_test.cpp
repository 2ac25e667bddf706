// OrgNewStringUTF with texts of every kind, malformed ones included.
#include "binding/listener.h"

#include <cstring>
#include <random>

namespace {

using namespace harness;

/// The Java string of these bytes as a tree. The bytes are at the end of a block of their own, so
/// that the address sanitizer finds a read beyond their zero byte.
std::string javaText(Listener& listener, const std::string& bytes) {
    std::unique_ptr<char[]> text(new char[bytes.size() + 1]);
    std::memcpy(text.get(), bytes.c_str(), bytes.size() + 1);
    return tree(listener.OrgNewStringUTF(text.get()));
}

struct Text {
    const char* name;
    const char* hex;
    const char* tree;
};

class ModifiedUtf8 : public testing::TestWithParam<Text> {
    void TearDown() override { StrictJni::forgetLocals(); }
};

TEST_P(ModifiedUtf8, BecomesAJavaString) {
    ASSERT_EQ(loadProbe(), "");
    Listener listener = Listener::loaded();
    auto log = LogRecorder::install();
    int broken = StrictJni::violations();
    std::vector<uint8_t> bytes = fromHex(GetParam().hex);
    EXPECT_EQ(javaText(listener, std::string(bytes.begin(), bytes.end())), GetParam().tree);
    EXPECT_EQ(StrictJni::violations(), broken);
    EXPECT_TRACE(log->take(), "");
}

const Text wellFormed[] = {
    {"Empty", "", R"("")"},
    {"Ascii", "41 7e 01 7f", R"("A~\u0001\u007f")"},
    {"TwoBytesFirst", "c2 80", R"("\u0080")"},
    {"TwoBytesLast", "df bf", R"("\u07ff")"},
    {"ThreeBytesFirst", "e0 a0 80", R"("\u0800")"},
    {"ThreeBytes", "e3 81 82 e6 bc a2", R"("\u3042\u6f22")"},
    {"ThreeBytesLast", "ef bf bf", R"("\uffff")"},
    {"BeforeSurrogates", "ed 9f bf", R"("\ud7ff")"},
    {"BehindSurrogates", "ee 80 80", R"("\ue000")"},
    {"ModifiedZero", "61 c0 80 62", R"("a\u0000b")"},
    {"FirstSurrogate", "ed a0 80", R"("\ud800")"},
    {"LastSurrogate", "ed bf bf", R"("\udfff")"},
    {"SurrogatePair", "ed a0 bd ed b8 80", R"("\ud83d\ude00")"},
    {"SurrogatesInWrongOrder", "ed b0 80 ed a0 80", R"("\udc00\ud800")"},
    {"SurrogateAlone", "61 ed a0 bd 62", R"("a\ud83db")"},
};

const Text fourBytes[] = {
    {"FourBytes", "f0 9f 98 80", R"("\ud83d\ude00")"},
    {"FourBytesFirst", "f0 90 80 80", R"("\ud800\udc00")"},
    {"FourBytesLast", "f4 8f bf bf", R"("\udbff\udfff")"},
    {"FourBytesAmongOthers", "61 f0 9f 98 80 e3 81 82 f0 a0 ae 9f",
     R"("a\ud83d\ude00\u3042\ud842\udf9f")"},
    {"FourBytesTooSmall", "f0 8f bf bf", R"("\ufffd\ufffd\ufffd\ufffd")"},
    {"FourBytesOfZero", "f0 80 80 80", R"("\ufffd\ufffd\ufffd\ufffd")"},
    {"FourBytesTooGreat", "f4 90 80 80", R"("\ufffd\ufffd\ufffd\ufffd")"},
    {"FourBytesFarTooGreat", "f7 bf bf bf", R"("\ufffd\ufffd\ufffd\ufffd")"},
    {"FourBytesFromF5", "f5 80 80 80", R"("\ufffd\ufffd\ufffd\ufffd")"},
    {"FiveBytes", "f8 88 80 80 80", R"("\ufffd\ufffd\ufffd\ufffd\ufffd")"},
    {"SixBytes", "fc 84 80 80 80 80", R"("\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd")"},
};

const Text malformed[] = {
    {"OverlongTwo", "c0 81", R"("\ufffd\ufffd")"},
    {"OverlongSlash", "c0 af 41", R"("\ufffd\ufffdA")"},
    {"OverlongC1", "c1 bf", R"("\ufffd\ufffd")"},
    {"OverlongC180", "c1 80", R"("\ufffd\ufffd")"},
    {"OverlongThree", "e0 9f bf", R"("\ufffd\ufffd\ufffd")"},
    {"OverlongThreeOfZero", "e0 80 80", R"("\ufffd\ufffd\ufffd")"},
    {"ContinuationAlone", "80", R"("\ufffd")"},
    {"ContinuationsAlone", "bf 41 80 80 42", R"("\ufffdA\ufffd\ufffdB")"},
    {"FeAndFf", "fe ff", R"("\ufffd\ufffd")"},
    {"FfBetweenTexts", "61 ff 62", R"("a\ufffdb")"},
    {"TwoCutAtTheEnd", "61 c2", R"("a\ufffd")"},
    {"ZeroCutAtTheEnd", "c0", R"("\ufffd")"},
    {"ThreeCutAfterOne", "e3", R"("\ufffd")"},
    {"ThreeCutAfterTwo", "e3 81", R"("\ufffd\ufffd")"},
    {"SurrogateCut", "ed a0", R"("\ufffd\ufffd")"},
    {"PairCut", "ed a0 bd ed b8", R"("\ud83d\ufffd\ufffd")"},
    {"FourCutAfterOne", "f0", R"("\ufffd")"},
    {"FourCutAfterTwo", "f0 9f", R"("\ufffd\ufffd")"},
    {"FourCutAfterThree", "f0 9f 98", R"("\ufffd\ufffd\ufffd")"},
    {"TwoBrokenByAscii", "c2 41", R"("\ufffdA")"},
    {"ThreeBrokenByAscii", "e3 41 e3 81 41", R"("\ufffdA\ufffd\ufffdA")"},
    {"FourBrokenByAscii", "f0 9f 98 41", R"("\ufffd\ufffd\ufffdA")"},
    {"TwoBrokenByTwo", "c2 c2 80", R"("\ufffd\u0080")"},
    {"ZeroBrokenByZero", "c0 c0 80", R"("\ufffd\u0000")"},
    {"ThreeBrokenByThree", "e3 81 e3 81 82", R"("\ufffd\ufffd\u3042")"},
    {"FourBrokenByThree", "f0 9f e3 81 82", R"("\ufffd\ufffd\u3042")"},
    {"FourBrokenByFour", "f0 9f 98 f0 9f 98 80", R"("\ufffd\ufffd\ufffd\ud83d\ude00")"},
    {"OneByteTooMany", "e3 81 82 82", R"("\u3042\ufffd")"},
    {"ShiftJis", "83 65 83 8c 83 72", R"("\ufffde\ufffd\ufffd\ufffdr")"},
    {"BehindAZeroByte", "61 00 ff", R"("a")"},
};

const auto nameOf = [](const auto& test) { return test.param.name; };
INSTANTIATE_TEST_SUITE_P(WellFormed, ModifiedUtf8, testing::ValuesIn(wellFormed), nameOf);
INSTANTIATE_TEST_SUITE_P(FourBytes, ModifiedUtf8, testing::ValuesIn(fourBytes), nameOf);
INSTANTIATE_TEST_SUITE_P(Malformed, ModifiedUtf8, testing::ValuesIn(malformed), nameOf);

TEST(Utf8, NullIsTheEmptyText) {
    ASSERT_EQ(loadProbe(), "");
    auto log = LogRecorder::install();
    EXPECT_EQ(tree(Listener::loaded().OrgNewStringUTF(nullptr)), R"("")");
    EXPECT_TRACE(log->take(), "");
}

TEST(Utf8, LongTextsAreConvertedWhole) {
    ASSERT_EQ(loadProbe(), "");
    Listener listener = Listener::loaded();
    jstring stray = listener.OrgNewStringUTF(std::string(5000, '\xff').c_str());
    EXPECT_EQ(env()->GetStringLength(stray), 5000);
    std::string smileys;
    for (int i = 0; i < 2000; ++i) {
        smileys += "\xf0\x9f\x98\x80";
    }
    jstring pairs = listener.OrgNewStringUTF(smileys.c_str());
    EXPECT_EQ(env()->GetStringLength(pairs), 4000);
    jchar last[2] = {};
    env()->GetStringRegion(pairs, 3998, 2, last);
    EXPECT_EQ(last[0], 0xd83d);
    EXPECT_EQ(last[1], 0xde00);
    jstring plain = listener.OrgNewStringUTF(std::string(5000, 'x').c_str());
    EXPECT_EQ(env()->GetStringLength(plain), 5000);
}

TEST(Utf8, OnlyModifiedUtf8ReachesTheVm) {
    ASSERT_EQ(loadProbe(), "");
    Listener listener = Listener::loaded();
    int broken = StrictJni::violations();
    std::mt19937 random(1);
    // Bytes that begin, continue and break sequences, more of them than in random bytes.
    const unsigned char edges[] = {0x01, 0x41, 0x7f, 0x80, 0x8f, 0x90, 0x9f, 0xa0,
                                   0xbf, 0xc0, 0xc1, 0xc2, 0xdf, 0xe0, 0xe3, 0xed,
                                   0xef, 0xf0, 0xf4, 0xf5, 0xf8, 0xff};
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (auto left = random() % 12; left > 0; --left) {
            text += static_cast<char>(edges[random() % sizeof edges]);
        }
        LocalFrame frame;
        ASSERT_NE(listener.OrgNewStringUTF(text.c_str()), nullptr);
        StrictJni::forgetLocals();
    }
    EXPECT_EQ(StrictJni::violations(), broken);
}

TEST(Utf8, LogsThatTheTextCannotBeMade) {
    ASSERT_EQ(loadProbe(), "");
    auto log = LogRecorder::install();
    for (const char* text : {"well-formed", "\xff", static_cast<const char*>(nullptr)}) {
        FailJni fail("NewStringUTF");
        EXPECT_EQ(Listener::loaded().OrgNewStringUTF(text), nullptr);
        takeException();
        EXPECT_TRACE(log->take(), "JNIDtvSvLibListener|1024|5|DEBUG    |OrgNewStringUTF|Failure, "
                                  "ret is NULL");
    }
}

} // namespace

#include "display/command_test.h"

#include <sstream>

namespace commands {

using namespace harness;

namespace {

/// One full literal from one short line.
std::string whole(const std::string& native, const std::string& line) {
    struct Level {
        const char* word;
        const char* literal;
    };
    static const Level levels[] = {{"START", "128|5|FUNCSTART"},
                                   {"END", "256|5|FUNCEND  "},
                                   {"INFO", "512|5|INFO     "},
                                   {"DEBUG", "1024|5|DEBUG    "},
                                   {"ERROR", "2|6|ERROR    "}};
    bool listener = line[0] == '*';
    size_t blank = line.find(' ');
    std::string word = line.substr(listener ? 1 : 0, blank - (listener ? 1 : 0));
    std::string rest = line.substr(blank + 1);
    for (const Level& level : levels) {
        if (word == level.word) {
            return std::string(listener ? "JNIDtvSvLibListener" : "Dtv_jni") + "|" + level.literal +
                   "|" + (rest[0] == '|' ? native : "") + rest + "\n";
        }
    }
    ADD_FAILURE() << "no trace line: " << line;
    return "";
}

std::string shortLines(const std::string& line) {
    std::istringstream words(line);
    std::string word;
    std::string first;
    std::string second;
    words >> word >> first >> second;
    if (word == "RESULT") {
        return "START getRetCode|(param)ret = " + first + "\nEND getRetCode|";
    }
    if (word == "COPY") {
        return "*START convJStringToChar|\n*END convJStringToChar|";
    }
    if (word != "BUILD" && word != "FAIL") {
        return line;
    }
    return "*DEBUG CallMethod|CallMethod, method_id = " + first + ", class_id = " + second +
           ", attr_id = 0\n*INFO CallMethod|CallMethod, NewObject\n" +
           (word == "BUILD" ? "*INFO setJavaMethod|setJavaMethod"
                            : "*DEBUG CallMethod|CallMethod, NewObject error!");
}

constexpr const char* rootDescriptor = "Landroid/view/Surface;III";

} // namespace

std::string trace(const std::string& native, const std::string& lines) {
    std::string text;
    std::istringstream input(lines);
    for (std::string line; std::getline(input, line);) {
        size_t begin = line.find_first_not_of(' ');
        if (begin == std::string::npos) {
            continue;
        }
        std::istringstream expanded(shortLines(line.substr(begin)));
        for (std::string single; std::getline(expanded, single);) {
            text += whole(native, single);
        }
    }
    return text;
}

jobject javaSurface(int address) {
    return newObject("android/view/Surface", "(I)V", {address});
}

NativeSurface::NativeSurface()
    : held(new android::Surface),
      object(javaSurface(static_cast<int>(reinterpret_cast<uintptr_t>(held.get())))) {}

jobject screenInfo(jobject surface, int width, int height, int rotate, int mode) {
    return newObject("BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO",
                     "(" + std::string(rootDescriptor) + "I)V",
                     {surface, width, height, rotate, mode});
}

jobject bmlInfo(jobject surface, int width, int height, int rotate) {
    return newObject("BG_TS_DTVSVLIB_BML_DRAWING_INFO", "(" + std::string(rootDescriptor) + ")V",
                     {surface, width, height, rotate});
}

jobject capInfo(jobject surface, int width, int height, int rotate, jobject layout) {
    return newObject("BG_TS_DTVSVLIB_CAP_DRAWING_INFO",
                     "(" + std::string(rootDescriptor) + "Ltype/BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;)V",
                     {surface, width, height, rotate, layout});
}

jobject capLayout(int font, int characters, int lines, int separator, int x, int y, int color,
                  int alpha) {
    return newObject("BG_TS_DTVSVLIB_CAP_DISPLAY_INFO", "(IIIIIIII)V",
                     {font, characters, lines, separator, x, y, color, alpha});
}

jobject usualLayout() {
    return capLayout(20, 12, 4, 2, 33, 44, 5, 1);
}

void CommandTest::SetUp() {
    ASSERT_EQ(Product::load(), "");
    service = ServiceDouble::serve();
    log = LogRecorder::install();
}

std::string CommandTest::run(const std::string& name, const std::vector<Value>& arguments) {
    return run(name, "", arguments);
}

std::string CommandTest::run(const std::string& name, const std::string& descriptor,
                             const std::vector<Value>& arguments) {
    LocalFrame frame;
    log->clear();
    StrictJni::resetPeakLocals();
    jobject answer = callNative("DtvSvLib_" + name, descriptor, arguments);
    EXPECT_LE(StrictJni::peakLocals(), 16) << name;
    EXPECT_EQ(StrictJni::unreleased(), 0) << name;
    if (!lastThrown().empty()) {
        return "throws " + lastThrown();
    }
    std::string text = tree(answer);
    std::string result = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_";
    return text.compare(0, result.size(), result) == 0 ? text.substr(result.size()) : text;
}

std::string CommandTest::sent() {
    messages = service->take();
    std::string text;
    for (const Message& message : messages) {
        text += (text.empty() ? "" : "\n") + message.text();
    }
    return text;
}

} // namespace commands

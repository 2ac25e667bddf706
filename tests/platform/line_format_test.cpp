// The formatting of log lines: byte for byte what vsnprintf() writes.
#include "dtv/line_format.h"

#include "harness/harness.h"

#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace {

constexpr size_t kRoom = 2048;

struct Formatted {
    int length;
    std::string text; ///< empty when the length is -1
};

__attribute__((format(printf, 2, 3))) Formatted format(size_t room, const char* form, ...) {
    // Bytes that no line has, so that nothing is right by accident.
    std::string text(room + 1, '\x7f');
    va_list values;
    va_start(values, form);
    const int length = dtv::formatLine(text.data(), room, form, values);
    va_end(values);
    EXPECT_EQ(text[room], '\x7f') << "written beyond the room: " << form;
    if (length >= 0) {
        EXPECT_EQ(text[static_cast<size_t>(length)], '\0') << form;
        text.resize(static_cast<size_t>(length));
    }
    return {length, length < 0 ? "" : text};
}

/// Expects that the format is known and that its text is that of vsnprintf().
__attribute__((format(printf, 1, 2))) void expectSame(const char* form, ...) {
    char expected[kRoom];
    char text[kRoom];
    va_list values;
    va_start(values, form);
    const int expected_length = std::vsnprintf(expected, sizeof expected, form, values);
    va_end(values);
    va_start(values, form);
    const int length = dtv::formatLine(text, sizeof text, form, values);
    va_end(values);
    ASSERT_EQ(length, expected_length) << form;
    EXPECT_STREQ(text, expected) << form;
}

void expectSameInts(int value) {
    expectSame("%d", value);
    expectSame("a %d, b = %4d|%-8d|%20d|%-999d|", value, value, value, value, value);
    expectSame("%1d|%-1d|%100d", value, value, value);
    const auto bits = static_cast<unsigned>(value);
    expectSame("%u|%5u|%-5u|%12u", bits, bits, bits, bits);
    expectSame("%x|%4x|%-4x|%10x|0x%x", bits, bits, bits, bits, bits);
}

void expectSameLongs(long value) {
    expectSame("%ld|%4ld|%-8ld|%30ld|%-30ld|", value, value, value, value, value);
    const auto bits = static_cast<unsigned long>(value);
    expectSame("%lu|%5lu|%-25lu|", bits, bits, bits);
    expectSame("%lx|%4lx|%-20lx|", bits, bits, bits);
    const void* const pointer = reinterpret_cast<const void*>(static_cast<uintptr_t>(bits));
    expectSame("%p|%4p|%-24p|%24p|", pointer, pointer, pointer, pointer);
}

TEST(LineFormat, WritesNumbersOfEveryLength) {
    for (const int value : {0, 1, -1, 9, 10, -10, 99, 100, 12345, -12345, INT_MAX, INT_MIN}) {
        expectSameInts(value);
    }
    for (const long value : {0l, 1l, -1l, 10l, LONG_MAX, LONG_MIN}) {
        expectSameLongs(value);
    }
    for (size_t bit = 0; bit + 1 < sizeof(long) * 8; ++bit) {
        const long power = 1l << bit;
        expectSameLongs(power);
        expectSameLongs(power - 1);
        expectSameLongs(-power);
    }
}

TEST(LineFormat, WritesTexts) {
    for (const char* text : {"", "a", "a text", "a text of more than eight bytes", "\xe3\x81\x82",
                             "\xff\xfe", "100%d", "a\nb"}) {
        expectSame("%s", text);
        expectSame("|%s|%8s|%-8s|%1s|%40s|%-40s|", text, text, text, text, text, text);
        expectSame("%s%s%s", text, text, text);
    }
    const std::string longest(kRoom - 1, 'z');
    expectSame("%s", longest.c_str());
    expectSame("%-5s", longest.c_str());
}

TEST(LineFormat, WritesNullAsTheLibraryDoes) {
    // Not seen by the compiler, which knows that a null text is an error.
    const char* volatile no_text = nullptr;
    void* volatile no_pointer = nullptr;
    expectSame("%s|%10s|%-10s|%3s", no_text, no_text, no_text, no_text);
    expectSame("%p|%10p|%-10p|%3p", no_pointer, no_pointer, no_pointer, no_pointer);
}

TEST(LineFormat, WritesCharactersAndPercentSigns) {
    for (int character = 1; character < 256; ++character) {
        expectSame("%c|%3c|%-3c|", character, character, character);
    }
    expectSame("100%%");
    expectSame("%%%d%%%s%%", 5, "x");
    expectSame("%s", "");
    expectSame("no conversion");
}

TEST(LineFormat, WritesTheLinesOfTheBridge) {
    expectSame(",TENRIK,%-8s,%s,%s(),%4d,pid = %d, threadid = %x, event_id = %x, recv_size = %d",
               "main", "FUNCSTART", "recvEventFromServer", 49, 12345, 0xdeadbeefu, 0x1000004fu, 8);
    expectSame(",TENRIK,%-8s,%s,%s(),%4d,free env=%p index=%d tid=%x attach=%d", "DtvEvent-10",
               "DEBUG    ", "free", 109, static_cast<const void*>("x"), -1, 0u, 1);
    expectSame("%s(%5d):<%-8s>%s [%s():%4d] ret = %d", "Dtv_jni", 123456, "a task name 15c",
               "ERROR    ", "f", 12345, INT_MIN);
    expectSame("evtId = %ld, start_day_of_week = %d, name = |%s|", -1l, 7, "");
}

TEST(LineFormat, WritesRandomValues) {
    std::mt19937_64 random(20);
    for (int i = 0; i < 20000; ++i) {
        // Of every number of bits, so that every number of digits comes.
        const uint64_t bits = random() >> (random() % 64);
        const uint64_t sign = random() % 2 == 0 ? bits : 0 - bits;
        const auto number = static_cast<int>(static_cast<uint32_t>(sign));
        const auto word = static_cast<unsigned>(static_cast<uint32_t>(bits));
        const auto large = static_cast<long>(sign);
        const auto large_word = static_cast<unsigned long>(bits);
        std::string text(static_cast<size_t>(random() % 40), ' ');
        for (char& character : text) {
            character = static_cast<char>(random() % 255 + 1);
        }
        expectSame("%d,%4d,%-8d,%20d,%u,%12u", number, number, number, number, word, word);
        expectSame("%x,%-9x,%ld,%24ld,%lu,%lx", word, word, large, large, large_word, large_word);
        expectSame("%s|%-8s|%30s|%c|%p", text.c_str(), text.c_str(), text.c_str(),
                   static_cast<int>(word % 255 + 1),
                   reinterpret_cast<void*>(static_cast<uintptr_t>(large_word)));
        if (HasFailure()) {
            return;
        }
    }
}

TEST(LineFormat, RefusesWhatDoesNotFit) {
    for (size_t room = 1; room < 14; ++room) {
        const bool fits = room > 9;
        for (const Formatted& line :
             {format(room, "%s", "123456789"), format(room, "12345678%d", 9),
              format(room, "123456789"), format(room, "%9d", 123456789), format(room, "%9s", "a"),
              format(room, "%-9s", "a"), format(room, "12345678%%"),
              format(room, "12345678%c", 'c'), format(room, "%d%x", -1234, 0xffffu)}) {
            EXPECT_EQ(line.length, fits ? 9 : -1) << room << ": " << line.text;
        }
    }
    EXPECT_EQ(format(kRoom, "%s", std::string(kRoom, 'x').c_str()).length, -1);
    EXPECT_EQ(format(1, "%s", "").length, 0);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

TEST(LineFormat, RefusesWhatItDoesNotKnow) {
    for (const char* form :
         {"%i",  "%o",  "%X",  "%f",    "%g",    "%a",  "%hd",           "%hhx",   "%lld",   "%zu",
          "%jd", "%td", "%Lf", "%ls",   "%lc",   "%lp", "%.3s",          "%.d",    "%5.3d",  "%05d",
          "%+d", "% d", "%#x", "%--5d", "%- 5d", "%'d", "%*d",           "%1$d",   "%1000d", "%m",
          "%-%", "%5%", "%",   "%l",    "%-",    "%5",  "text %d and %", "%d %.2f"}) {
        EXPECT_EQ(format(kRoom, form, 0, 0, 0).length, -1) << form;
    }
    EXPECT_EQ(format(kRoom, "a%cb", 0).length, -1) << "a zero in the text";
}

#pragma GCC diagnostic pop

} // namespace

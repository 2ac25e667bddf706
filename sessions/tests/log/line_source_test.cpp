// Lines of files, plain and compressed, whole and damaged.
#include "sessions/log/line_source.h"
#include "sessions/tests/log/text_file.h"

namespace {

using sessions::LineSource;

struct Lines {
    std::vector<std::string> lines; ///< one without an end has "~" after it
    std::string error;
    uint64_t skipped = 0;
    uint64_t text_bytes = 0;
};

Lines linesOf(const std::string& path) {
    LineSource source(path);
    Lines all;
    std::string_view line;
    while (source.next(line)) {
        all.lines.push_back(std::string(line) + (source.isUnended() ? "~" : ""));
        all.skipped += source.skipped();
    }
    all.error = source.error();
    all.text_bytes = source.textBytes();
    EXPECT_FALSE(source.next(line)) << "the end stays the end";
    return all;
}

Lines linesIn(const std::string& bytes) {
    return linesOf(TextFile(bytes).path());
}

using Texts = std::vector<std::string>;

TEST(LineSource, TakesBothLineEnds) {
    EXPECT_EQ(linesIn("one\ntwo\n").lines, (Texts{"one", "two"}));
    EXPECT_EQ(linesIn("one\r\ntwo\r\n").lines, (Texts{"one", "two"}));
    EXPECT_EQ(linesIn("\n\r\n\n").lines, (Texts{"", "", ""}));
    EXPECT_EQ(linesIn("a\rb\r\r\n").lines, (Texts{"a\rb\r"}));
    EXPECT_EQ(linesIn("").lines, Texts{});
    EXPECT_EQ(linesIn("one\ntwo\n").error, "");
    EXPECT_EQ(linesIn("one\ntwo\n").text_bytes, 8u);
}

TEST(LineSource, SaysThatTheLastLineHasNoEnd) {
    EXPECT_EQ(linesIn("one\ntwo").lines, (Texts{"one", "two~"}));
    EXPECT_EQ(linesIn("one\ntwo\r").lines, (Texts{"one", "two~"}));
    EXPECT_EQ(linesIn("\r").lines, (Texts{"~"}));
}

TEST(LineSource, KeepsZeroBytes) {
    const std::string line("a\0b", 3);
    EXPECT_EQ(linesIn(line + "\n" + std::string(3, '\0') + "\n").lines,
              (Texts{line, std::string(3, '\0')}));
}

/// Five lines, of which the last ends at that byte, and one more.
std::string linesUpTo(size_t end) {
    std::string text;
    while (text.size() + 60000 < end) {
        text += std::string(59999, 'x') + "\n";
    }
    return text + std::string(end - text.size(), 'y') + "\r\nlast\n";
}

TEST(LineSource, PassesBuffersEdges) {
    // The buffer has 262144 bytes: line ends before it, at it and after it.
    for (const size_t end : {262141U, 262142U, 262143U, 262144U, 262145U}) {
        const std::string x(59999, 'x');
        EXPECT_EQ(linesIn(linesUpTo(end)).lines,
                  (Texts{x, x, x, x, std::string(end - 240000, 'y'), "last"}))
            << end;
    }
}

TEST(LineSource, SkipsWhatIsTooLong) {
    const Lines just = linesIn(std::string(65536, 'x') + "\nlast\n");
    EXPECT_EQ(just.lines, (Texts{std::string(65536, 'x'), "last"}));
    EXPECT_EQ(just.skipped, 0u);
    const Lines more = linesIn(std::string(65537, 'x') + "\nlast\n");
    EXPECT_EQ(more.lines, (Texts{std::string(65536, 'x'), "last"}));
    EXPECT_EQ(more.skipped, 1u);
}

TEST(LineSource, TakesALineOf100Megabytes) {
    TextFile file("first\n");
    const std::string part(1 << 20, 'x');
    for (int i = 0; i < 100; ++i) {
        file.write(part);
    }
    file.write("\nlast\n");
    const Lines all = linesOf(file.path());
    EXPECT_EQ(all.lines, (Texts{"first", std::string(65536, 'x'), "last"}));
    EXPECT_EQ(all.skipped, (100u << 20) - 65536);
    EXPECT_EQ(all.error, "");
}

TEST(LineSource, ReadsGzip) {
    const Lines all = linesIn(compressed("one\r\ntwo\n"));
    EXPECT_EQ(all.lines, (Texts{"one", "two"}));
    EXPECT_EQ(all.error, "");
    EXPECT_EQ(linesIn(compressed("one\n") + compressed("two\n")).lines, (Texts{"one", "two"}));
    EXPECT_EQ(linesIn(compressed("")).lines, Texts{});
}

TEST(LineSource, CountsTheBytesOfTheFile) {
    const std::string text(1 << 20, '\n');
    const std::string bytes = compressed(text);
    const TextFile file(bytes);
    LineSource source(file.path());
    std::string_view line;
    EXPECT_TRUE(source.next(line));
    while (source.next(line)) {
    }
    EXPECT_EQ(source.textBytes(), text.size());
    EXPECT_EQ(source.fileBytes(), bytes.size());
}

std::string manyNumbers() {
    std::string text;
    for (uint32_t i = 0; i < 50000; ++i) {
        text += std::to_string(i * 2654435761u) + "\n";
    }
    return text;
}

TEST(LineSource, GivesWhatACutGzipHas) {
    const std::string text = manyNumbers();
    const std::string whole = compressed(text);
    const Lines cut = linesIn(whole.substr(0, whole.size() / 2));
    EXPECT_EQ(cut.error, "the compressed data is cut");
    EXPECT_GT(cut.lines.size(), 20000u);
    EXPECT_EQ(cut.lines[1], "2654435761");
    EXPECT_EQ(linesIn(whole.substr(0, 5)).error, "the compressed data is cut");
}

TEST(LineSource, GivesWhatADamagedGzipHas) {
    std::string bytes = compressed(manyNumbers());
    for (size_t at = bytes.size() / 2; at < bytes.size() / 2 + 64; ++at) {
        bytes[at] = static_cast<char>(bytes[at] ^ 0xff);
    }
    const Lines damaged = linesIn(bytes);
    EXPECT_EQ(damaged.error.substr(0, 31), "the compressed data is damaged:");
    EXPECT_GT(damaged.lines.size(), 10000u);
}

TEST(LineSource, SaysWhatCannotBeOpened) {
    EXPECT_EQ(linesOf("/nowhere/a.log").error, "No such file or directory");
    EXPECT_EQ(linesOf("/").error, "Is a directory");
    EXPECT_EQ(linesOf("").error, "No such file or directory");
}

/// The lines of these bytes when they come through standard input.
Lines linesOfInput(const std::string& bytes) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    close(ends[1]);
    const int kept = dup(STDIN_FILENO);
    EXPECT_EQ(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
    close(ends[0]);
    Lines all = linesOf("-");
    if (kept >= 0) {
        dup2(kept, STDIN_FILENO);
        close(kept);
    }
    return all;
}

TEST(LineSource, ReadsStandardInput) {
    const Lines plain = linesOfInput("one\ntwo\n");
    EXPECT_EQ(plain.lines, (Texts{"one", "two"}));
    EXPECT_EQ(plain.error, "");
    const Lines packed = linesOfInput(compressed("one\ntwo\n"));
    EXPECT_EQ(packed.lines, (Texts{"one", "two"}));
    EXPECT_EQ(packed.error, "");
}

} // namespace

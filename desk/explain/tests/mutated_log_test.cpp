// Logs of the bridge, changed at random: each gives a report, whatever it holds.
//
// The log is docs/field/receiver.log.gz, or the file that DTV_EXPLAIN_LOG names.
// DTV_EXPLAIN_MUTATIONS says how many times it is changed (2000 without it), DTV_EXPLAIN_SEED with
// which number it begins.
#include "desk/explain/report_json.h"
#include "desk/explain/report_text.h"
#include "desk/explain/tests/short_log.h"

#include "desk/show/quoted_text.h"
#include "sessions/log/line_source.h"

#include <gtest/gtest.h>
#include <json/json.h>

#include <cstdlib>
#include <random>
#include <sstream>

namespace explain::tests {
namespace {

uint64_t numberIn(const char* variable, uint64_t otherwise) {
    const char* const value = std::getenv(variable);
    return value != nullptr ? std::strtoull(value, nullptr, 10) : otherwise;
}

std::vector<std::string> linesOfLog() {
    const char* const other = std::getenv("DTV_EXPLAIN_LOG");
    sessions::LineSource source(other != nullptr ? other : DTV_FIELD_LOG);
    std::vector<std::string> lines;
    for (std::string_view line; source.next(line);) {
        lines.emplace_back(line);
    }
    EXPECT_EQ(source.error(), "");
    return lines;
}

class Mutation {
public:
    Mutation(const std::vector<std::string>& lines, uint64_t seed) : random_(seed) {
        const size_t count = 1 + below(std::min<size_t>(lines.size(), 600));
        const size_t begin = below(2) == 0 ? 0 : below(lines.size() - count + 1);
        lines_.assign(lines.begin() + static_cast<ptrdiff_t>(begin),
                      lines.begin() + static_cast<ptrdiff_t>(begin + count));
        for (size_t changes = below(12) + 1; changes > 0 && !lines_.empty(); --changes) {
            change();
        }
    }

    std::string text() {
        std::string text;
        const char* const end = below(8) == 0 ? "\r\n" : "\n";
        for (const std::string& line : lines_) {
            text += line + end;
        }
        if (below(4) == 0) {
            text.resize(below(text.size() + 1));
        }
        for (size_t bytes = below(4) == 0 ? below(20) : 0; bytes > 0 && !text.empty(); --bytes) {
            text[below(text.size())] = static_cast<char>(below(256));
        }
        return text;
    }

private:
    size_t below(size_t limit) { return limit == 0 ? 0 : static_cast<size_t>(random_() % limit); }
    std::string& anyLine() { return lines_[below(lines_.size())]; }

    void change() {
        switch (below(9)) {
        case 0:
            lines_.erase(lines_.begin() + static_cast<ptrdiff_t>(below(lines_.size())));
            break;
        case 1:
            drop(",FUNCEND  ,");
            break;
        case 2:
            drop(below(2) == 0 ? ",DEBUG    ," : ",FUNCSTART,");
            break;
        case 3:
            std::swap(anyLine(), anyLine());
            break;
        case 4:
            anyLine().resize(below(100), 'x');
            break;
        case 5:
            repeat();
            break;
        case 6:
            replaceNumbers();
            break;
        case 7:
            insert();
            break;
        default:
            moveEvents();
            break;
        }
    }

    void drop(const char* word) {
        std::vector<std::string> kept;
        for (const std::string& line : lines_) {
            if (line.find(word) == std::string::npos || below(20) == 0) {
                kept.push_back(line);
            }
        }
        lines_ = kept;
    }

    void repeat() {
        const size_t begin = below(lines_.size());
        const size_t count = below(std::min<size_t>(lines_.size() - begin, 40)) + 1;
        const std::vector<std::string> some(lines_.begin() + static_cast<ptrdiff_t>(begin),
                                            lines_.begin() + static_cast<ptrdiff_t>(begin + count));
        lines_.insert(lines_.begin() + static_cast<ptrdiff_t>(below(lines_.size())), some.begin(),
                      some.end());
    }

    void replaceNumbers() {
        static const char* const kNumbers[] = {
            "0",          "-1",          "5",          "65535",
            "2147483647", "-2147483648", "4294967296", "99999999999999999999"};
        for (int i = 0; i < 20; ++i) {
            std::string& line = anyLine();
            const size_t equals = line.find(" = ", below(line.size() + 1));
            if (equals != std::string::npos) {
                const size_t end = line.find_first_not_of("-0123456789abcdef", equals + 3);
                line.replace(equals + 3,
                             end == std::string::npos ? std::string::npos : end - equals - 3,
                             kNumbers[below(8)]);
            }
        }
    }

    void insert() {
        static const char* const kLines[] = {
            "--------- beginning of main",
            "uid=10045(u0_a45) expire 99999999999999999999 lines",
            "I/chatty  ( 3109): uid=1000 identical 3 lines",
            "java.lang.IllegalStateException: \xe3\x81\xaa\xe3\x81\x84",
            "\tat tenrik.service.dtvserver.BGCallBack.onEvDtvsvScanNotify(BGCallBack.java:1)",
            "\tat a.DtvServerProxy.DtvSvLib_\x1b[2J(Native Method)",
            ",TENRIK,",
            "[ 13-99 99:99:99.999  1: 1 I/ ]",
            ",TENRIK,x,DEBUG    ,recvEventFromServer(),999999999,env is NULL!",
        };
        lines_.insert(lines_.begin() + static_cast<ptrdiff_t>(below(lines_.size() + 1)),
                      kLines[below(9)]);
    }

    /// Puts each line of a kind at another place.
    void moveEvents() {
        for (int i = 0; i < 5; ++i) {
            const size_t from = below(lines_.size());
            const std::string line = lines_[from];
            lines_.erase(lines_.begin() + static_cast<ptrdiff_t>(from));
            lines_.insert(lines_.begin() + static_cast<ptrdiff_t>(below(lines_.size() + 1)), line);
        }
    }

    std::mt19937_64 random_;
    std::vector<std::string> lines_;
};

void checkText(const Explained& explained) {
    std::ostringstream out;
    writeText(out, explained, Selection{});
    std::istringstream input(out.str());
    for (std::string line; std::getline(input, line);) {
        ASSERT_LE(show::columnsOf(line), 80U) << line;
    }
}

void checkFindings(const Explained& explained) {
    const std::vector<Finding>& findings = explained.analysis.findings();
    for (size_t i = 0; i < findings.size(); ++i) {
        const Finding& finding = findings[i];
        ASSERT_EQ(finding.id, static_cast<int>(i) + 1);
        ASSERT_FALSE(finding.lines.empty());
        ASSERT_GE(finding.lines.front(), 1U);
        ASSERT_LE(finding.last_line, explained.counts.lines);
        ASSERT_GE(finding.count, finding.lines.size());
        if (finding.caused_by != 0) {
            // A cause has no cause of its own, and comes before what follows from it.
            ASSERT_LT(finding.caused_by, finding.id);
            ASSERT_EQ(findings[static_cast<size_t>(finding.caused_by) - 1].caused_by, 0);
        }
    }
    ASSERT_EQ(verdictOf(explained) == Verdict::kFound, !findings.empty());
}

void checkJson(const Explained& explained) {
    std::ostringstream out;
    writeJson(out, explained, Selection{});
    Json::Value document;
    std::istringstream input(out.str());
    ASSERT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), input, &document, nullptr))
        << out.str();
    ASSERT_EQ(document["findings"].size(), explained.analysis.findings().size());
    ASSERT_EQ(document["lines"].asUInt64(), explained.counts.lines);
    std::ostringstream objects;
    writeNdjson(objects, explained);
    std::istringstream lines(objects.str());
    for (std::string line; std::getline(lines, line);) {
        std::istringstream object(line);
        ASSERT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), object, &document, nullptr))
            << line;
    }
}

TEST(MutatedLog, GivesAReport) {
    const std::vector<std::string> lines = linesOfLog();
    ASSERT_GT(lines.size(), 100U);
    const uint64_t first = numberIn("DTV_EXPLAIN_SEED", 1);
    const uint64_t count = numberIn("DTV_EXPLAIN_MUTATIONS", 2000);
    size_t found = 0;
    for (uint64_t seed = first; seed < first + count; ++seed) {
        SCOPED_TRACE("DTV_EXPLAIN_MUTATIONS=1 DTV_EXPLAIN_SEED=" + std::to_string(seed));
        const auto explained = explain(Mutation(lines, seed).text());
        ASSERT_NO_FATAL_FAILURE(checkFindings(*explained));
        ASSERT_NO_FATAL_FAILURE(checkText(*explained));
        ASSERT_NO_FATAL_FAILURE(checkJson(*explained));
        found += verdictOf(*explained) == Verdict::kFound ? 1 : 0;
    }
    // The log itself has findings: none in all of its parts would mean that nothing was read.
    EXPECT_GE(found * 10, count);
}

} // namespace
} // namespace explain::tests

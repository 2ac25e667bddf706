#include "replay/report.h"

#include "replay/findings.h"

#include "desk/show/brief_text.h"
#include "desk/show/message.h"
#include "desk/show/names.h"
#include "desk/show/quoted_text.h"

#include <algorithm>
#include <sstream>

namespace replay {
namespace {

// Exit statuses.
constexpr int kSame = 0;
constexpr int kDiverged = 1;
constexpr int kNotReplayed = 2;

constexpr size_t kColumns = 80;
constexpr size_t kSentenceLines = 2;
constexpr size_t kFieldLines = 5;
constexpr size_t kNameColumns = 24;
constexpr size_t kValueColumns = 25;

using Lines = std::vector<std::string>;

/// The text in that many columns: shortened, with a tilde at its end then. Of ASCII and what shown
/// texts are made of.
std::string shortened(const std::string& text, size_t columns) {
    if (show::columnsOf(text) <= columns) {
        return text;
    }
    std::string result = text;
    do {
        // The bytes of a character go together.
        do {
            result.pop_back();
        } while (!result.empty() && (static_cast<unsigned char>(result.back()) & 0x80) != 0 &&
                 (static_cast<unsigned char>(text[result.size()]) & 0xc0) == 0x80);
    } while (show::columnsOf(result) + 1 > columns);
    return result + '~';
}

std::string column(const std::string& text, size_t columns) {
    std::string cell = shortened(text, columns);
    cell.append(columns - std::min(columns, show::columnsOf(cell)), ' ');
    return cell;
}

std::string row(const std::string& name, const std::string& recorded, const std::string& run) {
    std::string line = "  " + column(name, kNameColumns) + "  " + column(recorded, kValueColumns) +
                       "  " + shortened(run, kValueColumns);
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

void addFields(const std::vector<FieldDifference>& fields, Lines& lines) {
    if (fields.empty()) {
        return;
    }
    lines.push_back(row("", "recorded", "this run"));
    const size_t shown = fields.size() <= kFieldLines ? fields.size() : kFieldLines - 1;
    for (size_t i = 0; i < shown; ++i) {
        lines.push_back(row(fields[i].name, fields[i].recorded, fields[i].this_run));
    }
    if (fields.size() > shown) {
        lines.push_back("  and " + std::to_string(fields.size() - shown) + " more fields");
    }
}

/// A sentence on two lines at most.
void addWrapped(const std::string& sentence, Lines& lines) {
    std::vector<std::string> words;
    std::istringstream stream(sentence);
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    const Lines wrapped = show::wrappedWords(words, kColumns);
    for (size_t i = 0; i < wrapped.size() && i < kSentenceLines; ++i) {
        lines.push_back(shortened(wrapped[i], kColumns));
    }
}

std::string briefOf(const Entry& entry) {
    return show::briefLine(entry.message, entry.link, show::localTime(entry.message.time).time);
}

void addBefore(const Recording& recording, size_t end, Lines& lines) {
    const size_t begin = end - std::min(end, kMessagesBefore);
    if (begin < end) {
        lines.emplace_back("before it");
    }
    for (size_t index = begin; index < end; ++index) {
        lines.push_back(briefOf(recording.entries[index]));
    }
}

std::string countsText(const Divergences& divergences) {
    std::string text;
    for (size_t index = 0; index < kDifferences; ++index) {
        const size_t count = divergences.counts[index];
        if (count > 0) {
            text += (text.empty() ? "" : ", ") + std::to_string(count) + ' ' +
                    nameOf(static_cast<Difference>(index));
        }
    }
    return text;
}

std::string sumText(const Recording& recording, const Outcome& outcome) {
    const size_t total = outcome.divergences.total();
    std::string text = "replay: " + std::to_string(outcome.passed) + " of " +
                       std::to_string(recording.messages) + " messages, ";
    text += total == 0 ? "no" : std::to_string(total);
    text += total < 2 ? " divergence" : " divergences";
    const size_t left_out = recording.left_out + outcome.not_delivered;
    if (left_out > 0) {
        text += ", " + std::to_string(left_out) + " left out";
    }
    if (statusOf(outcome) == kNotReplayed) {
        text += ": nothing was replayed";
    }
    return text;
}

} // namespace

int statusOf(const Outcome& outcome) {
    if (outcome.divergences.total() > 0) {
        return kDiverged;
    }
    return outcome.passed > 0 ? kSame : kNotReplayed;
}

Lines reportLines(const std::string& file, const Recording& recording, const Outcome& outcome) {
    Lines lines;
    if (const std::optional<Divergence>& first = outcome.divergences.first) {
        const Finding finding = findingOf(recording, *first);
        addWrapped(show::shownText(file) + ": the first divergence is at message " +
                       std::to_string(finding.number) + ':',
                   lines);
        addWrapped(finding.what, lines);
        addFields(finding.fields, lines);
        addBefore(recording, first->entry, lines);
        lines.push_back("divergences: " + countsText(outcome.divergences));
        if (outcome.stalled) {
            lines.emplace_back("It ended there, because nothing came any more.");
        }
    }
    lines.push_back(sumText(recording, outcome));
    return lines;
}

} // namespace replay

// What follows from what, and that nothing does when the relation is missing.
#include "desk/explain/folding.h"

#include <gtest/gtest.h>

namespace explain::tests {
namespace {

using Texts = std::vector<std::string>;

/// A finding at a line, with what relates it to others.
RelatedFinding at(uint64_t line, Rule rule, const std::string& subject,
                  std::optional<int> handle = 1, std::set<std::string> failed = {}) {
    RelatedFinding found;
    found.finding.key = {rule, subject, {}};
    found.finding.first.line = line;
    found.finding.lines = {line};
    found.finding.count = 1;
    found.relations.handle = handle;
    found.relations.failed = std::move(failed);
    return found;
}

RelatedFinding ofClass(uint64_t line, Rule rule, const std::string& subject, int class_id,
                       int method_id = -1) {
    RelatedFinding found = at(line, rule, subject);
    found.relations.class_id = class_id;
    found.relations.method_id = method_id;
    return found;
}

/// "rule subject", and of what follows from another " <- ID: RELATION".
Texts folded(std::vector<RelatedFinding> found) {
    Texts texts;
    for (const Finding& finding : withFirstCauses(std::move(found))) {
        texts.push_back(std::to_string(finding.id) + " " + nameOf(finding.severity) + " " +
                        textOf(finding.key.rule).name + " " + finding.key.subject);
        if (finding.caused_by != 0) {
            texts.back() += " <- " + std::to_string(finding.caused_by) + ": " + finding.relation;
        }
    }
    return texts;
}

/// What the second of two findings follows from; empty: from nothing.
std::string relationOf(const RelatedFinding& cause, const RelatedFinding& symptom) {
    for (const Finding& finding : withFirstCauses({cause, symptom})) {
        if (finding.key.rule == symptom.finding.key.rule &&
            finding.key.subject == symptom.finding.key.subject &&
            finding.first.line == symptom.finding.first.line) {
            return finding.relation;
        }
    }
    return "it is not there";
}

TEST(Folding, TheLoad) {
    EXPECT_EQ(
        relationOf(at(3, Rule::kNativeMissing, "DtvServerProxy"), at(4, Rule::kLoadFailed, "")),
        "the load fails without the native methods");
    EXPECT_EQ(relationOf(at(3, Rule::kClassMissing, "X"), at(4, Rule::kLoadFailed, "")), "");
}

TEST(Folding, AClass) {
    const RelatedFinding missing = ofClass(3, Rule::kClassMissing, "BG_EV", 47);
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kMethodMissing, "BG_EV.<init>", 47)),
              "the same class");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kObjectNotMade, "CreateReply", 47)),
              "the same class");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kMethodMissing, "BG_EV2.<init>", 46)), "");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kObjectNotMade, "CreateReply", -1)), "");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kCommandFailed, "CreateReply", 47)), "");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kResultNotMade, "StartScan", 47)),
              "an object of the class");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kResultNotMade, "StartScan", -1)),
              "an object of the class");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kResultNotMade, "StartScan", 46)), "");
    EXPECT_EQ(relationOf(ofClass(3, Rule::kClassMissing, "BG_EV", -1),
                         ofClass(9, Rule::kObjectNotMade, "CreateReply", -1)),
              "");
}

TEST(Folding, AMethod) {
    const RelatedFinding missing = ofClass(3, Rule::kMethodMissing, "BG_EV.<init>", 47, 114);
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kObjectNotMade, "CreateReply", 47, 114)),
              "the same constructor");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kObjectNotMade, "CreateReply", 47, 115)), "");
    EXPECT_EQ(relationOf(missing, ofClass(9, Rule::kResultNotMade, "CreateReply", 47, 114)), "");
}

TEST(Folding, AServiceThatStopped) {
    const RelatedFinding stop = at(30, Rule::kServiceStopped, "ControlLNA");
    for (const Rule rule :
         {Rule::kNoReply, Rule::kCommandNotTaken, Rule::kEmptyAnswer, Rule::kCommandFailed}) {
        EXPECT_EQ(relationOf(stop, at(30, rule, "SetTunerLog", 2)), "the service had stopped");
        EXPECT_EQ(relationOf(stop, at(29, rule, "SetTunerLog", 2)), "");
    }
    EXPECT_EQ(relationOf(stop, at(40, Rule::kSlowReply, "SetTunerLog", 2)), "");
    EXPECT_EQ(relationOf(stop, at(40, Rule::kCallbackThrew, "ScanNotify", {})), "");
}

TEST(Folding, TheSameCommand) {
    for (const Rule cause :
         {Rule::kCommandAfterRelease, Rule::kCommandWithoutSession, Rule::kCommandOutOfPlace}) {
        const RelatedFinding wrong = at(30, cause, "PausePlay");
        for (const Rule rule :
             {Rule::kCommandFailed, Rule::kNoReply, Rule::kCommandNotTaken, Rule::kEmptyAnswer}) {
            EXPECT_EQ(relationOf(wrong, at(40, rule, "PausePlay")), "the same command");
            EXPECT_EQ(relationOf(wrong, at(40, rule, "StartScan")), "");
            EXPECT_EQ(relationOf(wrong, at(40, rule, "PausePlay", 2)), "");
        }
    }
}

TEST(Folding, WhatFollowsFromSomethingProvokedIsProvoked) {
    EXPECT_EQ(folded({at(30, Rule::kCommandOutOfPlace, "PausePlay"),
                      at(40, Rule::kCommandFailed, "PausePlay")}),
              (Texts{"1 provoked command-out-of-place PausePlay",
                     "2 provoked command-failed PausePlay <- 1: the same command"}));
}

TEST(Folding, ASessionThatWasNeverOpened) {
    for (const Rule cause : {Rule::kArgumentRefused, Rule::kCommandFailed, Rule::kNoReply,
                             Rule::kCommandNotTaken, Rule::kServiceStopped}) {
        const RelatedFinding create = at(3, cause, "Create", {});
        EXPECT_EQ(relationOf(create, at(9, Rule::kCommandWithoutSession, "StartScan")),
                  "no session was opened");
        EXPECT_EQ(relationOf(create, at(9, Rule::kEventWithoutSession, "ScanNotify")),
                  "no session was opened");
        EXPECT_EQ(relationOf(create, at(2, Rule::kCommandWithoutSession, "StartScan")), "");
        EXPECT_EQ(relationOf(create, at(9, Rule::kCommandAfterRelease, "StartScan")), "");
    }
    EXPECT_EQ(relationOf(at(3, Rule::kSlowReply, "Create", {}),
                         at(9, Rule::kCommandWithoutSession, "StartScan")),
              "");
    EXPECT_EQ(relationOf(at(3, Rule::kCommandFailed, "Release", {}),
                         at(9, Rule::kCommandWithoutSession, "StartScan")),
              "");
}

TEST(Folding, ACommandThatNeedsAnother) {
    const RelatedFinding play = at(30, Rule::kArgumentRefused, "StartPlay");
    EXPECT_EQ(relationOf(play, at(40, Rule::kCommandFailed, "PausePlay", 1, {"StartPlay"})),
              "it needs the other command");
    EXPECT_EQ(relationOf(play, at(40, Rule::kCommandOutOfPlace, "PausePlay", 1, {"StartPlay"})),
              "it needs the other command");
    // It succeeded in the meantime.
    EXPECT_EQ(relationOf(play, at(40, Rule::kCommandFailed, "PausePlay", 1, {})), "");
    EXPECT_EQ(relationOf(play, at(40, Rule::kCommandFailed, "PausePlay", 2, {"StartPlay"})), "");
    EXPECT_EQ(relationOf(play, at(29, Rule::kCommandFailed, "PausePlay", 1, {"StartPlay"})), "");
    EXPECT_EQ(relationOf(play, at(40, Rule::kCommandFailed, "StartScan", 1, {"StartPlay"})), "");
    EXPECT_EQ(relationOf(play, at(40, Rule::kSlowReply, "PausePlay", 1, {"StartPlay"})), "");
    EXPECT_EQ(relationOf(at(30, Rule::kSlowReply, "StartPlay"),
                         at(40, Rule::kCommandFailed, "PausePlay", 1, {"StartPlay"})),
              "");
}

TEST(Folding, NothingIsShownWithoutReception) {
    const RelatedFinding select = at(30, Rule::kCommandFailed, "StartBroadcastReceiving");
    EXPECT_EQ(relationOf(select,
                         at(40, Rule::kCommandFailed, "StartRec", 1, {"StartBroadcastReceiving"})),
              "it needs the other command");
    EXPECT_EQ(relationOf(select, at(40, Rule::kCommandFailed, "ControlLNA", 1,
                                    {"StartBroadcastReceiving"})),
              "");
}

TEST(Folding, LaterInTheSameSession) {
    for (const Rule rule : {Rule::kNoReply, Rule::kCommandNotTaken}) {
        EXPECT_EQ(relationOf(at(30, rule, "StartScan"), at(40, rule, "ControlLNA")),
                  "later in the same session");
        EXPECT_EQ(relationOf(at(30, rule, "StartScan"), at(40, rule, "ControlLNA", 2)), "");
        EXPECT_EQ(relationOf(at(30, rule, "StartScan", {}), at(40, rule, "ControlLNA", {})), "");
    }
    for (const Rule rule : {Rule::kSlowReply, Rule::kNoReply}) {
        EXPECT_EQ(relationOf(at(30, rule, "StartScan"), at(40, Rule::kSlowReply, "ControlLNA")),
                  "later in the same session");
    }
    EXPECT_EQ(
        relationOf(at(30, Rule::kSlowReply, "StartScan"), at(40, Rule::kNoReply, "ControlLNA")),
        "");
    EXPECT_EQ(relationOf(at(30, Rule::kNoReply, "StartScan"),
                         at(40, Rule::kCommandNotTaken, "ControlLNA")),
              "");
}

TEST(Folding, WhatLasts) {
    EXPECT_EQ(relationOf(at(30, Rule::kThreadTableFull, "ScanNotify", {}),
                         at(40, Rule::kThreadTableFull, "BadSensNotify", {})),
              "the table is full");
    EXPECT_EQ(relationOf(at(30, Rule::kAttachFailed, "ScanNotify", {}),
                         at(40, Rule::kAttachFailed, "BadSensNotify", {})),
              "no thread was attached");
    EXPECT_EQ(relationOf(at(30, Rule::kAttachFailed, "ScanNotify", {}),
                         at(40, Rule::kThreadTableFull, "BadSensNotify", {})),
              "");
    EXPECT_EQ(relationOf(at(30, Rule::kRecordSize, "ScanNotify", {}),
                         at(40, Rule::kRecordSize, "BadSensNotify", {})),
              "");
}

TEST(Folding, AChainLeadsToItsFirst) {
    EXPECT_EQ(folded({at(50, Rule::kSlowReply, "SetTunerLog"), at(40, Rule::kNoReply, "ControlLNA"),
                      at(30, Rule::kNoReply, "StartScan")}),
              (Texts{"1 error no-reply StartScan",
                     "2 error no-reply ControlLNA <- 1: later in the same session",
                     "3 warning slow-reply SetTunerLog <- 1: later in the same session"}));
}

TEST(Folding, TheWorstFirstThenByLine) {
    EXPECT_EQ(
        folded({at(10, Rule::kArgumentRefused, "SelectChannel"),
                at(20, Rule::kSlowReply, "StartScan", 3), at(25, Rule::kNoReply, "StartScan", 2),
                at(30, Rule::kUnknownEvent, "0x1000009f", {}),
                at(50, Rule::kRecordSize, "ScanNotify", {}),
                at(40, Rule::kCallbackThrew, "ScanNotify", {})}),
        (Texts{"1 error callback-threw ScanNotify", "2 error record-size ScanNotify",
               "3 warning unknown-event 0x1000009f", "4 error no-reply StartScan",
               "5 warning slow-reply StartScan", "6 provoked argument-refused SelectChannel"}));
}

TEST(Folding, OfNothing) {
    EXPECT_EQ(folded({}), Texts{});
}

} // namespace
} // namespace explain::tests

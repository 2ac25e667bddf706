// The arguments of dtv-show.
#include "desk/show/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using show::Options;
using testing::ElementsAre;

Options optionsOf(const std::vector<std::string>& arguments) {
    Options options;
    EXPECT_EQ(show::takeArguments(arguments, options).what, "");
    return options;
}

std::string errorOf(const std::vector<std::string>& arguments) {
    Options options;
    return show::takeArguments(arguments, options).what;
}

TEST(Options, AreTakenWithTheirValues) {
    const Options options =
        optionsOf({"--brief", "--session", "3", "--session=0xFFFF", "--thread", "evening", "file",
                   "--kind", "refused", "--only=Create", "--from", "20:14", "--to", "2026-03-31"});
    EXPECT_EQ(options.form, show::Form::kBrief);
    EXPECT_FALSE(options.follow);
    EXPECT_EQ(options.file, "file");
    EXPECT_THAT(options.filter.sessions, ElementsAre(3, 65535));
    EXPECT_THAT(options.filter.threads, ElementsAre("evening"));
    EXPECT_THAT(options.filter.kinds, ElementsAre(4));
    EXPECT_THAT(options.filter.ids, ElementsAre(0x10000000));
    EXPECT_TRUE(options.filter.times.first->of_day);
    EXPECT_FALSE(options.filter.times.last->of_day);
}

TEST(Options, MayBeLeftOut) {
    const Options options = optionsOf({"--", "--brief"});
    EXPECT_EQ(options.file, "--brief");
    EXPECT_EQ(options.form, show::Form::kText);
    EXPECT_TRUE(options.filter.takesAll());
    EXPECT_EQ(optionsOf({"-"}).file, "-");
    EXPECT_EQ(optionsOf({"--help", "--nothing"}).task, Options::Task::kHelp);
    EXPECT_EQ(optionsOf({"--list"}).task, Options::Task::kList);
    EXPECT_EQ(optionsOf({"--mermaid", "a"}).task, Options::Task::kMermaid);
    EXPECT_EQ(optionsOf({"--perfetto=out", "a"}).task, Options::Task::kPerfetto);
    EXPECT_EQ(optionsOf({"--perfetto", "out", "a"}).output, "out");
}

TEST(Options, AreRefusedWithAReason) {
    EXPECT_EQ(errorOf({}), "no file is given");
    EXPECT_EQ(errorOf({""}), "the name of the file is empty");
    EXPECT_EQ(errorOf({"a", "b"}), "one file at a time");
    EXPECT_EQ(errorOf({"--bref", "a"}), "unknown option --bref");
    EXPECT_EQ(errorOf({"--brief=1", "a"}), "unknown option --brief=1");
    EXPECT_EQ(errorOf({"--brief", "--json", "a"}), "--brief and --json exclude each other");
    EXPECT_EQ(errorOf({"a", "--session"}), "--session needs a handle");
    EXPECT_EQ(errorOf({"a", "--from"}), "--from needs a time");
    EXPECT_EQ(errorOf({"--list", "--brief"}), "--list takes no file and no option");
    EXPECT_EQ(errorOf({"--list", "--session", "3"}), "--list takes no file and no option");
    EXPECT_EQ(errorOf({"--wireshark"}), "no file is given");
    EXPECT_EQ(errorOf({"--perfetto", "out"}), "no file is given");
    EXPECT_EQ(errorOf({"a", "--perfetto"}), "--perfetto needs the name of the file to write");
    EXPECT_EQ(errorOf({"--perfetto=", "a"}), "--perfetto needs the name of one file");
    EXPECT_EQ(errorOf({"--perfetto=b", "--perfetto=c", "a"}),
              "--perfetto needs the name of one file");
    EXPECT_EQ(errorOf({"--perfetto=b", "--mermaid", "a"}),
              "--list, --wireshark, --perfetto and --mermaid exclude each other");
    for (const char* other : {"--brief", "--json", "--follow", "--redact"}) {
        EXPECT_EQ(
            errorOf({"--mermaid", other, "a"}),
            "--perfetto and --mermaid go with none of --brief, --json, --follow and --redact");
    }
    EXPECT_EQ(errorOf({"--wireshark", "-"}),
              "--wireshark takes the name of a file and no other option");
    EXPECT_EQ(errorOf({"--wireshark", "--json", "a"}),
              "--wireshark takes the name of a file and no other option");
    EXPECT_EQ(errorOf({"--follow", "-"}),
              "--follow needs a file: standard input is read as it comes in any case");
    EXPECT_EQ(errorOf({"--kind", "reply", "a"}),
              "no kind of message is named reply; there are command, answer, event and refused");
    EXPECT_EQ(errorOf({"--only", "selectchannel", "a"}),
              "no message is named selectchannel; the nearest is SelectChannel");
    for (const char* handle : {"", "x", "-1", "65536", "0x", "0x10000", "1 ", "999999999"}) {
        EXPECT_EQ(errorOf({"--session", handle, "a"}),
                  std::string("--session ") + handle + ": a handle is a number from 0 to 65535");
    }
    EXPECT_EQ(errorOf({"--from", "25:00", "a"}),
              "--from 25:00: a time is written as 20:14, 20:14:03.5, 2026-03-31 or "
              "\"2026-03-31 20:14:03\"; after a date, a Z at the end means UTC");
    EXPECT_EQ(errorOf({"--to", "20:14", "--to", "20:15", "a"}), "--to is given twice");
    EXPECT_EQ(errorOf({"--from", "2026-03-31", "--to", "2026-03-30", "a"}),
              "--to is before --from");
}

TEST(Filter, TakesWhatAllPartsAskFor) {
    sessions::Message message;
    message.kind = 4;
    message.id = 0x1000007f;
    message.thread_id = 4711;
    message.thread_name = "DtvEvent-1";
    sessions::Link link;
    link.session = 3;
    const auto takes = [&](const std::vector<std::string>& arguments) {
        return optionsOf(arguments).filter.takes(message, link);
    };
    EXPECT_TRUE(takes({"a"}));
    EXPECT_TRUE(takes({"--session", "3", "a"})) << "by its partner";
    EXPECT_TRUE(takes({"--session", "4", "--session", "3", "a"}));
    EXPECT_FALSE(takes({"--session", "4", "a"}));
    EXPECT_TRUE(takes({"--thread", "4711", "a"}));
    EXPECT_TRUE(takes({"--thread", "DtvEvent-1", "a"}));
    EXPECT_FALSE(takes({"--thread", "DtvEvent", "a"}));
    EXPECT_TRUE(takes({"--only", "ScanNotify", "--kind", "refused", "--session", "3", "a"}));
    EXPECT_FALSE(takes({"--only", "ScanNotify", "--kind", "event", "--session", "3", "a"}));
    EXPECT_FALSE(takes({"--only", "Create", "--kind", "refused", "a"}));
    link.session.reset();
    EXPECT_FALSE(takes({"--session", "3", "a"}));
}

} // namespace

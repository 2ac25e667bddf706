// Events with texts and arrays on several threads at once, each with contents of its own: what
// reaches Java is complete and belongs to no other thread's event.
#include "events/programme/programme_cases.h"
#include "events/request/request_cases.h"

#include <atomic>
#include <map>

namespace {

using namespace events;
using namespace harness;

constexpr int threadCount = 8;
constexpr int rounds = 500;

/// `text` with every mark replaced by the thread's letter.
std::string of(int thread, std::string text) {
    for (char& character : text) {
        if (character == '#') {
            character = static_cast<char>('a' + thread);
        }
    }
    return text;
}

std::u16string units(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string number(long long value) {
    return std::to_string(value);
}

struct Kind {
    int id;
    Record record;
    std::string callback;
};

Kind mail(int thread) {
    const std::string body = of(thread, std::string(400, '#') + " body");
    Record record(2530);
    record.u16(0, static_cast<unsigned>(thread)).text(2, of(thread, "title #"));
    record.text(126, of(thread, "#@example.jp")).text(526, body);
    return {0x10000047, record,
            "onEvDtvsvBmlMailReq BG_EV_DTVSV_BML_MAIL_REQ(" + number(thread) +
                ", BG_TS_DTVSVLIB_MAIL_REQ(\"" + of(thread, "title #") + "\", \"" +
                of(thread, "#@example.jp") + "\", \"" + body + "\"))"};
}

Kind enrolment(int thread) {
    Record record(960);
    record.u16(0, static_cast<unsigned>(thread)).text(2, of(thread, "Link #"));
    record.text(166, of(thread, "http://#/")).text(410, of(thread, "Where # leads"));
    record.u8(934, 10U + static_cast<unsigned>(thread));
    std::string date;
    for (unsigned field = 0; field < 7; ++field) {
        const unsigned value = 100 * static_cast<unsigned>(thread) + field;
        record.u16(936 + 2 * field, value);
        date += (field == 0 ? "" : ", ") + number(value);
    }
    record.u16(950, 500U + static_cast<unsigned>(thread))
        .u16(952, 600U + static_cast<unsigned>(thread));
    record.fill(954, 6, 20U + static_cast<unsigned>(thread));
    const std::string byte = number(20 + thread);
    return {0x1000004e, record,
            "onEvDtvsvBmlEnrolTvlinkReq BG_EV_DTVSV_BML_ENROL_TVLINK_REQ(" + number(thread) +
                ", BG_TS_DTVSVLIB_ENROL_TVLINK_REQ(\"" + of(thread, "Link #") + "\", \"" +
                of(thread, "http://#/") + "\", \"" + of(thread, "Where # leads") + "\", " +
                number(10 + thread) + ", BG_TS_DTVSVLIB_BML_TIME(" + date + "), " +
                number(500 + thread) + ", " + number(600 + thread) + ", bytes[" + byte + ", " +
                byte + ", " + byte + ", " + byte + ", " + byte + ", " + byte + "]))"};
}

/// A list of as many services as the thread's number, and one more at most.
Kind services(int thread) {
    const int count = thread % 8 + 1;
    Record record(436);
    record.fill(0, 436, 0).u16(0, static_cast<unsigned>(thread)).u32(4, 62).u16(8, 2);
    record.u32(12, 700U + static_cast<unsigned>(thread)).u8(16, static_cast<unsigned>(count));
    std::string list;
    for (int service = 0; service < count; ++service) {
        const size_t at = 20 + 52 * static_cast<size_t>(service);
        const std::string name = of(thread, "Service # ") + number(service);
        const unsigned id = 1000U * static_cast<unsigned>(thread) + static_cast<unsigned>(service);
        record.u32(at, id).u32(at + 4, static_cast<unsigned>(name.size())).text(at + 8, name);
        list += (service == 0 ? "" : ", ") + std::string("BG_TS_DTVSVLIB_SERVICE_INFO(") +
                number(id) + ", " + number(static_cast<long long>(name.size())) + ", \"" + name +
                "\")";
    }
    return {0x10000091, record,
            "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(" + number(thread) +
                ", BG_TS_DTVSVLIB_STREAM_INFO(" + number(700 + thread) + ", " + number(count) +
                ", [" + list + "]), 62L, 2)"};
}

/// A guide whose next programme is the thread's own, and that is followed by as many as its number.
Kind guide(int thread) {
    const std::string name = of(thread, "Name #");
    const std::string text = of(thread, "Text of # " + std::string(180, '#'));
    const unsigned own = static_cast<unsigned>(thread);
    Record record = guideRecord(own);
    record.u16(0, own);
    putProgramme(record, 652,
                 {own,
                  {2024, 2, 29},
                  {23, 59, 58, 999},
                  4,
                  {1, 30, 15, 500},
                  3,
                  2,
                  std::string(2, static_cast<char>(10 + thread)),
                  std::string(2, static_cast<char>(30 + thread)),
                  units(name),
                  units(text)});
    std::string following;
    for (unsigned programme = 0; programme < own; ++programme) {
        following += (programme == 0 ? "" : ", ") + followingTree(programme);
    }
    const std::string content = number(10 + thread);
    const std::string user = number(30 + thread);
    const std::string next =
        "BG_TS_DTVSVLIB_PRG_INFO(" + number(thread) +
        ", BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE(2024, 2, 29), BG_TS_DTVSVLIB_TIME(23, 59, "
        "58, 999)), 4, BG_TS_DTVSVLIB_TIME(1, 30, 15, 500), 3, 2, bytes[" +
        content + ", " + content + "], bytes[" + user + ", " + user + "], " +
        number(static_cast<long long>(name.size())) + ", \"" + name + "\", " +
        number(static_cast<long long>(text.size())) + ", \"" + text + "\")";
    return {0x10000093, record,
            "onEvDtvsvReceiveEpgInfoNotify BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(" + number(thread) +
                ", BG_TS_DTVSVLIB_EPG_INFO(101, " + std::string(currentTree) + ", " + next + ", " +
                number(thread) + ", [" + following + "]), 62L, 2)"};
}

TEST(ConcurrentTexts, ReachJavaComplete) {
    ASSERT_EQ(Product::load(), "");
    dtv::setLogLevelMask(0);
    CallbackRecorder callbacks;
    std::vector<std::vector<Kind>> kinds;
    std::vector<std::unique_ptr<EventThread>> threads;
    std::map<std::string, int> expected_callbacks;
    for (int i = 0; i < threadCount; ++i) {
        kinds.push_back({mail(i), guide(i), services(i), enrolment(i)});
        for (const Kind& kind : kinds.back()) {
            expected_callbacks[kind.callback] = rounds;
        }
        // The first event of each thread is delivered alone.
        threads.push_back(std::make_unique<EventThread>());
        threads.back()->run([] { EXPECT_EQ(deliver(0x10000041, {}), 1); });
    }
    std::atomic<int> failed{0};
    for (int i = 0; i < threadCount; ++i) {
        const std::vector<Kind>& own = kinds[static_cast<size_t>(i)];
        threads[static_cast<size_t>(i)]->start([&own, &failed] {
            for (int round = 0; round < rounds; ++round) {
                // All are in the same handler most of the time.
                for (const Kind& kind : own) {
                    failed.fetch_add(deliver(kind.id, kind.record.bytes()),
                                     std::memory_order_relaxed);
                }
            }
        });
    }
    for (auto& thread : threads) {
        thread->wait();
    }
    EXPECT_EQ(failed, 0);
    std::map<std::string, int> taken;
    for (const std::string& callback : callbacks.take()) {
        ++taken[callback];
    }
    EXPECT_EQ(taken.size(), expected_callbacks.size());
    for (const auto& [callback, count] : expected_callbacks) {
        EXPECT_EQ(taken[callback], count) << callback;
    }
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

} // namespace

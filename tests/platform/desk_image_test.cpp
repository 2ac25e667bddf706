// The rest of the desk's image: the log, the surfaces, the references of references.
#include "harness/harness.h"

#include <DtvSvCom.h>
#include <binder/Binder.h>
#include <gmock/gmock.h>

namespace {

using android::sp;
using testing::ElementsAre;

class Sink : public dtv::LogSink {
public:
    void write(const dtv::LogLine& line) override {
        texts.push_back(line.text);
        formats.push_back(line.format);
        masks.push_back(line.level_mask);
    }
    std::vector<std::string> texts;
    std::vector<std::string> formats;
    std::vector<unsigned long> masks;
};

class Log : public testing::Test {
protected:
    Log() { dtv::setLogSink(sink); }
    ~Log() override {
        dtv::setLogSink(nullptr);
        dtv::setLogLevelMask(2);
    }
    std::shared_ptr<Sink> sink = std::make_shared<Sink>();
};

TEST_F(Log, LetsThroughTheLevelsOfItsMask) {
    dtv::setLogLevelMask(2 | 512);
    DtvSvCom_Log(2, 6, "module", 2, "an error %d %s", 1, "x");
    DtvSvCom_Log(2, 5, "module", 1024, "a detail");
    DtvSvCom_Log(2, 5, "module", 512, "a change");
    EXPECT_THAT(sink->texts, ElementsAre("an error 1 x", "a change"));
    EXPECT_THAT(sink->formats, ElementsAre("an error %d %s", "a change"));
    EXPECT_THAT(sink->masks, ElementsAre(2ul, 512ul));
}

TEST_F(Log, WritesLongLinesWhole) {
    dtv::setLogLevelMask(2);
    for (size_t length : {509u, 510u, 511u, 512u, 513u, 5000u}) {
        DtvSvCom_Log(2, 6, "module", 2, "%s", std::string(length, 'y').c_str());
        EXPECT_EQ(sink->texts.back(), std::string(length, 'y'));
    }
}

TEST_F(Log, HasTheNameOfTheTask) {
    pthread_setname_np(pthread_self(), "a task");
    EXPECT_STREQ(DtvSvCom_GetMyTaskName(), "a task");
}

std::vector<int> gone;

struct TrackedSurface : android::Surface {
    explicit TrackedSurface(int number) : number(number) {}
    ~TrackedSurface() override { gone.push_back(number); }
    int number;
};

struct TrackedObject : android::BBinder {
    explicit TrackedObject(int number) : number(number) {}
    ~TrackedObject() override { gone.push_back(number); }
    int number;
};

TEST(SurfaceReferences, DropsItsReferencesFromTheLastToTheFirst) {
    gone.clear();
    {
        TS_DTVSV_SP references;
        for (int i = 0; i < 3; ++i) {
            references.surface[i] = new TrackedSurface(i + 1);
            references.object[i] = new TrackedObject(i + 11);
        }
    }
    EXPECT_THAT(gone, ElementsAre(13, 12, 11, 3, 2, 1));
}

TEST(Surfaces, HaveAddressesThatAnIntHolds) {
    std::vector<sp<android::Surface>> surfaces;
    for (int i = 0; i < 5000; ++i) {
        surfaces.push_back(new android::Surface);
        const auto address = reinterpret_cast<uintptr_t>(surfaces.back().get());
        if (sizeof(void*) > sizeof(int)) {
            ASSERT_LE(address + sizeof(android::Surface), 0x80000000u);
        }
        ASSERT_EQ(reinterpret_cast<android::Surface*>(
                      static_cast<uintptr_t>(static_cast<uint32_t>(static_cast<int>(address)))),
                  surfaces.back().get());
    }
}

} // namespace

// The native surfaces sent with a command: which slots they take, and who holds a reference at
// which time.
#include "commands/drawing_places.h"

#include <thread>

namespace {

using namespace commands;
using namespace harness;

constexpr const char* rotationClass = "BG_TE_DTVSVLIB_SCREEN_ROTATE";

class Surfaces : public CommandTest {
protected:
    jobject screen(jobject surface) { return screenInfo(surface, 1, 2, 0, 0); }
    jobject cap(jobject surface) { return capInfo(surface, 1, 2, 0, usualLayout()); }
    jobject bml(jobject surface) { return bmlInfo(surface, 1, 2, 0); }

    NativeSurface video;
    NativeSurface caption;
    NativeSurface data;

    /// The one message that was sent: how many surfaces, and which in which slot.
    void expectCarried(int count, const android::Surface* first, const android::Surface* second,
                       const android::Surface* third) {
        sent();
        ASSERT_EQ(messages.size(), 1U);
        EXPECT_TRUE(messages[0].had_references);
        EXPECT_EQ(messages[0].surface_count, count);
        EXPECT_EQ(messages[0].object_count, 0);
        EXPECT_EQ(messages[0].surfaces[0].surface, first);
        EXPECT_EQ(messages[0].surfaces[1].surface, second);
        EXPECT_EQ(messages[0].surfaces[2].surface, third);
    }
    void expectHeldDuringSend(int first, int second, int third) {
        ASSERT_EQ(messages.size(), 1U);
        EXPECT_EQ(messages[0].surfaces[0].strong_count, first);
        EXPECT_EQ(messages[0].surfaces[1].strong_count, second);
        EXPECT_EQ(messages[0].surfaces[2].strong_count, third);
    }
    void expectReleased() {
        EXPECT_EQ(video.count(), 1);
        EXPECT_EQ(caption.count(), 1);
        EXPECT_EQ(data.count(), 1);
    }
    jobject setting(jobject video_info, jobject cap_info, jobject bml_info) {
        return newObject("BG_TS_DTVSVLIB_COMPONENT_SETTING",
                         "(IIIIILtype/BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;"
                         "Ltype/BG_TS_DTVSVLIB_CAP_DRAWING_INFO;"
                         "Ltype/BG_TS_DTVSVLIB_BML_DRAWING_INFO;)V",
                         {0, 0, 0, 0, 0, video_info, cap_info, bml_info});
    }
};

TEST_F(Surfaces, OfOnePlane) {
    struct Command {
        const char* name;
        std::vector<Value> arguments;
    };
    const Command commands[] = {
        {"SetScreenDisplay", {3, screen(video.java())}},
        {"SetCapDisplay", {3, cap(video.java())}},
        {"SetBMLDisplay", {3, bml(video.java())}},
        {"ControlCap", {3, 0, 0, cap(video.java())}},
        {"ControlBML", {3, 0, bml(video.java())}},
        {"ControlCap_Sync", {3, 0, 0, cap(video.java())}},
        {"ControlBML_Sync", {3, 0, bml(video.java())}},
    };
    for (const Command& command : commands) {
        SCOPED_TRACE(command.name);
        for (int result : {0, -1}) {
            service->setResult(result);
            (void)run(command.name, command.arguments);
            expectCarried(1, video.get(), nullptr, nullptr);
            expectHeldDuringSend(2, 0, 0);
            expectReleased();
        }
    }
}

TEST_F(Surfaces, OfAllPlanesInOrder) {
    std::vector<Value> planes = {3, screen(video.java()), cap(caption.java()), bml(data.java())};
    for (int result : {0, 1}) {
        service->setResult(result);
        EXPECT_EQ(run("SetDisplayAll", planes), result == 0 ? "OK" : "NG");
        expectCarried(3, video.get(), caption.get(), data.get());
        expectHeldDuringSend(2, 2, 2);
        expectReleased();
    }
}

TEST_F(Surfaces, OfTheFirstComponentsInOrder) {
    jobject object = setting(screen(video.java()), cap(caption.java()), bml(data.java()));
    for (int result : {0, 1}) {
        service->setResult(result);
        EXPECT_EQ(run("SetFirstComponent", {3, object}), result == 0 ? "OK" : "NG");
        expectCarried(3, video.get(), caption.get(), data.get());
        expectHeldDuringSend(2, 2, 2);
        expectReleased();
    }
}

TEST_F(Surfaces, TheSameInAllPlanesIsHeldForEach) {
    jobject one = video.java();
    EXPECT_EQ(run("SetDisplayAll", {3, screen(one), cap(one), bml(one)}), "OK");
    expectCarried(3, video.get(), video.get(), video.get());
    expectHeldDuringSend(4, 4, 4);
    expectReleased();
    EXPECT_EQ(run("SetFirstComponent", {3, setting(screen(one), cap(one), bml(one))}), "OK");
    expectCarried(3, video.get(), video.get(), video.get());
    expectHeldDuringSend(4, 4, 4);
    expectReleased();
}

TEST_F(Surfaces, OneWithoutANativeSurfaceIsAnEmptySlotThatCounts) {
    jobject nothing = javaSurface(0);
    EXPECT_EQ(run("SetScreenDisplay", {3, screen(nothing)}), "OK");
    expectCarried(1, nullptr, nullptr, nullptr);
    EXPECT_EQ(run("ControlCap", {3, 0, 0, cap(nothing)}), "OK");
    expectCarried(1, nullptr, nullptr, nullptr);
    EXPECT_EQ(run("SetDisplayAll", {3, screen(video.java()), cap(nothing), bml(data.java())}),
              "OK");
    expectCarried(3, video.get(), nullptr, data.get());
    expectHeldDuringSend(2, 0, 2);
    EXPECT_EQ(run("SetFirstComponent", {3, setting(screen(nothing), cap(nothing), bml(nothing))}),
              "OK");
    expectCarried(3, nullptr, nullptr, nullptr);
    expectReleased();
}

TEST_F(Surfaces, APlaneWithoutOneIsRefused) {
    EXPECT_EQ(run("SetScreenDisplay", {3, screen(nullptr)}), "PARAM_NG");
    EXPECT_LINES("dtvSvLibSetScreenDisplay", R"(
        START |hdl = 3
        START setScreenDrawingInfo|
        END setScreenDrawingInfo|
        START setSurface|
        DEBUG setSurface|surface_object is NULL, ret = 1
        RESULT 5)");
    EXPECT_EQ(run("SetCapDisplay", {3, cap(nullptr)}), "PARAM_NG");
    EXPECT_LINES("dtvSvLibSetCapDisplay", R"(
        START |hdl = 3
        START setCapDrawingInfo|
        END setCapDrawingInfo|
        START setSurface|
        DEBUG setSurface|surface_object is NULL, ret = 1
        RESULT 5)");
    EXPECT_EQ(run("SetBMLDisplay", {3, bml(nullptr)}), "PARAM_NG");
    EXPECT_LINES("dtvSvLibSetBMLDisplay", R"(
        START |hdl = 3
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        START setSurface|
        DEBUG setSurface|surface_object is NULL, ret = 1
        RESULT 5)");
    EXPECT_EQ(run("ControlBML_Sync", {3, 0, bml(nullptr)}),
              "BG_TS_DTVSVLIB_CONTROL_BML_SYNC_INFO(5, 3)");
    EXPECT_LINES("dtvSvLibControlBML_Sync", R"(
        START |hdl = 3
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        START setSurface|
        DEBUG setSurface|surface_object is NULL, ret = 1
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x1000003e
        NEW 215 134
        END makeComReplyObjSync|)");
    EXPECT_EQ(sent(), "");
}

TEST_F(Surfaces, ALaterPlanesRefusalReleasesTheEarlierOnes) {
    EXPECT_EQ(run("SetDisplayAll", {3, screen(video.java()), cap(caption.java()), bml(nullptr)}),
              "PARAM_NG");
    expectReleased();
    EXPECT_EQ(run("SetDisplayAll", {3, screen(video.java()), cap(nullptr), bml(data.java())}),
              "PARAM_NG");
    expectReleased();
    EXPECT_EQ(run("SetDisplayAll", {3, screen(video.java()), cap(caption.java()), nullptr}),
              "PARAM_NG");
    expectReleased();
    jobject without_last = setting(screen(video.java()), cap(caption.java()), nullptr);
    EXPECT_EQ(run("SetFirstComponent", {3, without_last}), "PARAM_NG");
    expectReleased();
    jobject without_second = setting(screen(video.java()), nullptr, bml(data.java()));
    EXPECT_EQ(run("SetFirstComponent", {3, without_second}), "PARAM_NG");
    expectReleased();
    EXPECT_EQ(sent(), "");
}

/// A getter that throws while the planes are read: nothing more is done, nothing is kept.
TEST_F(Surfaces, AnExceptionReleasesTheEarlierOnes) {
    // Getters run in this order: rotation and mode, rotation, color and alpha, rotation.
    std::vector<Value> planes = {3, screen(video.java()), cap(caption.java()), bml(data.java())};
    FailJni thrown("CallStaticIntMethodV", 5);
    EXPECT_EQ(run("SetDisplayAll", planes), outOfMemory);
    EXPECT_EQ(sent(), "");
    expectReleased();
    EXPECT_LINES("dtvSvLibSetDisplayAll", R"(
        START |hdl = 3
        START setScreenDrawingInfo|
        END setScreenDrawingInfo|
        START setSurface|
        END setSurface|
        START setCapDrawingInfo|
        END setCapDrawingInfo|
        START setSurface|
        END setSurface|
        START setBMLDrawingInfo|)");
}

TEST_F(Surfaces, AnExceptionInALayoutReleasesTheEarlierOnes) {
    std::vector<Value> planes = {3, screen(video.java()), cap(caption.java()), bml(data.java())};
    for (int getter : {2, 3, 4}) {
        FailJni thrown("CallStaticIntMethodV", getter);
        EXPECT_EQ(run("SetDisplayAll", planes), outOfMemory);
        EXPECT_EQ(sent(), "");
        expectReleased();
        EXPECT_LINES("dtvSvLibSetDisplayAll", R"(
            START |hdl = 3
            START setScreenDrawingInfo|
            END setScreenDrawingInfo|
            START setSurface|
            END setSurface|
            START setCapDrawingInfo|)");
    }
}

TEST_F(Surfaces, AnExceptionInTheFirstPlane) {
    for (int getter : {0, 1}) {
        FailJni thrown("CallStaticIntMethodV", getter);
        EXPECT_EQ(run("SetScreenDisplay", {3, screen(video.java())}), outOfMemory);
        EXPECT_EQ(sent(), "");
        expectReleased();
        EXPECT_LINES("dtvSvLibSetScreenDisplay", R"(
            START |hdl = 3
            START setScreenDrawingInfo|)");
    }
    FailJni thrown("CallStaticIntMethodV");
    EXPECT_EQ(run("ControlBML_Sync", {3, 0, bml(video.java())}), outOfMemory);
    EXPECT_EQ(sent(), "");
    expectReleased();
    EXPECT_LINES("dtvSvLibControlBML_Sync", R"(
        START |hdl = 3
        START setBMLDrawingInfo|)");
}

/// A reference that the service copies from the references belongs to the service.
TEST_F(Surfaces, TheServiceMayKeepThem) {
    class Keeper : public dtv::ServiceEndpoint {
    public:
        int onCommand(const dtv::Command& command) override {
            kept = command.references->surface[0];
            return 0;
        }
        int onSynchronousCommand(const dtv::Command&, const dtv::Reply&) override { return -1; }
        android::sp<android::Surface> kept;
    };
    auto keeper = std::make_shared<Keeper>();
    dtv::setServiceEndpoint(keeper);
    EXPECT_EQ(run("SetBMLDisplay", {3, bml(video.java())}), "OK");
    EXPECT_EQ(keeper->kept.get(), video.get());
    EXPECT_EQ(video.count(), 2);
    keeper->kept.clear();
    expectReleased();
}

/// Commands of several Java threads at the same time share only the surface.
TEST_F(Surfaces, OfCommandsOnSeveralThreads) {
    jobject info = env()->NewGlobalRef(bml(video.java()));
    auto work = [info] {
        JavaVM* vm = VirtualMachine::instance().vm();
        void* attached = nullptr;
        ASSERT_EQ(vm->AttachCurrentThread(&attached, nullptr), JNI_OK);
        for (int i = 0; i < 50; ++i) {
            EXPECT_EQ(call("DtvSvLib_SetBMLDisplay", {3, info}),
                      "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK");
        }
        vm->DetachCurrentThread();
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    env()->DeleteGlobalRef(info);
    sent();
    EXPECT_EQ(messages.size(), 100U);
    for (const Message& message : messages) {
        EXPECT_EQ(message.text(), "1000000e surfaces=1: 03 00 01 00 02 00 00 00");
        EXPECT_EQ(message.surfaces[0].surface, video.get());
    }
    expectReleased();
}

TEST_F(Surfaces, RotationIsCheckedBeforeTheSurfaceIsTaken) {
    jobject info = screenInfo(nullptr, 1, 2, 3, 0);
    EnumValue four(rotationClass, "ROTATE_270", 4);
    EXPECT_EQ(run("SetScreenDisplay", {3, info}), "PARAM_NG");
    EXPECT_LINES("dtvSvLibSetScreenDisplay", R"(
        START |hdl = 3
        START setScreenDrawingInfo|
        DEBUG setScreenDrawingInfo|screen_rotate is too large : 4, ret = 1
        RESULT 5)");
    EXPECT_EQ(sent(), "");
}

} // namespace

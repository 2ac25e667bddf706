// The natives of tenrik.desk.Simulator: they put the simulator behind libDtv.
#include "simulator/simulator.h"

#include <gui/Surface.h>
#include <jni.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace {

void throwDeskException(JNIEnv* env, const std::string& message) {
    const jclass exception = env->FindClass("tenrik/desk/DeskException");
    if (exception != nullptr) {
        env->ThrowNew(exception, message.c_str());
    }
}

/// The characters of a Java string; empty, with an exception pending, when there is no memory.
std::string textOf(JNIEnv* env, jstring string) {
    const char* characters = env->GetStringUTFChars(string, nullptr);
    if (characters == nullptr) {
        return {};
    }
    std::string text(characters);
    env->ReleaseStringUTFChars(string, characters);
    return text;
}

} // namespace

extern "C" {

JNIEXPORT jintArray JNICALL Java_tenrik_desk_Simulator_startNative(JNIEnv* env, jclass,
                                                                   jstring table, jstring guide) {
    std::string error;
    std::optional<simulator::ChannelPlan> plan =
        simulator::readChannelTable(textOf(env, table), error);
    if (!plan) {
        throwDeskException(env, error);
        return nullptr;
    }
    std::optional<simulator::Guide> programmes = simulator::readGuide(textOf(env, guide), error);
    if (!programmes) {
        throwDeskException(env, error);
        return nullptr;
    }
    const std::array<jint, 4> counts{static_cast<jint>(plan->stations.size()), plan->vhf_entries,
                                     plan->beyond_entries, plan->unusable_entries};
    const jintArray result = env->NewIntArray(static_cast<jsize>(counts.size()));
    if (result == nullptr) {
        return nullptr;
    }
    env->SetIntArrayRegion(result, 0, static_cast<jsize>(counts.size()), counts.data());

    simulator::Options options;
    options.plan = std::move(*plan);
    options.guide = std::move(*programmes);
    dtv::setServiceEndpoint(std::make_shared<simulator::Simulator>(std::move(options)));
    return result;
}

JNIEXPORT jint JNICALL Java_tenrik_desk_Simulator_newSurface(JNIEnv*, jclass) {
    // The program's own reference is never dropped: Java objects may hold the address for ever.
    auto* surface = new android::Surface;
    surface->incStrong(surface);
    return static_cast<jint>(reinterpret_cast<intptr_t>(surface));
}

JNIEXPORT void JNICALL Java_tenrik_desk_Simulator_stop(JNIEnv*, jclass) {
    dtv::setServiceEndpoint(nullptr);
    dtv::stopDelivery();
}

JNIEXPORT void JNICALL Java_tenrik_desk_Simulator_leave(JNIEnv*, jclass, jint status) {
    std::fflush(nullptr);
    _exit(status);
}

} // extern "C"

// The natives of tenrik.desk.core.Simulator: they connect the simulator to libDtv.
#include "java_text.h"
#include "records/catalogue.h"
#include "service_options.h"
#include "simulator.h"

#include <gui/Surface.h>
#include <jni.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using desk::intArray;
using desk::textOf;

/// A Wednesday evening in São Paulo, when a run that is to be repeated takes place.
constexpr std::time_t kRepeatedEvening = 1775080800;

/// The service that is connected to libDtv; null before it is started.
std::shared_ptr<simulator::Simulator>& service() {
    static auto& instance = *new std::shared_ptr<simulator::Simulator>;
    return instance;
}

/// The names of the commands, in the order of their ids.
std::vector<std::string> commandNames() {
    std::vector<std::string> names;
    for (const catalogue::Message& command : catalogue::commands()) {
        names.emplace_back(command.name);
    }
    return names;
}

} // namespace

extern "C" {

JNIEXPORT jintArray JNICALL Java_tenrik_desk_core_Simulator_startNative(
    JNIEnv* env, jclass, jstring table, jstring guide, jstring script, jdouble speed,
    jboolean stepped, jint seed, jboolean repeated) {
    std::string error;
    std::optional<simulator::Options> options =
        desk::readOptions(textOf(env, table), textOf(env, guide), textOf(env, script), error);
    if (!options) {
        desk::throwDeskException(env, error);
        return nullptr;
    }
    options->time_scale = 1.0 / speed;
    options->seed = static_cast<uint32_t>(seed);
    if (stepped) {
        options->pace = simulator::Pace::kStepped;
    }
    if (repeated) {
        options->wall_clock = [] { return kRepeatedEvening; };
    }
    const simulator::ChannelPlan& plan = options->plan;
    const jintArray result =
        intArray(env, {static_cast<jint>(plan.stations.size()), plan.vhf_entries,
                       plan.beyond_entries, plan.unusable_entries});
    if (result == nullptr) {
        return nullptr;
    }
    dtv::describeCapture(
        desk::descriptionOf(textOf(env, table), options->seed, options->wall_clock()));
    service() = std::make_shared<simulator::Simulator>(std::move(*options));
    dtv::setServiceEndpoint(service());
    return result;
}

JNIEXPORT jboolean JNICALL Java_tenrik_desk_core_Simulator_advance(JNIEnv*, jclass) {
    return service()->advance() ? JNI_TRUE : JNI_FALSE;
}

JNIEXPORT jlong JNICALL Java_tenrik_desk_core_Simulator_now(JNIEnv*, jclass) {
    return service()->now().count();
}

JNIEXPORT jobjectArray JNICALL Java_tenrik_desk_core_Simulator_commands(JNIEnv* env, jclass) {
    return desk::stringArray(env, commandNames());
}

JNIEXPORT jintArray JNICALL Java_tenrik_desk_core_Simulator_arrivals(JNIEnv* env, jclass) {
    std::vector<jint> counts;
    for (const catalogue::Message& command : catalogue::commands()) {
        counts.push_back(static_cast<jint>(service()->arrivals(command.id)));
    }
    return intArray(env, counts);
}

JNIEXPORT jlong JNICALL Java_tenrik_desk_core_Simulator_mostEventsWaiting(JNIEnv*, jclass) {
    return static_cast<jlong>(dtv::mostWaiting());
}

JNIEXPORT jint JNICALL Java_tenrik_desk_core_Simulator_newSurface(JNIEnv*, jclass) {
    // The program's own reference is never dropped: Java objects may hold the address for ever.
    auto* surface = new android::Surface;
    surface->incStrong(surface);
    return static_cast<jint>(reinterpret_cast<intptr_t>(surface));
}

JNIEXPORT void JNICALL Java_tenrik_desk_core_Simulator_redirectStandardOutput(JNIEnv* env, jclass,
                                                                              jstring path) {
    const std::string name = textOf(env, path);
    std::FILE* file = std::fopen(name.c_str(), "ae");
    if (file == nullptr) {
        desk::throwDeskException(env, name + ": " + std::strerror(errno));
        return;
    }
    std::setvbuf(file, nullptr, _IOLBF, BUFSIZ);
    // In the GNU C Library the standard streams are variables. Java writes to the descriptor.
    stdout = file;
}

JNIEXPORT void JNICALL Java_tenrik_desk_core_Simulator_stop(JNIEnv*, jclass) {
    dtv::setServiceEndpoint(nullptr);
    service().reset();
    dtv::stopDelivery();
}

} // extern "C"

// The natives of tenrik.desk.core.Simulator: they connect the simulator to libDtv.
#include "java_text.h"
#include "records/catalogue.h"
#include "service_options.h"
#include "simulator.h"

#include <gui/Surface.h>
#include <jni.h>

#include <cerrno>
#include <chrono>
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

/// What the program calls an event: its Java class, or its number when the bridge does not know it.
std::string eventName(int event_id) {
    switch (event_id) {
#define REPLY(id, name, record, java_class)                                                        \
    case id:                                                                                       \
        return #java_class;
#define EVENT(id, name, record, handler, java_class)                                               \
    case id:                                                                                       \
        return #java_class;
#include "records/message_table.def"
    default:
        break;
    }
    char number[16];
    std::snprintf(number, sizeof number, "0x%08x", static_cast<unsigned>(event_id));
    return number;
}

/// What the program calls the message of a rule; "-" when the rule has none.
std::string messageOf(const simulator::ScriptRun::RuleCount& rule) {
    const bool stops = rule.place == "stop";
    if (!stops && rule.place.rfind("commands", 0) != 0) {
        return eventName(rule.message_id);
    }
    for (const catalogue::Message& command : catalogue::commands()) {
        if (command.id == rule.message_id) {
            return std::string(command.name);
        }
    }
    return "-";
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

JNIEXPORT jboolean JNICALL Java_tenrik_desk_core_Simulator_finishNative(JNIEnv*, jclass) {
    constexpr std::chrono::seconds kLongest{30};
    service()->finish();
    return dtv::waitUntilDelivered(kLongest) ? JNI_TRUE : JNI_FALSE;
}

JNIEXPORT jobjectArray JNICALL Java_tenrik_desk_core_Simulator_eventLines(JNIEnv* env, jclass) {
    std::vector<std::string> lines;
    for (const auto& [event_id, count] : service()->eventCounts()) {
        lines.push_back(eventName(event_id) + " " + std::to_string(count.caused) + " " +
                        std::to_string(count.dropped) + " " + std::to_string(count.added));
    }
    return desk::stringArray(env, lines);
}

JNIEXPORT jobjectArray JNICALL Java_tenrik_desk_core_Simulator_ruleLines(JNIEnv* env, jclass) {
    std::vector<std::string> lines;
    for (const simulator::ScriptRun::RuleCount& rule : service()->ruleCounts()) {
        lines.push_back(rule.place + " " + messageOf(rule) + " " + std::to_string(rule.acted));
    }
    return desk::stringArray(env, lines);
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

// The natives of tenrik.desk.core.Simulator: they connect the simulator to libDtv.
#include "records/catalogue.h"
#include "script/script_reader.h"
#include "simulator.h"

#include <gui/Surface.h>
#include <jni.h>

#include <array>
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

void throwDeskException(JNIEnv* env, const std::string& message) {
    const jclass exception = env->FindClass("tenrik/desk/core/DeskException");
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

/// A Wednesday evening in São Paulo, when a run that is to be repeated takes place.
constexpr std::time_t kRepeatedEvening = 1775080800;

/// The service that is connected to libDtv; null before it is started.
std::shared_ptr<simulator::Simulator>& service() {
    static auto& instance = *new std::shared_ptr<simulator::Simulator>;
    return instance;
}

/// Reads what the service begins with; no name, no guide or script. On failure empty, and `error`
/// says why.
std::optional<simulator::Options> readOptions(const std::string& table, const std::string& guide,
                                              const std::string& script, std::string& error) {
    simulator::Options options;
    std::optional<simulator::ChannelPlan> plan = simulator::readChannelTable(table, error);
    if (!plan) {
        return std::nullopt;
    }
    options.plan = std::move(*plan);
    if (!guide.empty()) {
        std::optional<simulator::Guide> programmes = simulator::readGuide(guide, error);
        if (!programmes) {
            return std::nullopt;
        }
        options.guide = std::move(*programmes);
    }
    if (!script.empty()) {
        std::optional<simulator::Script> read = simulator::readScript(script, error);
        if (!read) {
            return std::nullopt;
        }
        options.script = std::move(*read);
    }
    return options;
}

jobjectArray commandNames(JNIEnv* env) {
    const std::vector<catalogue::Message>& commands = catalogue::commands();
    const jclass string = env->FindClass("java/lang/String");
    if (string == nullptr) {
        return nullptr;
    }
    const jobjectArray names =
        env->NewObjectArray(static_cast<jsize>(commands.size()), string, nullptr);
    for (size_t index = 0; names != nullptr && index < commands.size(); ++index) {
        const jstring name = env->NewStringUTF(commands[index].name.data());
        if (name == nullptr) {
            return nullptr;
        }
        env->SetObjectArrayElement(names, static_cast<jsize>(index), name);
        env->DeleteLocalRef(name);
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
        readOptions(textOf(env, table), textOf(env, guide), textOf(env, script), error);
    if (!options) {
        throwDeskException(env, error);
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
    const std::array<jint, 4> counts{static_cast<jint>(plan.stations.size()), plan.vhf_entries,
                                     plan.beyond_entries, plan.unusable_entries};
    const jintArray result = env->NewIntArray(static_cast<jsize>(counts.size()));
    if (result == nullptr) {
        return nullptr;
    }
    env->SetIntArrayRegion(result, 0, static_cast<jsize>(counts.size()), counts.data());

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
    return commandNames(env);
}

JNIEXPORT jintArray JNICALL Java_tenrik_desk_core_Simulator_arrivals(JNIEnv* env, jclass) {
    std::vector<jint> counts;
    for (const catalogue::Message& command : catalogue::commands()) {
        counts.push_back(static_cast<jint>(service()->arrivals(command.id)));
    }
    const jintArray result = env->NewIntArray(static_cast<jsize>(counts.size()));
    if (result != nullptr) {
        env->SetIntArrayRegion(result, 0, static_cast<jsize>(counts.size()), counts.data());
    }
    return result;
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
        throwDeskException(env, name + ": " + std::strerror(errno));
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

// The natives of tenrik.desk.replay.Replay: they connect a replay to libDtv, and give the player
// the commands that it sends.
#include "java_text.h"
#include "records/catalogue.h"
#include "service_options.h"

#include "replay/report.h"
#include "replay/service.h"

#include <jni.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

/// The replay of this process.
struct Current {
    std::string file;
    std::optional<replay::Recording> recording; ///< until the replay begins
    std::shared_ptr<dtv::ServiceEndpoint> unknown;
    int status = 0;
};

/// Never destroyed: threads may use it until the process ends.
Current& current() {
    static Current& instance = *new Current;
    return instance;
}

/// The service of the replay, for any thread.
class ServiceSlot {
public:
    void set(std::shared_ptr<replay::Service> service) {
        const std::lock_guard<std::mutex> lock(mutex_);
        service_.swap(service);
    }
    /// Null before the replay begins and after it.
    std::shared_ptr<replay::Service> get() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return service_;
    }

private:
    std::mutex mutex_;
    std::shared_ptr<replay::Service> service_;
};

ServiceSlot& slot() {
    static ServiceSlot& instance = *new ServiceSlot;
    return instance;
}

std::optional<replay::Recording> read(const std::string& file, std::string& error) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        error = std::strerror(errno);
        return std::nullopt;
    }
    return replay::readRecording(stream, error);
}

/// What the capture of this run says of the session: the same as the one that is replayed.
void describe(const sessions::Notes& notes) {
    std::string lines;
    for (const auto& [key, value] : notes) {
        lines += (lines.empty() ? "" : "\n") + key + '=' + value;
    }
    dtv::describeCapture(lines);
}

/// A kind of field as the player tells them apart.
const char* kindText(catalogue::Kind kind) {
    switch (kind) {
    case catalogue::Kind::kSigned:
        return "signed";
    case catalogue::Kind::kUnsigned:
        return "unsigned";
    case catalogue::Kind::kText:
        return "text";
    default:
        return "bytes";
    }
}

void addFields(const catalogue::Record& record, size_t offset, const std::string& prefix,
               std::vector<std::string>& lines) {
    for (const catalogue::Field& field : record.fields) {
        if (field.kind == catalogue::Kind::kRecord) {
            addFields(*field.record, offset + field.offset, prefix + field.name + '.', lines);
            continue;
        }
        lines.push_back(prefix + field.name + ' ' + std::to_string(offset + field.offset) + ' ' +
                        std::to_string(field.size * field.count) + ' ' + kindText(field.kind));
    }
}

} // namespace

extern "C" {

JNIEXPORT jobjectArray JNICALL Java_tenrik_desk_replay_Replay_read(JNIEnv* env, jclass,
                                                                   jstring file) {
    Current& replay = current();
    replay = {};
    replay.file = desk::textOf(env, file);
    std::string error;
    replay.recording = read(replay.file, error);
    if (!replay.recording) {
        desk::throwDeskException(env, replay.file + ": " + error);
        return nullptr;
    }
    std::vector<std::string> notes;
    for (const auto& [key, value] : replay.recording->section) {
        notes.push_back(key);
        notes.push_back(value);
    }
    return desk::stringArray(env, notes);
}

JNIEXPORT void JNICALL Java_tenrik_desk_replay_Replay_simulateUnknown(JNIEnv* env, jclass,
                                                                      jstring table, jstring guide,
                                                                      jlong seed, jlong clock) {
    std::string error;
    std::optional<simulator::Options> options =
        desk::readOptions(desk::textOf(env, table), desk::textOf(env, guide), "", error);
    if (!options) {
        desk::throwDeskException(env, error);
        return;
    }
    options->seed = static_cast<uint32_t>(seed);
    options->wall_clock = [clock] { return static_cast<std::time_t>(clock); };
    current().unknown = std::make_shared<simulator::Simulator>(std::move(*options));
}

JNIEXPORT void JNICALL Java_tenrik_desk_replay_Replay_begin(JNIEnv*, jclass, jdouble speed,
                                                            jlong patience, jboolean fill) {
    Current& replay = current();
    describe(replay.recording->section);
    replay::Settings settings;
    settings.pace.speed = speed;
    settings.pace.patience = std::chrono::milliseconds(patience);
    settings.fill = fill == JNI_TRUE;
    settings.unknown = replay.unknown;
    const auto service = std::make_shared<replay::Service>(std::move(*replay.recording), settings);
    replay.recording.reset();
    slot().set(service);
    dtv::setServiceEndpoint(service);
}

JNIEXPORT jintArray JNICALL Java_tenrik_desk_replay_Replay_senders(JNIEnv* env, jclass) {
    std::vector<jint> senders;
    for (const size_t thread : slot().get()->senders()) {
        senders.push_back(static_cast<jint>(thread));
    }
    return desk::intArray(env, senders);
}

JNIEXPORT jstring JNICALL Java_tenrik_desk_replay_Replay_nameOf(JNIEnv* env, jclass, jint thread) {
    const auto index = static_cast<size_t>(thread);
    return desk::stringOf(env, slot().get()->recording().threads[index].name);
}

JNIEXPORT void JNICALL Java_tenrik_desk_replay_Replay_enter(JNIEnv*, jclass, jint thread) {
    slot().get()->enter(static_cast<size_t>(thread));
}

JNIEXPORT jint JNICALL Java_tenrik_desk_replay_Replay_next(JNIEnv* env, jclass, jbyteArray record,
                                                           jintArray about) {
    // A callback that has not returned in time may come after the replay.
    const std::shared_ptr<replay::Service> service = slot().get();
    const size_t entry = service != nullptr ? service->nextCommand() : replay::kNone;
    if (entry == replay::kNone) {
        return -1;
    }
    const sessions::Message& command = service->recording().entries[entry].message;
    const jsize length =
        std::min(static_cast<jsize>(command.record.size()), env->GetArrayLength(record));
    env->SetByteArrayRegion(record, 0, length,
                            reinterpret_cast<const jbyte*>(command.record.data()));
    const jint values[] = {command.id, static_cast<jint>(command.record.size())};
    env->SetIntArrayRegion(about, 0, 2, values);
    return static_cast<jint>(entry);
}

JNIEXPORT jboolean JNICALL Java_tenrik_desk_replay_Replay_hasCome(JNIEnv*, jclass, jint entry) {
    const std::shared_ptr<replay::Service> service = slot().get();
    return service == nullptr || service->hasCome(static_cast<size_t>(entry)) ? JNI_TRUE
                                                                              : JNI_FALSE;
}

JNIEXPORT void JNICALL Java_tenrik_desk_replay_Replay_giveUp(JNIEnv* env, jclass, jint entry,
                                                             jstring reason) {
    if (const std::shared_ptr<replay::Service> service = slot().get()) {
        service->giveUp(static_cast<size_t>(entry), desk::textOf(env, reason));
    }
}

JNIEXPORT jstring JNICALL Java_tenrik_desk_replay_Replay_finish(JNIEnv* env, jclass,
                                                                jboolean json) {
    Current& replay = current();
    const std::shared_ptr<replay::Service> service = slot().get();
    const replay::Outcome outcome = service->finish();
    replay.status = replay::statusOf(outcome);
    const replay::Recording& recording = service->recording();
    if (json == JNI_TRUE) {
        return desk::stringOf(env, replay::reportJson(replay.file, recording, outcome));
    }
    std::string text;
    for (const std::string& line : replay::reportLines(replay.file, recording, outcome)) {
        text += (text.empty() ? "" : "\n") + line;
    }
    return desk::stringOf(env, text);
}

JNIEXPORT jint JNICALL Java_tenrik_desk_replay_Replay_status(JNIEnv*, jclass) {
    return current().status;
}

JNIEXPORT void JNICALL Java_tenrik_desk_replay_Replay_disconnect(JNIEnv*, jclass) {
    dtv::setServiceEndpoint(nullptr);
    if (const std::shared_ptr<replay::Service> service = slot().get()) {
        service->end();
    }
    slot().set(nullptr);
    current() = {};
}

JNIEXPORT jobjectArray JNICALL Java_tenrik_desk_replay_Replay_commandNames(JNIEnv* env, jclass) {
    std::vector<std::string> names;
    for (const catalogue::Message& command : catalogue::commands()) {
        names.emplace_back(command.name);
    }
    return desk::stringArray(env, names);
}

JNIEXPORT jintArray JNICALL Java_tenrik_desk_replay_Replay_commandIds(JNIEnv* env, jclass) {
    std::vector<jint> ids;
    for (const catalogue::Message& command : catalogue::commands()) {
        ids.push_back(command.id);
    }
    return desk::intArray(env, ids);
}

JNIEXPORT jobjectArray JNICALL Java_tenrik_desk_replay_Replay_fieldsOf(JNIEnv* env, jclass,
                                                                       jint command) {
    std::vector<std::string> lines;
    const catalogue::Message* known = catalogue::find(command);
    if (known != nullptr) {
        addFields(*known->record, 0, "", lines);
    }
    return desk::stringArray(env, lines);
}

} // extern "C"

#include "natives.h"

#include "commands/drawing_places.h"
#include "memory.h"
#include "native_model.h"
#include "witness.h"

#include <functional>

namespace torture {
namespace {

using namespace harness;

using NativeSteps = std::function<void(NativeModel&)>;

const SyncAnswer sync_answers[] = {
    {"Release_Sync", 0x10000038, 209, 128, "BG_TS_DTVSVLIB_RELEASE_REPLY_SYNC_INFO"},
    {"CancelScan_Sync", 0x10000039, 210, 129, "BG_TS_DTVSVLIB_CANCEL_SCAN_SYNC_INFO"},
    {"TerminateBroadcastReceiving_Sync", 0x1000003a, 211, 130,
     "BG_TS_DTVSVLIB_TERMINATE_BROADCAST_RECEIVING_REPLY_SYNC_INFO"},
    {"ControlDecodeScreen_Sync", 0x1000003b, 212, 131,
     "BG_TS_DTVSVLIB_CONTROL_DECODE_SCREEN_SYNC_INFO"},
    {"ControlDecodeAudio_Sync", 0x1000003c, 213, 132,
     "BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO"},
    {"ControlCap_Sync", 0x1000003d, 214, 133, "BG_TS_DTVSVLIB_CONTROL_CAP_SYNC_INFO"},
    {"ControlBML_Sync", 0x1000003e, 215, 134, "BG_TS_DTVSVLIB_CONTROL_BML_SYNC_INFO"},
    {"BMLEndTvLink_Sync", 0x1000003f, 216, 135, "BG_TS_DTVSVLIB_END_TVLINK_SYNC_INFO"},
    {"TerminateRec_Sync", 0x10000040, 217, 136, "BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO"},
    {"TerminatePlay_Sync", 0x10000041, 218, 137, "BG_TS_DTVSVLIB_TERMINATE_PLAY_REPLY_SYNC_INFO"},
};

const SyncAnswer* syncAnswerOf(const std::string& native) {
    for (const SyncAnswer& answer : sync_answers) {
        if (native == answer.native) {
            return &answer;
        }
    }
    return nullptr;
}

/// The name in the trace.
std::string functionOf(const std::string& native) {
    if (native == "BMLEndTvLink_Sync") {
        return "dtvSvLibBMLEndTvLinkReq_Sync";
    }
    return native == "BMLStartTvlinkReply" ? "dtvSvLibBMLStartTvLinkReply" : "dtvSvLib" + native;
}

/// The service of all operations, which notes where in the trace a command arrives.
class Service : public dtv::ServiceEndpoint {
public:
    static Service& instance() {
        static Service& only = *new Service;
        return only;
    }

    void begin(int result, const Reply& reply) {
        result_ = result;
        reply_ = reply;
        messages.clear();
        lines_before = 0;
    }
    int onCommand(const dtv::Command& command) override {
        keep(command);
        return result_;
    }
    int onSynchronousCommand(const dtv::Command& command, const dtv::Reply& to) override {
        keep(command);
        const size_t fits = std::min(reply_.bytes.size(), static_cast<size_t>(to.capacity));
        std::copy_n(reply_.bytes.begin(), fits, static_cast<uint8_t*>(to.data));
        if (reply_.size) {
            *to.size = *reply_.size;
        }
        return result_;
    }

    std::vector<std::string> messages;
    size_t lines_before = 0;

private:
    void keep(const dtv::Command& command) {
        lines_before = Witness::instance().lineCount();
        Message message{};
        message.message_id = command.message_id;
        const auto* bytes = static_cast<const uint8_t*>(command.data);
        message.bytes.assign(bytes, bytes + command.size);
        if (const TS_DTVSV_SP* references = command.references) {
            message.had_references = true;
            message.surface_count = references->surface_count;
        }
        messages.push_back(message.text());
    }

    int result_ = 0;
    Reply reply_;
};

/// The surfaces that the planes are drawn on.
struct Surfaces {
    commands::NativeSurface video;
    commands::NativeSurface caption;
    commands::NativeSurface bml;

    std::string counts() const {
        return "surfaces " + std::to_string(video.count()) + " " + std::to_string(caption.count()) +
               " " + std::to_string(bml.count());
    }
};

class Native : public Operation {
public:
    Native(std::string native, std::vector<Value> arguments, NativeSteps steps,
           std::shared_ptr<Surfaces> surfaces, std::string shape = "")
        : native_(std::move(native)), arguments_(std::move(arguments)), steps_(std::move(steps)),
          surfaces_(std::move(surfaces)), shape_(std::move(shape)), sync_(syncAnswerOf(native_)) {}

    std::string name() const override { return native_ + shape_; }

    Outcome run(const Plan& plan) override {
        LocalFrame frame;
        Service& service = Service::instance();
        service.begin(plan.send_result, plan.reply         ? *plan.reply
                                        : sync_ != nullptr ? usualReply(*sync_)
                                                           : Reply{});
        dtv::setServiceEndpoint(
            plan.no_service ? nullptr
                            : std::shared_ptr<dtv::ServiceEndpoint>(&service, [](void*) {}));
        Outcome outcome;
        jobject answer = nullptr;
        {
            FailNth fail(plan.calls,
                         plan.calls_on ? FailNth::Span::fromThereOn : FailNth::Span::once);
            Memory::begin(plan.allocation, plan.allocations_on);
            Witness::instance().begin();
            answer = callNative("DtvSvLib_" + native_, arguments_);
            Witness::instance().end(outcome);
            outcome.allocations = Memory::end();
        }
        outcome.answer = !lastThrown().empty() ? "throws " + lastThrown() : tree(answer);
        outcome.messages = service.messages;
        outcome.lines_before_send = service.lines_before;
        return outcome;
    }

    Outcome expect(const Plan& plan) const override {
        NativeModel model(plan, baseline, functionOf(native_), sync_);
        steps_(model);
        return model.end();
    }

    int mostLocals() const override { return 16; }
    bool sends() const override { return !baseline.messages.empty(); }
    bool waits() const override { return sync_ != nullptr && sends(); }
    std::string held() const override { return surfaces_->counts(); }

private:
    const std::string native_;
    const std::vector<Value> arguments_;
    const NativeSteps steps_;
    const std::shared_ptr<Surfaces> surfaces_;
    const std::string shape_;
    const SyncAnswer* const sync_;
};

/// Adds the operations, each with its steps.
class Natives {
public:
    Natives() : surfaces(std::make_shared<Surfaces>()) {}

    void add(
        const std::string& native, std::vector<Value> arguments,
        NativeSteps steps = [](NativeModel&) {}, const std::string& shape = "") {
        all.push_back(std::make_unique<Native>(native, std::move(arguments), std::move(steps),
                                               surfaces, shape));
    }
    /// Arguments that are refused for a value.
    void addRefused(const std::string& native, std::vector<Value> arguments, const char* why) {
        add(
            native, std::move(arguments), [why](NativeModel& model) { model.refuseValue(why); },
            ":refused");
    }

    std::shared_ptr<Surfaces> surfaces;
    std::vector<std::unique_ptr<Operation>> all;
};

void addScalars(Natives& natives) {
    natives.add("Create", {4, 999});
    natives.add("SetSoundVideoDelay", {3, 900, 999});
    natives.add("ControlDisplayModeReq", {3, 3, 3});
    natives.add("SetTunerLog", {3, 2});
    natives.add("ControlLNA", {3, 17});
    for (const char* name :
         {"Release", "StartScan", "CancelScan", "TerminateBroadcastReceiving",
          "CancelSearchChannel", "BMLEndTvLinkReq", "BMLRebootBrowserReq", "PausePlay",
          "ReStartPlay", "TerminatePlay", "GetTunerLogStatus", "Release_Sync", "CancelScan_Sync",
          "TerminateBroadcastReceiving_Sync", "BMLEndTvLink_Sync", "TerminatePlay_Sync"}) {
        natives.add(name, {3});
    }
    for (const char* name : {"ReleaseDisplay",
                             "ControlScreenDisplay",
                             "ControlDecodeScreen",
                             "ChangeAudioComponent",
                             "ChangeSoundDualMono",
                             "ControlDecodeAudio",
                             "ChangeCapLang",
                             "BMLWriteNvramReply",
                             "BMLMailReply",
                             "BMLPhonebookReply",
                             "BMLCallReply",
                             "BMLScheduleReply",
                             "BMLBrowserReply",
                             "BMLStartTvlinkReply",
                             "BMLEnrolTvlinkReply",
                             "StartRec",
                             "FrameSlidePlay",
                             "MovePausePosition",
                             "ControlDecodeScreen_Sync",
                             "ControlDecodeAudio_Sync"}) {
        natives.add(name, {3, 1});
    }
    natives.addRefused("Create", {5, 0}, "start_type is too large : 5, ret = 5");
    natives.addRefused("SetSoundVideoDelay", {3, 1000, 0},
                       "video_viltime is too large : 1000, max_delat_time = 999, ret = 5");
    natives.addRefused("ControlDisplayModeReq", {3, 4, 0}, "screen_mode is too large : 4, ret = 5");
    natives.addRefused("ControlLNA", {3, 15}, "lna_mode is over, lna_mode = 15");
    natives.addRefused("BMLMailReply", {3, 2}, "mail_reply is too large : 2, ret = 5");
    natives.addRefused("FrameSlidePlay", {3, 2}, "direction is over, direction = 2");
}

void addPlanes(Natives& natives) {
    using namespace commands;
    Surfaces& surfaces = *natives.surfaces;
    jobject screen = screenInfo(surfaces.video.java(), 65535, 65534, 3, 3);
    jobject cap = capInfo(surfaces.caption.java(), 65533, 65532, 2,
                          capLayout(255, 254, 253, 252, 65535, 65534, 8, 1));
    jobject bml = bmlInfo(surfaces.bml.java(), 65531, 65530, 1);
    jobject setting = newObject(
        "BG_TS_DTVSVLIB_COMPONENT_SETTING",
        "(IIIIILtype/BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;Ltype/BG_TS_DTVSVLIB_CAP_DRAWING_INFO;"
        "Ltype/BG_TS_DTVSVLIB_BML_DRAWING_INFO;)V",
        {1, 1, 1, 1, 1, screen, cap, bml});
    natives.add("SetScreenDisplay", {3, screen}, [](NativeModel& model) {
        model.screenPlane("video drawing_info_clazz class is NULL, ret = 1");
    });
    natives.add("SetCapDisplay", {3, cap}, [](NativeModel& model) {
        model.capPlane("caption drawing_info_clazz class is NULL, ret = 1");
    });
    natives.add("SetBMLDisplay", {3, bml}, [](NativeModel& model) {
        model.bmlPlane("BML drawing_info_clazz class is NULL, ret = 1");
    });
    natives.add("SetDisplayAll", {3, screen, cap, bml}, [](NativeModel& model) {
        model.screenPlane("video drawing_info_clazz class is NULL, ret = 1");
        model.capPlane("caption drawing_info_clazz class is NULL, ret = 1");
        model.bmlPlane("BML drawing_info_clazz class is NULL, ret = 1");
    });
    for (const char* waits : {"", "_Sync"}) {
        natives.add(std::string("ControlCap") + waits, {3, 255, 8, cap}, [](NativeModel& model) {
            model.capPlane("cap drawing_info_clazz class is NULL, ret = 1");
        });
        natives.add(std::string("ControlBML") + waits, {3, 255, bml}, [](NativeModel& model) {
            model.bmlPlane("bml drawing_info_clazz class is NULL, ret = 1");
        });
        natives.addRefused(std::string("ControlCap") + waits, {3, 5, 0, cap},
                           "cap_control_type is too large : 5, ret = 5");
        natives.addRefused(std::string("ControlBML") + waits, {3, 0, nullptr},
                           "bml_drawing_info_obj is NULL, ret = 5");
    }
    natives.add("SetFirstComponent", {3, setting}, [](NativeModel& model) {
        model.enumField("audio_component", "getAudioComponentValue");
        model.enumField("cap_lang", "getCapLangValue");
        model.enumField("dualmono", "getDualMonoValue");
        model.enumField("cap_start_type", "getControlTypeValue");
        model.enumField("bml_start_type", "getControlTypeValue");
        model.objectClass("component_setting_clazz class is NULL, ret = 5");
        model.object("video_drawing_info", "video_drawing_info fieldID is NULL, ret = 5",
                     "video drawing_info_obj object is NULL, ret = 5");
        model.screenPlane("video drawing_info_clazz class is NULL, ret = 1");
        model.object("cap_drawing_info", "cap_drawing_info fieldID is NULL, ret = 5",
                     "caption drawing_info_obj object is NULL, ret = 5");
        model.capPlane("caption drawing_info_clazz class is NULL, ret = 1");
        model.object("bml_drawing_info", "bml_drawing_info fieldID is NULL, ret = 5",
                     "BML drawing_info_obj object is NULL, ret = 5");
        model.bmlPlane("BML drawing_info_clazz class is NULL, ret = 1");
    });
    const std::string url(260, 'u');
    jobject link = newObject("BG_TS_DTVSVLIB_BML_START_INFO",
                             {65535, 65534, newBytes({1, 2, 3, 4, 5, 6}), url.c_str(), bml});
    natives.add("BMLStartTvLinkReq", {3, 255, link}, [](NativeModel& model) {
        model.objectClass("bml_start_info_clazz class is NULL, ret = 5");
        // A null drawing_info ends at the class of the routine.
        model.drawingInfoOfLink();
        model.intField("network_id");
        model.intField("service_id");
        model.bytes("affiliation_id", "affiliation_id fieldID is NULL, ret = 5",
                    "affiliation_id_array is NULL, ret = 5");
        model.text("bookmark_url", "bookmark_url fieldID is NULL, ret = 5",
                   "bookmark_url object is NULL, ret = 5");
    });
}

void channelSteps(NativeModel& model) {
    model.objectClass("broadcast_info class is NULL, ret = 5");
    model.intField("physical_channel");
    model.intField("service_no");
}

void addChannels(Natives& natives) {
    jobject channel = newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {62, 2});
    natives.add("StartBroadcastReceiving", {3, channel}, channelSteps);
    natives.add("SelectChannel", {3, channel}, channelSteps);
    natives.add("StartSearchChannel", {3, channel, 255}, channelSteps);
    natives.addRefused("StartSearchChannel", {3, nullptr, 1}, "broadcast_info is NULL, ret = 5");
    natives.addRefused("SelectChannel", {3, nullptr}, "broadcast_info class is NULL, ret = 5");
}

void addPlayback(Natives& natives) {
    jobject on = constant("BG_TE_DTVSVLIB_ONOFF", "ON");
    jobject medium = constant("BG_TE_DTVSVLIB_RECORDING_MEDIUM", "CARD");
    jobject forward = constant("BG_TE_DTVSVLIB_PLAY_DIRECTION", "FORWARD");
    const std::string title(196, 't');
    jobject recording = newObject("BG_TS_DTVSVLIB_TERMINATE_REC_REQ", {on, 196, title.c_str()});
    for (const char* waits : {"", "_Sync"}) {
        natives.add(std::string("TerminateRec") + waits, {3, recording}, [](NativeModel& model) {
            model.objectClass("terminate_rec class is NULL, ret = 5");
            model.enumField("save_data", "getOnOffValue");
            model.intField("title_size");
            model.text("title_name", "title_name fieldID is NULL, ret = 5",
                       "title_name is NULL, ret = 5");
        });
        natives.addRefused(std::string("TerminateRec") + waits, {3, nullptr},
                           "terminate_rec_obj is NULL, ret = 5");
    }
    natives.add("StartPlay",
                {3, newObject("BG_TS_DTVSVLIB_START_PLAY", {medium, 65535, on, 65534, on})},
                [](NativeModel& model) {
                    model.objectClass("start_play class is NULL, ret = 5");
                    model.enumField("medium", "getMediumValue", "start_play");
                    model.enumField("resume", "getOnOffValue");
                    model.enumField("pause", "getOnOffValue");
                    model.intField("program_number");
                    model.intField("interval");
                });
    const NativeSteps speed = [](NativeModel& model) {
        model.objectClass("special_play class is NULL, ret = 5");
        model.enumField("direction", "getDirectionValue");
        model.intField("numerator");
        model.intField("denominator");
    };
    natives.add("ChangePlaySpeed",
                {3, newObject("BG_TS_DTVSVLIB_SPECIAL_PLAY", {forward, 65520, 546})}, speed);
    natives.add(
        "ChangePlaySpeed", {3, newObject("BG_TS_DTVSVLIB_SPECIAL_PLAY", {forward, 3, 1})},
        [speed](NativeModel& model) {
            speed(model);
            model.refuseValue("PlaySpeed Err, ans = 3, numerator = 3, denominator = 1");
        },
        ":refused");
    natives.add("SkipPlay", {3, newObject("BG_TS_DTVSVLIB_SKIP_PLAY", {forward, -15})},
                [](NativeModel& model) {
                    model.objectClass("skip_play class is NULL, ret = 5");
                    model.enumField("direction", "getDirectionValue");
                    model.intField("skipsec");
                });
}

void addBrowser(Natives& natives) {
    jobject on = constant("BG_TE_DTVSVLIB_ONOFF", "ON");
    jobject medium = constant("BG_TE_DTVSVLIB_RECORDING_MEDIUM", "CARD");
    natives.add("BMLKeyEventNotify",
                {3, newObject("BG_TS_DTVSVLIB_KEY_CODE_NOTIFY", "(IIII)V", {1, 1, 65535, 65534})},
                [](NativeModel& model) {
                    model.objectClass("key_code_notify class is NULL, ret = 5");
                    model.enumField("key_code", "getKeyValue");
                    model.enumField("key_type", "getKeyEventValue");
                    model.intField("touch_x");
                    model.intField("touch_y");
                });
    natives.add("BMLPermissionReply",
                {3, newObject("BG_TS_DTVSVLIB_PERMISSION_REPLY", "(II)V", {1, -7})},
                [](NativeModel& model) {
                    model.objectClass("permission_reply class is NULL, ret = 5");
                    model.intField("task_id");
                    model.enumField("select_type", "getPermissionValue");
                });
    const std::string pass(260, 'p');
    const std::string user(132, 'u');
    natives.add(
        "BMLAuthReply",
        {3, newObject("BG_TS_DTVSVLIB_AUTH_REPLY", "(ILjava/lang/String;Ljava/lang/String;I)V",
                      {1, pass.c_str(), user.c_str(), -7})},
        [](NativeModel& model) {
            model.objectClass("auth_reply class is NULL, ret = 5");
            model.text("pass", "pass fieldID is NULL, ret = 5", "pass is NULL, ret = 5");
            model.text("user", "user fieldID is NULL, ret = 5", "user is NULL, ret = 5");
            model.intField("task_id");
            model.enumField("select_type", "getAuthSelectTypeValue");
        });
    const std::string ts_name(44, 'n');
    std::vector<int> block;
    for (int i = 0; i < 64; ++i) {
        block.push_back(i + 1);
    }
    natives.add("BMLReadNvramReply",
                {3, newObject("BG_TS_DTVSVLIB_READ_NVRAM_REPLY", "(ILjava/lang/String;[B)V",
                              {1, ts_name.c_str(), newBytes(block)})},
                [](NativeModel& model) {
                    model.objectClass("ERROR bml_nvram_clazz is null, ret = 5");
                    model.enumField("bml_end_type", "getBmlEndValue");
                    model.text("ts_name", "ERROR ts_name field ID is null",
                               "ERROR bml_nvram object is null");
                    model.bytes("nvram_data", "ERROR nvram_data field ID is null",
                                "ERROR nvram_data object is null");
                });
    const std::string data(1924, 'd');
    natives.add("BMLFepReply",
                {3, newObject("BG_TS_DTVSVLIB_START_FEP_REPLY", "(IILjava/lang/String;)V",
                              {1, 0x784, data.c_str()})},
                [](NativeModel& model) {
                    model.objectClass("start_fep_reply class is NULL, ret = 5");
                    model.text("data", "data fieldID is NULL, ret = 5", "data is NULL, ret = 5");
                    model.intField("data_size");
                    // The low byte of data_size takes the place of what cannot be read.
                    model.enumFieldIfPossible("end_type", "getFepEndValue", "end_type = 1",
                                              "end_type = 132");
                });
    const std::string filename(779, 'f');
    natives.add(
        "BMLSavePictureReply",
        {3, newObject("BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY", {on, medium, on, filename.c_str()})},
        [](NativeModel& model) {
            model.objectClass("picture_info class is NULL, ret = 5");
            model.enumField("save_flag", "getOnOffValue");
            model.enumField("medium", "getMediumValue");
            model.enumField("change_filename", "getOnOffValue");
            model.text("filename", "filename_fid is NULL, ret = 5", "filename is NULL, ret = 5");
        });
}

} // namespace

std::vector<std::unique_ptr<Operation>> nativeOperations() {
    Natives natives;
    addScalars(natives);
    addPlanes(natives);
    addChannels(natives);
    addPlayback(natives);
    addBrowser(natives);
    return std::move(natives.all);
}

} // namespace torture

#include "events.h"

#include "event_model.h"
#include "memory.h"
#include "witness.h"

#include <functional>

namespace torture {
namespace {

using namespace harness;

using EventSteps = std::function<void(EventModel&)>;

/// One kind of event.
struct EventKind {
    const char* name; ///< of the handler, without "dtvsv_msgid_lib_"
    int id;
    size_t size;
    char call_level; ///< of "CallMethod NG"
    EventSteps full;
    /// When all counts are 0; nothing: as with full ones.
    EventSteps empty = nullptr;
    /// Where its counts are, and the most that each may be.
    struct Count {
        size_t offset;
        uint8_t most;
    };
    std::vector<Count> counts = {};
    bool has_texts = false;
};

void object(EventModel& model) {
    model.construct();
    model.callback();
}

void twoObjects(EventModel& model) {
    model.construct(2);
    model.callback();
}

/// Texts, then a value and the event.
EventSteps texts(std::vector<const char*> failures) {
    return [failures = std::move(failures)](EventModel& model) {
        for (const char* failure : failures) {
            model.text(failure);
        }
        twoObjects(model);
    };
}

constexpr const char* no_text = "R ERROR NewStringUTF";

void network(EventModel& model, int objects) {
    model.ownFrame();
    model.text();
    model.text();
    model.array("NewIntArray");
    model.construct(objects);
    model.callback();
}

EventSteps services(int count) {
    return [count](EventModel& model) {
        model.ownFrame();
        model.array("NewObjectArray");
        for (int i = 0; i < count; ++i) {
            model.silentText();
            model.construct();
        }
        twoObjects(model);
    };
}

void programme(EventModel& model) {
    // The date, the time, both of them, the duration; the texts; the nibbles; the programme.
    model.construct(4);
    model.units();
    model.units();
    model.bytes();
    model.bytes();
    model.construct();
}

EventSteps guide(int following) {
    return [following](EventModel& model) {
        model.ownFrame();
        for (int i = 0; i < following + 2; ++i) {
            programme(model);
        }
        model.array("NewObjectArray");
        twoObjects(model);
    };
}

std::vector<EventKind> requests() {
    return {
        {"bml_permission_req", 0x10000042, 12, 'R', twoObjects},
        {"bml_auth_req", 0x10000043, 8, 'D', object},
        {"bml_write_nvram_req",
         0x10000044,
         116,
         'R',
         [](EventModel& model) {
             model.text();
             model.bytes();
             twoObjects(model);
         },
         nullptr,
         {},
         true},
        {"bml_read_nvram_req", 0x10000045, 8, 'R', twoObjects},
        {"bml_start_fep_req", 0x10000046, 1940, 'R', texts({no_text}), nullptr, {}, true},
        {"bml_mail_req",
         0x10000047,
         2530,
         'R',
         texts({no_text, no_text, no_text}),
         nullptr,
         {},
         true},
        {"bml_phonebook_req",
         0x10000048,
         1310,
         'D',
         texts({"D name is NULL", "D name_kana is NULL", "D phone_number is NULL",
                "D mail_address is NULL"}),
         nullptr,
         {},
         true},
        {"bml_call_req",
         0x10000049,
         102,
         'D',
         texts({"D  phone_number is NULL"}),
         nullptr,
         {},
         true},
        {"bml_schedule_req",
         0x1000004a,
         1490,
         'R',
         [](EventModel& model) {
             model.text();
             model.text();
             model.construct();
             twoObjects(model);
         },
         nullptr,
         {},
         true},
        {"bml_browser_req",
         0x1000004b,
         2056,
         'D',
         texts({"D return_uri is NULL", "D combrowser_uri is NULL"}),
         nullptr,
         {},
         true},
        {"bml_save_picture_req",
         0x1000004c,
         1580,
         'D',
         texts({"D src_resource is NULL", "D filename is NULL"}),
         nullptr,
         {},
         true},
        {"bml_start_tvlink_req",
         0x1000004d,
         2056,
         'R',
         texts({no_text, no_text}),
         nullptr,
         {},
         true},
        {"bml_enrol_tvlink_req",
         0x1000004e,
         960,
         'D',
         [](EventModel& model) {
             model.text("D title is NULL");
             model.text("D uri is NULL");
             model.text("D description is NULL");
             model.bytes("D affiliation_id is NULL");
             model.construct();
             twoObjects(model);
         },
         nullptr,
         {},
         true},
    };
}

std::vector<EventKind> programmes() {
    return {
        {"network_info_notify",
         0x10000090,
         124,
         'D',
         [](EventModel& model) { network(model, 2); },
         nullptr,
         {{8 + 98, 7}},
         true},
        {"scan_notify",
         0x1000007f,
         132,
         'D',
         [](EventModel& model) { network(model, 3); },
         nullptr,
         {{12 + 98, 8}},
         true},
        {"service_info_notify", 0x10000091, 436, 'D', services(8), services(0), {{16, 8}}, true},
        // Its texts are UTF-16: none takes memory of the bridge's.
        {"receive_epg_info_notify", 0x10000093, 6380, 'D', guide(8), guide(0), {{1288, 8}}},
        {"component_info_notify", 0x10000092, 16, 'D', twoObjects},
        {"update_video_info_notify", 0x10000094, 16, 'D', twoObjects},
        {"update_audio_info_notify", 0x10000095, 12, 'D', object},
        {"get_caption_data_notify", 0x10000088, 4, 'D', twoObjects},
        {"select_audio_component_notify", 0x10000084, 8, 'D', object},
        {"start_search_channel_notify", 0x10000081, 8, 'D', object},
        {"terminate_search_channel_notify", 0x10000082, 16, 'D', twoObjects},
        {"terminate_scan_notify", 0x10000080, 8, 'D', object},
    };
}

std::vector<EventKind> states() {
    const EventSteps nothing = [](EventModel&) {};
    return {
        {"caption_fatal_error_notify", 0x10000099, 2, 'D', nothing},
        {"broadcast_fatal_error_notify", 0x10000097, 2, 'D', nothing},
        {"tuner_sensitivity_data_notify", 0x1000009e, 32, 'D', twoObjects},
        {"play_error_notify", 0x1000009d, 8, 'D', object},
        {"play_event_notify", 0x1000009c, 24, 'D', twoObjects},
        {"play_status_notify", 0x1000009b, 16, 'D', twoObjects},
        {"rec_info_notify", 0x1000009a, 20, 'D', object},
        {"rec_status_notify", 0x10000098, 16, 'D', object},
        {"receive_sensitivity_notify", 0x1000008f, 20, 'D', object},
        {"bad_sens_notify", 0x1000008c, 12, 'D', object},
        {"good_sens_notify", 0x1000008b, 12, 'D', object},
        {"ca_info_notify", 0x1000008e, 12, 'D', object},
        {"bml_disp_icon_notify", 0x10000089, 4, 'D', object},
        {"copy_control_info_notify", 0x10000096, 12, 'D', object},
        {"change_audio_main_sub_notify", 0x10000083, 8, 'D', object},
        {"cap_status_notify", 0x10000086, 4, 'D', object},
        {"bml_status_notify", 0x10000085, 4, 'D', object},
        {"bml_end_fep_notify", 0x1000008a, 2, 'D', object},
        {"assign_video_area_notify", 0x10000087, 8, 'D', object},
    };
}

std::vector<EventKind> replies() {
    std::vector<EventKind> all{
        {"start_scan_reply", 0x10000051, 12, 'D', object},
        {"start_broadcast_receiving_reply", 0x10000052, 16, 'D', object},
        {"select_channel_reply", 0x10000054, 16, 'D', object},
        {"release_display_reply", 0x1000005a, 12, 'D', object},
        {"Tuner_log_status_reply", 0x10000067, 12, 'D', object},
        {"start_rec_reply", 0x1000006b, 16, 'D', object},
        {"terminate_rec_reply", 0x1000006c, 12, 'D', twoObjects},
    };
    for (int id : {0x4f, 0x50, 0x53, 0x55, 0x56, 0x57, 0x58, 0x59, 0x5b, 0x5c, 0x5d,
                   0x5e, 0x5f, 0x60, 0x61, 0x62, 0x63, 0x64, 0x65, 0x66, 0x68, 0x69,
                   0x6a, 0x6d, 0x6e, 0x6f, 0x70, 0x71, 0x72, 0x73, 0x74, 0x8d}) {
        all.push_back({"common_reply", 0x10000000 + id, 8, 'D', object});
    }
    return all;
}

/// A thread that the VM does not know, which the bridge attaches.
EventThread& attachedThread() {
    static EventThread& only = *new EventThread;
    return only;
}

CallbackRecorder& recorder() {
    static CallbackRecorder& only = *new CallbackRecorder;
    return only;
}

class DeliveredEvent : public Operation {
public:
    /// `fill` is what all bytes of the record are but its counts.
    DeliveredEvent(const EventKind& kind, const char* shape, int fill, bool attached)
        : kind_(kind), shape_(shape), attached_(attached),
          converted_(fill == 0xC1 && kind.has_texts),
          steps_(fill == 0 && kind.empty ? kind.empty : kind.full),
          record_(kind.size, static_cast<uint8_t>(fill)) {
        for (const EventKind::Count& count : kind.counts) {
            record_[count.offset] = fill == 0 ? 0 : count.most;
            record_[count.offset + 1] = 0;
        }
    }

    std::string name() const override {
        const std::string name =
            std::string(kind_.name) == "common_reply" ? idText() : std::string(kind_.name);
        return name + shape_ + (attached_ ? "@attached" : "");
    }

    Outcome run(const Plan& plan) override {
        if (plan.callback_throws) {
            recorder().throwNext();
        }
        Outcome outcome;
        const auto work = [&] {
            const int result = deliver(kind_.id, record_);
            outcome.answer = std::to_string(result);
            if (env()->ExceptionCheck()) {
                outcome.answer += " and an exception pending";
                takeException();
            }
        };
        {
            FailNth fail(plan.calls,
                         plan.calls_on ? FailNth::Span::fromThereOn : FailNth::Span::once);
            Memory::begin(plan.allocation, plan.allocations_on);
            Witness::instance().begin();
            attached_ ? attachedThread().run(work) : work();
            Witness::instance().end(outcome);
            outcome.allocations = Memory::end();
        }
        outcome.callbacks = recorder().take();
        return outcome;
    }

    Outcome expect(const Plan& plan) const override {
        EventModel model(plan, baseline, std::string("dtvsv_msgid_lib_") + kind_.name,
                         kind_.call_level, converted_);
        steps_(model);
        return model.end();
    }

    int mostLocals() const override { return 256; }
    bool callsBack() const override { return !baseline.callbacks.empty(); }

private:
    std::string idText() const {
        char text[16];
        std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(kind_.id));
        return text;
    }

    const EventKind kind_;
    const char* const shape_;
    const bool attached_;
    const bool converted_;
    const EventSteps steps_;
    std::vector<uint8_t> record_;
};

} // namespace

std::vector<std::unique_ptr<Operation>> eventOperations() {
    // An id without a handler: afterwards the threads have their environments.
    recorder();
    deliver(0x10000041, {});
    attachedThread().run([] { deliver(0x10000041, {}); });
    std::vector<std::unique_ptr<Operation>> all;
    for (bool attached : {false, true}) {
        for (const auto& kinds : {requests(), programmes(), states(), replies()}) {
            for (const EventKind& kind : kinds) {
                all.push_back(std::make_unique<DeliveredEvent>(kind, "", 'A', attached));
                if (kind.has_texts || !kind.counts.empty()) {
                    all.push_back(
                        std::make_unique<DeliveredEvent>(kind, ":no-utf8", 0xC1, attached));
                    all.push_back(std::make_unique<DeliveredEvent>(kind, ":empty", 0, attached));
                }
            }
        }
    }
    return all;
}

} // namespace torture

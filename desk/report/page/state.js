// What the receiver is doing at a moment, as the messages up to it say. What a command asks for holds
// from the event that says it was done; from the command itself when no event does.

const checkpointDistance = 256;

/** Of a session that has just begun. */
function newSessionState(handle) {
    return {
        handle,
        open: "",
        tuned: "",
        station: "",
        services: [],
        now: "",
        next: "",
        video: null,
        caption: null,
        bml: null,
        captions: "",
        browser: "",
        scan: "",
        recording: "",
        playback: "",
        sound: "",
        lna: "",
        reception: "",
        cn: null,
        pending: [],
    };
}

function channelText(read) {
    return `channel ${read("physical_channel")}, service ${read("service_no")}`;
}

function planeOf(read, name) {
    const width = read(`${name}.surface_width`);
    if (width === undefined) {
        return undefined;
    }
    const plane = { width, height: read(`${name}.surface_height`), rotate: read(`${name}.screen_rotate`) };
    if (name === "screen") {
        plane.mode = read("screen.screen_mode");
    }
    if (name === "cap") {
        plane.x = read("cap.cap_info.position_x");
        plane.y = read("cap.cap_info.position_y");
        plane.lines = read("cap.cap_info.lines_num");
        plane.characters = read("cap.cap_info.characters_num");
        plane.font = read("cap.cap_info.font_size");
    }
    return plane;
}

function setPlanes(state, read) {
    const planes = { screen: "video", cap: "caption", bml: "bml" };
    for (const [name, plane] of Object.entries(planes)) {
        state[plane] = planeOf(read, name) ?? state[plane];
    }
}

function programmeText(read, path) {
    const name = read(`${path}.name`);
    if (!name) {
        return "";
    }
    const two = (number) => String(number).padStart(2, "0");
    return `${two(read(`${path}.start_time.hour`))}:${two(read(`${path}.start_time.min`))} ${name}`;
}

/** What each event, or command without one, changes. `read` gives fields of the message, `asked` those of
 * the command that it answers, `named` the name of a number of an enumeration. */
const changes = {
    CreateReply: (state) => { state.open = "open"; },
    Release_Sync: (state) => { Object.assign(state, newSessionState(state.handle), { open: "released" }); },
    ReleaseReply: (state) => { Object.assign(state, newSessionState(state.handle), { open: "released" }); },
    StartBroadcastReceivingReply: (state, read) => { state.tuned = channelText(read); },
    SelectChannelReply: (state, read) => { Object.assign(state, { tuned: channelText(read), station: "", services: [], now: "", next: "" }); },
    TerminateBroadcastReceivingReply: (state) => { Object.assign(state, { tuned: "", station: "", services: [], now: "", next: "", cn: null, reception: "" }); },
    TerminateSearchChannelNotify: (state, read) => { state.tuned = channelText(read); },
    StartScanReply: (state, read) => { state.scan = `scanning ${read("channel_num")} channels`; },
    ScanNotify: (state, read) => { state.scan = `scanning, channel ${read("channnel")}`; },
    TerminateScanNotify: (state) => { state.scan = ""; },
    NetworkInfoNotify: (state, read) => { state.station = `${read("network.remocon_id")} ${read("network.ts_name")}`; },
    ServiceInfoNotify: (state, read) => {
        state.services = [];
        for (let n = 0; n < Math.min(read("svc_cnt"), 8); ++n) {
            state.services.push(read(`service[${n}].name`));
        }
    },
    ReceiveEpgInfoNotify: (state, read) => {
        state.now = programmeText(read, "current");
        state.next = programmeText(read, "next");
    },
    ReceiveSensitivityNotify: (state, read) => { state.cn = read("cn"); },
    GoodSensNotify: (state) => { state.reception = "good"; },
    BadSensNotify: (state) => { state.reception = "bad"; },
    SetFirstComponent: (state, read) => setPlanes(state, read),
    SetDisplayAllReply: (state, read, asked) => setPlanes(state, asked),
    SetScreenDisplayReply: (state, read, asked) => setPlanes(state, asked),
    SetCapDisplayReply: (state, read, asked) => setPlanes(state, asked),
    SetBmlDisplayReply: (state, read, asked) => setPlanes(state, asked),
    ReleaseDisplayReply: (state, read) => {
        const plane = ["video", "caption", "bml"][read("drawing_destination")];
        if (plane) {
            state[plane] = null;
        }
    },
    ControlDisplayModeReply: (state, read, asked) => {
        if (state.video) {
            Object.assign(state.video, { mode: asked("screen_mode"), rotate: asked("screen_rotate") });
        }
    },
    ControlCapReply: (state, read, asked, named) => {
        setPlanes(state, asked);
        state.captions = named("CONTROL_TYPE", asked("cap_control_type"));
    },
    ControlCap_Sync: (state, read, asked, named) => changes.ControlCapReply(state, read, asked, named),
    ControlBmlReply: (state, read, asked, named) => {
        setPlanes(state, asked);
        state.browser = named("CONTROL_TYPE", asked("bml_control_type"));
    },
    ControlBML_Sync: (state, read, asked, named) => changes.ControlBmlReply(state, read, asked, named),
    BmlEndTvlinkReply: (state) => { state.browser = ""; },
    StartRecReply: (state) => { state.recording = "recording"; },
    RecInfoNotify: (state, read) => { state.recording = `recording, ${read("rec_time")} s`; },
    TerminateRecReply: (state) => { state.recording = ""; },
    TerminateRec_Sync: (state) => { state.recording = ""; },
    StartPlayReply: (state) => { state.playback = "playing"; },
    PausePlayReply: (state) => { state.playback = "paused"; },
    RestartPlayReply: (state) => { state.playback = "playing"; },
    ChangePlaySpeedReply: (state, read, asked, named) => {
        state.playback = `${named("PLAY_DIRECTION", asked("direction"))} ${asked("numerator")}/${asked("denominator")}`;
    },
    TerminatePlayReply: (state) => { state.playback = ""; },
    TerminatePlay_Sync: (state) => { state.playback = ""; },
    ChangeAudioComponentReply: (state, read, asked, named) => { state.sound = named("AUDIO_COMPONENT", asked("value")); },
    ChangeSoundDualMonoReply: (state, read, asked, named) => { state.sound = named("DUALMONO", asked("value")); },
    ControlLNAReply: (state, read, asked) => { state.lna = String(asked("value")); },
};

/** A request of the browser and the command that answers it. */
const requests = {
    BmlPermissionReq: "BMLPermissionReply",
    BmlAuthReq: "BMLAuthReply",
    BmlWriteNvramReq: "BMLWriteNvramReply",
    BmlReadNvramReq: "BMLReadNvramReply",
    BmlStartFepReq: "BMLFepReply",
    BmlMailReq: "BMLMailReply",
    BmlPhonebookReq: "BMLPhonebookReply",
    BmlCallReq: "BMLCallReply",
    BmlScheduleReq: "BMLScheduleReply",
    BmlBrowserReq: "BMLBrowserReply",
    BmlSavePictureReq: "BMLSavePictureReply",
    BmlStartTvlinkReq: "BMLStartTvlinkReply",
    BmlEnrolTvlinkReq: "BMLEnrolTvlinkReply",
};
const requestAnswered = Object.fromEntries(Object.entries(requests).map(([request, answer]) => [answer, request]));

/** The receiver after each message. */
class States {
    constructor(session) {
        this.session = session;
        this.checkpoints = [{}];
    }

    /** The sessions after that message, by handle; -1: before the first. */
    after(i) {
        const checkpoint = Math.floor((i + 1) / checkpointDistance);
        while (this.checkpoints.length <= checkpoint) {
            const from = (this.checkpoints.length - 1) * checkpointDistance;
            const state = structuredClone(this.checkpoints[this.checkpoints.length - 1]);
            for (let at = from; at < from + checkpointDistance; ++at) {
                this.apply(state, at);
            }
            this.checkpoints.push(state);
        }
        const state = structuredClone(this.checkpoints[checkpoint]);
        for (let at = checkpoint * checkpointDistance; at <= i; ++at) {
            this.apply(state, at);
        }
        return state;
    }

    apply(states, i) {
        const { session } = this;
        const handle = session.messages.session[i];
        const kind = session.messages.kind[i];
        if (handle < 0 || kind === Kind.refused || session.messages.value[i] !== 0) {
            return;
        }
        states[handle] ??= newSessionState(handle);
        const state = states[handle];
        const name = session.name(i);
        this.applyRequest(state, name, i);
        const known = session.known(i);
        const waits = known && (known.answer || known.reply_event);
        const failed = kind !== Kind.command && (session.field(i, "result") || session.field(i, "return_value"));
        if (!changes[name] || failed || (kind === Kind.command && waits)) {
            return;
        }
        const partner = session.partnerOf[i];
        const read = (path) => session.fieldIn(i, path);
        const asked = (path) => partner < 0 ? undefined : session.fieldIn(partner, path);
        const named = (enumeration, value) => session.schema.enumerations[enumeration]?.[value] ?? String(value ?? "");
        changes[name](state, read, asked, named);
    }

    applyRequest(state, name, i) {
        if (requests[name] && this.session.messages.kind[i] === Kind.event) {
            state.pending.push(name);
        }
        const at = state.pending.indexOf(requestAnswered[name]);
        if (at >= 0) {
            state.pending.splice(at, 1);
        }
    }
}

const rotations = ["0", "90", "180", "270"];

function planeText(plane) {
    return plane ? `${plane.width} × ${plane.height}, rotated ${rotations[plane.rotate] ?? plane.rotate}°` : "";
}

/** What a table of the state shows: a name, and its text. */
function stateRows(state) {
    return [
        ["session", state.open || "opened before this file"],
        ["receives", state.tuned],
        ["station", state.station],
        ["services", state.services.join(", ")],
        ["now", state.now],
        ["next", state.next],
        ["reception", [state.reception, state.cn === null ? "" : `C/N ${(state.cn / 100).toFixed(1)} dB`].filter(Boolean).join(", ")],
        ["video plane", planeText(state.video)],
        ["caption plane", planeText(state.caption)],
        ["data plane", planeText(state.bml)],
        ["captions", state.captions],
        ["data broadcasting", state.browser],
        ["sound", state.sound],
        ["scan", state.scan],
        ["recording", state.recording],
        ["playback", state.playback],
        ["amplifier", state.lna],
        ["requests without a reply", state.pending.join(", ")],
    ];
}

class StateView {
    constructor(states) {
        this.states = states;
        this.panel = document.getElementById("panel-state");
    }

    show(i) {
        const after = this.states.after(i);
        const before = this.states.after(i - 1);
        const tables = Object.values(after).map((state) => {
            const was = before[state.handle] ? Object.fromEntries(stateRows(before[state.handle])) : {};
            return element("table", { class: "state" },
                element("caption", {}, element("h3", {}, `Session ${state.handle}`)),
                element("tbody", {}, ...stateRows(state).map(([name, text]) => {
                    const changed = (was[name] ?? "") !== text;
                    return element("tr", { class: changed ? "changed" : "" }, element("th", { scope: "row" }, name),
                        element("td", {}, text || "–", changed && was[name] ? element("span", { class: "quiet" }, ` (was ${was[name]})`) : ""));
                })));
        });
        this.panel.replaceChildren(
            element("p", { class: "quiet" }, "After the chosen message. What it changed is marked."),
            ...(tables.length ? tables : [element("p", {}, "No session yet.")]));
    }
}

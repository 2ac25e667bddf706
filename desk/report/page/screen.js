// The receiver's picture: the planes as the commands placed them.

const svgNames = "http://www.w3.org/2000/svg";

function svg(name, attributes = {}, ...children) {
    const made = document.createElementNS(svgNames, name);
    for (const [key, value] of Object.entries(attributes)) {
        made.setAttribute(key, value);
    }
    made.append(...children);
    return made;
}

class ScreenView {
    constructor(session, states) {
        this.session = session;
        this.states = states;
        this.panel = document.getElementById("panel-screen");
    }

    show(i) {
        const after = Object.values(this.states.after(i)).filter((state) => state.open !== "released");
        const handle = i >= 0 ? this.session.messages.session[i] : -1;
        const state = after.find((each) => each.handle === handle) ?? after[after.length - 1];
        if (!state) {
            this.panel.replaceChildren(element("p", {}, "No session is open."));
            return;
        }
        this.panel.replaceChildren(this.words(state), this.picture(state));
    }

    words(state) {
        const lines = [
            state.station || state.tuned || "nothing is received",
            state.now ? `now ${state.now}` : "",
            state.next ? `next ${state.next}` : "",
            state.recording,
            state.playback,
        ].filter(Boolean);
        return element("div", { id: "screen-words" }, element("h3", {}, `Session ${state.handle}`), ...lines.map((line) => element("p", {}, line)));
    }

    /** Planes one below the other as a portable receiver lays them out; sizes are those of the surfaces. */
    picture(state) {
        const planes = [["video", state.video], ["caption", state.caption], ["bml", state.bml]].filter(([, plane]) => plane);
        if (planes.length === 0) {
            return element("p", {}, "No plane has a surface.");
        }
        const sized = planes.map(([name, plane]) => {
            const upright = plane.rotate % 2 === 0;
            return { name, plane, width: (upright ? plane.width : plane.height) || 1, height: (upright ? plane.height : plane.width) || 1 };
        });
        const width = Math.max(...sized.map((each) => each.width));
        const height = sized.reduce((sum, each) => sum + each.height + 4, 0);
        const scale = Math.min(420 / width, 640 / height);
        const drawing = svg("svg", { viewBox: `0 0 ${width} ${height}`, width: width * scale, height: height * scale, role: "img",
            "aria-label": planes.map(([name, plane]) => `${name} plane ${planeText(plane)}`).join("; ") });
        let y = 0;
        for (const each of sized) {
            const x = (width - each.width) / 2;
            const title = { video: "video", caption: "captions", bml: "data broadcasting" }[each.name];
            const font = 12 / scale;
            drawing.append(
                svg("rect", { class: "plane", x, y, width: each.width, height: each.height, fill: `var(--${each.name})`, "stroke-width": 1 / scale }),
                svg("text", { x: x + font / 2, y: y + font * 1.4, style: `font-size:${font}px` }, this.label(title, each, state)));
            y += each.height + 4;
        }
        return drawing;
    }

    label(title, { name, plane }, state) {
        const parts = [title, `${plane.width} × ${plane.height}`];
        if (plane.rotate) {
            parts.push(`rotated ${rotations[plane.rotate] ?? plane.rotate}°`);
        }
        if (name === "video" && plane.mode !== undefined) {
            parts.push(this.session.schema.enumerations.SCREEN_MODE?.[plane.mode] ?? `mode ${plane.mode}`);
        }
        if (name === "caption") {
            parts.push(`${plane.lines} lines of ${plane.characters} at ${plane.x}, ${plane.y}`, state.captions);
        }
        if (name === "bml") {
            parts.push(state.browser, ...state.pending);
        }
        return parts.filter(Boolean).join(", ");
    }
}

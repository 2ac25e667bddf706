// The time line: a lane for each thread and one for the service, on a canvas.

const laneHeight = 34;
const laneTop = 22;
const laneLabel = 110;
/// With more messages in sight, arrows would cover one another.
const mostArrows = 600;

class Lanes {
    constructor(session, choose, step, zoomed) {
        this.session = session;
        this.choose = choose;
        this.step = step;
        this.zoomed = zoomed;
        this.canvas = document.getElementById("lanes-canvas");
        this.range = document.getElementById("lanes-range");
        this.indexes = [];
        this.chosen = -1;
        this.laidOut = this.canvas.clientWidth;
        this.showAll();
        this.canvas.addEventListener("wheel", (event) => this.wheel(event), { passive: false });
        this.canvas.addEventListener("pointerdown", (event) => this.press(event));
        this.canvas.addEventListener("keydown", (event) => this.key(event));
        document.getElementById("zoom-in").addEventListener("click", () => this.zoom(0.5));
        document.getElementById("zoom-out").addEventListener("click", () => this.zoom(2));
        document.getElementById("zoom-all").addEventListener("click", () => {
            this.showAll();
            this.changed();
        });
        new ResizeObserver(() => this.draw()).observe(this.canvas);
        window.matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.draw());
    }

    showAll() {
        const margin = Math.max((this.session.last - this.session.first) * 0.01, 1e3);
        this.from = this.session.first - margin;
        this.to = this.session.last + margin;
    }

    show(indexes) {
        this.indexes = indexes;
        this.listed = new Uint8Array(this.session.count);
        for (const i of indexes) {
            this.listed[i] = 1;
        }
        this.draw();
    }

    mark(i) {
        this.chosen = i;
        const time = this.session.messages.time[i];
        if (i >= 0 && (time < this.from || time > this.to)) {
            const half = (this.to - this.from) / 2;
            this.from = time - half;
            this.to = time + half;
        }
        this.draw();
    }

    changed() {
        this.draw();
        this.zoomed(this.from, this.to);
    }

    zoom(factor, around = 0.5) {
        const width = this.to - this.from;
        const middle = this.from + width * around;
        const next = Math.min(Math.max(width * factor, 1e3), (this.session.last - this.session.first) * 2 + 1e4);
        this.from = middle - next * around;
        this.to = this.from + next;
        this.changed();
    }

    pan(share) {
        const by = (this.to - this.from) * share;
        this.from += by;
        this.to += by;
        this.changed();
    }

    /// As it was laid out last: to ask the document each time takes long.
    width() {
        return this.laidOut;
    }

    x(time) {
        return laneLabel + (time - this.from) / (this.to - this.from) * (this.width() - laneLabel - 8);
    }

    laneY(thread) {
        return laneTop + thread * laneHeight + laneHeight / 2;
    }

    serviceY() {
        return this.laneY(this.session.threads.length);
    }

    draw() {
        const style = getComputedStyle(document.documentElement);
        const values = new Map();
        const colour = (name) => {
            if (!values.has(name)) {
                values.set(name, style.getPropertyValue(`--${name}`).trim());
            }
            return values.get(name);
        };
        this.laidOut = this.canvas.clientWidth;
        const height = laneTop + (this.session.threads.length + 1) * laneHeight + 6;
        const scale = window.devicePixelRatio || 1;
        this.canvas.style.height = `${height}px`;
        this.canvas.width = this.width() * scale;
        this.canvas.height = height * scale;
        const pen = this.canvas.getContext("2d");
        pen.scale(scale, scale);
        pen.font = "12px system-ui, sans-serif";
        pen.fillStyle = colour("paper");
        pen.fillRect(0, 0, this.width(), height);
        this.drawLanes(pen, colour);
        this.drawTicks(pen, colour, height);
        const first = this.session.placeOf(this.from);
        const last = this.session.placeOf(this.to);
        this.drawCalls(pen, colour);
        this.drawMessages(pen, colour, first, last);
        this.drawChosen(pen, colour);
        this.range.textContent = `${this.session.timeText(this.from)} to ${this.session.timeText(this.to)}, ${durationText(Math.round(this.to - this.from))}, ${(last - first).toLocaleString("en")} messages`;
    }

    drawLanes(pen, colour) {
        pen.textBaseline = "middle";
        const names = this.session.threads.map((thread) => (thread.name || String(thread.id)) + (thread.run > 1 ? ` (run ${thread.run})` : ""));
        names.push("DTV service");
        names.forEach((name, lane) => {
            pen.strokeStyle = colour("line");
            pen.beginPath();
            pen.moveTo(laneLabel, this.laneY(lane));
            pen.lineTo(this.width() - 8, this.laneY(lane));
            pen.stroke();
            pen.fillStyle = colour("ink");
            pen.fillText(name, 6, this.laneY(lane), laneLabel - 10);
        });
    }

    drawTicks(pen, colour, height) {
        const span = this.to - this.from;
        const most = Math.max(2, Math.floor((this.width() - laneLabel) / 110));
        const steps = [1, 2, 5].flatMap((digit) => Array.from({ length: 14 }, (_, power) => digit * 10 ** power)).sort((a, b) => a - b);
        const step = steps.find((each) => span / each <= most) ?? span / most;
        const digits = step >= 1e9 ? 0 : step >= 1e6 ? 3 : step >= 1e3 ? 6 : 9;
        pen.fillStyle = colour("quiet");
        pen.strokeStyle = colour("line");
        for (let time = Math.ceil(this.from / step) * step; time < this.to; time += step) {
            const text = this.session.timeText(time, digits).replace(/\.$/, "");
            pen.fillText(text, this.x(time) + 3, 10);
            pen.beginPath();
            pen.moveTo(this.x(time), 2);
            pen.lineTo(this.x(time), height);
            pen.globalAlpha = 0.4;
            pen.stroke();
            pen.globalAlpha = 1;
        }
    }

    /** Bars for what took time. */
    drawCalls(pen, colour) {
        const { calls } = this.session;
        const first = firstAtLeast(calls.begin, this.from - 60e9);
        for (let n = first; n < calls.begin.length && calls.begin[n] <= this.to; ++n) {
            const width = this.x(calls.end[n]) - this.x(calls.begin[n]);
            if (calls.end[n] < this.from || width < 1) {
                continue;
            }
            pen.fillStyle = colour(calls.kind[n] === 1 ? "event" : "command");
            pen.globalAlpha = 0.3;
            pen.fillRect(this.x(calls.begin[n]), this.laneY(calls.thread[n]) - 7, width, 14);
            pen.globalAlpha = 1;
        }
    }

    drawMessages(pen, colour, first, last) {
        const { session } = this;
        const colours = { failed: colour("failed"), command: colour("command"), event: colour("event") };
        const arrows = last - first <= mostArrows;
        const perTime = (this.width() - laneLabel - 8) / (this.to - this.from);
        // One mark for all of a pixel: 4 bits for each lane and pixel.
        const columnsOfPixels = Math.ceil(this.width()) + 2;
        const seen = arrows ? null : new Uint8Array(columnsOfPixels * session.threads.length * 4);
        for (let place = first; place < last; ++place) {
            const i = session.byTime[place];
            const x = laneLabel + (session.messages.time[i] - this.from) * perTime;
            const y = this.laneY(session.messages.thread[i]);
            const failed = session.isBad[i] === 1;
            if (!arrows) {
                const key = (session.messages.thread[i] * columnsOfPixels + Math.round(x)) * 4 + (failed ? 2 : 0) + (session.isOut(i) ? 1 : 0);
                if (seen[key]) {
                    continue;
                }
                seen[key] = 1;
            }
            pen.globalAlpha = this.listed && !this.listed[i] ? 0.2 : 1;
            pen.strokeStyle = pen.fillStyle = colours[failed ? "failed" : session.isOut(i) ? "command" : "event"];
            if (arrows) {
                this.drawArrow(pen, x, y, session.isOut(i));
                this.drawPair(pen, i, x, y);
            }
            this.drawMark(pen, x, y, failed, session.isOut(i));
        }
        pen.globalAlpha = 1;
    }

    drawArrow(pen, x, y, out) {
        const service = this.serviceY();
        const [end, back] = out ? [service, -5] : [y + 6, 5];
        pen.lineWidth = 1;
        pen.beginPath();
        pen.moveTo(x, y);
        pen.lineTo(x, service);
        pen.stroke();
        pen.beginPath();
        pen.moveTo(x, end);
        pen.lineTo(x - 3, end + back);
        pen.lineTo(x + 3, end + back);
        pen.fill();
    }

    /** A reply is tied to its command. */
    drawPair(pen, i, x, y) {
        const partner = this.session.partnerOf[i];
        if (partner < 0) {
            return;
        }
        pen.setLineDash([3, 3]);
        pen.beginPath();
        pen.moveTo(this.x(this.session.messages.time[partner]), this.laneY(this.session.messages.thread[partner]));
        pen.lineTo(x, y);
        pen.stroke();
        pen.setLineDash([]);
    }

    /** By shape as well as by colour: a square out, a disc in, a cross for what failed. */
    drawMark(pen, x, y, failed, out) {
        pen.lineWidth = 2;
        pen.beginPath();
        if (failed) {
            pen.moveTo(x - 5, y - 5);
            pen.lineTo(x + 5, y + 5);
            pen.moveTo(x + 5, y - 5);
            pen.lineTo(x - 5, y + 5);
            pen.stroke();
        } else if (out) {
            pen.fillRect(x - 3, y - 3, 6, 6);
        } else {
            pen.arc(x, y, 3.5, 0, 7);
            pen.fill();
        }
    }

    drawChosen(pen, colour) {
        if (this.chosen < 0) {
            return;
        }
        const x = this.x(this.session.messages.time[this.chosen]);
        if (x < laneLabel) {
            return;
        }
        pen.strokeStyle = colour("warning");
        pen.lineWidth = 2;
        pen.beginPath();
        pen.moveTo(x, laneTop - 4);
        pen.lineTo(x, this.serviceY() + 12);
        pen.stroke();
        pen.beginPath();
        pen.arc(x, this.laneY(this.session.messages.thread[this.chosen]), 8, 0, 7);
        pen.stroke();
    }

    timeAt(x) {
        return this.from + (x - laneLabel) / (this.width() - laneLabel - 8) * (this.to - this.from);
    }

    /** The message that is drawn nearest to a point. */
    nearest(x, y) {
        const { session } = this;
        const reach = (this.to - this.from) * 12 / Math.max(this.width() - laneLabel, 1);
        const time = this.timeAt(x);
        let best = -1;
        let least = 40;
        for (let place = session.placeOf(time - reach); place < session.placeOf(time + reach); ++place) {
            const i = session.byTime[place];
            const far = Math.abs(this.x(session.messages.time[i]) - x) + Math.abs(this.laneY(session.messages.thread[i]) - y) / 2;
            if (far < least) {
                least = far;
                best = i;
            }
        }
        return best;
    }

    wheel(event) {
        event.preventDefault();
        if (event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY)) {
            this.pan((event.deltaX || event.deltaY) / 1000);
        } else {
            const share = (event.offsetX - laneLabel) / (this.width() - laneLabel - 8);
            this.zoom(event.deltaY > 0 ? 1.25 : 0.8, Math.min(Math.max(share, 0), 1));
        }
    }

    /** A click chooses; what is dragged moves. */
    press(event) {
        const start = event.offsetX;
        const { from, to } = this;
        let moved = false;
        const move = (to_here) => {
            const by = to_here.offsetX - start;
            moved = moved || Math.abs(by) > 4;
            if (moved) {
                const time = by / (this.width() - laneLabel - 8) * (to - from);
                this.from = from - time;
                this.to = to - time;
                this.changed();
            }
        };
        const release = (end) => {
            this.canvas.removeEventListener("pointermove", move);
            const i = moved ? -1 : this.nearest(end.offsetX, end.offsetY);
            if (i >= 0) {
                this.choose(i);
            }
        };
        this.canvas.setPointerCapture(event.pointerId);
        this.canvas.addEventListener("pointermove", move);
        this.canvas.addEventListener("pointerup", release, { once: true });
    }

    key(event) {
        const actions = {
            "+": () => this.zoom(0.5), "=": () => this.zoom(0.5), "-": () => this.zoom(2),
            ArrowLeft: () => this.pan(-0.1), ArrowRight: () => this.pan(0.1),
            ArrowUp: () => this.step(-1), ArrowDown: () => this.step(1),
            Home: () => {
                this.showAll();
                this.changed();
            },
        };
        if (actions[event.key]) {
            event.preventDefault();
            actions[event.key]();
        }
    }
}

// The list of the messages: only the rows that are seen are in the document.

const rowHeight = 22;
/// Browsers lay out no element that is much higher.
const mostPixels = 15000000;

class MessageList {
    constructor(session, choose) {
        this.session = session;
        this.choose = choose;
        this.box = document.getElementById("list");
        this.space = document.getElementById("list-space");
        this.indexes = [];
        this.rows = new Map();
        this.chosen = -1;
        this.box.addEventListener("scroll", () => this.draw());
        this.box.addEventListener("keydown", (event) => this.key(event));
        new ResizeObserver(() => this.draw()).observe(this.box);
    }

    show(indexes) {
        this.indexes = indexes;
        this.height = Math.min(indexes.length * rowHeight, mostPixels);
        this.space.style.height = `${this.height}px`;
        for (const row of this.rows.values()) {
            row.remove();
        }
        this.rows.clear();
        this.draw();
    }

    /** The place in the list of what is at that height. A very long list is scrolled faster. */
    placeAt(pixel) {
        const all = this.indexes.length * rowHeight;
        const seen = this.box.clientHeight;
        const factor = all > this.height ? (all - seen) / (this.height - seen) : 1;
        return Math.floor(pixel * factor / rowHeight);
    }

    draw() {
        const top = this.box.scrollTop;
        const first = Math.max(0, this.placeAt(top) - 4);
        const last = Math.min(this.indexes.length, first + Math.ceil(this.box.clientHeight / rowHeight) + 8);
        for (const [place, row] of this.rows) {
            if (place < first || place >= last) {
                row.remove();
                this.rows.delete(place);
            }
        }
        const shift = top - this.placeAt(top) * rowHeight;
        for (let place = first; place < last; ++place) {
            let row = this.rows.get(place);
            if (!row) {
                row = this.rowOf(place);
                this.rows.set(place, row);
                this.space.append(row);
            }
            const scaled = this.indexes.length * rowHeight > this.height;
            row.style.top = `${scaled ? place * rowHeight + shift : place * rowHeight}px`;
            row.setAttribute("aria-selected", String(this.indexes[place] === this.chosen));
        }
    }

    rowOf(place) {
        const { session } = this;
        const i = this.indexes[place];
        const row = document.createElement("div");
        row.id = `message-${session.messages.number[i]}`;
        row.className = `row ${session.isOut(i) ? "command" : "event"}${session.failures.has(i) ? " failed" : ""}`;
        row.setAttribute("role", "option");
        row.setAttribute("aria-setsize", this.indexes.length);
        row.setAttribute("aria-posinset", place + 1);
        const part = (name, text) => {
            const span = document.createElement("span");
            span.className = name;
            span.textContent = text;
            row.append(span);
        };
        part("number", session.messages.number[i]);
        part("time", session.timeText(session.messages.time[i]));
        part("thread", session.threadName(i));
        part("arrow", session.isOut(i) ? "→" : "←");
        part("name", session.name(i) + this.tail(i));
        row.addEventListener("click", () => this.choose(i));
        return row;
    }

    tail(i) {
        const { session } = this;
        let text = "";
        if (session.messages.session[i] >= 0) {
            text += ` h=${session.messages.session[i]}`;
        }
        if (session.partnerOf[i] >= 0) {
            text += ` #${session.messages.partner[i]}${session.messages.ambiguous[i] ? "?" : ""} ${durationText(session.latency[i])}`;
        }
        const failure = session.failures.get(i);
        return text + (failure ? ` ✕ ${failure}` : session.unanswered.has(i) ? " ✕ no answer" : "");
    }

    /** Chooses a message, and scrolls to it when it is listed. */
    mark(i) {
        this.chosen = i;
        const place = this.indexes.indexOf(i);
        if (place >= 0) {
            const all = this.indexes.length * rowHeight;
            const factor = all > this.height ? (this.height - this.box.clientHeight) / (all - this.box.clientHeight) : 1;
            const top = place * rowHeight * factor;
            if (top < this.box.scrollTop || top + rowHeight > this.box.scrollTop + this.box.clientHeight) {
                this.box.scrollTop = top - this.box.clientHeight / 2;
            }
            this.box.setAttribute("aria-activedescendant", `message-${this.session.messages.number[i]}`);
        } else {
            this.box.removeAttribute("aria-activedescendant");
        }
        this.draw();
    }

    /** Chooses the message that is `by` places after the chosen one; before it when `by` is negative. */
    step(by) {
        if (this.indexes.length === 0) {
            return;
        }
        const place = this.indexes.indexOf(this.chosen);
        const next = place < 0 ? 0 : Math.min(Math.max(place + by, 0), this.indexes.length - 1);
        this.choose(this.indexes[next]);
    }

    key(event) {
        const page = Math.floor(this.box.clientHeight / rowHeight);
        const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity };
        if (event.key in steps) {
            event.preventDefault();
            this.step(steps[event.key]);
        }
    }
}

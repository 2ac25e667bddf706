// The chosen message: its fields beside its bytes, the lines of the log, what it belongs to.

function element(name, attributes = {}, ...children) {
    const made = document.createElement(name);
    for (const [key, value] of Object.entries(attributes)) {
        if (key === "class") {
            made.className = value;
        } else if (key.startsWith("on")) {
            made.addEventListener(key.slice(2), value);
        } else {
            made.setAttribute(key, value);
        }
    }
    made.append(...children.filter((child) => child !== "" && child !== undefined));
    return made;
}

class MessageView {
    constructor(session, java, choose) {
        this.session = session;
        this.java = java;
        this.choose = choose;
        this.panel = document.getElementById("panel-message");
    }

    show(i) {
        const { session } = this;
        if (i < 0) {
            this.panel.replaceChildren(element("p", { class: "quiet" }, "No message is chosen."));
            return;
        }
        const fields = session.fields(i);
        this.panel.replaceChildren(
            element("h3", { id: "message-title" }, `#${session.messages.number[i]} ${session.name(i)}`),
            this.facts(i),
            ...this.table(i, fields),
            ...this.bytes(i, fields),
            ...this.javaObject(i),
            ...this.traceLines(i));
    }

    goTo(i, text) {
        return element("button", { type: "button", onclick: () => this.choose(i) }, text);
    }

    facts(i) {
        const { session } = this;
        const { messages } = session;
        const rows = [
            ["time", session.timeText(messages.time[i], 9)],
            ["kind", `${session.kind(i)} ${session.idText(i)}, ${messages.size[i]} bytes`],
            ["thread", `${session.threadName(i)} (${session.threads[messages.thread[i]].id})`],
        ];
        if (messages.session[i] >= 0) {
            rows.push(["handle", String(messages.session[i])]);
        }
        if (messages.surfaces[i]) {
            rows.push(["surfaces", String(messages.surfaces[i])]);
        }
        if (session.failures.has(i)) {
            rows.push(["failed", element("span", { class: "failed" }, session.failures.get(i))]);
        }
        if (session.partnerOf[i] >= 0) {
            const partner = session.partnerOf[i];
            rows.push(["belongs to", this.goTo(partner, `#${messages.number[partner]} ${session.name(partner)}`)]);
            rows.push(["after", `${durationText(session.latency[i])}${messages.ambiguous[i] ? ", or another of its kind" : ""}`]);
        }
        for (const answer of session.answers.get(i) ?? []) {
            rows.push(["followed by", this.goTo(answer, `#${messages.number[answer]} ${session.name(answer)} ${durationText(session.latency[answer])}`)]);
        }
        if (session.unanswered.has(i)) {
            rows.push(["answer", element("span", { class: "failed" }, "none in this file")]);
        }
        return element("table", { id: "facts" }, element("tbody", {},
            ...rows.map(([name, value]) => element("tr", {}, element("th", { scope: "row" }, name), element("td", {}, value)))));
    }

    table(i, fields) {
        const layout = this.session.layoutName(i);
        if (!layout) {
            return [];
        }
        const rows = fields.map((field) => element("tr", {
            tabindex: "0",
            "data-from": field.from,
            "data-to": field.to,
            onmouseenter: () => this.light(field.from, field.to),
            onfocus: () => this.light(field.from, field.to),
        },
        element("th", { scope: "row", style: `padding-left:${field.depth * 14}px` }, field.path),
        element("td", { class: "mono" }, field.isRecord ? "" : this.valueText(i, field))));
        return [element("h3", {}, layout),
            element("table", { id: "fields" }, element("tbody", {}, ...rows))];
    }

    valueText(i, field) {
        for (let at = field.from; at < field.to; ++at) {
            if (!this.session.isKnownByte(i, at)) {
                return "not in the log";
            }
        }
        return field.text;
    }

    bytes(i, fields) {
        const record = this.session.record(i);
        if (record.length === 0) {
            return [];
        }
        const grid = element("div", { id: "bytes", tabindex: "0", role: "group", "aria-label": "The bytes of the record in hexadecimal; the fields above have their meaning" });
        const place = (at) => fields.filter((field) => !field.isRecord && at >= field.from && at < field.to)[0];
        for (let at = 0; at < record.length; ++at) {
            if (at % 16 === 0) {
                grid.append(element("span", { class: "offset", style: "grid-column:1" }, at.toString(16).padStart(4, "0")));
            }
            const field = place(at);
            const known = this.session.isKnownByte(i, at);
            const cell = element("span", { "data-at": at, class: known ? (field ? "" : "reserved") : "unknown" },
                known ? record[at].toString(16).padStart(2, "0") : "··");
            if (field) {
                cell.addEventListener("mouseenter", () => this.light(field.from, field.to));
            }
            grid.append(cell);
        }
        return [element("h3", {}, `${record.length} bytes`), grid];
    }

    /** What the callback gets, as a tree. */
    javaObject(i) {
        const tree = this.java.treeOf(i);
        if (!tree || this.session.messages.unknown[i]) {
            return [];
        }
        const item = (name, value) => {
            const label = name ? `${name} = ` : "";
            const children = value.class ? value.values.map((each) => item(each.name, each.value))
                : value.list && value.kind === "" ? value.list.map((each, n) => item(`[${n}]`, each)) : undefined;
            if (!children) {
                return element("li", {}, `${label}${javaText(value)}`);
            }
            return element("li", {}, element("details", { open: "" },
                element("summary", {}, `${label}${value.class ?? `${value.list.length} objects`}`), element("ul", {}, ...children)));
        };
        return [element("h3", {}, "Java object"), element("ul", { id: "java", class: "mono tree" }, item("", tree))];
    }

    /** Marks a field and its bytes, and nothing else. */
    light(from, to) {
        for (const lit of this.panel.querySelectorAll(".lit")) {
            lit.classList.remove("lit");
        }
        for (const cell of this.panel.querySelectorAll("[data-at]")) {
            const at = Number(cell.dataset.at);
            cell.classList.toggle("lit", at >= from && at < to);
        }
        for (const row of this.panel.querySelectorAll("#fields tr")) {
            row.classList.toggle("lit", Number(row.dataset.from) === from && Number(row.dataset.to) === to);
        }
    }

    /** The lines that the call of the message wrote. */
    traceLines(i) {
        const { session } = this;
        const { lines, data } = session;
        const call = session.callOf[i];
        if (lines.number.length === 0 || call < 0) {
            return [];
        }
        const thread = session.threads[session.calls.thread[call]].name;
        const end = session.calls.end[call];
        const shown = [];
        for (let n = firstAtLeast(lines.number, session.calls.line[call]); n < lines.number.length; ++n) {
            if (lines.time[n] > end || shown.length === 400) {
                break;
            }
            if (data.texts[lines.task[n]] === thread) {
                shown.push(`${lines.number[n]}  ${data.texts[lines.text[n]]}`);
            }
        }
        const source = session.calls.source[call];
        const where = source ? `, from ${data.texts[session.calls.function[call]]}() at line ${source}` : "";
        return [element("h3", {}, `${shown.length} lines of the log${where}`),
            element("div", { class: "lines mono", id: "lines", tabindex: "0", role: "region", "aria-label": "Lines of the log" }, shown.join("\n"))];
    }
}

/** The first place in a sorted array with that value or more. */
function firstAtLeast(sorted, value) {
    let low = 0;
    let high = sorted.length;
    while (low < high) {
        const middle = (low + high) >> 1;
        if (sorted[middle] < value) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

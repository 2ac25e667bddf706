// The session: what the report's data hold, and how a record is read.

const Kind = { command: 1, answer: 2, event: 3, refused: 4 };
const kindNames = { 1: "command", 2: "answer", 3: "event", 4: "refused" };

/** The bytes of a text in Base64. */
function bytesOf(text) {
    const binary = atob(text);
    const bytes = new Uint8Array(binary.length);
    for (let i = 0; i < binary.length; ++i) {
        bytes[i] = binary.charCodeAt(i);
    }
    return bytes;
}

/** The document that is in the page. */
async function readData() {
    const bytes = bytesOf(document.getElementById("data").textContent.trim());
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate"));
    return JSON.parse(await new Response(stream).text());
}

/** A text of a field: it ends at its first zero, or with the field. */
function textIn(bytes) {
    const end = bytes.indexOf(0);
    return new TextDecoder("utf-8").decode(end < 0 ? bytes : bytes.subarray(0, end));
}

function utf16In(bytes) {
    let text = "";
    for (let at = 0; at + 1 < bytes.length; at += 2) {
        const unit = bytes[at] | bytes[at + 1] << 8;
        if (unit === 0) {
            break;
        }
        text += String.fromCharCode(unit);
    }
    return text;
}

function numberIn(bytes, signed) {
    let number = 0;
    for (let i = bytes.length - 1; i >= 0; --i) {
        number = number * 256 + bytes[i];
    }
    const range = 2 ** (8 * bytes.length);
    return signed && number >= range / 2 ? number - range : number;
}

function hex(bytes) {
    return Array.from(bytes, (byte) => byte.toString(16).padStart(2, "0")).join("");
}

/** Columns as typed arrays, which are quicker to go through; other members stay as they are. */
function columns(object, types) {
    const entries = Object.entries(object).map(([name, values]) =>
        [name, Array.isArray(values) ? (types[name] ?? Float64Array).from(values) : values]);
    return Object.fromEntries(entries);
}

class Session {
    constructor(data, schema) {
        this.data = data;
        this.schema = schema;
        this.messages = columns(data.messages, { kind: Uint8Array, id: Int32Array, thread: Uint16Array, ambiguous: Uint8Array });
        this.calls = data.calls;
        this.outerFields = new Map();
        this.lines = data.lines;
        this.threads = data.threads;
        this.base = BigInt(data.base);
        this.count = this.messages.number.length;
        this.records = bytesOf(this.messages.records);
        this.starts = new Float64Array(this.count + 1);
        this.indexOfNumber = new Map();
        for (let i = 0; i < this.count; ++i) {
            this.starts[i + 1] = this.starts[i] + this.messages.length[i];
            this.indexOfNumber.set(this.messages.number[i], i);
        }
        this.linkCalls();
        this.linkPartners();
        this.findFailures();
        // Clocks may be set back: what is looked up by time is sorted.
        const { time } = this.messages;
        this.byTime = new Uint32Array(this.count);
        let sorted = true;
        for (let i = 0; i < this.count; ++i) {
            this.byTime[i] = i;
            sorted = sorted && (i === 0 || time[i - 1] <= time[i]);
        }
        if (!sorted) {
            this.byTime.sort((a, b) => time[a] - time[b] || a - b);
        }
        this.first = this.count ? this.messages.time[this.byTime[0]] : 0;
        this.last = this.count ? this.messages.time[this.byTime[this.count - 1]] : 0;
    }

    /** The call that each message is of. */
    linkCalls() {
        this.callOf = new Int32Array(this.count).fill(-1);
        this.calls.message.forEach((number, call) => {
            const index = this.indexOfNumber.get(number);
            if (index !== undefined) {
                this.callOf[index] = call;
            }
        });
    }

    /** Nanoseconds since the partner (NaN: none), and who belongs to a message. */
    linkPartners() {
        this.partnerOf = new Int32Array(this.count).fill(-1);
        this.latency = new Float64Array(this.count).fill(NaN);
        this.answers = new Map();
        for (let i = 0; i < this.count; ++i) {
            const partner = this.indexOfNumber.get(this.messages.partner[i]);
            if (partner === undefined) {
                continue;
            }
            this.partnerOf[i] = partner;
            this.latency[i] = this.messages.time[i] - this.messages.time[partner];
            if (!this.answers.has(partner)) {
                this.answers.set(partner, []);
            }
            this.answers.get(partner).push(i);
        }
    }

    /** What went wrong with each message; a message without an entry went well. */
    findFailures() {
        this.failures = new Map();
        this.unanswered = new Set();
        /// 1 for each message that failed or had no answer.
        this.isBad = new Uint8Array(this.count);
        for (let i = 0; i < this.count; ++i) {
            const why = this.failureOf(i);
            if (why) {
                this.failures.set(i, why);
                this.isBad[i] = 1;
            }
            const known = this.known(i);
            const waits = this.messages.kind[i] === Kind.command && this.messages.value[i] === 0 &&
                known && (known.answer || known.reply_event);
            if (waits && !this.answers.has(i)) {
                this.unanswered.add(i);
                this.isBad[i] = 1;
            }
        }
    }

    failureOf(i) {
        const value = this.messages.value[i];
        if (this.messages.kind[i] === Kind.refused) {
            return `the bridge refused it: ${value}`;
        }
        if (value !== 0) {
            return `not sent: ${value}`;
        }
        if (this.messages.kind[i] !== Kind.command) {
            // The result of an event that answers nothing may mean something else.
            const result = this.field(i, "result");
            if (result && this.messages.partner[i]) {
                return `result = ${result}`;
            }
        }
        const call = this.callOf[i];
        return call >= 0 ? this.data.texts[this.calls.failure[call]] : "";
    }

    known(i) {
        return this.schema.messages[this.messages.id[i]];
    }

    name(i) {
        const known = this.known(i);
        return known ? known.name : this.idText(i);
    }

    idText(i) {
        return "0x" + (this.messages.id[i] >>> 0).toString(16).padStart(8, "0");
    }

    kind(i) {
        return kindNames[this.messages.kind[i]] ?? `kind ${this.messages.kind[i]}`;
    }

    /** Toward the service. */
    isOut(i) {
        return this.messages.kind[i] === Kind.command || this.messages.kind[i] === Kind.refused;
    }

    threadName(i) {
        const thread = this.threads[this.messages.thread[i]];
        return thread.name || String(thread.id);
    }

    record(i) {
        return this.records.subarray(this.starts[i], this.starts[i + 1]);
    }

    layoutName(i) {
        const known = this.known(i);
        if (!known || this.messages.kind[i] === Kind.refused) {
            return undefined;
        }
        return this.messages.kind[i] === Kind.answer ? known.answer : known.record;
    }

    /** The time of day, with milliseconds, in the zone of the file's clock or of this machine. */
    timeText(nanoseconds, digits = 3) {
        const all = this.base + BigInt(Math.round(nanoseconds));
        const date = new Date(Number(all / 1000000n));
        const two = (number) => String(number).padStart(2, "0");
        const fraction = String(((all % 1000000000n) + 1000000000n) % 1000000000n).padStart(9, "0");
        const [hour, minute, second] = this.isLog()
            ? [date.getUTCHours(), date.getUTCMinutes(), date.getUTCSeconds()]
            : [date.getHours(), date.getMinutes(), date.getSeconds()];
        return `${two(hour)}:${two(minute)}:${two(second)}.${fraction.slice(0, digits)}`;
    }

    /** The times of a log are those of the receiver's zone, as if that were UTC. */
    isLog() {
        return this.data.clock === "receiver";
    }

    hasLines() {
        return this.lines.number.length > 0;
    }

    /** The fields of a record, each with its place: {path, kind, from, to, value, text, depth}. */
    fields(i) {
        const layout = this.layoutName(i);
        const list = [];
        if (layout) {
            this.readFields(layout, this.record(i), 0, "", 0, list, this.known(i).enumeration);
        }
        return list;
    }

    readFields(layoutName, record, start, path, depth, list, valueEnumeration) {
        for (const field of this.schema.records[layoutName].fields) {
            for (let n = 0; n < field.count; ++n) {
                const from = start + field.offset + n * field.size;
                const to = from + field.size;
                const name = path + field.name + (field.count > 1 ? `[${n}]` : "");
                if (field.record) {
                    list.push({ path: name, from, to, depth, isRecord: true });
                    this.readFields(field.record, record, from, name + ".", depth + 1, list);
                } else if (to <= record.length || (from < record.length && field.kind !== "unsigned" && field.kind !== "signed")) {
                    list.push({ path: name, from, to, depth, ...this.read(field, record.subarray(from, to),
                        field.enumeration ?? (field.name === "value" ? valueEnumeration : undefined)) });
                }
            }
        }
    }

    read(field, bytes, enumeration) {
        switch (field.kind) {
        case "text": {
            const value = textIn(bytes);
            return { value, text: JSON.stringify(value) };
        }
        case "utf16": {
            const value = utf16In(bytes);
            return { value, text: JSON.stringify(value) };
        }
        case "bytes": {
            const value = hex(bytes);
            return { value, text: value };
        }
        default: {
            const value = numberIn(bytes, field.kind === "signed");
            const name = enumeration && this.schema.enumerations[enumeration][value];
            return { value, text: name ? `${value} ${name}` : String(value) };
        }
        }
    }

    /** The value of a field of the message by its path, as "service[2].name"; undefined: none, or not whole. */
    fieldIn(i, path) {
        const found = this.fields(i).find((field) => field.path === path && !field.isRecord);
        return found?.value;
    }

    /** The value of a field of the outer record of a message; undefined: none, or not whole. */
    field(i, name) {
        const layout = this.layoutName(i);
        const field = layout && this.outerField(layout, name);
        if (!field || this.messages.length[i] < field.offset + field.size) {
            return undefined;
        }
        return this.read(field, this.records.subarray(this.starts[i] + field.offset, this.starts[i] + field.offset + field.size)).value;
    }

    outerField(layout, name) {
        const key = `${layout}.${name}`;
        if (!this.outerFields.has(key)) {
            this.outerFields.set(key, this.schema.records[layout].fields.find((each) => each.name === name));
        }
        return this.outerFields.get(key);
    }

    /** Whether a byte of a message's record is in the log that it was made of. */
    isKnownByte(i, at) {
        const ranges = this.messages.unknown[i];
        if (!ranges) {
            return true;
        }
        for (let n = 0; n < ranges.length; n += 2) {
            if (at >= ranges[n] && at < ranges[n + 1]) {
                return false;
            }
        }
        return true;
    }

    /** The first place in byTime whose time is not before. */
    placeOf(time) {
        let low = 0;
        let high = this.count;
        while (low < high) {
            const middle = (low + high) >> 1;
            if (this.messages.time[this.byTime[middle]] < time) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return low;
    }
}

/** A duration as people read it. */
function durationText(nanoseconds) {
    const size = Math.abs(nanoseconds);
    if (size < 1e3) {
        return `${nanoseconds} ns`;
    }
    if (size < 1e6) {
        return `${(nanoseconds / 1e3).toPrecision(3)} µs`;
    }
    if (size < 1e9) {
        return `${(nanoseconds / 1e6).toPrecision(3)} ms`;
    }
    return `${(nanoseconds / 1e9).toPrecision(3)} s`;
}

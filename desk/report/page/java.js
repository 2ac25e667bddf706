// The Java objects that the bridge makes of an event's record. java_objects.json has for each event its class
// and what the constructor gets, in order:
//
//   "path"              a field, as an int
//   "path:long"         as a long, without its sign; "path:signedLong" with it
//   "path:text"         a text; "path:text?size": the empty one when the field `size` is 0
//   "path:length?size"  the bytes of that text
//   [class, ...]        another object
//   {numbers|bytes|array: ..., count: path, most: n}   as many as a field says; [n] is the place in an array
//   {utf16: path, size: path}, {length: text}, {number: path, most: n}

/** The bytes of a text in Java's modified UTF-8. */
function modifiedUtf8Length(text) {
    let length = 0;
    for (let at = 0; at < text.length; ++at) {
        const unit = text.charCodeAt(at);
        length += unit > 0 && unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
    }
    return length;
}

class JavaObjects {
    constructor(session, objects, components) {
        this.session = session;
        this.objects = objects;
        this.components = components;
    }

    /** The tree of an event: {class, values: [{name, value}]}; undefined when it makes none. */
    treeOf(i) {
        const { session } = this;
        const made = this.objects[session.name(i)];
        const record = session.schema.records[session.layoutName(i)];
        if (!made || session.messages.kind[i] !== Kind.event || !record || session.messages.length[i] < record.size) {
            return undefined;
        }
        const fields = new Map(session.fields(i).map((field) => [field.path, field]));
        return this.object(made, { i, fields, n: "" });
    }

    object([name, ...values], record) {
        const names = this.components[name] ?? [];
        return { class: name, values: values.map((value, at) => ({ name: names[at] ?? String(at), value: this.value(value, record) })) };
    }

    value(described, record) {
        if (Array.isArray(described)) {
            return this.object(described, record);
        }
        if (typeof described === "string") {
            return this.field(described, record);
        }
        if (described.length) {
            const length = modifiedUtf8Length(this.value(described.length, record).text);
            return described.long ? { long: BigInt(length) } : length;
        }
        if (described.utf16) {
            return { text: this.utf16(described, record) };
        }
        const count = Math.min(described.count ? this.number(described.count, record) : Infinity, described.most ?? Infinity);
        if (described.number) {
            return Math.min(this.number(described.number, record), described.most);
        }
        if (described.bytes) {
            const field = this.find(described.bytes, record);
            const bytes = this.session.record(record.i).subarray(field.from, field.to);
            return { kind: "bytes", list: Array.from(bytes.subarray(0, count), (byte) => byte << 24 >> 24) };
        }
        const places = Array.from({ length: count }, (_, n) => n);
        if (described.numbers) {
            return { kind: "ints", list: places.map((n) => this.number(`${described.numbers}[${n}]`, record)) };
        }
        return { kind: "", list: places.map((n) => this.object(described.array, { ...record, n })) };
    }

    find(path, record) {
        const found = record.fields.get(path.replace("[n]", `[${record.n}]`));
        if (!found) {
            throw new Error(`the record has no ${path}`);
        }
        return found;
    }

    number(path, record) {
        return this.find(path, record).value;
    }

    field(described, record) {
        const [, path, kind, size] = /^([^:]+)(?::(\w+)(?:\?(.+))?)?$/.exec(described);
        if (kind === "text" || kind === "length") {
            const text = size && this.number(size, record) === 0 ? "" : this.number(path, record);
            return kind === "text" ? { text } : modifiedUtf8Length(text);
        }
        const number = this.number(path, record);
        if (kind === "long") {
            return { long: BigInt(number) };
        }
        return kind === "signedLong" ? { long: BigInt(number | 0) } : number | 0;
    }

    /** As many units as the size says, up to what the field holds. */
    utf16({ utf16, size }, record) {
        const field = this.find(utf16, record);
        const bytes = this.session.record(record.i).subarray(field.from, field.to);
        const count = Math.min(this.number(size, record), bytes.length / 2);
        let text = "";
        for (let at = 0; at < count; ++at) {
            text += String.fromCharCode(bytes[at * 2] | bytes[at * 2 + 1] << 8);
        }
        return text;
    }
}

/** A Java value on one line. */
function javaText(value) {
    if (typeof value !== "object") {
        return String(value);
    }
    if (value.class) {
        return `${value.class}(${value.values.map((each) => javaText(each.value)).join(", ")})`;
    }
    if (value.list) {
        return `${value.kind}[${value.list.map(javaText).join(", ")}]`;
    }
    if (value.text !== undefined) {
        const escaped = Array.from({ length: value.text.length }, (_, at) => {
            const unit = value.text[at];
            return unit === "\"" || unit === "\\" ? `\\${unit}` : unit >= " " && unit <= "~" ? unit
                : `\\u${unit.charCodeAt(0).toString(16).padStart(4, "0")}`;
        });
        return `"${escaped.join("")}"`;
    }
    return `${value.long}L`;
}

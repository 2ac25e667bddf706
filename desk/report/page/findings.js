// What dtv-explain found, each with the way to its place.

class FindingsView {
    constructor(session, choose) {
        this.session = session;
        this.choose = choose;
    }

    show() {
        const { findings = [], losses = [] } = this.session.data.findings ?? {};
        const list = document.getElementById("findings-list");
        const first = findings.filter((finding) => !finding.caused_by);
        const items = first.map((finding) => element("li", {},
            element("strong", { class: finding.severity === "error" ? "failed" : "" }, `${finding.severity}: ${finding.subject ?? ""} `),
            `${finding.text ?? ""} `,
            ...this.places(finding),
            element("div", { class: "quiet" }, [finding.means, finding.next ? `Look at: ${finding.next}.` : ""].filter(Boolean).join(" ")),
            ...this.followers(finding, findings)));
        list.replaceChildren(
            ...losses.map((loss) => element("p", { class: "warning" }, `Missing: ${loss.text}`)),
            items.length ? element("ol", {}, ...items) : element("p", {}, "Nothing was found to have failed."));
    }

    followers(cause, findings) {
        const found = findings.filter((finding) => finding.caused_by === cause.id);
        if (found.length === 0) {
            return [];
        }
        return [element("details", {}, element("summary", {}, `${found.length} followed from it`),
            element("ul", {}, ...found.map((finding) => element("li", {}, `${finding.subject ?? ""}: ${finding.text ?? ""} `, ...this.places(finding)))))];
    }

    places(finding) {
        return (finding.lines ?? finding.messages ?? []).slice(0, 5).map((number) => {
            const i = this.messageAt(number);
            const name = `${this.session.hasLines() ? "line" : "message"} ${number}`;
            return i < 0 ? element("span", { class: "quiet" }, `${name} `)
                : element("button", { type: "button", onclick: () => this.choose(i) }, name);
        });
    }

    /** The message with that number, or that the line of the log is of or comes after. */
    messageAt(number) {
        const { session } = this;
        if (!session.hasLines()) {
            return session.indexOfNumber.get(number) ?? -1;
        }
        let best = -1;
        let line = -1;
        for (let i = 0; i < session.count; ++i) {
            const call = session.callOf[i];
            if (call >= 0 && session.calls.line[call] <= number && session.calls.line[call] > line) {
                best = i;
                line = session.calls.line[call];
            }
        }
        return best;
    }
}

// Brings the views together: one chosen message, one filter, both in the page's address.

class Report {
    constructor(session) {
        const choose = (i) => this.choose(i);
        this.session = session;
        this.chosen = -1;
        this.tab = "message";
        this.filterInput = document.getElementById("filter");
        this.list = new MessageList(session, choose);
        this.lanes = new Lanes(session, choose, (by) => this.list.step(by), () => this.keepAddress());
        const states = new States(session);
        this.java = new JavaObjects(session, session.schema.objects, session.schema.components);
        this.views = {
            message: new MessageView(session, this.java, choose),
            state: new StateView(states),
            screen: new ScreenView(session, states),
            plots: new PlotsView(session, choose),
        };
        new FindingsView(session, choose).show();
        this.filterInput.addEventListener("input", () => {
            this.filter();
            this.keepAddress();
        });
        for (const tab of document.querySelectorAll("[role=tab]")) {
            tab.addEventListener("click", () => this.show(tab.id.slice("tab-".length)));
            tab.addEventListener("keydown", (event) => this.tabKey(event, tab));
        }
        window.addEventListener("hashchange", () => this.readAddress());
        document.getElementById("legend").textContent =
            "■ to the service, ● from it, ✕ failed or without an answer; dashed: a reply and its command. Wheel or + and − zoom, drag or arrows move.";
        this.summary();
        this.readAddress();
    }

    summary() {
        const { session } = this;
        const { data } = session;
        document.title = `${data.file}: DTV session`;
        document.getElementById("title").textContent = data.file;
        const date = new Date(Number((session.base + BigInt(Math.round(session.first))) / 1000000n)).toISOString().slice(0, 10);
        document.getElementById("summary").textContent = session.count === 0 ? "No message."
            : `${session.count.toLocaleString("en")} messages in ${durationText(session.last - session.first)}, ${date} ` +
              `${session.timeText(session.first)} to ${session.timeText(session.last)}; ${session.failures.size} failed, ` +
              `${session.unanswered.size} without an answer; ${session.lines.number.length.toLocaleString("en")} lines of the log`;
        document.getElementById("damages").replaceChildren(...data.damages.map((damage) => element("p", {}, `The file: ${damage}`)));
    }

    filter() {
        const indexes = filtered(this.session, this.filterInput.value);
        document.getElementById("shown").textContent = `${indexes.length.toLocaleString("en")} of ${this.session.count.toLocaleString("en")} messages`;
        this.list.show(indexes);
        this.list.mark(this.chosen);
        this.lanes.show(indexes);
    }

    choose(i) {
        this.chosen = i;
        this.list.mark(i);
        this.lanes.mark(i);
        this.views[this.tab].show(i);
        this.keepAddress();
    }

    show(name) {
        this.tab = name;
        for (const tab of document.querySelectorAll("[role=tab]")) {
            const chosen = tab.id === `tab-${name}`;
            tab.setAttribute("aria-selected", String(chosen));
            tab.tabIndex = chosen ? 0 : -1;
            document.getElementById(tab.getAttribute("aria-controls")).hidden = !chosen;
        }
        this.views[name].show(this.chosen);
        this.keepAddress();
    }

    tabKey(event, tab) {
        const tabs = [...document.querySelectorAll("[role=tab]")];
        const by = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
        if (by) {
            const next = tabs[(tabs.indexOf(tab) + by + tabs.length) % tabs.length];
            next.focus();
            next.click();
        }
    }

    /** The Java object of an event on one line. */
    javaText(i) {
        const tree = this.java.treeOf(i);
        return tree ? javaText(tree) : "";
    }

    keepAddress() {
        const address = new URLSearchParams();
        if (this.filterInput.value) {
            address.set("filter", this.filterInput.value);
        }
        if (this.chosen >= 0) {
            address.set("message", this.session.messages.number[this.chosen]);
        }
        address.set("show", this.tab);
        const hash = `#${address}`;
        document.getElementById("link").href = hash;
        if (location.hash !== hash) {
            history.replaceState(null, "", hash);
        }
    }

    readAddress() {
        const address = new URLSearchParams(location.hash.slice(1));
        this.filterInput.value = address.get("filter") ?? "";
        const i = this.session.indexOfNumber.get(Number(address.get("message"))) ?? (this.session.count ? 0 : -1);
        const tab = this.views[address.get("show")] ? address.get("show") : "message";
        this.filter();
        this.tab = tab;
        this.choose(i);
        this.show(tab);
    }
}

readData().then((data) => {
    const session = new Session(data, JSON.parse(document.getElementById("schema").textContent));
    window.report = new Report(session);
    document.body.dataset.ready = "yes";
}).catch((error) => {
    document.getElementById("summary").textContent = `The session cannot be read: ${error.message}`;
    throw error;
});

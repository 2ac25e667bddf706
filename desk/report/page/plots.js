// Curves over time: the signal, latencies, messages a second. A click leads to the message.

const plotWidth = 560;
const plotHeight = 150;
const plotMargin = { top: 8, right: 10, bottom: 22, left: 56 };

class PlotsView {
    constructor(session, choose) {
        this.session = session;
        this.choose = choose;
        this.panel = document.getElementById("panel-plots");
        this.drawn = false;
    }

    show() {
        if (this.drawn) {
            return;
        }
        this.drawn = true;
        this.panel.replaceChildren(
            ...this.series("C/N, dB", this.valuesOf("ReceiveSensitivityNotify", "cn", 0.01), this.receptionMarks()),
            ...this.series("IF gain of the tuner", this.valuesOf("TunerSensitivityDataNotify", "ifagc", 1)),
            ...this.series("RF gain of the tuner", this.valuesOf("TunerSensitivityDataNotify", "rfagc", 1)),
            ...this.series("Time to the reply, ms", this.latencies()),
            ...this.distribution(),
            ...this.rate());
        if (!this.panel.hasChildNodes()) {
            this.panel.replaceChildren(element("p", {}, "There is nothing to draw."));
        }
    }

    valuesOf(name, field, factor) {
        const points = [];
        for (let i = 0; i < this.session.count; ++i) {
            if (this.session.name(i) === name && this.session.messages.kind[i] === Kind.event) {
                const value = this.session.field(i, field);
                if (value !== undefined) {
                    points.push({ i, time: this.session.messages.time[i], value: value * factor });
                }
            }
        }
        return points;
    }

    receptionMarks() {
        const marks = [];
        for (let i = 0; i < this.session.count; ++i) {
            const name = this.session.name(i);
            if (name === "GoodSensNotify" || name === "BadSensNotify") {
                marks.push({ i, time: this.session.messages.time[i], good: name === "GoodSensNotify" });
            }
        }
        return marks;
    }

    latencies() {
        const points = [];
        for (let i = 0; i < this.session.count; ++i) {
            if (this.session.latency[i] >= 0 && this.session.messages.kind[i] !== Kind.refused) {
                points.push({ i, time: this.session.messages.time[i], value: this.session.latency[i] / 1e6 });
            }
        }
        return points;
    }

    frame(title, xScale, yScale, xFormat) {
        const inner = svg("g", { transform: `translate(${plotMargin.left},${plotMargin.top})` });
        const drawing = svg("svg", { viewBox: `0 0 ${plotWidth} ${plotHeight}`, width: plotWidth, height: plotHeight, role: "img", "aria-label": title }, inner);
        const bottom = plotHeight - plotMargin.top - plotMargin.bottom;
        d3.select(inner).append("g").attr("class", "axis").attr("transform", `translate(0,${bottom})`).call(d3.axisBottom(xScale).ticks(6).tickFormat(xFormat));
        d3.select(inner).append("g").attr("class", "axis").call(d3.axisLeft(yScale).ticks(4));
        return { drawing, inner };
    }

    ranges() {
        return { x: [0, plotWidth - plotMargin.left - plotMargin.right], y: [plotHeight - plotMargin.top - plotMargin.bottom, 0] };
    }

    series(title, points, marks = []) {
        if (points.length === 0) {
            return [];
        }
        const { x, y } = this.ranges();
        const xScale = d3.scaleLinear().domain([this.session.first, Math.max(this.session.last, this.session.first + 1)]).range(x);
        const yScale = d3.scaleLinear().domain([Math.min(0, d3.min(points, (point) => point.value)), d3.max(points, (point) => point.value) || 1]).nice().range(y);
        const { drawing, inner } = this.frame(`${title}: ${points.length} values, from ${d3.min(points, (point) => point.value).toPrecision(3)} to ${d3.max(points, (point) => point.value).toPrecision(3)}`,
            xScale, yScale, (time) => this.session.timeText(time, 0).replace(/\.$/, ""));
        for (const point of thinned(points, xScale, yScale)) {
            const dot = svg("circle", { cx: xScale(point.time), cy: yScale(point.value), r: 2.5, fill: this.session.failures.has(point.i) ? "var(--failed)" : "var(--command)", style: "cursor:pointer" },
                svg("title", {}, `#${this.session.messages.number[point.i]} ${this.session.name(point.i)}: ${point.value.toPrecision(4)}`));
            dot.addEventListener("click", () => this.choose(point.i));
            inner.append(dot);
        }
        for (const mark of marks) {
            const line = svg("path", { d: `M${xScale(mark.time)},0v${y[0]}`, stroke: mark.good ? "var(--event)" : "var(--failed)", "stroke-width": 2,
                "stroke-dasharray": mark.good ? "" : "4 3", style: "cursor:pointer" }, svg("title", {}, mark.good ? "reception is good" : "reception is bad"));
            line.addEventListener("click", () => this.choose(mark.i));
            inner.append(line);
        }
        return [element("h3", {}, title + (marks.length ? "; green: good, red and dashed: bad" : "")), drawing];
    }

    bars(title, bins, xScale, xFormat) {
        const { y } = this.ranges();
        const yScale = d3.scaleLinear().domain([0, d3.max(bins, (bin) => bin.count) || 1]).nice().range(y);
        const { drawing, inner } = this.frame(title, xScale, yScale, xFormat);
        for (const bin of bins.filter((each) => each.count > 0)) {
            const bar = svg("rect", { x: xScale(bin.from), y: yScale(bin.count), width: Math.max(1, xScale(bin.to) - xScale(bin.from) - 1), height: y[0] - yScale(bin.count), fill: "var(--command)",
                style: "cursor:pointer" }, svg("title", {}, String(bin.count)));
            bar.addEventListener("click", () => this.choose(bin.i));
            inner.append(bar);
        }
        return [element("h3", {}, title), drawing];
    }

    /** On a logarithmic scale, for latencies differ by powers. */
    distribution() {
        const points = this.latencies().filter((point) => point.value > 0);
        if (points.length === 0) {
            return [];
        }
        const { x } = this.ranges();
        const [least, most] = d3.extent(points, (point) => point.value);
        const xScale = d3.scaleLog().domain([least * 0.9, most * 1.1]).range(x);
        const edges = d3.range(41).map((n) => xScale.invert(x[1] * n / 40));
        const bins = edges.slice(0, -1).map((from, n) => ({ from, to: edges[n + 1], count: 0, i: -1 }));
        for (const point of points) {
            const bin = bins[Math.min(39, Math.max(0, Math.floor(xScale(point.value) / x[1] * 40)))];
            ++bin.count;
            bin.i = point.i;
        }
        return this.bars("Replies by the time to them, ms", bins, xScale, xScale.tickFormat(5));
    }

    rate() {
        if (this.session.count === 0) {
            return [];
        }
        const { x } = this.ranges();
        const second = 1e9;
        const first = Math.floor(this.session.first / second);
        const last = Math.floor(this.session.last / second) + 1;
        const step = Math.max(1, Math.ceil((last - first) / 240));
        const bins = d3.range(first, last, step).map((from) => ({ from: from * second, to: (from + step) * second, count: 0, i: -1 }));
        for (let i = 0; i < this.session.count; ++i) {
            const bin = bins[Math.floor((Math.floor(this.session.messages.time[i] / second) - first) / step)];
            bin.count += 1 / step;
            bin.i = bin.i < 0 ? i : bin.i;
        }
        const xScale = d3.scaleLinear().domain([first * second, last * second]).range(x);
        return this.bars("Messages a second", bins, xScale, (time) => this.session.timeText(time, 0).replace(/\.$/, ""));
    }
}

/** Of points that lie on one another, one. */
function thinned(points, xScale, yScale) {
    const seen = new Set();
    return points.filter((point) => {
        const key = Math.round(xScale(point.time)) * 1000 + Math.round(yScale(point.value));
        return !seen.has(key) && seen.add(key);
    });
}

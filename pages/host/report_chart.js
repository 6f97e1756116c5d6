// A report's chart as SVG, drawn with the library that the server gives out.

import { build } from "../lib/build.js";
import { chartData, chartWords, extent, figureWords, labelStep, shortened } from "./chart_data.js";

const letter = 7.4; // about the width of one, in the chart's type
const bar = 15;
const gap = 12;
const lineHeight = 300;
const valueRoom = 84;

/** Widths of the chart on paper, by the orientation of the report. */
const paperWidth = { portrait: 680, landscape: 980 };

/**
 * Draws `chart` (see readChart) in `figure`, as wide as there is room on the screen or on paper.
 * Without the library the figure stays away: the table says the same.
 */
export async function showChart(figure, chart, { format, orientation }) {
    const d3 = await library();
    if (!d3 || chart.categories.length === 0) return;
    const data = chartData(chart);
    const words = chartWords(data);
    const drawing = build("div");
    figure.replaceChildren(
        build("figcaption", { text: data.title }),
        legend(d3, data.series),
        drawing,
    );
    figure.hidden = false;

    let shownWidth = 0;
    function draw(width) {
        shownWidth = width;
        const svg = d3.create("svg").attr("viewBox", `0 0 ${width} 10`)
            .attr("role", "img").attr("aria-label", words);
        const height = data.kind === "line"
            ? drawLines(d3, svg, data, width, format)
            : drawBars(d3, svg, data, width, format);
        svg.attr("viewBox", `0 0 ${width} ${height}`).attr("width", width).attr("height", height);
        drawing.replaceChildren(svg.node());
    }
    const fit = () => {
        const width = Math.floor(drawing.clientWidth);
        if (width > 0 && width !== shownWidth) draw(width);
    };
    fit();
    new ResizeObserver(fit).observe(figure);
    addEventListener("beforeprint", () => draw(paperWidth[orientation] ?? paperWidth.portrait));
    addEventListener("afterprint", fit);
}

async function library() {
    try {
        await import("/libraries/d3.js");
    } catch (error) {
        console.warn(error);
    }
    return globalThis.d3;
}

function legend(d3, series) {
    const items = series.map(({ name }, index) => {
        const swatch = d3.create("svg").attr("width", 14).attr("height", 14)
            .attr("aria-hidden", "true");
        swatch.append("rect").attr("x", 1).attr("y", 1).attr("width", 12).attr("height", 12)
            .attr("class", `series-${index}`);
        return build("li", {}, swatch.node(), name);
    });
    return build("ul", { className: "legend" }, ...items);
}

/** Bars to the right, a group of them for each category; gives the height. */
function drawBars(d3, svg, { categories, series, marks, isMoney }, width, format) {
    const longest = Math.max(...categories.map(({ length }) => length));
    const left = Math.ceil(Math.min(width * 0.38, longest * letter + gap));
    const group = series.length * bar;
    const height = categories.length * (group + gap);
    const x = d3.scaleLinear().domain(extent(marks)).nice().range([left, width - valueRoom]);
    const top = ({ at, one }) => at * (group + gap) + gap / 2 + one * bar;
    const words = (value) => figureWords(value, isMoney, format);

    svg.append("g").attr("class", "axis").attr("transform", `translate(0,${height})`).call(
        d3.axisBottom(x).ticks(Math.max(1, Math.floor((width - left - valueRoom) / 130)))
            .tickSize(-height).tickPadding(8)
            .tickFormat(words),
    );
    svg.selectAll("text.name").data(categories).join("text").attr("class", "name")
        .attr("x", left - 8).attr("y", (_, at) => top({ at, one: 0 }) + group / 2)
        .attr("dy", "0.35em").text((name) => shortened(name, Math.floor((left - gap) / letter)));
    svg.selectAll("rect").data(marks).join("rect")
        .attr("class", ({ one }) => `series-${one}`)
        .attr("x", ({ value }) => x(Math.min(0, value)))
        .attr("y", (mark) => top(mark) + 1)
        .attr("width", ({ value }) => Math.abs(x(value) - x(0)))
        .attr("height", bar - 2)
        .append("title").text((mark) => markWords(mark, words));
    svg.selectAll("text.value").data(marks).join("text").attr("class", "value")
        .attr("x", ({ value }) => x(Math.max(0, value)) + 5)
        .attr("y", (mark) => top(mark) + bar / 2)
        .attr("dy", "0.35em").text(({ value }) => words(value));
    return height + 28;
}

/** A line for each series over the categories in their order; gives the height. */
function drawLines(d3, svg, { categories, series, marks, isMoney }, width, format) {
    const words = (value) => figureWords(value, isMoney, format);
    const [low, high] = extent(marks);
    const left = Math.max(words(low).length, words(high).length) * letter + 2 * gap;
    const bottom = lineHeight - 28;
    const y = d3.scaleLinear().domain([low, high]).nice().range([bottom, gap]);
    const x = d3.scalePoint().domain(d3.range(categories.length)).range([left, width - 2 * gap])
        .padding(0.5);
    const longest = Math.max(...categories.map(({ length }) => length));
    const step = labelStep(categories.length, (width - left) / (longest * letter + gap));

    svg.append("g").attr("class", "axis").attr("transform", `translate(${left},0)`).call(
        d3.axisLeft(y).ticks(6).tickSize(left - width + gap).tickPadding(8).tickFormat(words),
    );
    svg.append("g").attr("class", "axis below").attr("transform", `translate(0,${bottom})`).call(
        d3.axisBottom(x).tickValues(x.domain().filter((at) => at % step === 0)).tickSize(4)
            .tickFormat((at) => categories[at]),
    );
    const line = d3.line().defined((value) => value !== null)
        .x((_, at) => x(at)).y((value) => y(value));
    svg.selectAll("path.line").data(series).join("path")
        .attr("class", (_, one) => `line line-${one}`).attr("d", ({ values }) => line(values));
    svg.selectAll("circle").data(marks).join("circle")
        .attr("class", ({ one }) => `series-${one}`).attr("r", 4)
        .attr("cx", ({ at }) => x(at)).attr("cy", ({ value }) => y(value))
        .append("title").text((mark) => markWords(mark, words));
    return lineHeight;
}

function markWords({ category, name, value }, words) {
    return [category, name, words(value)].filter(Boolean).join(": ");
}

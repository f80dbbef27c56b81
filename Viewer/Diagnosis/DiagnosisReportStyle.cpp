#include "Viewer/Diagnosis/DiagnosisReportStyle.h"

char const* const sgview::diagnosisReportStyle = R"(
:root {
  color-scheme: light;
  --page: #fafaf8; --panel: #ffffff; --text: #1c2227; --muted: #535d66; --line: #d5dade;
  --solid: #0b5cad; --bar: #c3d2e0; --edge: #5c6f81; --track: #eef0f1; --goal: #8a3b00;
  --good: #0f6636; --bad: #a3221a;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    color-scheme: dark;
    --page: #14181c; --panel: #1b2025; --text: #e6e9ec; --muted: #a6b0b9; --line: #363e45;
    --solid: #6fb3f7; --bar: #2f4256; --edge: #8399ad; --track: #232a30; --goal: #ffb37a;
    --good: #74d69d; --bad: #ff9d92;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; max-width: 64rem; padding: 2.5rem 1.25rem 4rem;
  background: var(--page); color: var(--text);
  font: 1rem/1.5 system-ui, -apple-system, "Segoe UI", "Helvetica Neue", "Liberation Sans", sans-serif;
  overflow-wrap: anywhere;
}
h1, h2, h3, p, dl, dd, figure, ul { margin: 0; padding: 0; }
h1 { font-size: 2rem; line-height: 1.2; font-weight: 600; letter-spacing: -0.01em; text-wrap: balance; }
h1 span { display: block; margin-bottom: 0.5rem; color: var(--muted); font-size: 0.9rem; font-weight: 600; letter-spacing: 0.02em; }
h2 { margin-bottom: 0.75rem; font-size: 1.25rem; line-height: 1.3; font-weight: 600; }
h3 { font-size: 1rem; font-weight: 600; }
section { margin-top: 3rem; padding-top: 1.25rem; border-top: 1px solid var(--line); }
section p { max-width: 44rem; }
section p + * { margin-top: 1rem; }
.muted, figcaption, caption, footer { color: var(--muted); font-size: 0.9rem; }
.card { margin-top: 0.75rem; color: var(--muted); }
.ending { margin-top: 1.25rem; padding: 0.75rem 1rem; border: 1px solid var(--bad); border-left-width: 0.4rem; background: var(--panel); }
.figures { display: grid; grid-auto-flow: column; grid-template-rows: auto auto; justify-content: start; gap: 0 2.5rem; margin-top: 1.5rem; }
.figures dt { color: var(--muted); font-size: 0.9rem; }
.figures dd { font-size: 1.25rem; font-weight: 600; font-variant-numeric: tabular-nums; }
.rulings { display: grid; grid-template-columns: repeat(auto-fit, minmax(min(100%, 16rem), 1fr)); gap: 1rem; list-style: none; }
.rulings li { padding: 1rem 1.125rem; border: 1px solid var(--line); border-radius: 0.5rem; background: var(--panel); }
.rulings h3 { display: flex; justify-content: space-between; gap: 1rem; margin-bottom: 0.5rem; }
.rulings p::first-letter, .rulings .name::first-letter, figcaption::first-letter, .comparisons th::first-letter, .facts dd::first-letter { text-transform: uppercase; }
.rulings .name { display: inline-block; }
.good, .bad, .off { font-weight: 600; white-space: nowrap; }
.good { color: var(--good); }
.bad { color: var(--bad); }
.off { color: var(--muted); }
.charts { display: grid; grid-template-columns: repeat(auto-fit, minmax(min(100%, 20rem), 1fr)); gap: 2rem 3rem; margin-top: 1.5rem; }
.charts figure { max-width: 30rem; }
.chart { display: block; width: 100%; height: auto; margin: 0.75rem 0 0.5rem; overflow: visible; }
.chart text { fill: var(--text); font-size: 15px; }
.chart .value { font-weight: 600; font-variant-numeric: tabular-nums; }
.chart .track { fill: var(--track); }
.chart .bar { fill: var(--bar); stroke: var(--edge); }
.chart .chosen { fill: var(--solid); stroke: var(--solid); }
.chart .goal { stroke: var(--goal); stroke-width: 3; }
table { width: 100%; border-collapse: collapse; font-variant-numeric: tabular-nums; }
caption { padding-bottom: 0.5rem; text-align: left; }
th, td { padding: 0.45rem 0.75rem 0.45rem 0; border-bottom: 1px solid var(--line); text-align: left; vertical-align: top; font-weight: 400; }
thead th { color: var(--muted); font-size: 0.9rem; }
.number { padding-right: 0; text-align: right; white-space: nowrap; }
.limits { max-width: 36rem; }
.limits tbody th { width: 100%; font: 0.875rem/1.5 ui-monospace, "Cascadia Mono", "DejaVu Sans Mono", monospace; }
.pictures { display: grid; grid-template-columns: repeat(3, minmax(0, 1fr)); gap: 1.25rem; max-width: 54rem; margin-top: 1.5rem; }
.pictures img { display: block; width: 100%; height: auto; border: 1px solid var(--line); }
.pictures figcaption { margin-top: 0.4rem; }
.plain { grid-column: 1; }
.card-drawn { grid-column: 2; }
.difference { grid-column: 3; }
.rest { grid-row: 1; }
.bent { grid-row: 2; }
.contrast { grid-row: 3; }
.reading { grid-column: 1 / 3; grid-row: 3; padding-right: 1rem; }
.facts { display: grid; grid-template-columns: minmax(7rem, auto) 1fr; gap: 0.35rem 1.5rem; margin-bottom: 1.5rem; }
.facts dt { color: var(--muted); }
summary { cursor: pointer; padding: 0.25rem 0; }
:focus-visible { outline: 3px solid var(--solid); outline-offset: 3px; border-radius: 2px; }
pre { margin: 0.75rem 0 0; padding: 1rem; border: 1px solid var(--line); border-radius: 0.5rem; background: var(--panel); font: 0.8125rem/1.55 ui-monospace, "Cascadia Mono", "DejaVu Sans Mono", monospace; white-space: pre-wrap; }
footer { margin-top: 3rem; }
@media (max-width: 40rem) {
  body { padding-top: 1.5rem; }
  h1 { font-size: 1.6rem; }
  section { margin-top: 2.25rem; }
  .pictures { grid-template-columns: repeat(2, minmax(0, 1fr)); gap: 1rem; }
  figcaption .good, figcaption .bad { white-space: normal; }
  .plain, .card-drawn { grid-column: auto; grid-row: auto; }
  .difference { display: grid; grid-template-columns: repeat(2, minmax(0, 1fr)); gap: 1rem; grid-column: 1 / 3; grid-row: auto; }
  .difference figcaption { margin-top: 0; }
  .reading { grid-column: 1 / 3; grid-row: auto; padding-right: 0; }
  .figures { gap: 0 1.25rem; }
  .facts { grid-template-columns: 1fr; gap: 0; }
  .facts dd + dt { margin-top: 0.5rem; }
  .limits { font-size: 0.875rem; }
  .limits tbody th { font-size: 0.75rem; }
  .comparisons thead { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
  .comparisons tr { display: block; padding: 0.5rem 0; border-bottom: 1px solid var(--line); }
  .comparisons th, .comparisons td { display: block; padding: 0; border: 0; text-align: left; }
  .comparisons tbody th { font-weight: 600; }
  .comparisons .off-share::after { content: " of the pixels off"; }
  .comparisons .wanted::after { content: " wanted"; }
}
@media (forced-colors: active) {
  .chart text { fill: CanvasText; }
  .chart .track { fill: Canvas; }
  .chart .bar { fill: Canvas; stroke: CanvasText; }
  .chart .chosen { fill: CanvasText; }
  .chart .goal { stroke: CanvasText; }
}
@media print {
  body { max-width: none; padding: 0; background: none; font-size: 10pt; }
  section { margin-top: 1.5rem; }
  figure, li, tr { break-inside: avoid; }
  h2, h3 { break-after: avoid; }
  details::details-content { content-visibility: visible; block-size: auto; }
}
)";

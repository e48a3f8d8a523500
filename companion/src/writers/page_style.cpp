// SPDX-License-Identifier: Apache-2.0
#include "writers/page_style.hpp"

namespace wivex::report {

const std::string_view page_style = R"css(
:root {
  color-scheme: light dark;
  --page: #f6f7f8; --card: #ffffff; --text: #1b2127; --soft: #55606b; --rule: #d9dee3;
  --pass: #24796e; --pass-text: #1b6b61; --fail: #c9401c; --fail-text: #ad3413;
  --warn: #8f5e00; --none: #6b7580; --line: #2f6fb3; --range: #2f6fb333; --mark: #fde4da;
  --on: #ffffff;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #13171b; --card: #1c2228; --text: #e5e9ed; --soft: #a3aeb9; --rule: #353e47;
    --pass: #3f9f90; --pass-text: #6fd0c0; --fail: #f0704a; --fail-text: #ff9270;
    --warn: #e0a63a; --none: #7b8691; --line: #74aef0; --range: #74aef03d; --mark: #4a2a1e;
    --on: #101418;
  }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--text);
  font: 16px/1.5 system-ui, -apple-system, "Segoe UI", "DejaVu Sans", sans-serif; }
main { max-width: 62rem; margin: 0 auto; padding: 1.5rem 1rem 4rem; }
h1, h2, h3 { line-height: 1.25; margin: 0; }
h1 { font-size: 1rem; font-weight: 600; color: var(--soft); }
h2 { font-size: 1.75rem; margin: .25rem 0 .25rem; }
h3 { font-size: 1.05rem; margin: 0 0 .75rem; }
p { margin: .25rem 0; }
.soft { color: var(--soft); }
.run { margin-top: 1.5rem; }
.verdict::before { display: inline-block; width: 1.2em; height: 1.2em; margin-right: .45em;
  border-radius: 50%; text-align: center; line-height: 1.2; color: var(--on); font-weight: 700; }
.verdict.passed::before { content: "\2713"; background: var(--pass); }
.verdict.weak::before { content: "!"; background: var(--warn); }
.verdict.failed::before { content: "\00d7"; background: var(--fail); }
.verdict.open::before { content: "?"; background: var(--warn); }
section.card { background: var(--card); border: 1px solid var(--rule); border-radius: .5rem;
  padding: 1rem 1.15rem 1.15rem; margin-top: 1rem; overflow-wrap: anywhere; }
.tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(9rem, 1fr)); gap: .75rem;
  margin: 1rem 0 0; }
.tiles div { background: var(--card); border: 1px solid var(--rule); border-radius: .5rem;
  padding: .6rem .9rem; }
.tiles dt { color: var(--soft); font-size: .85rem; }
.tiles dd { margin: 0; font-size: 1.45rem; font-weight: 600; font-variant-numeric: tabular-nums; }
.tiles .bad { color: var(--fail-text); }
.tiles small { font-size: .85rem; font-weight: 400; color: var(--soft); }
.sr { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%);
  white-space: nowrap; }
.strip { list-style: none; margin: 0; padding: 0; display: grid; gap: 3px;
  grid-template-columns: repeat(auto-fill, minmax(13px, 1fr)); }
.strip.numbered { grid-template-columns: repeat(auto-fill, minmax(2.4rem, 3rem)); gap: 4px; }
.cell { position: relative; min-height: 22px; border-radius: 3px; background: var(--pass);
  color: var(--on); font-size: .8rem; line-height: 22px; text-align: center; }
.numbered .cell { min-height: 2.3rem; line-height: 2.3rem; }
.cell b { font-weight: 500; margin-right: .2em; }
.cell a { display: block; color: inherit; text-decoration: none; }
.cell a:focus-visible, summary:focus-visible { outline: 3px solid var(--line);
  outline-offset: 2px; }
.cell.failed { background: var(--fail); font-weight: 700;
  background: linear-gradient(to top, var(--fail) var(--share, 100%), var(--pass) 0); }
.cell.uncounted { background: var(--card); color: var(--fail-text);
  box-shadow: inset 0 0 0 2px var(--fail); }
.cell.unfinished { background: var(--card); color: var(--soft);
  box-shadow: inset 0 0 0 2px var(--none); }
.cell.warned { box-shadow: inset 0 -5px 0 var(--warn); }
.legend { display: flex; flex-wrap: wrap; gap: .3rem 1.1rem; margin: .8rem 0 0; padding: 0;
  list-style: none; font-size: .85rem; color: var(--soft); }
.legend li { display: flex; align-items: center; gap: .4rem; }
.legend .cell { display: inline-block; width: 22px; }
.plot { display: grid; grid-template-columns: auto 1fr; gap: .2rem .5rem; }
.plot svg { width: 100%; height: 11rem; display: block; overflow: visible; }
.y { display: flex; flex-direction: column; justify-content: space-between; text-align: right;
  margin: -.6em 0; }
.y, .x, .spark .top { font-size: .8rem; color: var(--soft); font-variant-numeric: tabular-nums; }
.x { grid-column: 2; display: flex; justify-content: space-between; }
.grid { stroke: var(--rule); stroke-width: 1; vector-effect: non-scaling-stroke; fill: none; }
.line { stroke: var(--line); stroke-width: 2; vector-effect: non-scaling-stroke; fill: none;
  stroke-linejoin: round; }
.dot { stroke: var(--line); stroke-width: 6; stroke-linecap: round;
  vector-effect: non-scaling-stroke; fill: none; }
.range { fill: var(--range); }
.limit { stroke: var(--fail); stroke-width: 2; stroke-dasharray: 6 4; fill: none;
  vector-effect: non-scaling-stroke; }
.bar { fill: var(--line); }
.histogram { margin-top: .8rem; }
.histogram svg { height: 6rem; }
.spark { position: relative; min-width: 9rem; padding-top: .1rem; }
.spark svg { width: 100%; height: 2.6rem; display: block; overflow: visible; }
.spark .dot { stroke-width: 4; }
.spark .top { position: absolute; top: -.2rem; right: 0; font-size: .7rem; }
table { border-collapse: collapse; width: 100%; font-variant-numeric: tabular-nums; }
th, td { text-align: left; padding: .4rem .6rem .4rem 0; border-bottom: 1px solid var(--rule);
  vertical-align: middle; }
tr:last-child > * { border-bottom: 0; }
thead th { font-size: .85rem; font-weight: 500; color: var(--soft); }
th { font-weight: 500; }
.number { text-align: right; white-space: nowrap; }
.wide { width: 40%; }
.ok { color: var(--pass-text); }
.bad { color: var(--fail-text); font-weight: 600; }
.amber { color: var(--warn); font-weight: 600; }
.limits { font-size: 1.1rem; }
.reasons { margin: 0; padding-left: 1.2rem; }
details { border-top: 1px solid var(--rule); padding: .55rem 0; }
section > details:first-of-type { border-top: 0; padding-top: 0; }
details.more { border: 0; padding: .6rem 0 0; }
summary { cursor: pointer; }
summary b { font-weight: 600; }
.advice { padding-left: 1rem; border-left: 3px solid var(--rule); }
code { font: .9em ui-monospace, "DejaVu Sans Mono", monospace; }
details h4 { margin: .8rem 0 .3rem; font-size: .9rem; font-weight: 600; }
details h4:target { text-decoration: underline; text-decoration-color: var(--line); }
details:target > summary b { text-decoration: underline; text-decoration-color: var(--line); }
pre { margin: 0; padding: .6rem .8rem; border: 1px solid var(--rule); border-radius: .35rem;
  background: var(--page); font: .8rem/1.45 ui-monospace, "DejaVu Sans Mono", monospace;
  white-space: pre-wrap; overflow-wrap: anywhere; }
pre mark { background: var(--mark); color: inherit; font-weight: 600; display: inline-block;
  width: 100%; }
dl.facts { display: grid; grid-template-columns: max-content 1fr; gap: .3rem 1.2rem; margin: 0; }
dl.facts dt { color: var(--soft); }
dl.facts dd { margin: 0; }
dl.identity { margin: .8rem 0; overflow-wrap: anywhere; grid-template-columns: fit-content(40%) 1fr; }
nav ol { padding-left: 1.4rem; }
a { color: var(--line); }
@media (max-width: 40rem) {
  h2 { font-size: 1.35rem; }
  table.phases thead { position: absolute; clip-path: inset(50%); }
  table.phases tr { display: grid; grid-template-columns: repeat(3, 1fr); padding: .5rem 0;
    border-bottom: 1px solid var(--rule); }
  table.phases tr > * { border: 0; padding: .1rem 0; }
  table.phases th, table.phases .wide, table.phases .verdicts { grid-column: 1 / -1; width: auto;
    text-align: left; }
  table.phases .number { text-align: left; }
  table.compared tr { grid-template-columns: repeat(2, 1fr); }
  table.compared .number { white-space: normal; }
  table.phases .number::before { content: attr(data-name) " "; color: var(--soft);
    font-size: .85rem; }
  dl.facts, dl.identity { grid-template-columns: 1fr; gap: 0; }
  dl.facts dd { margin-bottom: .4rem; }
}
@media print { body { background: none; } section.card { break-inside: avoid; } }
)css";

const std::string_view page_script = R"js(
(function () {
  function openTarget() {
    var target = document.getElementById(location.hash.slice(1));
    for (var node = target; node; node = node.parentElement) {
      if (node.tagName === "DETAILS") { node.open = true; }
    }
    if (target) { target.scrollIntoView(); }
  }
  addEventListener("hashchange", openTarget);
  openTarget();
}());
)js";

} // namespace wivex::report

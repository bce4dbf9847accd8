#pragma once

#include <string_view>

namespace corvane {

// On paper, the light colours hold. Each colour stands out from its ground by at least 3 to 1, each
// text by 4.5 to 1.
inline constexpr std::wstring_view callPageStyle =
    LR"css(
:root {
  color-scheme: light dark;
  --ground: #fff; --raised: #f6f7f8; --text: #1d2125; --muted: #555d66; --line: #d5dae0;
  --popped: #1f5fa8; --found: #4a8cc7; --dialed: #0a7d5c; --ignored: #858c95;
  --not-found: #c07000; --trouble: #b3232b;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    --ground: #14171a; --raised: #1d2226; --text: #e6e9ec; --muted: #a6aeb7; --line: #363d44;
    --popped: #5fa4f5; --found: #a9cff7; --dialed: #45c49a; --ignored: #868f99;
    --not-found: #f0a63a; --trouble: #ff7a7e;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 2rem 1.5rem 3rem; max-width: 84rem;
  background: var(--ground); color: var(--text);
  font: 0.9375rem/1.5 "Segoe UI", system-ui, "Helvetica Neue", Arial, sans-serif;
}
h1 { margin: 0; font-size: 1.75rem; font-weight: 600; line-height: 1.2; }
h2 { margin: 2.5rem 0 0.75rem; font-size: 1.125rem; font-weight: 600; }
p { margin: 0.25rem 0; max-width: 46rem; }
.note, .lead { color: var(--muted); }
.note { font-size: 0.8125rem; }
.facts { display: flex; flex-wrap: wrap; gap: 0.75rem; margin: 1.5rem 0; }
.facts div {
  flex: 1 1 8rem; padding: 0.75rem 1rem; border: 1px solid var(--line); border-radius: 0.5rem;
  background: var(--raised);
}
.facts dt { color: var(--muted); font-size: 0.8125rem; }
.facts dd { margin: 0; font-size: 1.375rem; font-weight: 600; font-variant-numeric: tabular-nums; }
.figures {
  display: grid; gap: 1.5rem;
  grid-template-columns: repeat(auto-fit, minmax(min(30rem, 100%), 1fr));
}
figure { margin: 0; padding: 1rem; border: 1px solid var(--line); border-radius: 0.5rem; }
figcaption { margin-bottom: 0.75rem; font-weight: 600; }
figure > svg { display: block; width: 100%; height: auto; overflow: visible; }
svg text { fill: var(--muted); font-size: 15px; font-variant-numeric: tabular-nums; }
svg .tick, svg .middle { text-anchor: middle; }
svg .count, svg .before { text-anchor: end; }
svg text.mark { fill: var(--text); stroke: var(--ground); stroke-width: 4px; paint-order: stroke; }
svg line { stroke: var(--muted); }
svg line.grid { stroke: var(--line); }
svg line.mark { stroke: var(--text); stroke-dasharray: 3 3; }
svg line.below { stroke: var(--ground); stroke-width: 3; stroke-dasharray: none; }
.patterns { position: absolute; }
pattern path { fill: none; stroke: var(--ground); stroke-width: 1.25; }
.swatch { width: 1rem; height: 1rem; }
.popped .fill { fill: var(--popped); }
.found .fill { fill: var(--found); }
.dialed .fill { fill: var(--dialed); }
.ignored .fill { fill: var(--ignored); }
.not-found .fill { fill: var(--not-found); }
.trouble .fill { fill: var(--trouble); }
.pattern { fill: none; pointer-events: none; }
.found .pattern { fill: url(#pattern-found); }
.dialed .pattern { fill: url(#pattern-dialed); }
.ignored .pattern { fill: url(#pattern-ignored); }
.not-found .pattern { fill: url(#pattern-not-found); }
.trouble .pattern { fill: url(#pattern-trouble); }
.key {
  display: flex; flex-wrap: wrap; gap: 0.25rem 1.25rem; margin: 0.5rem 0 0; padding: 0;
  list-style: none;
}
.key li { display: flex; align-items: center; gap: 0.4rem; font-size: 0.8125rem; }
details { margin-top: 0.5rem; font-size: 0.8125rem; }
summary { color: var(--muted); cursor: pointer; }
table { border-collapse: collapse; width: 100%; font-variant-numeric: tabular-nums; }
caption { padding: 0 0 0.5rem; color: var(--muted); text-align: left; }
th, td { padding: 0.375rem 0.75rem; text-align: left; vertical-align: top; font-weight: 400; }
thead th {
  border-bottom: 2px solid var(--line); color: var(--muted); font-weight: 600; white-space: nowrap;
}
tbody { border-bottom: 1px solid var(--line); }
details tbody { border: 0; }
.number { text-align: right; white-space: nowrap; }
.whole { white-space: nowrap; }
.calls { overflow-x: auto; }
.calls tbody th { font-weight: 600; }
.direction { color: var(--muted); }
.steps { min-width: 16rem; overflow-wrap: anywhere; }
.steps .below { display: block; color: var(--muted); font-size: 0.8125rem; }
.outcome { white-space: nowrap; }
.outcome span { display: inline-block; width: 1.25em; font-weight: 700; text-align: center; }
.outcome b { padding: 0 0.1em; border-bottom: 2px solid; font-weight: 600; }
.outcome.popped b { border-color: var(--popped); }
.outcome.found b { border-color: var(--found); }
.outcome.dialed b { border-color: var(--dialed); }
.outcome.ignored b { border-color: var(--ignored); }
.outcome.not-found b { border-color: var(--not-found); }
.outcome.trouble b { border-color: var(--trouble); }
:focus-visible { outline: 2px solid var(--popped); outline-offset: 2px; }
@media print {
  @page { size: A4 landscape; margin: 12mm; }
  body { padding: 0; max-width: none; font-size: 9pt; }
  .bar, .swatch { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  .facts, figure, .calls tbody { break-inside: avoid; }
  .figures { grid-template-columns: 1fr 1fr; }
  .calls { overflow: visible; }
  details { display: none; }
}
)css";

}  // namespace corvane

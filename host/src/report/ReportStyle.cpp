#include "report/ReportStyle.h"

namespace velmohost {

// The views of a channel are switched by radio buttons alone, so that the page works wherever scripts are forbidden.
const char* const kReportStyle = R"(
:root {
    color-scheme: light dark;
    --page: #ffffff; --text: #1c2126; --faint: #5c666f; --line: #d5dade; --panel: #f5f7f8;
    --wave: #2f6597; --bad: #c62828; --repaired: #14803c; --link: #0b57a4;
}
@media (prefers-color-scheme: dark) {
    :root {
        --page: #14181b; --text: #e4e7ea; --faint: #9aa5ae; --line: #38424a; --panel: #1d2327;
        --wave: #79b2e6; --bad: #ff7070; --repaired: #4fd68c; --link: #8cc2f5;
    }
}
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1rem; max-width: 72rem; background: var(--page); color: var(--text);
    font: 1rem/1.45 system-ui, sans-serif; overflow-wrap: anywhere; }
h1 { font-size: 1.5rem; margin: 0.5rem 0; }
h2 { font-size: 1.15rem; margin: 2rem 0 0.5rem; }
a { color: var(--link); }
.faint { color: var(--faint); font-weight: normal; }
.failed { color: var(--bad); }
table { border-collapse: collapse; width: 100%; font-variant-numeric: tabular-nums; }
th, td { padding: 0.3rem 0.5rem; text-align: right; border-bottom: 1px solid var(--line); }
th:first-child, td:first-child { text-align: left; }
thead th { font-weight: 600; vertical-align: bottom; }
tr.file th { background: var(--panel); text-align: left; padding-top: 0.6rem; }
td.none { color: var(--faint); text-align: left; }
figure { margin: 1rem 0; padding: 0.75rem; background: var(--panel); border: 1px solid var(--line); border-radius: 6px;
    break-inside: avoid; }
figcaption { margin-bottom: 0.5rem; }
.key span { white-space: nowrap; margin-right: 1rem; }
.key span::before { content: ""; display: inline-block; width: 0.8em; height: 0.8em; margin-right: 0.4em;
    background: var(--wave); }
.key .bad::before { background: var(--bad); }
.key .repaired::before { background: var(--repaired); }
input { position: absolute; opacity: 0; }
label { display: inline-block; padding: 0.35rem 0.75rem; margin: 0 0.25rem 0.5rem 0; border: 1px solid var(--line);
    border-radius: 1rem; cursor: pointer; }
input:checked + label { background: var(--wave); border-color: var(--wave); color: var(--page); }
input:focus-visible + label { outline: 2px solid var(--text); outline-offset: 1px; }
.view { display: none; }
input:nth-of-type(1):checked ~ .view:nth-of-type(1), input:nth-of-type(2):checked ~ .view:nth-of-type(2),
input:nth-of-type(3):checked ~ .view:nth-of-type(3) { display: block; }
.state { font-size: 0.85rem; color: var(--faint); margin: 0.25rem 0 0; }
svg { display: block; width: 100%; height: 6rem; background: var(--page); border: 1px solid var(--line); }
svg path { vector-effect: non-scaling-stroke; }
.zero { fill: none; stroke: var(--line); }
.wave { fill: var(--wave); stroke: var(--wave); stroke-width: 1.2; stroke-linejoin: round; }
path.bad { fill: var(--bad); stroke: var(--bad); fill-opacity: 0.45; stroke-width: 1; }
path.repaired { fill: var(--repaired); stroke: var(--repaired); fill-opacity: 0.3; stroke-width: 1; }
.axis { display: flex; justify-content: space-between; font-size: 0.85rem; color: var(--faint); }
@media (max-width: 40rem) {
    thead { position: absolute; clip-path: inset(50%); width: 1px; height: 1px; overflow: hidden; }
    tr { display: block; padding: 0.4rem 0; border-bottom: 1px solid var(--line); }
    td, tr.file th { display: flex; justify-content: space-between; gap: 1rem; border: 0; padding: 0.1rem 0.25rem; }
    tr.file th { display: block; }
    td::before { content: attr(data-name); color: var(--faint); }
    td:empty { display: none; }
}
@media print {
    :root {
        color-scheme: light;
        --page: #ffffff; --text: #000000; --faint: #444444; --line: #bbbbbb; --panel: #ffffff;
        --wave: #2f6597; --bad: #c62828; --repaired: #14803c; --link: #000000;
    }
    * { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
    body { max-width: none; padding: 0; font-size: 10pt; }
    label { display: none; }
    .view { display: block; }
    .view:nth-of-type(2) { display: none !important; }
    svg { height: 1.6cm; }
}
)";

}  // namespace velmohost

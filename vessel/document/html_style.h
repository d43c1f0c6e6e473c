// The look of a document's page, on a screen and on paper. Grids and halos of text are left to others: makers of PDF do
// not know them. They pay for each line its list of fonts, for each dot of a leader or of a border as for a line, for
// each column whose width depends on its content, for borders that cells share, and for each line beside a float.
#pragma once

#include <string_view>

namespace tarvane::vessel {

// After the rules of its paper.
inline constexpr std::string_view HTML_STYLE = R"(
html { color: #111; background: #fff; }
body { font: 15px/1.45 "DejaVu Sans", "Segoe UI", Helvetica, Arial, sans-serif; margin: 0 auto; box-sizing: border-box;
  max-width: 64rem; padding: 1rem 1.5rem 4rem; text-align: left; }
h1 { font-size: 1.7em; line-height: 1.2; margin: 1.2em 0 0.6em; }
h2 { font-size: 1.35em; margin: 2em 0 0.5em; border-bottom: 2px solid #111; padding-bottom: 0.15em; }
h3 { font-size: 1.08em; margin: 1.3em 0 0.4em; }
p { margin: 0.4em 0; }
a { color: inherit; }
ul { margin: 0.4em 0; padding-left: 1.4em; }
pre, .mono { font-family: "DejaVu Sans Mono", Menlo, Consolas, "Liberation Mono", monospace; font-size: 0.82em; }
pre { margin: 0.45em 0; line-height: 1.32; white-space: pre; }
table { border-collapse: separate; border-spacing: 0; margin: 0.6em 0; width: 100%; font-size: 0.92em; }
caption { text-align: left; font-weight: bold; padding: 0.2em 0; }
th, td { text-align: left; vertical-align: top; padding: 0.18em 0.7em 0.18em 0; border-bottom: 1px solid #d9dce1;
  font-weight: normal; overflow-wrap: break-word; }
.facts td, td.more { overflow-wrap: anywhere; }
thead th { font-weight: bold; border-bottom: 1.5px solid #111; }
th.n, td.n { text-align: right; white-space: nowrap; }
td.more { padding-left: 1.5em; color: #333; }
.pass { color: #0a6b2d; font-weight: bold; }
.bad { color: #a3100d; font-weight: bold; }
.advice { color: #7a4b00; font-weight: bold; }
.verdict { border: 2px solid #111; border-left-width: 10px; padding: 0.5em 0.8em; margin: 1em 0; }
.verdict.of-pass { border-color: #0a6b2d; }
.verdict.of-bad { border-color: #a3100d; }
.verdict strong { font-size: 1.5em; margin-right: 0.6em; }
.facts { width: auto; font-size: 1em; }
.facts th { padding-right: 2em; color: #444; }
.signatures td { height: 2.2em; min-width: 6em; }
.margin { margin: 0.2em 0 0.6em 40%; padding-left: 0.7em; border-left: 3px solid #7a4b00; font-size: 0.85em; }
figure { margin: 0.8em 0; break-inside: avoid; }
figure svg { max-width: 100%; height: auto; }
figcaption { font-size: 0.9em; margin-top: 0.3em; }
.one { white-space: nowrap; }
nav ol { list-style: none; padding-left: 0; margin: 0.4em 0; }
nav a { text-decoration: none; }
@media screen {
  pre { overflow-x: auto; }
}
@media print {
  body { font-family: "DejaVu Sans", sans-serif; font-size: 9pt; line-height: 1.35; max-width: none; margin: 0; padding: 0; }
  h1 { margin-top: 0; string-set: heading "front page"; }
  h2 { string-set: heading content(); bookmark-level: 1; break-after: avoid; margin-top: 1.4em; }
  h3 { bookmark-level: 2; break-after: avoid; }
  .page { break-before: page; margin-top: 0; }
  pre { font-family: "DejaVu Sans Mono", monospace; font-size: 7.9pt; line-height: 1.2; overflow: visible; white-space: pre-wrap; orphans: 3; widows: 3; }
  pre.whole { break-inside: avoid; white-space: pre; }
  pre.checks { break-before: avoid; orphans: 5; }
  pre.last { break-before: avoid; }
  nav.whole, table.whole { break-inside: avoid; }
  table { font-size: 8.5pt; }
  tr, caption { break-inside: avoid; }
  table.set { table-layout: fixed; }
  .margin { break-before: avoid; }
  nav li { border-bottom: 0.5pt solid #bbb; position: relative; padding-right: 3em; }
  nav a::after { content: target-counter(attr(href), page); position: absolute; right: 0; width: 3em; text-align: right; }
}
)";

} // namespace tarvane::vessel

#include "datasheet/DatasheetModule.h"

#include <fmt/format.h>
#include <text/TextWidth.h>
#include <text/Utf8.h>

namespace mxmodule {

namespace {

// Colours: c0 to c9 are those of channels and parameters, as in the pictures of process images.
constexpr const char* colours = R"(
:root { color-scheme: light dark; --text: #1a222d; --faint: #4d5763; --page: #fff; --line: #d5dbe3; --strong: #8b97a6;
  --head: #eef2f6; --link: #0b57a4; --mark: #fff0b3; --accent: #0b57a4; --none: #f2f4f6; --alarm: #a8071a;
  --c0: #cfe4f2; --c1: #fde3c5; --c2: #d6eccc; --c3: #eedff3; --c4: #fdf6c4; --c5: #fad5d5; --c6: #d7efec; --c7: #dde0f6;
  --c8: #eee3d7; --c9: #e8f1c9; }
@media (prefers-color-scheme: dark) { :root { --text: #e3e8ee; --faint: #a3aebb; --page: #14181d; --line: #333c46;
  --strong: #66727f; --head: #1f262d; --link: #8cc0f5; --mark: #544a1c; --accent: #6cb0f2; --none: #1b2026; --alarm: #ff9a94;
  --c0: #1e3a4c; --c1: #4d3820; --c2: #28421f; --c3: #402c48; --c4: #45401a; --c5: #4c2a2b; --c6: #1f423e; --c7: #2c3156;
  --c8: #40362b; --c9: #394219; } }
@media print { :root { color-scheme: light; --text: #000; --faint: #444; --page: #fff; --line: #c4cad2; --strong: #777;
  --head: #eef2f6; --link: #000; --mark: #fff; --accent: #0b57a4; --none: #f2f4f6; --alarm: #a8071a;
  --c0: #cfe4f2; --c1: #fde3c5; --c2: #d6eccc; --c3: #eedff3; --c4: #fdf6c4; --c5: #fad5d5; --c6: #d7efec; --c7: #dde0f6;
  --c8: #eee3d7; --c9: #e8f1c9; } }
)";

constexpr const char* layout = R"(
* { box-sizing: border-box; }
html { scroll-padding-top: 1rem; }
body { margin: 0 auto; padding: 1.5rem clamp(1rem, 4vw, 3rem) 3rem; max-width: 78rem; background: var(--page);
  color: var(--text); font: 15px/1.5 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; overflow-wrap: anywhere; }
a { color: var(--link); text-underline-offset: .15em; }
a:focus-visible, main:focus-visible { outline: 3px solid var(--accent); outline-offset: 2px; }
main:focus { outline: none; }
.skip { position: absolute; left: -999rem; }
.skip:focus { left: 1rem; top: .5rem; background: var(--page); padding: .3rem .6rem; z-index: 1; }
header { display: flex; gap: 2rem; justify-content: space-between; align-items: flex-start;
  border-bottom: 3px solid var(--accent); padding-bottom: 1.2rem; }
header > div { flex: 1 1 20rem; min-width: 0; }
.kind { margin: 0; text-transform: uppercase; letter-spacing: .12em; font-size: .8rem; color: var(--faint); }
h1 { font-size: clamp(1.5rem, 1.1rem + 1.6vw, 2.2rem); line-height: 1.2; margin: .2rem 0 .8rem; }
h2 { font-size: 1.3rem; margin: 2.5rem 0 .6rem; }
h3 { font-size: 1.1rem; margin: 2rem 0 .5rem; }
h4 { font-size: 1rem; margin: 1.5rem 0 .4rem; }
.product { width: clamp(5rem, 18vw, 12rem); height: auto; max-height: 16rem; object-fit: contain; background: #fff;
  border: 1px solid var(--line); border-radius: .4rem; padding: .5rem; flex: none; }
nav ol { display: flex; flex-wrap: wrap; gap: .2rem 1.4rem; list-style: none; padding: 0; margin: 1rem 0 0; }
dl.facts { display: grid; grid-template-columns: max-content 1fr; gap: .15rem 1.2rem; margin: 0; }
dt { color: var(--faint); } dd { margin: 0; }
.faint { color: var(--faint); font-size: .85em; font-weight: 400; }
.sum, code, pre, .number, .value, .registers td:nth-child(-n+3) { font-family: ui-monospace, "DejaVu Sans Mono",
  "Liberation Mono", Consolas, monospace; font-size: .88em; }
.hex { white-space: pre-wrap; margin: 0 0 1rem; }
footer { margin-top: 3rem; border-top: 1px solid var(--line); color: var(--faint); font-size: .85rem; }
.images { display: grid; gap: 0 2rem; grid-template-columns: repeat(auto-fit, minmax(min(100%, 32rem), 1fr));
  align-items: start; }
.row { display: flex; flex-wrap: wrap; gap: .6rem .4rem; list-style: none; padding: 0; margin: 0 0 1.2rem; }
.row a { display: block; width: 5.2rem; text-align: center; font-size: .8rem; line-height: 1.25; text-decoration: none; }
.row a:hover span, .row a:focus span { text-decoration: underline; }
.picture { display: block; height: 8rem; margin-bottom: .3rem; border: 1px solid var(--line); border-radius: .3rem;
  background: #fff center / contain no-repeat; background-origin: content-box; padding: .3rem;
  -webkit-print-color-adjust: exact; print-color-adjust: exact; }
.beside { display: flex; flex-wrap: wrap; gap: 0 1.5rem; align-items: flex-start; }
.beside > div { flex: 1 1 20rem; min-width: 0; } .beside .product { width: 8rem; margin-top: 1.5rem; }
@media (min-width: 110rem) {
  body { display: grid; grid-template-columns: 14rem minmax(0, 1fr); column-gap: 3rem; max-width: 105rem; }
  body > * { grid-column: 2; } header { grid-column: 1 / -1; }
  nav { grid-column: 1; grid-row: 2 / span 2; } nav ol { position: sticky; top: 1.5rem; flex-direction: column; }
  header { grid-row: 1; } main { grid-row: 2; } footer { grid-row: 3; }
}
)";

constexpr const char* tables = R"(
table { border-collapse: collapse; width: 100%; margin: .4rem 0 1.4rem; }
caption { text-align: left; color: var(--faint); font-size: .9rem; padding: .2rem 0; }
th, td { text-align: left; vertical-align: top; padding: .3rem .6rem; border-bottom: 1px solid var(--line); }
thead th { background: var(--head); border-bottom: 2px solid var(--strong); font-size: .85rem; overflow-wrap: normal; }
tbody th { font-weight: 600; }
.group th { background: var(--head); border-top: 2px solid var(--line); }
tr:target > *, td:target, section:target > h3 { background: var(--mark); box-shadow: inset 0 2px var(--accent), inset 0 -2px var(--accent); }
tr.changed th { box-shadow: inset 4px 0 var(--accent); }
.sizes td { white-space: nowrap; }
.options { list-style: none; margin: 0; padding: 0; }
.options .number { color: var(--faint); margin-right: .4ch; }
.bits { table-layout: fixed; font-size: .88rem; }
.bits th, .bits td { padding: .2rem .35rem; border: 1px solid var(--line); }
.bits thead th { text-align: center; }
.bits .byte { width: 4.2rem; } .bits .value { width: 3.2rem; text-align: center; }
.bits tbody th { text-align: right; font-variant-numeric: tabular-nums; } .bits .group th { text-align: left; }
.bits td a { color: inherit; text-decoration-color: var(--strong); }
.bits .none, .bits .padding { background: repeating-linear-gradient(135deg, var(--none) 0 4px, transparent 4px 8px);
  color: var(--faint); text-align: center; }
.bits .reserved { border-style: dashed; border-color: var(--strong); } .bits .status { background: var(--head); }
.bits .outside th { color: var(--alarm); }
.c0 { background: var(--c0); } .c1 { background: var(--c1); } .c2 { background: var(--c2); } .c3 { background: var(--c3); }
.c4 { background: var(--c4); } .c5 { background: var(--c5); } .c6 { background: var(--c6); } .c7 { background: var(--c7); }
.c8 { background: var(--c8); } .c9 { background: var(--c9); }
.registers td:nth-child(4) { width: 40%; }
@media screen and (max-width: 46rem) {
  header { flex-wrap: wrap; gap: 1rem; }
  dl.facts { grid-template-columns: 1fr; gap: 0; } dd { margin-bottom: .4rem; }
  .cards thead { position: absolute; left: -999rem; }
  .cards, .cards caption, .cards tbody, .cards tr, .cards th, .cards td { display: block; width: auto; }
  .cards tbody tr { border: 1px solid var(--line); border-radius: .3rem; margin: .5rem 0; overflow: hidden; }
  .cards th, .cards td { border: 0; padding: .15rem .6rem; }
  .cards tbody th { background: var(--head); padding: .35rem .6rem; }
  .cards tr.group { border: 0; margin: 1.2rem 0 .3rem; } .cards .group th { background: none; padding: 0; }
  .cards td:empty { display: none; }
  .cards td, .registers td:nth-child(4) { width: auto; }
  .cards td { position: relative; padding-left: 9rem; min-height: 1.8em; }
  .cards td::before { content: attr(data-name); position: absolute; left: .6rem; width: 8.2rem; color: var(--faint);
    font: .85rem system-ui, "DejaVu Sans", sans-serif; }
  .bits { font-size: .72rem; } .bits th, .bits td { padding: .15rem .2rem; }
  .bits .byte { width: 2.8rem; } .bits .value { width: 2rem; }
}
)";

constexpr const char* paper = R"(
@media print {
  body { display: block; max-width: none; padding: 0; font-size: 9.5pt; }
  .skip { display: none; }
  a { text-decoration: none; }
  h1 { font-size: 20pt; } h2 { font-size: 14pt; break-after: avoid; } h3, h4 { break-after: avoid; }
  caption { break-after: avoid; }
  nav { break-inside: avoid; }
  thead { display: table-header-group; } tr, .product, li { break-inside: avoid; }
  thead, thead tr, .group { break-after: avoid; }
  th, td { padding: .18rem .45rem; }
  .product { max-height: 45mm; width: 38mm; }
  #modules, #types { break-before: page; }
  .row li { break-inside: avoid; } .row a { width: 20mm; } .picture { height: 30mm; }
  td, th, .product { -webkit-print-color-adjust: exact; print-color-adjust: exact; }
}
)";

// Every character as a number: no text ends the string or the style sheet.
std::string styleString(const std::string& words)
{
    std::string quoted = "\"";
    for (const char32_t point : text::codePoints(text::labelOf(words))) {
        quoted += fmt::format("\\{:06x}", static_cast<std::uint32_t>(point));
    }
    return quoted + "\"";
}

} // namespace

std::string datasheetStyle(const std::string& footer)
{
    return std::string(colours) + layout + tables + paper +
           "@page { margin: 16mm 15mm 18mm; @bottom-left { content: " + styleString(footer) +
           "; font: 8pt sans-serif; color: #444; }\n@bottom-right { content: counter(page) \" / \" "
           "counter(pages); font: 8pt sans-serif; color: #444; } }\n";
}

} // namespace mxmodule

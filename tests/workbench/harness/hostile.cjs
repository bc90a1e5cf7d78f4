// Texts and pictures that try to be more than text and picture.
"use strict";

/** Each would set `window.attacked`, leave its element, or disturb the text around it. */
const texts = [
  "<img src=x onerror=\"window.attacked=1\">",
  "<script>window.attacked=2</script>",
  "\"><svg onload=window.attacked=3>",
  "' onfocus='window.attacked=4' autofocus='",
  "</textarea></title><iframe src=javascript:parent.attacked=5>",
  "]]> --> */ {{7*7}} ${window.attacked=6}",
  "javascript:window.attacked=7",
  "\u202Etxt.exe\u2066 \u200Fafter",
  "&lt;b&gt; &#60;i&#62; %3Cu%3E",
  `${"x".repeat(120)}<b>${"y".repeat(120)}`,
];

/** Those that an mx file can hold, within 200 bytes. */
const ofModules = texts.filter((one) => !one.includes("\u202E")).map((one) => one.slice(0, 200));

/** A picture that holds a script, HTML and addresses elsewhere. */
const picture = `<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" viewBox="0 0 40 60"
     onload="window.attacked=10; parent.attacked=11">
  <script>window.attacked=12; parent.attacked=13; fetch('http://198.51.100.7/script')</script>
  <foreignObject width="40" height="60"><body xmlns="http://www.w3.org/1999/xhtml">
    <img src="http://198.51.100.7/html" onerror="parent.attacked=14"/><iframe src="http://198.51.100.7/frame"/></body></foreignObject>
  <image xlink:href="http://198.51.100.7/image" width="5" height="5"/>
  <use xlink:href="http://198.51.100.7/use#a"/>
  <style>@import url(http://198.51.100.7/style); rect { fill: url(http://198.51.100.7/fill) }</style>
  <a xlink:href="javascript:window.attacked=15"><rect width="40" height="60"/></a>
  <animate attributeName="href" values="javascript:window.attacked=16"/>
</svg>
`;

const quoted = JSON.stringify;

/** The text form of a module whose every name is one of the texts. */
function moduleText() {
  const name = (index) => quoted(ofModules[index]);
  const channels = ofModules.map((_, index) => `  - {name: ${name(index)}, in: Bit}`);
  const parameters = ofModules.map((_, index) =>
    `  - {name: ${name(index)}, at: ${index}, type: UInt8, default: 0, ${index % 2 === 0 ? "options: words" : "range: [0, 9]"}}`);
  const options = ofModules.slice(0, 5).map((_, index) => `${index}: ${name(index)}`);
  return `module: {type: 3, id: 0x5a0eee01}
catalogue:
  BrandLabelName: ${name(0)}
  BrandVersion: ${name(1)}
  BrandId: "41"
  BrandSerialNumber: "0"
  ProductVersion: ${name(2)}
  BrandOrderCode: ${name(3)}
  BrandHwRevision: "01"
component:
  Component: ${name(4)}
  Creator: mx 3
channels:
${channels.join("\n")}
parameters:
${parameters.join("\n")}
optionLists:
  words: {options: {${options.join(", ")}}}
image: hostile.svg
`;
}

/** A station of that module whose names, aliases and comments are the texts. */
function stationText() {
  const entries = texts.map((text, index) => [
    "  - module: hostile.yaml",
    `    name: ${quoted(text)}`,
    `    channels: {"0": {alias: ${quoted(`${index}${text}`)}, comment: ${quoted(text)}}}`,
    `  - reserve: {in: 1, name: ${quoted(`r${text}`)}}`,
  ].join("\n"));
  return `station: ${quoted(texts[0])}\nmodules:\n${entries.join("\n")}\n`;
}

/** Puts station, module and picture into a folder. */
function writeInto(workplace) {
  workplace.write("hostile.svg", picture);
  workplace.write("hostile.yaml", moduleText());
  workplace.write("hostile-station.yaml", stationText());
  workplace.write("modules/<img src=x onerror=window.attacked=20>.yaml", moduleText().replace("hostile.svg", "../hostile.svg"));
}

module.exports = { texts, ofModules, writeInto };
